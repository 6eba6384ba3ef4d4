#pragma once

#include <string>

namespace tresmor {

// A path as it was typed, from the root. `workingFolder` is absolute, or empty where it is gone: then this throws
// WrongUse for a path that hangs on it, or that path would mean something else below the root.
std::string TypedPath(const std::string& typed, const std::string& workingFolder);

}  // namespace tresmor
