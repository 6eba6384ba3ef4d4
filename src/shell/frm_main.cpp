#include "shell/frm_main.h"

#include "results/counters.h"
#include "search/exec_srch.h"
#include "shell/help_pages.h"
#include "shell/layout.h"

namespace tresmor {
namespace {

// Topic of the help.
constexpr std::int32_t kSearchOptionHelp = 118;
constexpr std::int32_t kSearchHelp = 120;

void SetResultHelp(FrmMain& frm) {
  for (ListView& lst : frm.results.lstResult) lst.HelpContextID = kResultsHelp;
  frm.results.tabMain.HelpContextID = kResultsHelp;
  frm.frmFileOp.HelpContextID = kPreviewHelp;
  frm.cmdTask.HelpContextID = frm.mnuFile.HelpContextID;
}

void SetDefaults(FrmMain& frm) {
  for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) {
    frm.lstSrchType.SetTicked(i, i != static_cast<std::int32_t>(SrchType::Portions));
  }
  frm.txtMinSz.Text = "";
  frm.txtMaxSz.Text = "";
  frm.chkExclude.Value = kOff;
  frm.cmbSrchArea.Choose(0);
  frm.cmbDate.Choose(0);
  UpdateCount(frm.results, kAllLists);
  frm.session.SessionFile.clear();
  frm.session.HasSrchResult = false;
  frm.msgBar.Text = kReadyText;
}

}  // namespace

SearchControls::SearchControls() {
  fraSrch.HelpContextID = kSearchOptionHelp;
  cmdSrch.HelpContextID = kSearchHelp;
  cmdNewSrch.HelpContextID = kSearchHelp;
}

FrmMain::FrmMain() : Window("Tresmor - No Duplicate Files", {0, 0, 10140, 7524}) {
  HelpContextID = kOverviewHelp;
  SetResultHelp(*this);
  results.tabMain.Left = 120;
  results.tabMain.Top = 3360;
  results.tabMain.Width = 6015;
  results.tabMain.Height = 975;
  for (std::size_t i = 1; i < frmResult.size(); ++i) frmResult[i].Visible = false;
  pbMain.Parent = this;
  tmrUpdate.OnTick = [this] { UpdateStatusOnce(results, tmrUpdate); };
  SetDefaults(*this);
}

void Init(FrmMain& frm) {
  ClearScope(frm);
  for (ListView& lst : frm.results.lstResult) lst.Clear();
  if (frm.screen != nullptr) Collapse(frm);
  SetDefaults(frm);
}

void DisableFileMenus(FrmMain& frm) {
  frm.mnuSrchSession.Enabled = false;
  frm.mnuFile.Enabled = false;
  UpdateCount(frm.results, kAllLists);
}

void ShowResult(FrmMain& frm, const std::function<void()>& inBetween) {
  if (frm.screen != nullptr) OpenForResult(frm, *frm.screen);
  ShowResult(frm.results, inBetween);
  frm.mnuSrchSession.Enabled = true;
  frm.mnuFile.Enabled = true;
}

}  // namespace tresmor
