// Finding runs of like neighbours in a sorted table.
#pragma once

#include <cstdint>

namespace tresmor {

// Hands out the runs among the records from first - 1 (so `first` is at least 1) to `last`: handle(dupStart, dupEnd)
// gets the first and the last index of each, same(i) compares a record with the one before it. Beware of the end of the
// table: a run that reaches record last - 1 takes record `last` along unasked. Those that handle runs know it.
template <class Same, class Handle>
void ScanRuns(std::int32_t first, std::int32_t last, Same same, Handle handle) {
  std::int32_t dupStart = -1;
  for (std::int32_t i = first; i <= last; ++i) {
    const bool like = same(i);
    if (like && dupStart < 0) dupStart = i - 1;
    if (like && i != last) continue;
    if (dupStart >= 0) handle(dupStart, i == last ? i : i - 1);
    dupStart = -1;
  }
}

}  // namespace tresmor
