// The formats of the console program's findings. All throw WriteFailure; none flushes but Print.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/options.h"
#include "cli/output.h"
#include "results/result_lists.h"

namespace tresmor {

// The end of a search as its formats tell it.
struct SearchEnd {
  std::int64_t searched = 0;  // the program's own figure
  double seconds = 0;         // that it took
  bool cancelled = false;
  std::string message;  // the last words of the message panel
};

struct FindResult {
  const ResultLists& lists;
  std::optional<SearchEnd> end;  // nothing of a result that was saved
};

enum class LineEnd : char { NewLine = '\n', Nul = '\0' };
enum class Names { AsTheyAre, MadeVisible };

// In the format asked for; also flushes.
void Print(Output& out, const PrintOptions& options, const FindResult& result, Names names);

// For people: all lists asked for, and read errors if there are any. Marked rows have a "*" in front.
void PrintText(Output& out, const PrintOptions& options, const FindResult& result);
// The paths of each group, an empty line between groups; no group of one. A list without groups gives its paths.
void PrintGroups(Output& out, const ResultLists& lists, ResultList kind, LineEnd lineEnd, Names names);
// All lists, one row a line.
void PrintJson(Output& out, const FindResult& result);
void PrintCsv(Output& out, const PrintOptions& options, const FindResult& result);

}  // namespace tresmor
