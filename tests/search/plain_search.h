// The search written down plainly, one step after the other and one block of all files at a time, with no thought of
// speed: what the fast search is held against.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "search/exec_srch.h"
#include "search/limits.h"

namespace tresmor {

struct PlainFile {
  std::string folder;
  std::string name;
  std::string content;
  bool isTarget = true;
  bool opens = true;          // false: can't be opened
  bool rightLength = true;    // false: one byte shorter by the time it is opened
  std::int64_t failsAt = -1;  // reading fails from this byte on; -1: never

  friend bool operator==(const PlainFile&, const PlainFile&) = default;
};

struct PlainRow {
  int list = 0;
  std::string path;
  std::int32_t dupGrp = -1;
  std::int64_t size = 0;
  friend auto operator<=>(const PlainRow&, const PlainRow&) = default;
};

// The rows of all lists in the order of adding, and the figure that the search returns.
struct PlainResult {
  std::vector<PlainRow> rows;
  std::int64_t figure = 0;
  friend bool operator==(const PlainResult&, const PlainResult&) = default;
};

// `files` in the order of the catalogue, one at least.
PlainResult PlainSearch(const std::vector<PlainFile>& files, const SearchRequest& request, const SearchLimits& limits);

}  // namespace tresmor
