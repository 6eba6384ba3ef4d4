#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Marks files in a session by Smart Marker's rules, tells how many are marked, and gives the exit status. Throws
// WrongUse, WriteFailure and Failure.
int MarkCommand(const MarkOptions& options, const ConsolePorts& ports);

}  // namespace tresmor
