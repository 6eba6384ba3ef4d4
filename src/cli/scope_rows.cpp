#include "cli/scope_rows.h"

#include "base/path.h"
#include "cli/typed_path.h"
#include "search/file_helpers.h"
#include "search/protect_dir.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

// `folder` is what `typed` means, with the separator at its end.
void CheckFolder(const std::string& folder, const std::string& typed, const ScopePorts& ports) {
  FileStat stat;
  // The folder may be a link to one, which only a name below it sees through.
  const Errors failure = ports.files.Stat(folder + ".", stat);
  if (failure == Errors::None) return;
  if (failure == Errors::PermissionDenied) throw WrongUse("Path '" + typed + "' may not be entered.");
  const std::string_view name = std::string_view(folder).substr(0, folder.size() - 1);
  throw WrongUse("Path '" + typed +
                 (ExistsPath(ports.files, std::string(name)) ? "' is no folder." : "' does not exist."));
}

}  // namespace

// As text alone: "." and doubled separators say nothing and go, but ".." stays, since what it means hangs on links.
std::string AbsoluteFolder(const std::string& typed, const ScopePorts& ports) {
  const PathStyle style = ports.files.Style();
  const std::string whole = TypedPath(typed, ports.workingFolder);
  std::string folder = style.Tail();
  for (std::size_t begin = 0; begin < whole.size();) {
    const std::size_t end = std::min(whole.find(style.separator, begin), whole.size());
    const std::string_view part = std::string_view(whole).substr(begin, end - begin);
    if (!part.empty() && part != ".") folder.append(part).append(style.Tail());
    begin = end + 1;
  }
  return folder;
}

std::string ExistingFolder(const std::string& typed, const ScopePorts& ports) {
  if (typed.empty()) throw WrongUse("Path '' does not exist.");
  std::string folder = AbsoluteFolder(typed, ports);
  CheckFolder(folder, typed, ports);
  return folder;
}

void AddScopeRows(FrmMain& frm, const FindOptions& options, const ScopePorts& ports) {
  ScopeRow row;
  row.SubFolder = options.noSubfolders ? "No" : "Yes";
  row.MinSize = options.minKb;
  row.MaxSize = options.maxKb;
  if (options.since) row.Date = FormatDate(*options.since);
  const auto add = [&](const std::vector<std::string>& folders, const char* searchTarget) {
    row.SearchTarget = searchTarget;
    for (const std::string& typed : folders) {
      row.Text = ExistingFolder(typed, ports) + options.pattern;
      AddIncludedRow(frm.lstPath, row);
    }
  };
  add(options.paths, "Yes");
  add(options.areas, "No");
  for (const std::string& typed : options.excludes) AddExcludedRow(frm.lstPath, ExistingFolder(typed, ports));
}

void CheckScopeRows(const FrmMain& frm, const ScopePorts& ports) {
  const ListView& lstPath = frm.lstPath;
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    if (lstPath.SmallIcon(row) == ScopeRow::kExcluded) continue;
    const std::string text = lstPath.Cell(row, kScopeTextItem);
    const std::string folder(GetFolderOf(text, ports.files.Style()));
    if (folder.empty()) throw WrongUse("Path '" + text + "' does not exist.");
    CheckFolder(folder, folder, ports);
  }
}

void CheckFolderOfFile(const std::string& typed, const ScopePorts& ports) {
  const std::string folder(GetFolderOf(typed, ports.files.Style()));
  ExistingFolder(folder.empty() ? "." : folder, ports);
}

std::vector<std::string> RowsLeftOut(const FrmMain& frm, const ScopePorts& ports, const LeftOutWords& words) {
  const PathStyle style = ports.files.Style();
  ProtectDir system(style);
  if (frm.chkProtectWinDir.Ticked()) {
    for (const std::string& folder : {ports.shell.GetWinDir(), ports.shell.GetProgramFilesDir()}) {
      if (!folder.empty()) system.Add(AddTail(folder, style.Tail()));
    }
  }
  ProtectDir excluded(style);
  const ListView& lstPath = frm.lstPath;
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    if (lstPath.SmallIcon(row) == ScopeRow::kExcluded) excluded.Add(lstPath.Cell(row, kScopeTextItem));
  }
  std::vector<std::string> sentences;
  for (std::int32_t row = 1; row <= lstPath.Count(); ++row) {
    if (lstPath.SmallIcon(row) == ScopeRow::kExcluded) continue;
    const std::string text = lstPath.Cell(row, kScopeTextItem);
    const std::string start = "'" + std::string(GetFolderOf(text, style)) + "' is not searched: ";
    if (system.HoldsStartOf(text))
      sentences.push_back(start + words.protectedFolder);
    else if (excluded.HoldsStartOf(text))
      sentences.push_back(start + words.excluded);
  }
  return sentences;
}

}  // namespace tresmor
