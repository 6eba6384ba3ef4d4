// The formats of the console program's findings. All throw WriteFailure; none flushes.
#pragma once

#include <string>

#include "cli/options.h"
#include "cli/output.h"
#include "results/result_lists.h"

namespace tresmor {

// The end of a search as its formats tell it.
struct FindResult {
  const ResultLists& lists;
  std::int64_t searched = 0;  // the program's own figure
  double seconds = 0;         // that it took
  bool cancelled = false;
  std::string message;  // the last words of the message panel
};

enum class LineEnd : char { NewLine = '\n', Nul = '\0' };
enum class Names { AsTheyAre, MadeVisible };

// For people: all lists asked for, and read errors if there are any.
void PrintText(Output& out, const FindOptions& options, const FindResult& result);
// The paths of each group, an empty line between groups; no group of one. A list without groups gives its paths.
void PrintGroups(Output& out, const ResultLists& lists, ResultList kind, LineEnd lineEnd, Names names);
// All lists, one row a line.
void PrintJson(Output& out, const FindResult& result);
void PrintCsv(Output& out, const FindResult& result);

}  // namespace tresmor
