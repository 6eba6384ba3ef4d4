// What a file has besides its bytes.
#pragma once

#include "base/failure.h"

namespace tresmor {

// Gives the open file `to` owner, extended attributes, permissions and times of the open file `from`. What its file
// system doesn't have or has no room for, or this user may not set, is left; but then nobody gets a right that he
// didn't have on `from`.
Errors CopyAttributes(int from, int to);

}  // namespace tresmor
