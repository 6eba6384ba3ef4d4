#include "results/counters.h"

#include <clocale>
#include <limits>

#include "base/failure.h"
#include "base/number.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

constexpr std::array<const char*, 4> kUnits = {"Bytes", "KB", "MB", "GB"};

std::int32_t CountGroups(ListView& lst, ResultList kind) {
  SortList(lst, kind == ResultList::SameName ? kNameItem + 1 : kDupGrpItem + 1, kAscending);
  if (lst.Count() < 2) return 0;
  std::int32_t groups = 1;
  for (std::int32_t row = 2; row <= lst.Count(); ++row) groups += SameGroup(lst, kind, row, row - 1) ? 0 : 1;
  return groups;
}

void CountList(ResultLists& results, ResultList kind) {
  const auto i = static_cast<std::size_t>(kind);
  ListView& lst = results.lstResult[i];
  const std::int32_t groups = HasGroups(kind) ? CountGroups(lst, kind) : 0;
  const auto tab = static_cast<std::int32_t>(i) + 1;
  const std::string& caption = results.tabMain.Caption(tab);
  const std::string ofGroups = HasGroups(kind) ? "/" + std::to_string(groups) : "";
  results.tabMain.SetCaption(tab,
                             caption.substr(0, caption.find('(')) + "(" + std::to_string(lst.Count()) + ofGroups + ")");
  results.GroupCnt[i] = groups;
}

std::int64_t SizeOf(const ListView& lst, std::int32_t row) {
  if (const auto size = lst.CellNumber(row, kSizeItem)) return *size;
  return ParseInt32(lst.Cell(row, kSizeItem));
}

std::int32_t AddSelected(std::int32_t sum, std::int64_t size) {
  if (size > std::numeric_limits<std::int32_t>::max() - sum) throw Failure(Errors::Overflow);
  return static_cast<std::int32_t>(sum + size);
}

void CountMarks(const ListView& lst, ListStats& stats) {
  stats.MarkCnt = 0;
  stats.MarkSz = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!lst.Checked(row)) continue;
    ++stats.MarkCnt;
    stats.MarkSz += SizeOf(lst, row);
  }
}

void CountSelection(const ListView& lst, ListStats& stats) {
  stats.SelCnt = 0;
  stats.SelSz = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!lst.Selected(row)) continue;
    ++stats.SelCnt;
    stats.SelSz = AddSelected(stats.SelSz, SizeOf(lst, row));
  }
}

}  // namespace

void UpdateCount(ResultLists& results, std::int16_t index) {
  const int first = index == kAllLists ? 0 : index;
  const int last = index == kAllLists ? kResultLists - 1 : index;
  for (int i = first; i <= last; ++i) CountList(results, static_cast<ResultList>(i));
}

void UpdateStatus(ResultLists& results, bool bMarks, bool bSel) {
  const auto shown = static_cast<std::size_t>(results.mIntCurFrame);
  const ListView& lst = results.lstResult[shown];
  ListStats& stats = results.StatsArr[shown];
  if (bMarks) CountMarks(lst, stats);
  if (bSel) CountSelection(lst, stats);
  results.msgBar.Text = std::to_string(stats.MarkCnt) + " files (" + ByteSizeStr(stats.MarkSz) + ") marked, " +
                        std::to_string(stats.SelCnt) + " files (" + ByteSizeStr(stats.SelSz) + ") selected, out of " +
                        std::to_string(lst.Count()) + " files.";
}

std::string GetReportCountStr(const ResultLists& results) {
  const auto rows = [&](ResultList kind) { return std::to_string(results.List(kind).Count()); };
  const auto groups = [&](ResultList kind) {
    return ", " + std::to_string(results.GroupCnt[static_cast<std::size_t>(kind)]) + " group(s)\r\n";
  };
  return "No. of zero-size files: " + rows(ResultList::ZeroSize) + "\r\n" +
         "No. of duplicate(same-content) files: " + rows(ResultList::Duplicates) + groups(ResultList::Duplicates) +
         "No. of same-name files: " + rows(ResultList::SameName) + groups(ResultList::SameName) +
         "No. of truncated files(file portions): " + rows(ResultList::Portions) + groups(ResultList::Portions) +
         "No. of files with reading error: " + rows(ResultList::ReadErrors) + "\r\n";
}

std::string ByteSizeStr(std::int64_t value) {
  std::size_t unit = 0;
  std::int64_t bytes = 1;  // of one unit
  while (unit < kUnits.size() && value > bytes * 1024) {
    bytes *= 1024;
    ++unit;
  }
  if (unit >= kUnits.size()) throw Failure(Errors::Subscript);
  if (unit == 0) return std::to_string(value) + " " + kUnits[0];
  const std::int64_t hundredths = (value * 100 + bytes / 2) / bytes;
  const std::int64_t decimals = hundredths % 100;
  return std::to_string(hundredths / 100) + std::localeconv()->decimal_point + (decimals < 10 ? "0" : "") +
         std::to_string(decimals) + " " + kUnits[unit];
}

}  // namespace tresmor
