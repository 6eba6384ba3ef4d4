#include "platform/memory_world.h"

#include "platform/file_changes_contract.h"
#include "support/memory_file_changes.h"

namespace tresmor {

namespace {

class MemoryChangesWorld final : public FileChangesWorld {
 public:
  explicit MemoryChangesWorld(PathStyle style) : place_(style), otherDisk_(style.separator == '/' ? "/usb" : "D:") {
    place_.MakeFolder(otherDisk_);
    changes_.SetDrive(otherDisk_);
  }

  FileWorld& Place() override { return place_; }
  FileChanges& Changes() override { return changes_; }
  std::string OtherDisk() override { return otherDisk_ + place_.Files().Style().separator; }

 private:
  MemoryWorld place_;
  MemoryFileChanges changes_{place_.Memory()};
  const std::string otherDisk_;
};

}  // namespace

std::unique_ptr<FileWorld> MakeMemoryWorld(PathStyle style) { return std::make_unique<MemoryWorld>(style); }

std::unique_ptr<FileChangesWorld> MakeMemoryChangesWorld(PathStyle style) {
  return std::make_unique<MemoryChangesWorld>(style);
}

}  // namespace tresmor
