// The port to files of the program's own: sessions, exported lists, settings.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/failure.h"

namespace tresmor {

// Held while it lives.
class FileLock {
 public:
  virtual ~FileLock() = default;
};

// Paths as in FileSystem. Any thread.
class FileWriter {
 public:
  virtual ~FileWriter() = default;

  // Puts a file of these bytes at `path`, in place of the file that stands there, whose permissions it takes over; a
  // link there goes on leading to the file, which needn't be there yet. Whole or not at all: whoever looks, after a
  // crash at any moment too, finds the old file or the new one, and a failure leaves the old one. FileNotFound (no such
  // folder), PermissionDenied, DiskFull, PathAccess (what stands there is no file), ...
  virtual Errors Replace(const std::string& path, std::string_view bytes) const = 0;

  // Makes a folder and those above it. None if it stands there already.
  virtual Errors MakeFolder(const std::string& folder) const = 0;

  // For who reads the file at `path`, changes it and puts it back: nobody else holds such a lock, in this program or
  // another one, for this file; a lock may keep out its neighbours too. Waits for it, but not for ever. Null where it
  // can't be had, then or at all (no such folder, files that nobody else sees): the caller goes on without.
  virtual std::unique_ptr<FileLock> Lock(const std::string& path) const {
    static_cast<void>(path);
    return nullptr;
  }
};

}  // namespace tresmor
