// What tells the user how much the lists hold: the captions of the tabs, the status panel and the report of a search.
#pragma once

#include <cstdint>
#include <string>

#include "results/result_lists.h"

namespace tresmor {

inline constexpr std::int16_t kAllLists = -1;

// Puts the number of rows, and of groups where a list has them, behind the caption of list `index`'s tab, and keeps the
// groups in GroupCnt. Lists with groups are sorted by their group keys for it and stay so; a list of one row has no
// group. kAllLists counts them all.
void UpdateCount(ResultLists& results, std::int16_t index);

// Counts marks or selection, or both, of the list on show into StatsArr and writes the figures into the panel. Fails
// with Overflow where the selected rows have more than 2,147,483,647 bytes and with Subscript where a sum can't be
// told in ByteSizeStr; the panel then keeps its text.
void UpdateStatus(ResultLists& results, bool bMarks, bool bSel);

// The figures of all lists as five lines, each with CR LF behind it. GroupCnt must be up to date.
std::string GetReportCountStr(const ResultLists& results);

// "900 Bytes", "1.50 KB" and so on up to GB, two decimals in the locale's form. More than 1024 GB fails with Subscript.
std::string ByteSizeStr(std::int64_t value);

}  // namespace tresmor
