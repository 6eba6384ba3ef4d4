#include "search/file_helpers.h"

#include <algorithm>

namespace tresmor {

DateStamp GetFileDate(const FileSystem& files, const std::string& path) {
  FileStat stat;
  if (files.Stat(path, stat) != Errors::None || stat.kind != EntryKind::File || stat.hidden) return kZeroDate;
  return UtcStamp(stat.modified);
}

bool ExistsFile(const FileSystem& files, const std::string& path) {
  FileStat stat;
  return !path.empty() && files.Stat(path, stat) == Errors::None && stat.kind != EntryKind::Folder;
}

bool ExistsPath(const FileSystem& files, const std::string& path) {
  FileStat stat;
  return !path.empty() && files.Stat(path, stat) == Errors::None;
}

bool IsEmptyDir(const FileSystem& files, const std::string& folder) {
  FolderListing listing;
  // What can't be listed may hold anything, and an empty folder is about to be removed.
  if (files.List(folder, listing) != Errors::None || listing.forbidden) return false;
  return std::all_of(listing.entries.begin(), listing.entries.end(),
                     [](const FolderListing::Entry& entry) { return entry.kind == EntryKind::Folder; });
}

std::string LengthFailureText(Errors failure, const std::string& path) {
  if (failure == Errors::None || failure == Errors::FileNotFound || failure == Errors::BadFileName) return {};
  return "Error " + std::to_string(static_cast<int>(failure)) + ": " + Describe(failure) + "\nFile: '" + path +
         "'\nTresmor will try to ignore this.";
}

}  // namespace tresmor
