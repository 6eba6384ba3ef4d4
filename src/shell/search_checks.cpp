#include "shell/search_checks.h"

#include "base/number.h"
#include "desk/flash_ctrl.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

void PointOutAdding(FrmMain& frm, EventQueue& events) {
  FlashCtrl(frm.cmdAdd, events);
  FocusField(frm, kPathTab, frm.txtPath);
}
void PointOutTypes(FrmMain& frm, EventQueue& events) { FlashCtrl(frm.lstSrchType, events); }

constexpr SearchCheck kNoPath = {
    "Select Path", "Please select path before search. Remember to click [Add>] to add path.", PointOutAdding};
constexpr SearchCheck kNoType = {"Select Search Type", "Please select at least one search type.", PointOutTypes};
constexpr SearchCheck kNoIncludedPath = {
    "At least one included path required",
    "Please include at least one path before search.\r\n\r\n"
    "You can select included path by unchecking 'Exclude' in tab 'Scope' and then click button [Add]. "};
constexpr SearchCheck kNoTarget = {"At least one search target path required",
                                   "Please select at least one search target path before search.\r\n\r\n"
                                   "You can select 'Search Target' in tab 'Scope' and then click button [Add]. "};

bool HasIncluded(const ListView& lstPath) {
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    if (lstPath.SmallIcon(CheckedInt16(row)) == ScopeRow::kIncluded) return true;
  }
  return false;
}

// All rows are gone through, so that too many of them fail here.
bool HasTarget(const ListView& lstPath) {
  bool found = false;
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    if (lstPath.Cell(CheckedInt16(row), kSearchTargetItem) == "Yes") found = true;
  }
  return found;
}

}  // namespace

bool AtLeast1Chk(const CheckList& obj) {
  for (std::int32_t i = 0; i < obj.Count(); ++i) {
    if (obj.Ticked(i)) return true;
  }
  return false;
}

std::optional<SearchCheck> FailedSearchCheck(const FrmMain& frm) {
  if (frm.lstPath.Count() == 0) return kNoPath;
  if (!AtLeast1Chk(frm.lstSrchType)) return kNoType;
  if (!HasIncluded(frm.lstPath)) return kNoIncludedPath;
  if (!HasTarget(frm.lstPath)) return kNoTarget;
  return std::nullopt;
}

}  // namespace tresmor
