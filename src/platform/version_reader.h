// The port to the version that a program file bears.
#pragma once

#include <string>

namespace tresmor {

class VersionReader {
 public:
  virtual ~VersionReader() = default;
  // The version as text, such as "1.2.3.40"; empty for a file that has none or can't be read. Any thread.
  virtual std::string GetFileVer(const std::string& path) const = 0;
};

}  // namespace tresmor
