// The port to files of the program's own: sessions, exported lists, settings.
#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

namespace tresmor {

// Paths as in FileSystem. Any thread.
class FileWriter {
 public:
  virtual ~FileWriter() = default;

  // Puts a file of these bytes at `path`, in place of the file that stands there, whose permissions it takes over; a
  // link there goes on leading to the file. Whole or not at all: whoever looks, after a crash at any moment too, finds
  // the old file or the new one, and a failure leaves the old one. FileNotFound (no such folder), PermissionDenied,
  // DiskFull, PathAccess (what stands there is no file), ...
  virtual Errors Replace(const std::string& path, std::string_view bytes) const = 0;

  // Makes a folder and those above it. None if it stands there already.
  virtual Errors MakeFolder(const std::string& folder) const = 0;
};

}  // namespace tresmor
