#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Searches what a session tells, prints what was found and gives the exit status. Throws as FindCommand.
int RunCommand(const RunOptions& options, const ConsolePorts& ports);

}  // namespace tresmor
