// The file that tells the desktop where something in the trash came from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/path.h"
#include "platform/trash_places.h"

namespace tresmor {

// The content of a .trashinfo file by freedesktop.org's Trash specification: the path's bytes with "%" and two
// hexadecimal digits for all but letters, digits, separators and "-_.!~*'()", from the top folder on where there is
// one, by the way without links if that is told; and the date in local time.
std::string TrashInfo(const std::string& path, const TrashPlace& place, std::int64_t unixSeconds, PathStyle style);

}  // namespace tresmor
