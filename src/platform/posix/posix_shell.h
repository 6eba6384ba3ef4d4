// The folders that stand for the system's own on POSIX.
#pragma once

#include "platform/shell.h"

namespace tresmor {

class PosixShell final : public Shell {
 public:
  std::string GetWinDir() const override;
  std::string GetProgramFilesDir() const override;
};

}  // namespace tresmor
