// Folders that a clean-up after a transfer takes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/shell.h"

namespace tresmor {

// The folder of a file, without the separator at its end; empty where that is the root.
std::string FolderOfRow(const std::string& path, PathStyle style);

// Whether a clean-up may take the folder of this path, if it is empty: it isn't one that must stay, above all as it
// holds `destPath`, and the path ends in its own name. In place of a folder that a link leads to the link would go, so
// both are left alone. Blocks. Any thread.
bool MayBeCleanedUp(const std::string& folder, const FileSystem& files, const Shell& shell,
                    const std::string& destPath);

// A folder by its device and inode, so that it is no matter by which path one comes to it.
using FolderKey = std::pair<std::uint64_t, std::uint64_t>;
// Folders, each with the path that it goes by.
using EmptiedFolders = std::map<FolderKey, std::string>;

// The folders of these files in which nothing else stands but sub-folders, so that they will be found empty, and go
// with their sub-folders, once the files have gone; without those that may not be cleaned up. One too many where names
// differ in case alone. Blocks. Any thread.
EmptiedFolders FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                              const std::string& destPath);

}  // namespace tresmor
