#include "search/srch_portion.h"

#include <algorithm>

#include "search/run_scan.h"
#include "search/sort_table.h"
#include "search/targets.h"

namespace tresmor {

bool HeadsRead::Holds(std::int32_t index) const {
  return std::any_of(ranges_.begin(), ranges_.end(),
                     [&](const Range& range) { return range.first <= index && index <= range.last; });
}

std::vector<CompareRange> RangesOf(const FileProps& table, const CompareRun& run, const SearchLimits& limits) {
  if (run.dupEnd - run.dupStart < limits.span) return {{run.dupStart, run.dupEnd, run.Sz0}};
  const std::int32_t second = run.dupEnd - limits.span;
  // A stretch that begins behind the run's first record has a first record of its own.
  const std::int64_t Sz0 = second == run.dupStart ? run.Sz0 : table[second].Sz;
  return {{run.dupStart, run.dupStart + limits.span, run.Sz0}, {second, run.dupEnd, Sz0}};
}

std::vector<CompareRun> CutByHeads(FileProps& table, std::int32_t SrchStart, std::int32_t SrchEnd, bool isAllSrchTarget,
                                   HeadsRead& headsRead, const HeadPorts& ports) {
  std::vector<std::uint32_t> ranks = RankHeads(table, SrchStart, SrchEnd, ports);
  QuickSortByHead(table, SrchStart, SrchEnd, ranks);
  const auto rank = [&](std::int32_t i) { return ranks[static_cast<std::size_t>(i - SrchStart)]; };
  const auto head = [&](std::int32_t i) {
    const bool known = i >= SrchStart || headsRead.Holds(i);
    return known ? ReadHead(table, i, ports) : std::string(ports.limits.head, '\0');
  };
  const auto same = [&](std::int32_t i) { return i > SrchStart ? rank(i) == rank(i - 1) : head(i) == head(i - 1); };
  std::vector<CompareRun> runs;
  ScanRuns(std::max(SrchStart, 1), SrchEnd, same, [&](std::int32_t dupStart, std::int32_t dupEnd) {
    if (ports.stop.Stopped() || !ChkSrchTarget(table, dupStart, dupEnd, isAllSrchTarget)) return;
    runs.push_back({dupStart, dupEnd, table[std::max(dupStart, SrchStart)].Sz, dupStart < SrchStart});
  });
  headsRead.Add(SrchStart, SrchEnd);
  return runs;
}

}  // namespace tresmor
