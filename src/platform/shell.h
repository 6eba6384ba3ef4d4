// The port to the desktop around the program.
#pragma once

#include <string>

namespace tresmor {

class Shell {
 public:
  virtual ~Shell() = default;
  // The folders that hold the system and its programs, without a separator at the end; empty if they can't be told.
  virtual std::string GetWinDir() const = 0;
  virtual std::string GetProgramFilesDir() const = 0;
};

}  // namespace tresmor
