// What a file has besides its bytes.
#pragma once

#include <sys/stat.h>

#include "base/failure.h"

namespace tresmor {

// Gives the open file `to` the extended attributes of the open file `from`, and owner, permissions and times of what
// that was at first, since reading it has changed the time of its last access. What its file system doesn't have or has
// no room for, or this user may not set, is left; but then nobody gets a right that he didn't have on `from`.
Errors CopyAttributes(int from, const struct stat& source, int to);

}  // namespace tresmor
