// The folder walk: from scope rows to the catalogue.
#pragma once

#include <vector>

#include "search/col_files.h"
#include "search/protect_dir.h"
#include "search/scope_row.h"
#include "search/walk_ports.h"

namespace tresmor {

// One of the two walks of a search: that of the targets, or that of the areas, as bSrchTarget says. Adds the files of
// its rows in the order of the list. `hidden` opens hidden files and folders to it. Tells in the progress text where it
// is, highlights each row that is walked and moves the bar by rows. The catalogue is the same with any number of
// threads. A stop leaves what was found so far. Throws Failure for a size or date cell that is none, and Overflow at
// row 32,768.
void LoadPathList(ColFiles& colFiles, const ProtectDir& protectDir, bool bSrchTarget, bool hidden,
                  const std::vector<ScopeRow>& rows, const WalkPorts& ports);

}  // namespace tresmor
