#include "fileops/transfer_marked.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "results/marks.h"
#include "search/file_helpers.h"

namespace tresmor {
namespace {

constexpr std::size_t kBatchFiles = 2000;

std::uint16_t FlagsOf(const FileOper& oper) {
  unsigned flags = FOF_RENAMEONCOLLISION;
  if (oper.bUndo) flags |= FOF_ALLOWUNDO;
  if (oper.bMultiDest) flags |= FOF_MULTIDESTFILES;
  if (oper.bYesToAll) flags |= FOF_NOCONFIRMATION;
  return static_cast<std::uint16_t>(flags);
}

const char* TitleOf(std::uint32_t wFunc) {
  switch (wFunc) {
    case FO_MOVE:
      return "Moving files";
    case FO_COPY:
      return "Copying files";
  }
  return "Deleting files";
}

// A NUL ends each path of a list, so one with a NUL in it would be two, neither of which was meant. No file has such a
// path, but a row may. It is listed under a text that shows it and is no full path, so that it fails like any other.
std::string Listed(std::string_view path) {
  if (!HasNul(path)) return std::string(path);
  return "(NUL in its path) " + ReplaceAll(path, std::string_view("\0", 1), "\\0");
}

void AddPath(std::string& list, std::string_view path) {
  list += path;
  list += '\0';
}

}  // namespace

std::int32_t Transfer::Tell(const OperationResult& result) const {
  const auto code = static_cast<std::int32_t>(result.code);
  if (code != 0) {
    const std::string words = "File operations failed. Error Code: " + std::to_string(code) + "\r\n\r\n";
    ports_.dialogs.MessageBox(BoxText(words).Name(result.description), BoxIcon::None, "", BoxButtons::Ok);
  }
  return code;
}

std::int32_t Transfer::ShFileOper(const FileOper& oper) {
  const ShFileOpStruct operation{.wFunc = oper.wFunc,
                                 .pFrom = oper.pFrom,
                                 .pTo = oper.pTo,
                                 .fFlags = FlagsOf(oper),
                                 .destination = oper.destination};
  OperationResult result;
  job_.Run(TitleOf(oper.wFunc),
           [&](OperationWatch& watch) { result = ports_.operations.ShFileOperation(operation, watch); });
  return Tell(result);
}

std::int32_t Transfer::TransferMarked(const ListView& lst, const TransferOptions& options) {
  ClrPreview(preview_);
  const std::vector<std::string> paths = MarkedPaths(lst);
  const bool toOneFolder = !options.bDirStruct && options.wFunc != FO_DELETE;
  std::unordered_set<std::string> known;  // that some operation has or had in its list
  std::int32_t rc = 0;
  for (std::size_t first = 0; first < paths.size(); first += kBatchFiles) {
    FileOper oper{.wFunc = options.wFunc,
                  .bUndo = options.bUndo,
                  .bMultiDest = options.bDirStruct,
                  .bYesToAll = options.bYesToAll,
                  .destination = options.destPath};
    if (toOneFolder) oper.pTo = options.destPath;
    const std::size_t end = std::min(first + kBatchFiles, paths.size());
    for (std::size_t i = first; i < end; ++i) {
      if (!known.insert(paths[i]).second) continue;
      const std::string path = Listed(paths[i]);
      AddPath(oper.pFrom, path);
      if (options.bDirStruct) AddPath(oper.pTo, MapDestPath(options.destPath, path, ports_.files.Style()));
    }
    if (oper.pFrom.empty()) continue;
    oper.pFrom += '\0';
    if (options.bDirStruct) oper.pTo += '\0';
    rc = ShFileOper(oper);
  }
  return rc;
}

std::string Transfer::EmptyFoldersOf(const std::vector<std::string>& paths, const BroughtTo& broughtTo,
                                     OperationWatch& watch) const {
  CleanUpRules rules(ports_.files, ports_.shell, broughtTo);
  for (const std::string& path : paths) {
    if (watch.Cancelled()) return "";
    rules.KeepPlaceOf(path);
  }
  OperationProgress progress;
  progress.allFiles = static_cast<std::int64_t>(paths.size());
  std::unordered_map<std::string, bool> removable;  // by folder, each of which is looked at once
  std::string list;
  for (const std::string& path : paths) {
    progress.path = FolderOfRow(path, ports_.files.Style());
    if (watch.Cancelled()) return "";
    watch.Progress(progress);
    const auto [known, isNew] = removable.try_emplace(progress.path);
    if (isNew) known->second = IsEmptyDir(ports_.files, progress.path) && rules.MayTake(progress.path);
    if (known->second) AddPath(list, Listed(progress.path));
    ++progress.files;
  }
  return list;
}

void Transfer::RmEmptyDirs(const ListView& lst, const BroughtTo& broughtTo, bool bYesToAll) {
  const std::vector<std::string> paths = MarkedPaths(lst);
  FileOper oper{.wFunc = FO_DELETE, .bUndo = true, .bYesToAll = bYesToAll};
  OperationResult looked;
  job_.Run("Looking for empty folders", [&](OperationWatch& watch) {
    oper.pFrom = EmptyFoldersOf(paths, broughtTo, watch);
    if (watch.Cancelled()) looked = {OperationCode::Cancelled, "Cancelled: no empty folder was moved to the trash."};
  });
  if (Tell(looked) != 0 || oper.pFrom.empty()) return;
  oper.pFrom += '\0';
  ShFileOper(oper);
}

}  // namespace tresmor
