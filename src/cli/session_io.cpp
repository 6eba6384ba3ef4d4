#include "cli/session_io.h"

#include <limits>

#include "base/failure.h"
#include "base/like.h"
#include "cli/typed_path.h"
#include "desk/report_failure.h"
#include "persist/session_file.h"
#include "results/rows.h"
#include "shell/session_commands.h"

namespace tresmor {
namespace {

void CheckRowsOf(const ListView& lst, ResultList kind) {
  static const Like kDate("####/##/## ##:##:##");
  const bool hasNumbers = HasGroups(kind) && kind != ResultList::SameName;
  std::int64_t room = std::numeric_limits<std::int64_t>::max();
  std::string scratch;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    const auto size = lst.CellNumber(row, kSizeItem);
    const bool isWhole = size && *size >= 0 && (!hasNumbers || lst.CellNumber(row, kDupGrpItem)) &&
                         kDate.Matches(lst.CellView(row, kDateItem, scratch));
    if (!isWhole) throw Failure(Errors::TypeMismatch);
    if (*size > room) throw Failure(Errors::Overflow);
    room -= *size;
  }
}

// The window shows whatever stands in a row; what is printed here is counted and cut up.
bool CheckRows(const ResultLists& lists, Dialogs& dialogs) {
  return DoOrReport(dialogs, kLoadingFailed, [&] {
    for (int i = 0; i < kResultLists; ++i) {
      const auto kind = static_cast<ResultList>(i);
      CheckRowsOf(lists.List(kind), kind);
    }
    return true;
  });
}

}  // namespace

bool LoadSession(FrmMain& frm, Progress& progress, const std::string& typed, const ConsolePorts& ports) {
  SessionCommands commands(frm, progress, {ports.files, ports.writer, ports.events, ports.err});
  const bool loaded = commands.LoadSession(TypedPath(typed, ports.workingFolder));
  ports.err.ClearProgress();
  return loaded;
}

bool SaveSession(FrmMain& frm, const std::string& typed, const ConsolePorts& ports) {
  const std::string path = TypedPath(typed, ports.workingFolder);
  try {
    return SaveSession(path, ControlsOf(frm), {ports.writer, ports.events, ports.err});
  } catch (const Failure& failure) {
    ports.err.Say("'" + typed + "' can't be saved: " + failure.Description() + ".");
    return false;
  }
}

bool SavedResult::Load(const std::string& typed, const ConsolePorts& ports) {
  if (!LoadSession(frm, progress, typed, ports) || !CheckRows(frm.results, ports.err)) return false;
  if (frm.session.SaveSrchResult) return true;
  ports.err.Say("'" + typed + "' was saved without a result. 'tresmor-cli run' searches what it tells.");
  return false;
}

}  // namespace tresmor
