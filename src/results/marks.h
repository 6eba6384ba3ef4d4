// Marks of a list, which are what operations on files act on, and the helpers over its marked rows. What takes all
// lists works on the one that is on show when it begins. All of it runs on the interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "results/result_lists.h"

namespace tresmor {

void SetAllMarks(ResultLists& results, bool value);

// Marks the selected rows; other marks stay.
void MarkSelected(ResultLists& results);

// How the rows of a group are marked. One of them is the best: the first with the lowest or the highest value, which is
// a cell's text or, of a version, its sort key. Values are in the order of their bytes, but a longer number of bytes is
// always the greater one.
struct GroupRule {
  std::int32_t SubItem = 0;  // that holds the value
  bool bLow = false;         // the best has the lowest value, not the highest
  // False: all rows are marked but the best, whatever they were before. True: only where all are marked the best loses
  // its mark; fails with Overflow at 32,768 marked rows.
  bool bGuardOnly = false;
};

// Sorts the list by its groups' key and applies the rule to each group, that is to each run of rows of one key. The
// last row of the list is taken into a run that reaches up to it, whatever its own key is; apart from that a row on its
// own is no group. An empty list is left as it is. Now and then, when events have waited long enough (EventSlice), they
// are let in behind a group, and find no group half marked.
void MarkGroups(ListView& lst, ResultList kind, EventQueue& events, const GroupRule& rule);
// Applies the rule to the rows first to last.
void MarkGroupRange(ListView& lst, std::int32_t first, std::int32_t last, const GroupRule& rule);

// The paths of all marked rows of a result list, in their order.
std::vector<std::string> MarkedPaths(const ListView& lst);

// The paths of the first marked rows, each with CR LF behind it: ten at most, and "and more ..." if there are more.
// Empty if nothing is marked.
std::string GetPrevList(const ResultLists& results);

// Removes the marked rows of a result list whose files have gone, as far as that can be told (ExistsFile). The list is
// hidden meanwhile. Events are let in likewise, behind a row, and find a list without those that have gone up to there.
void PruneMissing(ListView& lst, const FileSystem& files, EventQueue& events);

}  // namespace tresmor
