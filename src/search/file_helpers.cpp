#include "search/file_helpers.h"

#include <algorithm>

namespace tresmor {

namespace {

DateStamp DateOf(Errors failure, const FileStat& stat) {
  if (failure != Errors::None || stat.kind != EntryKind::File || stat.hidden) return kZeroDate;
  return UtcStamp(stat.modified);
}

}  // namespace

Errors StatEntry(const FileSystem& files, const Folder* folder, Errors failure, const std::string& path,
                 std::string_view name, FileStat& stat) {
  if (folder != nullptr) return folder->Stat(name, stat);
  if (failure != Errors::TooManyFiles) return failure;
  return files.Stat(path + std::string(name), stat);
}

DateStamp GetFileDate(const FileSystem& files, const std::string& path) {
  FileStat stat;
  const Errors failure = files.Stat(path, stat);
  return DateOf(failure, stat);
}

DateStamp GetFileDate(const Folder& folder, std::string_view name) {
  FileStat stat;
  const Errors failure = folder.Stat(name, stat);
  return DateOf(failure, stat);
}

bool ExistsFile(const FileSystem& files, const std::string& path) {
  if (path.empty()) return false;
  FileStat stat;
  const Errors failure = files.Stat(path, stat);
  if (failure == Errors::None) return stat.kind != EntryKind::Folder;
  return failure != Errors::FileNotFound && failure != Errors::PathAccess;
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

std::optional<BoxText> LengthFailureText(Errors failure, const std::string& path) {
  if (failure == Errors::None || failure == Errors::FileNotFound || failure == Errors::BadFileName) return {};
  return BoxText("Error " + std::to_string(static_cast<int>(failure)) + ": " + Describe(failure) + "\nFile: '")
      .Name(path)
      .Words("'\nTresmor will try to ignore this.");
}

}  // namespace tresmor
