// The reading of the program's own files.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "platform/file_system.h"

namespace tresmor {

// The bytes of a file, or of the one that a link leads to. Throws Failure; Overflow for a file of more than
// `mostBytes`.
std::string ReadWholeFile(const FileSystem& files, const std::string& sFileName,
                          std::int64_t mostBytes = std::numeric_limits<std::int32_t>::max());

}  // namespace tresmor
