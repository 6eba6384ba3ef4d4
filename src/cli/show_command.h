#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Prints the result of a session and gives the exit status. Throws WrongUse, WriteFailure and Failure.
int ShowCommand(const ShowOptions& options, const ConsolePorts& ports);

}  // namespace tresmor
