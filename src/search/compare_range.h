// One range of the table that is compared, and what follows from it alone.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "search/compare_history.h"
#include "search/file_props.h"
#include "search/limits.h"
#include "search/verdict.h"

namespace tresmor {

// 50,000 for a file of 1,000,000 bytes or more, else its size: a short file is one block.
std::int64_t GetBufferSz(std::int64_t Sz, const SearchLimits& limits);

// Both ends inclusive, at most limits.span apart.
struct CompareRange {
  std::int32_t dupStart = 0;
  std::int32_t dupEnd = 0;
  std::int64_t Sz0 = 0;  // size of the range's first file: it gives the block size, the budget and how far to compare

  std::size_t Count() const { return static_cast<std::size_t>(dupEnd - dupStart + 1); }
};

// How far files are compared, and how bytes fall into the blocks that verdicts are given by.
struct BlockGrid {
  std::int64_t block = 0;  // bytes
  std::int64_t end = 0;    // bytes compared of each file; 0 if there is nothing to compare

  std::int64_t BlockOf(std::int64_t offset) const { return offset / block; }
};

// Duplicates are compared to their last byte, portions in the whole blocks of the first file.
BlockGrid GridOf(const CompareRange& range, SizeRule rule, const SearchLimits& limits);

std::span<FileProp> RecordsOf(FileProps& table, const CompareRange& range);

// The records without a group or a failure that have somebody to be paired with, by their place in the range.
std::vector<int> Candidates(std::span<const FileProp> records, const CompareRange& range, SizeRule rule);

// Writes the groups that follow from a strict comparison. `lastWay` is the highest way used in `partings`.
void JudgeStrict(FileProps& table, const CompareRange& range, SizeRule rule, std::vector<Parting>& partings,
                 int lastWay);

// What a stopped comparison leaves: failures, and no groups.
void KeepFailures(FileProps& table, const CompareRange& range, const std::vector<Parting>& partings);

}  // namespace tresmor
