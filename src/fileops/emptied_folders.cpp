#include "fileops/emptied_folders.h"

#include <algorithm>

#include "base/text.h"

namespace tresmor {
namespace {

// One folder.
struct Leaving {
  std::set<std::string> paths;  // that led to it
  std::set<std::string> names;  // of files that go, without regard to case
};

bool HoldsNothingElse(const Leaving& leaving, const FileSystem& files) {
  FolderListing listing;
  if (files.List(*leaving.paths.begin(), listing) != Errors::None || listing.forbidden) return false;
  return std::all_of(listing.entries.begin(), listing.entries.end(), [&](const FolderListing::Entry& entry) {
    return entry.kind == EntryKind::Folder || leaving.names.contains(FoldCase(listing.Name(entry)));
  });
}

}  // namespace

std::string FolderOfRow(const std::string& path, PathStyle style) {
  std::string folder(GetFolderOf(path, style));
  if (!folder.empty()) folder.pop_back();
  return folder;
}

std::string MapDestPath(std::string_view destPath, std::string_view sFull, PathStyle style) {
  const std::size_t n = sFull.find(style.separator) + 1;  // 0 without one
  return AddTail(destPath, style.Tail()) + std::string(sFull.substr(n));
}

void CleanUpRules::KeepPlaceOf(const std::string& path) {
  if (!broughtTo_.bDirStruct) return;
  const PathStyle style = files_.Style();
  std::string folder = FolderOfRow(MapDestPath(broughtTo_.destPath, path, style), style);
  if (!places_.insert(folder).second) return;
  FileStat stat;
  while (!folder.empty() && files_.Stat(JoinPath(folder, ".", style), stat) != Errors::None) {
    folder = FolderOfRow(folder, style);
  }
  above_.Any(AddTail(folder, style.Tail()), [this](const FolderKey& key) { return !holding_.insert(key).second; });
}

bool CleanUpRules::MayTake(const std::string& folder) const {
  const std::string_view name = GetFileNameOf(folder, files_.Style());
  FileStat stat;
  return name != "." && name != ".." && !LiesInTrash(files_, AddTail(folder, files_.Style().Tail())) &&
         files_.Stat(folder, stat) == Errors::None && stat.kind == EntryKind::Folder &&
         !holding_.contains(KeyOf(stat.identity)) && !shell_.MustStay(folder, broughtTo_.destPath);
}

EmptiedFolders FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                              const BroughtTo& broughtTo) {
  const PathStyle style = files.Style();
  CleanUpRules rules(files, shell, broughtTo);
  std::map<FolderKey, Leaving> folders;
  for (const std::string& path : paths) {
    rules.KeepPlaceOf(path);
    FileStat stat;
    // The folder may be a link to one, which only a name below it sees through.
    if (files.Stat(std::string(GetFolderOf(path, style)) + ".", stat) != Errors::None) continue;
    Leaving& leaving = folders[KeyOf(stat.identity)];
    leaving.paths.insert(FolderOfRow(path, style));
    leaving.names.insert(FoldCase(GetFileNameOf(path, style)));
  }
  EmptiedFolders emptied;
  for (const auto& [key, leaving] : folders) {
    if (!HoldsNothingElse(leaving, files)) continue;
    const auto path = std::find_if(leaving.paths.begin(), leaving.paths.end(),
                                   [&](const std::string& folder) { return rules.MayTake(folder); });
    if (path != leaving.paths.end()) emptied.emplace(key, *path);
  }
  return emptied;
}

}  // namespace tresmor
