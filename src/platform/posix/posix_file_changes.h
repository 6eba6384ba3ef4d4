// Changes of files on this machine.
#pragma once

#include "platform/file_changes.h"

namespace tresmor {

class PosixFileChanges final : public FileChanges {
 public:
  Errors MakeFolder(const std::string& folder) override;
  Errors Create(const std::string& path, std::string_view bytes) override;
  Errors Append(const std::string& path, std::string_view bytes) override;
  std::unique_ptr<FileCopy> BeginCopy(const std::string& from, const std::string& to, Errors& failure,
                                      bool& atSource) override;
  Errors RemoveAbandoned(const std::string& path) override;
  Errors Rename(const std::string& from, const std::string& to) override;
  Errors Replace(const std::string& from, const std::string& to) override;
  Errors Remove(const std::string& path) override;
  Errors FlushFolder(const std::string& folder) override;
  std::unique_ptr<FileLock> Lock(const std::string& folder, Sharing sharing, Errors& failure) override;
};

}  // namespace tresmor
