// What is mounted where on Linux.
#pragma once

#include <string>
#include <vector>

namespace tresmor {

struct Mount {
  std::string device;
  std::string folder;
  std::string type;
};

// The table of mounts in the file `mounts`, in its order: of several at one folder the last is in force. Empty if it
// can't be read. Any thread.
std::vector<Mount> ReadMounts(const std::string& mounts);

}  // namespace tresmor
