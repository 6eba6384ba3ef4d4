#include "results/counters.h"

#include <charconv>
#include <clocale>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

constexpr std::array<const char*, 4> kUnits = {"Bytes", "KB", "MB", "GB"};

std::int32_t CountGroups(ListView& lst, ResultList kind) {
  SortList(lst, GroupColumn(kind), kAscending);
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
  const std::string cell = lst.Cell(row, kSizeItem);
  const std::string_view text = TrimBlanks(cell);
  std::int64_t size = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), size);
  if (error == std::errc::invalid_argument || stop != text.data() + text.size()) throw Failure(Errors::TypeMismatch);
  if (error != std::errc()) throw Failure(Errors::Overflow);
  return size;
}

// What a sum may hold.
struct Bounds {
  std::int64_t least = 0;
  std::int64_t most = 0;
};
// Whole bytes of a 64-bit fixed-point number with four decimals, the classic currency type.
constexpr Bounds kMarkSz = {-922'337'203'685'477, 922'337'203'685'477};
constexpr Bounds kSelSz = {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};

std::int64_t Sum(std::int64_t a, std::int64_t b, Bounds bounds) {
  if (b > bounds.most - a || b < bounds.least - a) throw Failure(Errors::Overflow);
  return a + b;
}

void CountMarks(const ListView& lst, ListStats& stats) {
  stats.MarkCnt = 0;
  stats.MarkSz = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!lst.Checked(row)) continue;
    ++stats.MarkCnt;
    stats.MarkSz = Sum(stats.MarkSz, SizeOf(lst, row), kMarkSz);
  }
}

void CountSelection(const ListView& lst, ListStats& stats) {
  stats.SelCnt = 0;
  stats.SelSz = 0;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!lst.Selected(row)) continue;
    ++stats.SelCnt;
    stats.SelSz = static_cast<std::int32_t>(Sum(stats.SelSz, SizeOf(lst, row), kSelSz));
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

void UpdateStatusOnce(ResultLists& results, Timer& tmrUpdate) {
  try {
    UpdateStatus(results, true, true);
  } catch (const std::exception&) {
  }
  tmrUpdate.Enabled = false;
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
  const std::lconv* locale = std::localeconv();
  return ByteSizeStr(value, {locale->decimal_point, locale->thousands_sep});
}

std::string ByteSizeStr(std::int64_t value, NumberMarks marks) {
  std::size_t unit = 0;
  std::int64_t bytes = 1;  // of one unit
  while (unit < kUnits.size() && value > bytes * 1024) {
    bytes *= 1024;
    ++unit;
  }
  if (unit >= kUnits.size()) throw Failure(Errors::Subscript);
  if (unit == 0) return std::to_string(value) + " " + kUnits[0];
  const std::int64_t hundredths = DivideRoundEven(value * 100, bytes);
  const std::int64_t decimals = hundredths % 100;
  return std::to_string(hundredths / 100).append(marks.decimal) + (decimals < 10 ? "0" : "") +
         std::to_string(decimals) + " " + kUnits[unit];
}

}  // namespace tresmor
