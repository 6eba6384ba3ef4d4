#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Writes one list of a session as comma-separated values and gives the exit status. Throws WrongUse, WriteFailure and
// Failure.
int ExportListCommand(const ExportOptions& options, const ConsolePorts& ports);

}  // namespace tresmor
