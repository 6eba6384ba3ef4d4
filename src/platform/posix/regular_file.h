// Regular files as open descriptors.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/file_system.h"
#include "platform/posix/short_path.h"

namespace tresmor {

// Opens for reading, without following a link and without waiting. PathAccess for what is no regular file. `info` is
// of the file that was opened. None is open with a `failure`.
Descriptor OpenRegularFile(const std::string& path, struct stat& info, Errors& failure);
// The same of a short path from an open folder on.
Descriptor OpenRegularFileAt(int folder, const char* path, struct stat& info, Errors& failure);

// As FileReader::ReadAt.
FileReader::Result ReadFully(int file, std::int64_t offset, std::span<char> into);

// Writes all of it from `offset` on. False with the reason in errno, and a part may have been written.
bool WriteFully(int file, std::int64_t offset, std::string_view bytes);

}  // namespace tresmor
