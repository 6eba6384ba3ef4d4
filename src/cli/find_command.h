#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Searches, prints what was found and gives the exit status. Throws WrongUse, WriteFailure and the search's Failure.
int FindCommand(const FindOptions& options, const ConsolePorts& ports);

}  // namespace tresmor
