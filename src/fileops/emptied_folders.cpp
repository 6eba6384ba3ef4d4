#include "fileops/emptied_folders.h"

#include <algorithm>
#include <set>
#include <string_view>

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

bool MayBeCleanedUp(const std::string& folder, const FileSystem& files, const Shell& shell,
                    const std::string& destPath) {
  const std::string_view name = GetFileNameOf(folder, files.Style());
  FileStat stat;
  return name != "." && name != ".." && files.Stat(folder, stat) == Errors::None && stat.kind == EntryKind::Folder &&
         !shell.MustStay(folder, destPath);
}

EmptiedFolders FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                              const std::string& destPath) {
  const PathStyle style = files.Style();
  std::map<FolderKey, Leaving> folders;
  for (const std::string& path : paths) {
    FileStat stat;
    // The folder may be a link to one, which only a name below it sees through.
    if (files.Stat(std::string(GetFolderOf(path, style)) + ".", stat) != Errors::None) continue;
    Leaving& leaving = folders[{stat.identity.device, stat.identity.inode}];
    leaving.paths.insert(FolderOfRow(path, style));
    leaving.names.insert(FoldCase(GetFileNameOf(path, style)));
  }
  EmptiedFolders emptied;
  for (const auto& [key, leaving] : folders) {
    if (!HoldsNothingElse(leaving, files)) continue;
    const auto path = std::find_if(leaving.paths.begin(), leaving.paths.end(), [&](const std::string& folder) {
      return MayBeCleanedUp(folder, files, shell, destPath);
    });
    if (path != leaving.paths.end()) emptied.emplace(key, *path);
  }
  return emptied;
}

}  // namespace tresmor
