#include "cli/readable.h"

#include "base/failure.h"
#include "results/counters.h"

namespace tresmor {

std::string CountOf(std::int64_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string ReadableSize(std::int64_t bytes) {
  try {
    return ByteSizeStr(bytes);
  } catch (const Failure&) {
    return std::to_string(bytes) + " Bytes";
  }
}

}  // namespace tresmor
