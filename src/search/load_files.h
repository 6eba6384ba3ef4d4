// The folder walk: from scope rows to the catalogue.
#pragma once

#include <vector>

#include "search/col_files.h"
#include "search/protect_dir.h"
#include "search/scope_row.h"
#include "search/walk_ports.h"

namespace tresmor {

// Walks every included row whose SearchTarget says bSrchTarget, from first to last, and adds what passes its criteria.
// `hidden`: also take hidden files and enter hidden folders. Tells in the progress text where it is, highlights each
// row that is walked and moves the bar by rows. The catalogue is the same with any number of threads. A stop leaves
// what was found so far. Throws Failure for a size or date cell that can't convert and, with number 6, at row 32,768.
void LoadPathList(ColFiles& colFiles, const ProtectDir& protectDir, bool bSrchTarget, bool hidden,
                  const std::vector<ScopeRow>& rows, const WalkPorts& ports);

}  // namespace tresmor
