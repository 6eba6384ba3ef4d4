// What the monkey has done and seen.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace tresmor::soak {

struct Figures {
  std::int64_t steps = 0;
  std::int64_t windows = 0;  // that were opened
  std::int64_t searches = 0;
  std::int64_t cancels = 0;  // of searches
  std::int64_t operations = 0;
  std::int64_t trashed = 0;  // files and folders, as the next three
  std::int64_t deleted = 0;
  std::int64_t moved = 0;
  std::int64_t copied = 0;
  std::int64_t undone = 0;
  std::int64_t changes = 0;                  // by somebody else
  std::map<std::string, std::int64_t> told;  // run-time errors, by the first line of their box
};

}  // namespace tresmor::soak
