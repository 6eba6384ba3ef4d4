// The options of the commands that change files.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/options.h"

namespace tresmor {

// Adds the command of `options.action`, which is parsed into the rest of `options`; these outlive the parsing.
CLI::App& AddOper(CLI::App& app, OperOptions& options);
CLI::App& AddUndo(CLI::App& app);

// What was parsed, as it is meant. Throws WrongUse.
OperOptions Settle(OperOptions options);

}  // namespace tresmor
