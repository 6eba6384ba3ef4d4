// What must hold whenever nothing is going on.
#include <string>

#include "results/counters.h"
#include "soak/monkey.h"

namespace tresmor::soak {

void Monkey::Check() {
  for (const std::string& file : machine_.ledger.Missing()) Expect(false, "lost: " + file);
  Expect(machine_.files.OpenFiles() == 0, "files are left open");
  // A failure that was told may leave lists half full and commands out of reach, until a search or a load succeeds.
  torn_ = torn_ || machine_.dialogs.failureTold;
  CheckLocks();
  CheckCounts();
  if (frm_->tmrUpdate.Enabled()) CheckPanel();
}

void Monkey::CheckLocks() {
  FrmMain& frm = *frm_;
  Expect(frm.cmdSrch.Caption() == kSearchCaption, "the window thinks that a search runs");
  Expect(frm.pointer.Shape() == PointerShape::Default,
         "the pointer stays " + std::to_string(static_cast<int>(frm.pointer.Shape())));
  Expect(!window_->Files().frmFileProgress.Visible(), "the progress of files stays");
  Expect(!window_->Files().frmFileOper.Visible(), "the dialog of operations stays");
  for (const Control* const input : std::initializer_list<const Control*>{
           &frm.frmSelPath, &frm.cmdNewSrch, &frm.lstSrchType, &frm.chkTolerant, &frm.chkHidden, &frm.chkProtectWinDir,
           &frm.chkVer, &frm.cmdSrch, &frm.cmdTask}) {
    Expect(input->Enabled(), "an input stays locked");
  }
  if (torn_) return;
  Expect(!frm.tmrProgress.Enabled(), "the timer of the progress runs on");
  Expect(frm.mnuFile.Enabled() && frm.mnuSrchSession.Enabled(), "a menu stays locked");
  for (const ListView& lst : frm.results.lstResult) Expect(lst.Visible() && !lst.Frozen(), "a list stays hidden");
}

void Monkey::CheckCounts() {
  bool agree = true;
  std::string told;
  for (std::size_t i = 0; i < kResultLists; ++i) {
    const ListView& lst = frm_->results.lstResult[i];
    const std::string& caption = frm_->results.tabMain.Caption(static_cast<std::int32_t>(i) + 1);
    const std::string count = "(" + std::to_string(lst.Count());
    const bool agrees = caption.find(count + "/") != caption.npos || caption.ends_with(count + ")");
    if (!agrees) told += " \"" + caption + "\" over " + std::to_string(lst.Count()) + " rows";
    agree = agree && agrees;
    Expect(lst.SelectedItem() <= lst.Count(), "the row with the focus is behind the end");
  }
  const bool isWhole = !frm_->tmrProgress.Enabled() && frm_->mnuFile.Enabled();
  if (agree && isWhole) torn_ = false;
  Expect(agree || torn_, "captions disagree with their lists:" + told);
}

// The tick that counts is due, so it is made to come now.
void Monkey::CheckPanel() {
  machine_.events.Tick();
  const ListView& lst = frm_->results.Shown();
  std::int32_t marked = 0;
  std::int32_t selected = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    marked += lst.Checked(row) ? 1 : 0;
    selected += lst.Selected(row) ? 1 : 0;
  }
  const std::string& text = frm_->msgBar.Text();
  Expect(text.starts_with(std::to_string(marked) + " files (") &&
             text.find(" marked, " + std::to_string(selected) + " files (") != text.npos &&
             text.ends_with(" out of " + std::to_string(lst.Count()) + " files."),
         "the panel says \"" + text + "\" of " + std::to_string(marked) + " marked and " + std::to_string(selected) +
             " selected rows");
}

}  // namespace tresmor::soak
