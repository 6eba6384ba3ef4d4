// Which file systems hold no files of people but the kernel's own state.
#pragma once

#include <cstdint>

namespace tresmor {

// Whether the open folder, which lies on `device`, stands on such a file system. Any thread. A file system that can't
// be told is none.
bool IsOnPseudoFileSystem(int folder, std::uint64_t device);

}  // namespace tresmor
