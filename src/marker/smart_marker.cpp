#include "marker/smart_marker.h"

#include <array>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "base/failure.h"
#include "base/like.h"
#include "base/text.h"
#include "desk/flash_ctrl.h"
#include "desk/history.h"
#include "desk/report_failure.h"
#include "results/marks.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// What an entry of a drop-down list does to every group.
struct ListRule {
  ChoiceList FrmSmartDel::*list;
  std::int32_t ListIndex;
  GroupRule marks;
};

// In the order of their application. Those of lstLeaveVer do the opposite of what its entries say, and are to stay so.
constexpr std::array<ListRule, 10> kListRules = {{
    {&FrmSmartDel::lstLeaveDate, 2, {.SubItem = kDateItem, .bLow = true, .bGuardOnly = true}},
    {&FrmSmartDel::lstLeaveDate, 1, {.SubItem = kDateItem, .bLow = false, .bGuardOnly = true}},
    {&FrmSmartDel::lstLeaveVer, 1, {.SubItem = kVersionItem, .bLow = true, .bGuardOnly = true}},
    {&FrmSmartDel::lstLeaveVer, 2, {.SubItem = kVersionItem, .bLow = false, .bGuardOnly = true}},
    {&FrmSmartDel::lstDate, 1, {.SubItem = kDateItem, .bLow = true, .bGuardOnly = false}},
    {&FrmSmartDel::lstDate, 2, {.SubItem = kDateItem, .bLow = false, .bGuardOnly = false}},
    {&FrmSmartDel::lstSize, 1, {.SubItem = kSizeItem, .bLow = true, .bGuardOnly = false}},
    {&FrmSmartDel::lstSize, 2, {.SubItem = kSizeItem, .bLow = false, .bGuardOnly = false}},
    {&FrmSmartDel::lstVer, 1, {.SubItem = kVersionItem, .bLow = true, .bGuardOnly = false}},
    {&FrmSmartDel::lstVer, 2, {.SubItem = kVersionItem, .bLow = false, .bGuardOnly = false}},
}};

// Marks the rows for which takes(text of the sub-item) holds.
template <class Takes>
void MarkRows(ListView& lst, std::int32_t subItem, Takes&& takes) {
  lst.ChangeMany([&] {
    std::string scratch;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      if (!lst.Checked(row) && takes(lst.CellView(row, subItem, scratch))) lst.SetChecked(row, true);
    }
  });
}

// The selected folders. All are looked for in one pass over the rows, since there may be thousands of both.
class ChosenFolders {
 public:
  explicit ChosenFolders(const ListView& lstFolder) {
    for (std::int32_t row = 1; row <= lstFolder.Count(); ++row) {
      if (!lstFolder.Selected(row)) continue;
      std::string folder = lstFolder.Cell(row, 0);
      lengths_.insert(folder.size());
      folders_.insert(std::move(folder));
    }
  }

  bool Empty() const { return folders_.empty(); }
  bool Holds(std::string_view folder) const { return folders_.contains(folder); }
  bool HoldsStartOf(std::string_view folder) const {
    for (const std::size_t length : lengths_) {
      if (length > folder.size()) return false;
      if (Holds(folder.substr(0, length))) return true;
    }
    return false;
  }

 private:
  std::unordered_set<std::string, TextHash, std::equal_to<>> folders_;
  std::set<std::size_t> lengths_;
};

void MarkFolders(const FrmSmartDel& frm, ListView& lst) {
  const ChosenFolders chosen(frm.lstFolder);
  if (chosen.Empty()) return;
  const bool subFolders = frm.chkSubFolder.Value();
  MarkRows(lst, kFolderItem,
           [&](std::string_view folder) { return subFolders ? chosen.HoldsStartOf(folder) : chosen.Holds(folder); });
}

void MarkPatterns(std::string_view patterns, ListView& lst) {
  for (;;) {
    const std::size_t end = patterns.find(';');
    const std::string_view piece = TrimBlanks(patterns.substr(0, end));
    if (!piece.empty()) {
      const Like like(piece);
      MarkRows(lst, kNameItem, [&](std::string_view name) { return like.Matches(name); });
    }
    if (end == std::string_view::npos) return;
    patterns.remove_prefix(end + 1);
  }
}

void MarkByLists(const FrmSmartDel& frm, ListView& lst, ResultList kind, EventQueue& events) {
  for (const ListRule& rule : kListRules) {
    if ((frm.*rule.list).ListIndex() != rule.ListIndex) continue;
    if (rule.marks.bGuardOnly && !frm.chkLeaveAtLeast1.Value()) continue;
    MarkGroups(lst, kind, events, rule.marks);
  }
}

bool AsksForOneButNotWhich(const FrmSmartDel& frm) {
  return frm.chkLeaveAtLeast1.Value() && frm.lstLeaveDate.ListIndex() == 0 && frm.lstLeaveVer.ListIndex() == 0;
}

}  // namespace

SmartMarks MarkBySmartRules(FrmSmartDel& frm, ResultLists& results, const SmartMarkerPorts& ports) {
  const ResultList kind = results.ShownKind();
  ListView& lst = results.List(kind);
  if (AsksForOneButNotWhich(frm)) {
    ports.dialogs.MessageBox("You have select keep at least one file, please select either by date or version.",
                             BoxIcon::Information, "", BoxButtons::Ok);
    FlashCtrl(frm.lstLeaveDate, ports.events);
    return SmartMarks::Refused;
  }
  if (!frm.chkLeaveAtLeast1.Value()) {
    ports.GuardedMsg(kTipOrgNDupSM);
  }
  MarkFolders(frm, lst);
  try {
    MarkPatterns(frm.cmbPattern.Text(), lst);
  } catch (const Failure& failure) {
    if (failure.Number() != Errors::BadPattern) throw;
    ReportRunTimeError(ports.dialogs, failure);
    return SmartMarks::Stopped;
  }
  MarkByLists(frm, lst, kind, ports.events);
  return SmartMarks::Done;
}

bool ClickMark(FrmSmartDel& frm, ResultLists& results, const ClickMarkPorts& ports) {
  const SmartMarks marks = MarkBySmartRules(frm, results, ports.rules);
  if (marks == SmartMarks::Refused) return false;
  if (marks == SmartMarks::Done) {
    AddHistory(frm.cmbPattern, ports.presets.FileTypeDizArr);
    SaveHistory(ports.settings, kPatternHistory, frm.cmbPattern, frm.cmbPattern);
  }
  ports.tmrUpdate.Enabled = true;
  return marks == SmartMarks::Done;
}

}  // namespace tresmor
