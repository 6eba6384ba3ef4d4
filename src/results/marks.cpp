#include "results/marks.h"

#include "base/number.h"
#include "base/text.h"
#include "desk/event_slice.h"
#include "results/rows.h"
#include "results/sort_list.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

int CompareValues(const ListView& lst, std::int32_t a, std::int32_t b, std::int32_t subItem) {
  return subItem == kVersionItem ? lst.CompareTags(a, b, subItem) : lst.CompareCells(a, b, subItem);
}

std::int32_t FindBest(const ListView& lst, std::int32_t first, std::int32_t last, const GroupRule& rule) {
  std::int32_t best = first;
  for (std::int32_t row = first + 1; row <= last; ++row) {
    const int order = CompareValues(lst, row, best, rule.SubItem);
    if (rule.bLow ? order < 0 : order > 0) best = row;
  }
  return best;
}

bool AllMarked(const ListView& lst, std::int32_t first, std::int32_t last) {
  std::int16_t marked = 0;
  for (std::int32_t row = first; row <= last; ++row) {
    if (lst.Checked(row)) marked = CheckedInt16(marked + 1);
  }
  return marked == last - first + 1;
}

// Rows that have gone are removed together, before events are let in, since each removal costs a pass over the list.
void PruneRows(ListView& lst, const FileSystem& files, EventQueue& events) {
  EventSlice slice(events);
  std::vector<std::int32_t> gone;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!lst.Checked(row)) continue;
    if (!ExistsFile(files, PathOf(lst, row))) gone.push_back(row);
    if (!slice.IsOver()) continue;
    lst.RemoveRows(gone);
    row -= static_cast<std::int32_t>(gone.size());
    gone.clear();
    slice.LetEventsIn();
  }
  lst.RemoveRows(gone);
}

}  // namespace

void SetAllMarks(ResultLists& results, bool value) {
  ListView& lst = results.Shown();
  lst.ChangeMany([&] {
    for (std::int32_t row = 1; row <= lst.Count(); ++row) lst.SetChecked(row, value);
  });
}

void MarkSelected(ResultLists& results) {
  ListView& lst = results.Shown();
  lst.ChangeMany([&] {
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      if (lst.Selected(row)) lst.SetChecked(row, true);
    }
  });
}

void MarkGroups(ListView& lst, ResultList kind, EventQueue& events, const GroupRule& rule) {
  constexpr std::int32_t none = -1;
  if (lst.Count() == 0) return;
  EventSlice slice(events);
  SortList(lst, GroupColumn(kind), kAscending);
  std::int32_t first = none;
  for (std::int32_t row = 2; row <= lst.Count(); ++row) {
    const bool isSame = SameGroup(lst, kind, row, row - 1);
    const bool isLast = row == lst.Count();
    if (isSame && first == none) first = row - 1;
    if (first == none || (isSame && !isLast)) continue;
    MarkGroupRange(lst, first, isLast ? row : row - 1, rule);
    first = none;
    if (slice.IsOver()) slice.LetEventsIn();
  }
}

void MarkGroupRange(ListView& lst, std::int32_t first, std::int32_t last, const GroupRule& rule) {
  const std::int32_t best = FindBest(lst, first, last, rule);
  if (rule.bGuardOnly) {
    if (AllMarked(lst, first, last)) lst.SetChecked(best, false);
    return;
  }
  for (std::int32_t row = first; row <= last; ++row) lst.SetChecked(row, row != best);
}

std::vector<std::string> MarkedPaths(const ListView& lst) {
  std::vector<std::string> paths;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (lst.Checked(row)) paths.push_back(PathOf(lst, row));
  }
  return paths;
}

std::string GetPrevList(const ResultLists& results) {
  constexpr int paths = 10;
  const ListView& lst = results.Shown();
  std::string text;
  int marked = 0;
  for (std::int32_t row = 1; row <= lst.Count() && marked <= paths; ++row) {
    if (!lst.Checked(row)) continue;
    ++marked;
    text += (marked <= paths ? WithinALine(PathOf(lst, row)) : "and more ...") + "\r\n";
  }
  return text;
}

void PruneMissing(ListView& lst, const FileSystem& files, EventQueue& events) {
  lst.Visible = false;
  try {
    PruneRows(lst, files, events);
  } catch (...) {
    lst.Visible = true;
    throw;
  }
  lst.Visible = true;
}

}  // namespace tresmor
