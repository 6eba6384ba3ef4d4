#include "shell/frm_main.h"

#include "results/counters.h"
#include "search/exec_srch.h"

namespace tresmor {

FrmMain::FrmMain() {
  lstPath.AddColumn({"Path", 5292});
  lstPath.AddColumn({"Sub-folder", 1411});
  lstPath.AddColumn({"Min. Size", 1764});
  lstPath.AddColumn({"Max. Size", 1764});
  lstPath.AddColumn({"Date", 2540});
  lstPath.AddColumn({"Search Target", 2540});
  tmrUpdate.OnTick = [this] { UpdateStatusOnce(results, tmrUpdate); };
  Init(*this);
}

void Init(FrmMain& frm) {
  frm.lstPath.Clear();
  for (ListView& lst : frm.results.lstResult) lst.Clear();
  for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) {
    frm.lstSrchType.SetTicked(i, i != static_cast<std::int32_t>(SrchType::Portions));
  }
  UpdateCount(frm.results, kAllLists);
  frm.session.SessionFile.clear();
  frm.session.HasSrchResult = false;
  frm.msgBar.Text = kReadyText;
}

void DisableFileMenus(FrmMain& frm) {
  frm.mnuSrchSession.Enabled = false;
  frm.mnuFile.Enabled = false;
  UpdateCount(frm.results, kAllLists);
}

void ShowResult(FrmMain& frm) {
  ShowResult(frm.results);
  frm.mnuSrchSession.Enabled = true;
  frm.mnuFile.Enabled = true;
}

}  // namespace tresmor
