// The way from a folder up to the root, as the disk has it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "platform/file_system.h"

namespace tresmor {

// A folder by its device and inode, so that it is no matter by which path one comes to it.
using FolderKey = std::pair<std::uint64_t, std::uint64_t>;

inline FolderKey KeyOf(const FileIdentity& identity) { return {identity.device, identity.inode}; }

// Looks at each folder once and remembers it. Folders are named with a separator at their end. Blocks. One thread at a
// time.
class FoldersAbove {
 public:
  explicit FoldersAbove(const FileSystem& files) : files_(files) {}

  // All 0 where there is none.
  const FileIdentity& IdentityOf(const std::string& folder);
  // Asks of the folder, then of the one above it and so on until the answer is yes. That is another way than the
  // path's where links stand on that.
  bool Any(std::string folder, const std::function<bool(const FolderKey&)>& is);

 private:
  const FileSystem& files_;
  std::map<std::string, FileIdentity> known_;
};

}  // namespace tresmor
