// The port to changes of files and folders: the steps that deleting, moving and copying are made of. Implementations:
// platform/posix (this machine) and the tests' in-memory twin, both held to one contract suite.
//
// Paths as in FileSystem; no link at the end of a path is followed, and but for Replace nothing that exists is ever
// replaced. Each call is one step that is done wholly or not at all when it returns. Killed in the middle, a program
// may leave a part of the bytes of Create and Append, and of a Rename on a file system that can't refuse to replace,
// the file under both of its names or an empty folder under the new one. Whether a step outlives a crash of the machine
// is told by Flush and FlushFolder alone. Any thread, any number of calls at once.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/file_writer.h"

namespace tresmor {

// A new file that is being filled from a source. While it lives, RemoveAbandoned leaves its file alone. One thread at a
// time. Its destructor closes both and leaves the new file as it stands.
class FileCopy {
 public:
  virtual ~FileCopy() = default;

  struct Step {
    std::int64_t bytes = 0;  // of the source that were passed, holes too; 0 at its end
    Errors failure = Errors::None;
    bool atSource = false;  // which of the two failed
  };
  // Copies the next bytes, `most` at the most (above 0). Holes stay holes; blocks are shared where the file system can.
  // Overflow: the file is longer than the file system of the copy lets any be.
  virtual Step CopyNext(std::int64_t most) = 0;

  // Gives the copy the times, permissions, owner and extended attributes of its source, as far as the file system that
  // it stands on has such a thing and room for it, and this user may set it.
  virtual Errors TakeAttributes() = 0;

  // Waits until content and attributes are on the disk.
  virtual Errors Flush() = 0;

  // Reads the next bytes of both again, from the beginning on, and compares them. Device where they differ.
  virtual Step CompareNext(std::int64_t most) = 0;

  // Whether the source is still the file that was opened, under its path and with the same size and times.
  virtual bool SourceUnchanged() const = 0;

  // Whether the copy is what stands at `path`.
  virtual bool StandsAt(const std::string& path) const = 0;
};

// How a folder is locked: by any number of programs together, or by one alone.
enum class Sharing { Shared, Alone };

class FileChanges {
 public:
  virtual ~FileChanges() = default;

  // Makes one folder. FileExists (whatever it is), FileNotFound (nothing above it), PermissionDenied, DiskFull, ...
  virtual Errors MakeFolder(const std::string& folder) = 0;

  // Makes a new file of these bytes, for this user alone. FileExists, ...
  virtual Errors Create(const std::string& path, std::string_view bytes) = 0;

  // Adds bytes at the end of a file of the program's own, which is made where it isn't there. Whatever other programs
  // add at the same time stands before or behind them.
  virtual Errors Append(const std::string& path, std::string_view bytes) = 0;

  // Opens `from`, which must be a file, and makes the new, empty file `to`, for this user alone until TakeAttributes.
  // Null with the reason in `failure`; `atSource` tells whether it is about `from`. FileExists: something stands at
  // `to`.
  virtual std::unique_ptr<FileCopy> BeginCopy(const std::string& from, const std::string& to, Errors& failure,
                                              bool& atSource) = 0;

  // Removes a file of this user's that BeginCopy made, unless the FileCopy lives, in whatever program: PathAccess then,
  // and where that can't be told.
  virtual Errors RemoveAbandoned(const std::string& path) = 0;

  // Gives a file or folder another place on the same file system. FileExists: something stands at `to`, a link that
  // leads nowhere included; also in a race nothing is replaced. But `to` may be the same name in other letters where
  // the file system takes them for one. DifferentDrive: it takes a copy, be it that this file system can't rename
  // without replacing. FileNotFound: `from`, or the folder of `to`, isn't there.
  //
  // Where file systems need it, a file gets its second name before it loses the first. What somebody else puts in place
  // of the first meanwhile stays, unless that happens within the moment between the last look at it and its removal.
  virtual Errors Rename(const std::string& from, const std::string& to) = 0;

  // Gives a file of the program's own the place of another one of its own, which goes if it is there.
  virtual Errors Replace(const std::string& from, const std::string& to) = 0;

  // Removes a file or link. PathAccess for a folder.
  virtual Errors Remove(const std::string& path) = 0;

  // Waits until the entries of a folder, new names and removals, are on the disk.
  virtual Errors FlushFolder(const std::string& folder) = 0;

  // Locks a folder of the program's own until the lock is destroyed or the program ends. Doesn't wait. Null with the
  // reason in `failure`; PathAccess: others hold locks that don't go with it. File systems without locks let everybody.
  virtual std::unique_ptr<FileLock> Lock(const std::string& folder, Sharing sharing, Errors& failure) = 0;
};

}  // namespace tresmor
