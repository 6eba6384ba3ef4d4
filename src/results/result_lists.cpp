#include "results/result_lists.h"

#include "base/number.h"
#include "results/counters.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

constexpr int kColumns = 6;
constexpr std::array<const char*, kColumns> kHeaders = {"Name",         "In Folder",     "Duplicate #",
                                                        "Size (Bytes)", "Date Modified", "File version"};
constexpr std::array<std::array<int, kColumns>, kResultLists> kWidths = {{{2540, 5292, 0, 0, 2540, 0},
                                                                          {2540, 5292, 2117, 1764, 2540, 2540},
                                                                          {2540, 5292, 0, 1764, 2540, 2540},
                                                                          {2540, 5292, 2117, 1764, 2540, 2540},
                                                                          {2540, 5292, 0, 1764, 2540, 2540}}};

void AddColumns(ListView& lst, ResultList kind) {
  for (std::size_t i = 0; i < kColumns; ++i) {
    const bool numbers = i == kDupGrpItem || i == kSizeItem;
    const bool isVersionOfFirst = i == kVersionItem && kind == ResultList::ZeroSize;
    lst.AddColumn({isVersionOfFirst ? "File Version" : kHeaders[i], kWidths[static_cast<std::size_t>(kind)][i],
                   numbers ? Alignment::Right : Alignment::Left});
  }
}

}  // namespace

ResultLists::ResultLists(Panel& statusPanel)
    : tabMain({"Zero Size", "Duplicates", "Same Name", "Portions", "Report - read errors"}), msgBar(statusPanel) {
  for (int i = 0; i < kResultLists; ++i) {
    const auto kind = static_cast<ResultList>(i);
    AddColumns(List(kind), kind);
  }
  tabMain.Listen([this](const Notice& notice) {
    if (notice.what != Notice::What::SelectedTab || notice.when != Notice::When::After) return;
    mIntCurFrame = CheckedInt16(tabMain.SelectedTab() - 1);
  });
}

void ShowResult(ResultLists& results, const std::function<void()>& inBetween) {
  const auto sort = [&](ResultList list, std::int16_t item) {
    SortList(results.List(list), CheckedInt16(item + 1), kAscending);
    inBetween();
  };
  sort(ResultList::Duplicates, kDupGrpItem);
  sort(ResultList::SameName, kNameItem);
  sort(ResultList::ZeroSize, kNameItem);
  sort(ResultList::Portions, kDupGrpItem);
  for (const ResultList grouped : {ResultList::Duplicates, ResultList::SameName, ResultList::Portions}) {
    ColorGroups(results.List(grouped), grouped);
    inBetween();
  }
  for (std::int16_t i = 0; i < kResultLists; ++i) {
    UpdateCount(results, i);
    inBetween();
  }
  if (results.lstResult[static_cast<std::size_t>(results.mIntCurFrame)].Count() > 0) return;
  // The last list with rows wins; that of the read errors never does.
  for (std::int32_t i = 0; i <= static_cast<std::int32_t>(ResultList::Portions); ++i) {
    if (results.lstResult[static_cast<std::size_t>(i)].Count() > 0) results.tabMain.Select(i + 1);
  }
}

}  // namespace tresmor
