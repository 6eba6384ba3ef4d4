#include "cli/find_command.h"

#include "cli/console_search.h"

namespace tresmor {
namespace {

constexpr LeftOutWords kWordsOfOptions = {
    .protectedFolder = "it lies in one of the system's own folders; --no-protect searches them.",
    .excluded = "it lies in a folder given to --exclude."};

}  // namespace

int FindCommand(const FindOptions& options, const ConsolePorts& ports) {
  ConsoleSearch search(options, ports);
  FrmMain& frm = search.Form();
  for (int i = 0; i < kSrchTypes; ++i) frm.lstSrchType.SetTicked(i, options.types[static_cast<std::size_t>(i)]);
  frm.chkTolerant.Value = options.tolerant;
  frm.chkHidden.Value = options.hidden;
  frm.chkProtectWinDir.Value = !options.noProtect;
  AddScopeRows(frm, options, {ports.files, ports.shell, ports.workingFolder});
  return search.Run(kWordsOfOptions);
}

}  // namespace tresmor
