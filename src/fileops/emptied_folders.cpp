#include "fileops/emptied_folders.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "base/text.h"

namespace tresmor {
namespace {

// One folder, whatever the spellings of its path.
struct Leaving {
  std::string folder;
  std::set<std::string> names;  // of files that go, without regard to case
};

bool HoldsNothingElse(const Leaving& leaving, const FileSystem& files) {
  FolderListing listing;
  if (files.List(leaving.folder, listing) != Errors::None || listing.forbidden) return false;
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

FolderSet FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                         const std::string& destPath) {
  const PathStyle style = files.Style();
  std::map<FolderSet::value_type, Leaving> folders;
  for (const std::string& path : paths) {
    FileStat stat;
    // The folder may be a link to one, which only a name below it sees through.
    if (files.Stat(std::string(GetFolderOf(path, style)) + ".", stat) != Errors::None) continue;
    Leaving& leaving = folders[{stat.identity.device, stat.identity.inode}];
    leaving.folder = FolderOfRow(path, style);
    leaving.names.insert(FoldCase(GetFileNameOf(path, style)));
  }
  FolderSet emptied;
  for (const auto& [identity, leaving] : folders) {
    if (leaving.folder.empty() || !HoldsNothingElse(leaving, files)) continue;
    if (!shell.MustStay(leaving.folder, destPath)) emptied.insert(identity);
  }
  return emptied;
}

}  // namespace tresmor
