// Search targets: what the user wants judged, as against areas that only serve to compare with.
#pragma once

#include <cstdint>

#include "search/file_props.h"

namespace tresmor {

// Whether the records dupStart to dupEnd, both inclusive, need work at all: one of them is a target.
bool ChkSrchTarget(const FileProps& table, std::int32_t dupStart, std::int32_t dupEnd, bool isAllSrchTarget);

// Dissolves every group of the range that holds no target. Read errors of the range that belong to no kept group are
// forgotten with them; with areas in the scope they are not reported.
void ReChkSrchTarget(FileProps& table, std::int32_t dupStart, std::int32_t dupEnd);

}  // namespace tresmor
