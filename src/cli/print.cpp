#include "cli/formats.h"

namespace tresmor {

void Print(Output& out, const PrintOptions& options, const FindResult& result, Names names) {
  switch (options.format) {
    case OutputFormat::Text:
      PrintText(out, options, result);
      break;
    case OutputFormat::Groups:
      PrintGroups(out, result.lists, options.ListOfGroups(), LineEnd::NewLine, names);
      break;
    case OutputFormat::Groups0:
      PrintGroups(out, result.lists, options.ListOfGroups(), LineEnd::Nul, Names::AsTheyAre);
      break;
    case OutputFormat::Json:
      PrintJson(out, result);
      break;
    case OutputFormat::Csv:
      PrintCsv(out, options, result);
      break;
  }
  out.Flush();
}

}  // namespace tresmor
