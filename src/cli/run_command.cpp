#include "cli/run_command.h"

#include "cli/console_search.h"
#include "cli/session_io.h"
#include "shell/search_checks.h"

namespace tresmor {
namespace {

constexpr LeftOutWords kWordsOfSession = {
    .protectedFolder = "it lies in one of the system's own folders, which the session keeps out of.",
    .excluded = "it lies in a folder that the session keeps out of."};

// A format of mere paths prints one type.
void TakeTypes(const CheckList& lstSrchType, RunOptions& options) {
  bool taken = false;
  const auto take = [&](SrchType type) {
    if (taken || !lstSrchType.Ticked(static_cast<std::int32_t>(type))) return;
    options.types[static_cast<std::size_t>(type)] = true;
    taken = options.PrintsGroups();
  };
  take(SrchType::Duplicates);
  for (int i = 0; i < kSrchTypes; ++i) take(static_cast<SrchType>(i));
}

}  // namespace

int RunCommand(const RunOptions& options, const ConsolePorts& ports) {
  RunOptions settled = options;
  ConsoleSearch search(settled, ports);
  FrmMain& frm = search.Form();
  if (!LoadSession(frm, search.ProgressOf(), options.session, ports)) return kFailed;
  // Whether there will be versions is not the old result's to say.
  for (ListView& lst : frm.results.lstResult) lst.Tag = std::string();
  TakeTypes(frm.lstSrchType, settled);
  if (const auto missing = FailedSearchCheck(frm)) {
    ports.err.MessageBox(missing->text, BoxIcon::Exclamation, missing->title, BoxButtons::Ok);
    return kWrongUse;
  }
  CheckScopeRows(frm, {ports.files, ports.shell, ports.workingFolder});
  return search.Run(kWordsOfSession);
}

}  // namespace tresmor
