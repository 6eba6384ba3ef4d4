// The texts that show while the pointer rests on a row of a list.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "controls/list_view.h"
#include "desk/options.h"

namespace tresmor {

// The row that the pointer was on last. The program has one for all its lists, so a row's text is made anew when the
// pointer was on another list meanwhile.
struct HoveredRow {
  std::uint64_t arrangement = 0;  // of its list
  std::int32_t row = 0;
  friend bool operator==(const HoveredRow&, const HoveredRow&) = default;
};

// The hover texts of a window's lists, for whoever shows them. A list without one has none to show.
struct ListTip {
  HoveredRow& hovered;
  std::map<const ListView*, std::string> texts;
};

enum class TipRows { Results, Scope, Folders };

// The pointer moved over a list with rows of that kind; `row` is the one under it, 0 for none. The text is made only
// when the row is another one than before: back on the same row after an empty place it stays empty.
void ShowListTip(std::int32_t row, const ListView& lst, TipRows rows, ListTip& tip);

// Calls ShowListTip as the pointer moves over the list, unless the user has switched tooltips off by then. `options`
// and `tip` outlive the list's events.
void BindListTip(ListView& lst, TipRows rows, const Options& options, ListTip& tip);

}  // namespace tresmor
