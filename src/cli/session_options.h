// The options of the commands on sessions.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/options.h"

namespace tresmor {

struct TypedShow {
  ShowOptions options;
  std::vector<std::string> types;
};

// Each adds a command whose options are parsed into what is given with it, which outlives the parsing.
CLI::App& AddRun(CLI::App& app, RunOptions& options);
CLI::App& AddShow(CLI::App& app, TypedShow& typed);
CLI::App& AddMark(CLI::App& app, MarkOptions& options);
CLI::App& AddExport(CLI::App& app, ExportOptions& options);

// What was parsed, as it is meant. Throw WrongUse.
RunOptions Settle(RunOptions options);
ShowOptions Settle(TypedShow typed);
MarkOptions Settle(MarkOptions options);
ExportOptions Settle(ExportOptions options);

}  // namespace tresmor
