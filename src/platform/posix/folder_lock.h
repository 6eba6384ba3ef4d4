#pragma once

#include <utility>

#include "platform/file_writer.h"
#include "platform/posix/short_path.h"

namespace tresmor {

// A lock already taken on an open folder. The kernel gives it back when the descriptor is closed, at the end of the
// program too.
class FolderLock final : public FileLock {
 public:
  explicit FolderLock(Descriptor folder) : folder_(std::move(folder)) {}

 private:
  const Descriptor folder_;
};

}  // namespace tresmor
