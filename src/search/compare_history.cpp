#include "search/compare_history.h"

#include <algorithm>

namespace tresmor {

bool AnyFailed(const std::vector<Parting>& partings) {
  return std::any_of(partings.begin(), partings.end(), [](const Parting& p) { return p.way == Parting::kFailed; });
}

// Where one block parted a file several times, in piece after piece, the last way is the finest and counts.
void Replay(std::vector<Parting>& partings, Verdict& verdict) {
  const auto inFront = [](const Parting& a, const Parting& b) { return a.block < b.block; };
  if (!std::is_sorted(partings.begin(), partings.end(), inFront)) {
    std::stable_sort(partings.begin(), partings.end(), inFront);
  }
  auto begin = partings.begin();
  for (bool first = true; first || (begin != partings.end() && verdict.AnyOpen()); first = false) {
    // The first block is judged even if nothing happened in it: that is what makes the groups.
    const std::int64_t block = first ? 0 : begin->block;
    auto end = begin;
    std::vector<int> ways;
    for (; end != partings.end() && end->block == block; ++end) {
      ways.resize(std::max(ways.size(), static_cast<std::size_t>(end->file) + 1));
      ways[static_cast<std::size_t>(end->file)] = end->way;
    }
    const auto way = [&](int file) {
      return static_cast<std::size_t>(file) < ways.size() ? ways[static_cast<std::size_t>(file)] : 0;
    };
    const auto failed = [&](int file) { return way(file) == Parting::kFailed; };
    const auto agree = [&](int leader, int file) { return way(leader) == way(file); };
    if (first) {
      verdict.JudgeFirst(failed, agree);
    } else {
      verdict.JudgeNext(failed, agree);
    }
    begin = end;
  }
}

}  // namespace tresmor
