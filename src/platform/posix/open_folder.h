// Folders as open descriptors.
#pragma once

#include <sys/stat.h>

#include <string>

#include "base/failure.h"
#include "platform/posix/short_path.h"

namespace tresmor {

// Opens the folder `name` in an open one, as a place for further calls, and makes it where nothing stands. `flags` may
// add O_NOFOLLOW. None is open with the reason in errno.
Descriptor OpenOrMakeFolder(int parent, const std::string& name, mode_t mode, int flags = 0);

// Waits until the entries of an open folder are on the disk; those of a folder that this user may write to but not read
// too, at the price of waiting for the whole disk.
Errors FlushOpenFolder(int folder);

}  // namespace tresmor
