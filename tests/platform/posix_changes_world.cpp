#include <stdlib.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "platform/file_changes_contract.h"
#include "platform/posix/posix_file_changes.h"

namespace tresmor {

namespace {

class PosixChangesWorld final : public FileChangesWorld {
 public:
  ~PosixChangesWorld() override {
    std::error_code failure;
    if (!other_.empty() && std::filesystem::remove_all(other_, failure) == 0) std::perror(other_.c_str());
  }

  FileWorld& Place() override { return *place_; }
  FileChanges& Changes() override { return changes_; }
  // The memory that programs share, as a rule.
  std::string OtherDisk() override {
    struct stat here {};
    struct stat there {};
    const bool other =
        stat(place_->Root().c_str(), &here) == 0 && stat("/dev/shm", &there) == 0 && here.st_dev != there.st_dev;
    std::string pattern = "/dev/shm/tresmor_XXXXXX";
    if (other_.empty() && other && mkdtemp(pattern.data()) != nullptr) other_ = pattern + "/";
    return other_;
  }

 private:
  const std::unique_ptr<FileWorld> place_ = MakePosixWorld();
  PosixFileChanges changes_;
  std::string other_;
};

}  // namespace

std::unique_ptr<FileChangesWorld> MakePosixChangesWorld() { return std::make_unique<PosixChangesWorld>(); }

}  // namespace tresmor
