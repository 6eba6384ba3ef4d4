// What reading the files of one comparison brought to light, in a form that says nothing of the pieces or the threads
// in which they were read.
#pragma once

#include <cstdint>
#include <vector>

#include "search/verdict.h"

namespace tresmor {

// A file that left others in some block, after agreeing with them until then. Files that go on together bear the same
// way, a number above 0 that is used once in a comparison; files that no entry names for a block all stayed together.
struct Parting {
  static constexpr int kFailed = -1;

  std::int64_t block = 0;
  int file = 0;
  int way = 0;  // kFailed: the file could not be read in this block
};

bool AnyFailed(const std::vector<Parting>& partings);

// Judges all blocks in order. `partings` is sorted on the way. A file's partings behind the block in which it lost its
// last partner change nothing, however far some thread had read it.
void Replay(std::vector<Parting>& partings, Verdict& verdict);

}  // namespace tresmor
