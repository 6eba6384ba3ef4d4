// A scope row read: its folder, its patterns and what a file must fulfil.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/path.h"
#include "base/wildcard.h"
#include "platform/file_system.h"
#include "search/scope_row.h"

namespace tresmor {

// One file pattern of a row on its way down a tree. Each step into a sub-folder cuts the pattern into name and
// extension and joins them again, which changes some: "report" is "report." from the first sub-folder on, ".txt" is
// "txt" there and "txt." below.
class WalkPattern {
 public:
  WalkPattern(std::string_view pattern, PathStyle style);

  // Depth 0 is the row's own folder.
  const std::string& Text(std::size_t depth) const { return steps_[Step(depth)].text; }
  bool Matches(std::size_t depth, std::string_view name) const { return steps_[Step(depth)].wildcard.Matches(name); }

 private:
  struct Pace {
    std::string text;
    Wildcard wildcard;
  };
  std::size_t Step(std::size_t depth) const { return depth < steps_.size() ? depth : steps_.size() - 1; }

  std::vector<Pace> steps_;  // the last one holds for all depths from there on
};

struct RowCriteria {
  std::string folder;  // with the separator at its end
  std::vector<WalkPattern> patterns;
  std::int32_t minSz = -1;  // rounded kilobytes that a file must exceed or stay below; -1 asks for nothing
  std::int32_t maxSz = -1;
  std::optional<DateStamp> modDate;  // on the local clock
  bool recursive = false;

  // Whether a file must be asked for its size or date.
  bool NeedsStat() const { return minSz != -1 || maxSz != -1 || modDate.has_value(); }
  bool Passes(const FileStat& stat) const;
};

// Throws Failure for a cell that can't convert.
RowCriteria ReadRow(const ScopeRow& row, PathStyle style);

}  // namespace tresmor
