// Rows of the result lists as the output formats need them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "results/result_lists.h"

namespace tresmor {

// Rows first to last of one list; what belongs together.
struct RowGroup {
  std::int32_t first = 0;
  std::int32_t last = 0;
  std::int32_t Rows() const { return last - first + 1; }
};

// Calls `take` for each group in the order of the rows. A list without groups is one, if it has rows.
void ForEachGroup(const ResultLists& results, ResultList kind, const std::function<void(RowGroup)>& take);

// Reads one row after another. What it gives holds until the next call of the same routine.
class ResultReader {
 public:
  explicit ResultReader(const ListView& lst) : lst_(lst) {}

  std::string_view Name(std::int32_t row);
  std::string_view Folder(std::int32_t row);
  std::string_view Path(std::int32_t row);
  std::int64_t Size(std::int32_t row) const;
  // The group's number where the list has numbers.
  std::int64_t DupGrp(std::int32_t row) const;
  // "yyyy/mm/dd hh:mm:ss"; none for a file without a known date.
  std::optional<std::string_view> Date(std::int32_t row);
  // The same as "yyyy-mm-ddThh:mm:ssZ".
  std::optional<std::string_view> IsoDate(std::int32_t row);
  // Empty for a file that bears none; nothing where the list has no versions.
  std::optional<std::string_view> Version(std::int32_t row);
  bool Marked(std::int32_t row) const { return lst_.Checked(row); }

 private:
  const ListView& lst_;
  std::string name_;
  std::string folder_;
  std::string path_;
  std::string date_;
  std::string isoDate_;
  std::string version_;
};

// The rows of a list that are marked.
struct MarkedRows {
  std::int32_t count = 0;
  std::int64_t bytes = 0;
};
MarkedRows CountMarked(const ListView& lst);

// How scripts name a list: "zero", "duplicates", "names", "portions", "errors".
const char* ListName(ResultList kind);

// The number that tells a group of `kind` from the others of its list; `running` counts the list's groups from 1. None
// in a list without groups.
std::optional<std::int64_t> GroupNumber(ResultReader& reader, ResultList kind, RowGroup group, std::int64_t running);

}  // namespace tresmor
