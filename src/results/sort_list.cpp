#include "results/sort_list.h"

#include <algorithm>

#include "base/number.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// Versions show as they are written but sort by their keys; rows without one sort as empty.
void SortVerCol(ListView& lst, std::int16_t col, std::int16_t order) {
  lst.SortOrder = order;
  lst.SortKey = CheckedInt16(col - 1);
  lst.SortByTags();
}

}  // namespace

void SortList(ListView& lst, std::int16_t col, std::int16_t order) {
  if (col - 1 == kVersionItem) {
    SortVerCol(lst, col, order);
  } else {
    lst.SortKey = CheckedInt16(col - 1);
    lst.SortOrder = order;
    lst.SetSorted(true);
  }
  for (std::int32_t column = 1; column <= lst.Columns(); ++column) {
    const std::string& text = lst.Column(column).text;
    const std::string_view unmarked = WithoutSortMark(text);
    if (unmarked.size() < text.size()) lst.SetColumnText(column, std::string(unmarked));
  }
  lst.SetColumnText(col, (lst.SortOrder() == kAscending ? "^ " : "v ") + lst.Column(col).text);
}

std::string_view WithoutSortMark(std::string_view header) {
  const bool marked = header.starts_with('^') || header.starts_with('v');
  return marked ? header.substr(std::min<std::size_t>(2, header.size())) : header;
}

void ClickColumn(ListView& lst, std::int16_t col) { SortList(lst, col, CheckedInt16((lst.SortOrder() + 1) % 2)); }

}  // namespace tresmor
