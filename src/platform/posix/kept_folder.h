// Folders that are not to be removed on POSIX, even where nothing is in them.
#pragma once

#include <string>
#include <vector>

#include "platform/posix/mount_table.h"

namespace tresmor {

// Whether `folder` is one of `places` or of the mount points, or one of them lies below it, or that can't be told.
// Empty places are none. Links are resolved in all but the mount points, which have none.
bool IsKeptFolder(const std::string& folder, const std::vector<std::string>& places, const std::vector<Mount>& mounts);

}  // namespace tresmor
