// Sorting a list by a column, with a mark in the column's header.
#pragma once

#include <cstdint>
#include <string_view>

#include "controls/list_view.h"

namespace tresmor {

// Sorts by the 1-based column, versions by their sort keys, and puts "^ " (ascending) or "v " in front of the header
// in place of any such mark in the list. So no header's own text may begin with "^" or a lower-case v.
void SortList(ListView& lst, std::int16_t col, std::int16_t order);

// A header's text as it is without the mark.
std::string_view WithoutSortMark(std::string_view header);

// What a click on a column's header does: the list's direction turns over with every click, whichever column it is on.
void ClickColumn(ListView& lst, std::int16_t col);

}  // namespace tresmor
