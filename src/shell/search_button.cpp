#include "shell/search_button.h"

#include <string>

#include "results/counters.h"
#include "shell/search_checks.h"

namespace tresmor {

void SearchButton::Click() {
  if (!IsReady()) return;
  if (frm_.cmdSrch.Caption() != kSearchCaption) {
    control_.AskCancelSrch();
    frm_.pointer.Shape = PointerShape::Default;
    return;
  }
  if (!frm_.chkProtectWinDir.Ticked() && !ports_.GuardedMsg(kWarmProtWin)) return;
  ports_.GuardedMsg(kTipLongSrch);  // has nothing to cancel
  SearchAndTell();
  ports_.GuardedMsg(kTipSmartMark);
}

bool SearchButton::IsReady() {
  const auto missing = FailedSearchCheck(frm_);
  if (!missing) return true;
  ports_.dialogs.MessageBox(missing->text, BoxIcon::Exclamation, missing->title, BoxButtons::Ok);
  if (missing->pointOut != nullptr) missing->pointOut(frm_, ports_.events);
  return false;
}

void SearchButton::SearchAndTell() {
  const PointerWhile busy(frm_.pointer, PointerShape::HourglassAndArrow);
  control_.RunSearch();
  ports_.dialogs.MessageBox(
      "Search is completed. " + std::to_string(control_.SrchFileCnt()) + " file(s) compared.\r\n\r\n" +
          GetReportCountStr(frm_.results) +
          "\r\nINFO: Duplicate files are grouped by unquie 'Duplicate #' and different colours (not unqiue).",
      BoxIcon::Information, "Search completed", BoxButtons::Ok);
}

}  // namespace tresmor
