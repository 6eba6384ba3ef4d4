// A copy on this machine.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_changes.h"
#include "platform/posix/short_path.h"

namespace tresmor {

class PosixFileCopy final : public FileCopy {
 public:
  // `opened` is what the source was when it was opened by the path `from`; the target is to be read, too.
  PosixFileCopy(std::string from, Descriptor source, const struct stat& opened, Descriptor target);

  Step CopyNext(std::int64_t most) override;
  Errors TakeAttributes() override;
  Errors Flush() override;
  Step CompareNext(std::int64_t most) override;
  bool SourceUnchanged() const override;
  bool StandsAt(const std::string& path) const override;

 private:
  // From a place in a file on: a hole, or bytes to be read.
  struct Extent {
    std::int64_t end = 0;
    bool hole = false;
  };
  // How far a walk through the source has come.
  struct Walk {
    std::int64_t at = 0;
    Extent extent;
  };

  static Extent ExtentAt(int file, std::int64_t at);
  std::int64_t Ahead(Walk& walk, std::int64_t most) const;
  Step CopyBytes(std::int64_t length);
  Step ReadAndWrite(std::int64_t length);
  Step CompareBytes(std::int64_t length);

  const std::string from_;
  const Descriptor source_;
  const struct stat opened_;
  const Descriptor target_;
  Walk copied_;
  Walk compared_;
  bool kernelCopies_ = true;  // until it couldn't
  std::vector<char> buffer_;
  std::vector<char> otherBuffer_;
};

}  // namespace tresmor
