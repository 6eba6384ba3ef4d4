// Cutting a range of files by their heads: to find truncated copies, and to bring a big run of one size into pieces
// that can be compared.
#pragma once

#include <cstdint>
#include <vector>

#include "search/compare_range.h"
#include "search/heads.h"

namespace tresmor {

// A run of like files, to be compared on its own. Both ends inclusive.
struct CompareRun {
  std::int32_t dupStart = 0;
  std::int32_t dupEnd = 0;
  std::int64_t Sz0 = 0;      // size of the first record of the range that was searched
  bool reachesBack = false;  // begins with the record in front of that range, so it must wait for what is in front
};

// The ranges that are compared of one run, in this order: all of it, or of a run too long for one comparison a stretch
// from each end. Records between the two are never compared.
std::vector<CompareRange> RangesOf(const FileProps& table, const CompareRun& run, const SearchLimits& limits);

// Where earlier cuts of this search read heads: the record in front of a range has one only there.
class HeadsRead {
 public:
  void Add(std::int32_t first, std::int32_t last) { ranges_.push_back({first, last}); }
  bool Holds(std::int32_t index) const;

 private:
  struct Range {
    std::int32_t first, last;
  };
  std::vector<Range> ranges_;
};

// Reads the heads of the records SrchStart to SrchEnd, both inclusive, sorts these records by head and gives the runs
// of equal heads that hold a target. A SrchStart of 0 becomes 1 for the scan. After a stop no run is given.
std::vector<CompareRun> CutByHeads(FileProps& table, std::int32_t SrchStart, std::int32_t SrchEnd, bool isAllSrchTarget,
                                   HeadsRead& headsRead, const HeadPorts& ports);

}  // namespace tresmor
