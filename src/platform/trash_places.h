// The port to the desktop's trash: where it is. What lies in it follows freedesktop.org's Trash specification 1.0:
// below a trash folder "files" holds what was thrown away and "info" one NAME.trashinfo for each.
#pragma once

#include <string>
#include <vector>

#include "base/failure.h"

namespace tresmor {

struct TrashPlace {
  std::string folder;     // the trash folder, without a separator at the end; "files" and "info" stand in it
  std::string topFolder;  // of a disk's own trash: paths are noted from here on. Empty: they are noted whole
  // The folder that the path stands in, without links and ".." on the way to it. Empty where that can't be told.
  std::string realFolder{};
  // The trash folder of this user's that the path lies in already, be it this one or another on its disk. Empty: none,
  // or it can't be told.
  std::string within{};
};

// Why a path has no trash folder to go to. None: its disk has none, or what stands there is none to be used.
struct TrashFailure {
  Errors failure = Errors::None;
  std::string at{};  // the folder that couldn't be opened or made
};

class TrashPlaces {
 public:
  virtual ~TrashPlaces() = default;
  // The trash folders that `path` may be renamed into, the best first; the user's own where it is on the same disk,
  // else those at the top of the disk. Makes what is missing of them. Empty: it can't be trashed, and `why` tells the
  // reason; if several fail, that of the best. Any thread.
  virtual std::vector<TrashPlace> Places(const std::string& path, TrashFailure& why) = 0;
};

}  // namespace tresmor
