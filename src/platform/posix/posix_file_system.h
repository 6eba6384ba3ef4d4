// Files of this machine.
#pragma once

#include "platform/file_system.h"
#include "platform/posix/short_path.h"

namespace tresmor {

class PosixFileSystem final : public FileSystem {
 public:
  // Raises the process's limit of open files as far as it may, and makes the kernel grow the table of descriptors now.
  // To be made before other threads start: a table that grows while threads share it makes each open of theirs wait.
  PosixFileSystem();

  PathStyle Style() const override { return PathStyle::Posix(); }
  Errors List(const std::string& folder, FolderListing& listing) const override;
  Errors Stat(const std::string& path, FileStat& stat) const override;
  std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const override;
  std::unique_ptr<Folder> OpenFolder(const std::string& folder, Errors& failure) const override;
  std::string Resolved(const std::string& path) const override { return ResolveLinks(path); }
  std::size_t OpenLimit() const override { return openLimit_; }
  CacheState Cached(const std::string& path) const override;
  void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const override;
  // By the name of the folder itself: folders inside a trash folder are none, so that a walk can start there.
  bool IsTrash(std::string_view folder) const override;

 private:
  std::size_t openLimit_ = 0;
  std::string trashHome_;  // of this user; empty without a home
};

}  // namespace tresmor
