// Search targets: a finding of files outside of them alone is none.
#pragma once

#include <cstdint>

#include "search/file_props.h"

namespace tresmor {

// Whether a finding may come of the records dupStart to dupEnd, both included. Asked before any of them is read.
bool ChkSrchTarget(const FileProps& table, std::int32_t dupStart, std::int32_t dupEnd, bool isAllSrchTarget);

// Takes back the groups among the records dupStart to dupEnd that hold no target. That takes back read errors too: they
// are in no group, and so go unreported as soon as not all rows of a scope are targets.
void ReChkSrchTarget(FileProps& table, std::int32_t dupStart, std::int32_t dupEnd);

}  // namespace tresmor
