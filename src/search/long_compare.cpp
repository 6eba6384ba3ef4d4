#include "search/long_compare.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace tresmor {

bool IsLong(const CompareRange& range, SizeRule rule, const ComparePorts& ports) {
  return rule == SizeRule::SameSize && range.Sz0 >= 2 * ports.limits.segment && ports.threads > 1 &&
         range.Count() * ports.threads <= ports.kept.LeftOpen();
}

// One comparison whose stretches are refined by several threads at once. Each stretch starts from what all finished
// stretches found, so that files that parted in one are not read on in the next.
class SharedCompare {
 public:
  SharedCompare(const std::vector<int>& candidates, std::size_t count) : label_(count, kOut) {
    for (int file : candidates) label_[static_cast<std::size_t>(file)] = 0;
  }

  void CompareStretch(FileCompare& compare, const BlockGrid& grid, std::int64_t from, std::int64_t until) {
    std::vector<FileClass> classes = ClassesAt(from);
    if (classes.empty()) return;
    SplitOutcome outcome;
    const auto finished = compare.Refine(std::move(classes), grid, until, outcome);
    Merge(finished, outcome.partings, outcome.lastWay);
  }

  std::vector<Parting>& Partings() { return partings_; }
  int LastWay() const { return lastWay_; }

 private:
  static constexpr int kOut = -1;  // reads no further: failed, or without a partner

  std::vector<FileClass> ClassesAt(std::int64_t offset) {
    const std::lock_guard lock(mutex_);
    std::map<int, FileClass> classes;
    for (std::size_t k = 0; k < label_.size(); ++k) {
      if (label_[k] == kOut) continue;
      FileClass& fileClass = classes[label_[k]];
      fileClass.offset = offset;
      fileClass.files.push_back(static_cast<int>(k));
    }
    std::vector<FileClass> shared;
    for (auto& [label, fileClass] : classes) {
      if (fileClass.files.size() > 1) shared.push_back(std::move(fileClass));
    }
    return shared;
  }

  // Files stay together if they were together before and in this stretch too.
  void Merge(const std::vector<FileClass>& finished, const std::vector<Parting>& partings, int lastWay) {
    const std::lock_guard lock(mutex_);
    for (Parting parting : partings) {
      if (parting.way != Parting::kFailed) parting.way += lastWay_;
      partings_.push_back(parting);
    }
    lastWay_ += lastWay;
    std::vector<int> inStretch(label_.size(), kOut);
    for (std::size_t c = 0; c < finished.size(); ++c) {
      for (int file : finished[c].files) inStretch[static_cast<std::size_t>(file)] = static_cast<int>(c);
    }
    std::map<std::pair<int, int>, int> meet;
    for (std::size_t k = 0; k < label_.size(); ++k) {
      const bool out = label_[k] == kOut || inStretch[k] == kOut;
      label_[k] = out ? kOut : meet.try_emplace({label_[k], inStretch[k]}, static_cast<int>(meet.size())).first->second;
    }
  }

  std::mutex mutex_;
  std::vector<int> label_;  // by file: its class as far as finished stretches tell
  std::vector<Parting> partings_;
  int lastWay_ = 0;
};

void CompLongFiles(FileProps& table, const CompareRange& range, std::vector<std::unique_ptr<FileCompare>>& compares,
                   ThreadPool& pool) {
  const ComparePorts& ports = compares.front()->Ports();
  const BlockGrid grid = GridOf(range, SizeRule::SameSize, ports.limits);
  const std::vector<int> candidates = Candidates(RecordsOf(table, range), range, SizeRule::SameSize);
  if (candidates.empty()) return;
  SharedCompare shared(candidates, range.Count());
  for (auto& compare : compares) compare->Start(table, range);
  // Most unlike files part in the first block, before it pays to start several threads on them. Stretches are whole
  // blocks, so that a block's verdict comes from one of them.
  shared.CompareStretch(*compares.front(), grid, 0, grid.block);
  const std::int64_t stretch = std::max<std::int64_t>(ports.limits.segment / grid.block, 1) * grid.block;
  const std::int64_t rest = grid.end - grid.block;
  pool.ParallelFor(static_cast<std::size_t>((rest + stretch - 1) / stretch), 1, [&](std::size_t k, std::size_t thread) {
    const std::int64_t from = grid.block + static_cast<std::int64_t>(k) * stretch;
    shared.CompareStretch(*compares[thread], grid, from, std::min(from + stretch, grid.end));
  });
  for (auto& compare : compares) compare->Finish();
  if (ports.stop.Stopped()) return KeepFailures(table, range, shared.Partings());
  // Which failures count depends on who still had a partner in front of them, and stretches that run side by side can't
  // tell each other. Where all is well the groups are those of equal files, in whatever order that came out.
  if (AnyFailed(shared.Partings())) return compares.front()->CompFileCnt(table, range, false, SizeRule::SameSize);
  JudgeStrict(table, range, SizeRule::SameSize, shared.Partings(), shared.LastWay());
}

}  // namespace tresmor
