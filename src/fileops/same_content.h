// Compares two files once more, right before one of them goes.
#pragma once

#include <functional>
#include <string>

#include "platform/file_system.h"

namespace tresmor {

// Whether two regular files could both be read to their ends and hold the same bytes, and both are still the files that
// stood there before, by identity, size and times. On file systems that make inode numbers up as they go (FileIdentity)
// equal files may therefore be told to differ. `stop` is asked before each piece; once it says true the answer is
// false. Blocks. Any thread.
bool SameContent(const FileSystem& files, const std::string& a, const std::string& b,
                 const std::function<bool()>& stop);

}  // namespace tresmor
