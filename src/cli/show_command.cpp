#include "cli/show_command.h"

#include <algorithm>

#include "cli/formats.h"
#include "cli/session_io.h"
#include "results/counters.h"
#include "results/rows.h"

namespace tresmor {

int ShowCommand(const ShowOptions& options, const ConsolePorts& ports) {
  ports.nothingToCancel();
  SavedResult saved(ports);
  if (!saved.Load(options.session, ports)) return kFailed;
  ResultLists& results = saved.frm.results;
  for (int i = 0; i < kSrchTypes; ++i) {
    if (!options.Wants(static_cast<SrchType>(i))) results.List(static_cast<ResultList>(i)).Clear();
  }
  UpdateCount(results, kAllLists);
  PrintOptions print = options;
  print.versions = std::any_of(results.lstResult.begin(), results.lstResult.end(),
                               [](const ListView& lst) { return lst.Tag() == kVersionTag; });
  Output out(ports.out);
  Print(out, print, {results, std::nullopt}, ports.outIsTerminal ? Names::MadeVisible : Names::AsTheyAre);
  return kRanThrough;
}

}  // namespace tresmor
