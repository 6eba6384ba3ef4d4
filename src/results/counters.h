// Figures about the result lists, as tabs, status panel and closing report show them.
#pragma once

#include <cstdint>
#include <string>

#include "base/number.h"
#include "controls/timer.h"
#include "results/result_lists.h"

namespace tresmor {

inline constexpr std::int16_t kAllLists = -1;

// Puts the number of rows, and of groups where a list has them, behind the caption of list `index`'s tab, and keeps the
// groups in GroupCnt. Lists with groups are sorted by their group keys for it and stay so; a list of one row has no
// group. kAllLists counts them all.
void UpdateCount(ResultLists& results, std::int16_t index);

// Counts marks or selection, or both, of the list on show into StatsArr and writes the figures into the panel. Fails
// with Overflow where a sum leaves its field (ListStats), with TypeMismatch at a size that is no whole number, and with
// Subscript where ByteSizeStr can't tell a sum; the panel then keeps its text.
void UpdateStatus(ResultLists& results, bool bMarks, bool bSel);

// The tick of the timer that a click on a row starts: counts both and stops the timer. A failure is passed over, and
// the panel keeps its text.
void UpdateStatusOnce(ResultLists& results, Timer& tmrUpdate);

// The figures of all lists as five lines, each with CR LF behind it. GroupCnt must be up to date.
std::string GetReportCountStr(const ResultLists& results);

// "900 Bytes", "1.50 KB" and so on up to GB, with two decimals, halves of a hundredth going to the even one. More than
// 1024 GB fails with Subscript.
std::string ByteSizeStr(std::int64_t value, NumberMarks marks);
// The same by the marks of the process's locale.
std::string ByteSizeStr(std::int64_t value);

}  // namespace tresmor
