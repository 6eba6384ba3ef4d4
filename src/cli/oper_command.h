#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace tresmor {

// Trashes, deletes, moves or copies the marked files of a session's list and saves what is left of it, or tells what
// would be done; gives the exit status. Throws WrongUse, WriteFailure and Failure.
int OperCommand(const OperOptions& options, const ConsolePorts& ports);

// Puts back what the last trash or move did and gives the exit status. Throws WriteFailure.
int UndoCommand(const ConsolePorts& ports);

}  // namespace tresmor
