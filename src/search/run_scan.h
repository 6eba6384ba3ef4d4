// Finding runs of like neighbours in a sorted table.
#pragma once

#include <cstdint>

namespace tresmor {

// Goes through indexes `first` to `last`; same(i) tells whether record i is like record i - 1, so first is at least 1.
// handle(dupStart, dupEnd) is called for each run, both ends inclusive. A run that is still open at `last` always ends
// there, even if the last record is unlike its neighbour: that record joins the run, and those that handle runs know
// it.
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
