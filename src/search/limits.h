// The figures that the search's rules turn on. Tests make them small, so that a table of a dozen short files reaches
// every rule; the program uses them as they stand here.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tresmor {

struct SearchLimits {
  std::int64_t wholeBelow = 1'000'000;  // a file shorter than this is one block
  std::int64_t block = 50'000;          // bytes in a block of a longer file
  std::int32_t span = 254;              // largest distance of first and last record in one comparison
  std::size_t head = 400;               // bytes of a file's head
  std::int64_t portionFrom = 20'480;    // smallest file of a portion search
  // Measured, with a warm page cache. Files of a small run are read in pieces as large as these; where many files share
  // a thread's buffers the pieces are smaller, and the buffers stay in the processor's cache.
  std::size_t firstPiece = 4096;          // most unlike files part here
  std::size_t nextPiece = 64 * 1024;      // the smallest of the pieces behind it
  std::size_t largestPiece = 128 * 1024;  // what pieces grow to while files agree
  std::size_t threadBuffers = 1 << 20;    // bytes of buffers of one comparing thread
  std::size_t buffers = 64 << 20;         // of all threads together, at the most
  std::size_t keptFiles = 4096;           // open between the reading of heads and the comparison
  std::int64_t segment = 16 << 20;        // stretch of long files that one thread compares on its own
};

}  // namespace tresmor
