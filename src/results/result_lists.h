// The five result lists and what their counters keep.
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "controls/list_view.h"
#include "controls/panel.h"
#include "controls/tab_strip.h"
#include "search/search_observer.h"

namespace tresmor {

// Marks and selection of one list as they were last counted. A sum that its field can't hold fails.
struct ListStats {
  std::int32_t SelCnt = 0;
  std::int32_t SelSz = 0;  // bytes
  std::int32_t MarkCnt = 0;
  std::int64_t MarkSz = 0;  // bytes, up to 922,337,203,685,477 either way
};

// Lists have their indexes of ResultList; tab i + 1 belongs to list i.
struct ResultLists {
  // Gives the lists their columns and the tabs their captions; a tab that is selected brings its list on show.
  explicit ResultLists(Panel& statusPanel);

  ListView& List(ResultList list) { return lstResult[static_cast<std::size_t>(list)]; }
  const ListView& List(ResultList list) const { return lstResult[static_cast<std::size_t>(list)]; }

  // Of the list on show.
  ResultList ShownKind() const { return static_cast<ResultList>(mIntCurFrame); }
  ListView& Shown() { return List(ShownKind()); }
  const ListView& Shown() const { return List(ShownKind()); }

  std::array<ListView, kResultLists> lstResult;
  TabStrip tabMain;
  Panel& msgBar;
  std::int16_t mIntCurFrame = 0;  // of the list on show
  std::array<std::int32_t, kResultLists> GroupCnt{};
  std::array<ListStats, kResultLists> StatsArr{};
};

// Puts lists that were filled anew in order: sorted, coloured, counted. Where the one on show has no rows, the last
// that has some comes up, read errors apart. `inBetween` runs after each step, so that a window may answer between the
// lists of a large result; it adds and removes no rows.
void ShowResult(
    ResultLists& results, const std::function<void()>& inBetween = [] {});

}  // namespace tresmor
