// Folders that a clean-up after a transfer takes.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/path.h"
#include "fileops/folders_above.h"
#include "platform/file_system.h"
#include "platform/shell.h"

namespace tresmor {

// The folder of a file, without the separator at its end; empty where that is the root.
std::string FolderOfRow(const std::string& path, PathStyle style);

// Where a file goes when its folders are kept: all behind the first separator of its path, which is behind a drive's
// name or leads the path, put below `destPath`. A path with two separators in front keeps the second.
std::string MapDestPath(std::string_view destPath, std::string_view sFull, PathStyle style);

// Where a transfer brings files; nowhere if `destPath` is empty.
struct BroughtTo {
  std::string destPath{};
  bool bDirStruct = false;  // with their folders below it
};

// What a clean-up after a transfer may take. Blocks. One thread at a time.
class CleanUpRules {
 public:
  CleanUpRules(const FileSystem& files, const Shell& shell, BroughtTo broughtTo)
      : files_(files), shell_(shell), broughtTo_(std::move(broughtTo)), above_(files) {}

  // The folders that hold the place of this file, there or yet to be made, must stay.
  void KeepPlaceOf(const std::string& path);
  // Whether the folder of this path may go, if it is empty: it isn't one that must stay, above all as it holds the
  // destination or a place below it that was kept, and the path ends in its own name. In place of a folder that a link
  // leads to the link would go, so both are left alone. So are the trash and all folders in it, which can't go there
  // once more.
  bool MayTake(const std::string& folder) const;

 private:
  const FileSystem& files_;
  const Shell& shell_;
  const BroughtTo broughtTo_;
  FoldersAbove above_;
  std::set<std::string> places_;  // folders that files are brought into
  std::set<FolderKey> holding_;   // these, as far as they are there, and all above them
};

// Folders, each with the path that it goes by.
using EmptiedFolders = std::map<FolderKey, std::string>;

// The folders of these files in which nothing else stands but sub-folders, so that they will be found empty, and go
// with their sub-folders, once the files have gone; without those that may not be cleaned up. One too many where names
// differ in case alone. Blocks. Any thread.
EmptiedFolders FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                              const BroughtTo& broughtTo);

}  // namespace tresmor
