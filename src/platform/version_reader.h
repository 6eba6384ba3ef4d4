// The port to the version that a program file bears.
#pragma once

#include <string>

#include "base/stop_token.h"

namespace tresmor {

class VersionReader {
 public:
  virtual ~VersionReader() = default;
  // The version as text, such as "1.2.3.40"; empty for a file that has none or can't be read. A lack of descriptors is
  // waited out until the caller's `stop` is stopped, which gives an empty one too. Any thread.
  virtual std::string GetFileVer(const std::string& path, const StopToken& stop) const = 0;
};

}  // namespace tresmor
