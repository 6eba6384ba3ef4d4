#include "search/compare_range.h"

namespace tresmor {

std::int64_t GetBufferSz(std::int64_t Sz, const SearchLimits& limits) {
  return Sz >= limits.wholeBelow ? limits.block : Sz;
}

BlockGrid GridOf(const CompareRange& range, SizeRule rule, const SearchLimits& limits) {
  if (rule == SizeRule::SameSize) return {GetBufferSz(range.Sz0, limits), range.Sz0};
  return {limits.block, range.Sz0 > limits.block ? range.Sz0 / limits.block * limits.block : 0};
}

std::span<FileProp> RecordsOf(FileProps& table, const CompareRange& range) {
  return std::span(table.records)
      .subspan(static_cast<std::size_t>(range.dupStart), static_cast<std::size_t>(range.dupEnd - range.dupStart + 1));
}

std::vector<int> Candidates(std::span<const FileProp> records, const CompareRange& range, SizeRule rule) {
  std::vector<int> candidates;
  bool sizesDiffer = false;
  for (std::size_t k = 0; k < records.size(); ++k) {
    if (records[k].DupGrp != kNoGroup) continue;
    if (rule == SizeRule::SameSize && records[k].Sz != range.Sz0) continue;
    candidates.push_back(static_cast<int>(k));
    sizesDiffer |= records[k].Sz != records[static_cast<std::size_t>(candidates.front())].Sz;
  }
  const bool paired = rule == SizeRule::SameSize ? candidates.size() > 1 : sizesDiffer;
  return paired ? candidates : std::vector<int>{};
}

void JudgeStrict(FileProps& table, const CompareRange& range, SizeRule rule, std::vector<Parting>& partings,
                 int lastWay) {
  for (std::int32_t i = range.dupStart; i <= range.dupEnd; ++i) {
    // Files that were not read agree with nobody.
    const bool unread = rule == SizeRule::SameSize && table[i].Sz != range.Sz0;
    if (unread) partings.push_back({0, i - range.dupStart, ++lastWay});
  }
  Verdict verdict(RecordsOf(table, range), range.dupStart, rule, /*tolerant=*/false, /*tolBudget=*/0);
  Replay(partings, verdict);
}

void KeepFailures(FileProps& table, const CompareRange& range, const std::vector<Parting>& partings) {
  for (const Parting& parting : partings) {
    if (parting.way == Parting::kFailed) table[range.dupStart + parting.file].DupGrp = kReadError;
  }
}

}  // namespace tresmor
