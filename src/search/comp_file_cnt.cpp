#include "search/comp_file_cnt.h"

#include <algorithm>
#include <map>

#include "base/number.h"

namespace tresmor {

namespace {

bool OfOneSize(const FileProps& table, const CompareRange& range, const FileClass& fileClass) {
  const auto size = [&](int file) { return table[range.dupStart + file].Sz; };
  return std::all_of(fileClass.files.begin(), fileClass.files.end(),
                     [&](int file) { return size(file) == size(fileClass.files.front()); });
}

// The groups that the range's records have already, as classes to be read on.
std::vector<FileClass> GroupsOf(const FileProps& table, const CompareRange& range, std::int64_t offset) {
  std::map<std::int32_t, FileClass> groups;
  for (std::int32_t i = range.dupStart; i <= range.dupEnd; ++i) {
    if (table[i].DupGrp < range.dupStart) continue;
    FileClass& group = groups[table[i].DupGrp];
    group.offset = offset;
    group.files.push_back(i - range.dupStart);
  }
  std::vector<FileClass> classes;
  for (auto& [number, group] : groups) {
    if (group.files.size() > 1) classes.push_back(std::move(group));
  }
  return classes;
}

std::size_t BufferShare(const ComparePorts& ports) {
  const auto fewest = static_cast<std::size_t>(ports.limits.span) + 2;  // a byte of each file
  return std::max(fewest, std::min(ports.limits.threadBuffers, ports.limits.buffers / ports.threads));
}

}  // namespace

FileCompare::FileCompare(const ComparePorts& ports)
    : ports_(ports),
      open_(ports.kept, ports.stop, std::max<std::size_t>(ports.kept.LeftOpen() / ports.threads, 1)),
      split_(BufferShare(ports)),
      slices_(BufferShare(ports)) {}

void FileCompare::CompFileCnt(FileProps& table, const CompareRange& range, bool isTolerant, SizeRule rule) {
  Start(table, range);
  if (isTolerant) {
    CompTolerant(table, range, rule);
  } else {
    CompStrict(table, range, rule);
  }
  Finish();
}

void FileCompare::CompStrict(FileProps& table, const CompareRange& range, SizeRule rule) {
  const BlockGrid grid = GridOf(range, rule, ports_.limits);
  std::vector<int> candidates = Candidates(RecordsOf(table, range), range, rule);
  if (grid.end == 0) return;
  SplitOutcome outcome;
  std::vector<FileClass> classes;
  if (!candidates.empty()) classes.push_back({std::move(candidates), 0});
  if (rule == SizeRule::SameSize) {
    Refine(std::move(classes), grid, grid.end, outcome);
  } else {
    RefinePortions(table, range, std::move(classes), grid, outcome);
  }
  if (ports_.stop.Stopped()) return KeepFailures(table, range, outcome.partings);
  JudgeStrict(table, range, rule, outcome.partings, outcome.lastWay);
}

// A class of one size is no group and need not be read on, unless it was one until a file failed. Groups that came with
// the range are read on whatever they hold: they were equal in the blocks that were compared then, which may be fewer
// than now.
void FileCompare::RefinePortions(const FileProps& table, const CompareRange& range, std::vector<FileClass> classes,
                                 const BlockGrid& grid, SplitOutcome& outcome) {
  std::vector<FileClass> groups = GroupsOf(table, range, grid.block);
  for (std::int64_t until = grid.block; until <= grid.end; until += grid.block) {
    classes = Refine(std::move(classes), grid, until, outcome);
    groups = Refine(std::move(groups), grid, until, outcome);
    if (AnyFailed(outcome.partings)) continue;
    std::erase_if(classes, [&](const FileClass& fileClass) { return OfOneSize(table, range, fileClass); });
  }
}

std::vector<FileClass> FileCompare::Refine(std::vector<FileClass> classes, const BlockGrid& grid, std::int64_t until,
                                           SplitOutcome& outcome) {
  std::vector<FileClass> finished;
  BlockGrid stretch = grid;
  stretch.end = until;
  outcome.goOn = std::move(classes);
  while (!outcome.goOn.empty() && !ports_.stop.Stopped()) {
    const FileClass next = std::move(outcome.goOn.back());
    outcome.goOn.pop_back();
    if (next.offset >= until) {
      finished.push_back(next);
      continue;
    }
    split_.Split(next, stretch, PieceAt(next.offset), open_, outcome);
  }
  return finished;
}

// Pieces are small at first, where unlike files part, and grow with what was found equal.
std::size_t FileCompare::PieceAt(std::int64_t offset) const {
  const SearchLimits& limits = ports_.limits;
  return offset == 0 ? limits.firstPiece
                     : std::clamp(static_cast<std::size_t>(offset), limits.nextPiece, limits.largestPiece);
}

void FileCompare::CompTolerant(FileProps& table, const CompareRange& range, SizeRule rule) {
  const BlockGrid grid = GridOf(range, rule, ports_.limits);
  const auto records = RecordsOf(table, range);
  const auto count = records.size();
  std::vector<int> reading = Candidates(records, range, rule);
  const std::vector<FileProp> before(records.begin(), records.end());
  const double blocks = static_cast<double>(range.Sz0) / static_cast<double>(grid.block);
  Verdict verdict(records, range.dupStart, rule, /*tolerant=*/true, RoundEven(blocks * 0.3));
  for (std::int64_t at = 0; at < grid.end; at += grid.block) {
    for (int k = 0; k < static_cast<int>(count); ++k) {
      if (verdict.Open(k)) reading.push_back(k);
    }
    if (reading.empty()) return;
    slices_.Read(open_, reading, count, at, std::min(grid.block, grid.end - at));
    if (ports_.stop.Stopped()) break;
    std::vector<bool> read(count);
    for (int k : reading) read[static_cast<std::size_t>(k)] = true;
    const auto failed = [&](int k) { return slices_.Failed(k); };
    const auto agree = [&](int i, int j) {
      return read[static_cast<std::size_t>(i)] && read[static_cast<std::size_t>(j)] &&
             slices_.FuzzyMatch(i, j) > kFuzzyLimit;
    };
    if (at == 0) {
      verdict.JudgeFirst(failed, agree);
    } else {
      verdict.JudgeNext(failed, agree);
    }
    reading.clear();
  }
  if (!ports_.stop.Stopped()) return;
  for (std::size_t k = 0; k < count; ++k) {
    if (records[k].DupGrp != kReadError) records[k].DupGrp = before[k].DupGrp;
  }
}

}  // namespace tresmor
