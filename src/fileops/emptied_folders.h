// Folders that a clean-up after a transfer takes.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/shell.h"

namespace tresmor {

// The folder of a file, without the separator at its end; empty where that is the root.
std::string FolderOfRow(const std::string& path, PathStyle style);

// Folders by their device and inode, so that it is no matter by which path one comes to them.
using FolderSet = std::set<std::pair<std::uint64_t, std::uint64_t>>;

// The folders of these files in which nothing else stands but sub-folders, so that they will be found empty, and go
// with their sub-folders, once the files have gone; without those that must stay, above all where they hold `destPath`.
// One too many where names differ in case alone. Blocks. Any thread.
FolderSet FoldersToEmpty(const std::vector<std::string>& paths, const FileSystem& files, const Shell& shell,
                         const std::string& destPath);

}  // namespace tresmor
