// The port to files. Implementations: platform/posix (this machine) and the tests' in-memory twin, both held to one
// contract suite.
//
// Paths are bytes in the style that Style() names, absolute or relative to the working folder, of any length the file
// system itself allows (an adapter gets around limits of its calls). Nothing here follows a symbolic link at the end
// of a path, except List and OpenFolder, since the folder of a scope row may be one. Every routine may be called from
// any thread at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "base/path.h"

namespace tresmor {

enum class EntryKind : std::uint8_t {
  File,    // a regular file
  Folder,  // a folder to enter
  Other,   // symbolic link, socket, FIFO, device: left alone, yet a folder with one in it is not empty
};

// Which file or folder it is, whatever path led there. There are file systems that make inode numbers up as they go and
// give one to several files, so who acts on two equal identities compares size and change time as well.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

struct FileStat {
  EntryKind kind = EntryKind::Other;
  bool hidden = false;
  bool link = false;           // a symbolic link
  std::int64_t size = 0;       // bytes
  std::int64_t modified = 0;   // last write, seconds since 1970 UTC
  std::int64_t changedNs = 0;  // last change of the file's inode, nanoseconds since 1970 UTC
  std::uint64_t links = 1;     // hard links to the file
  FileIdentity identity;
};

// The entries of one folder in the order in which the file system gave them, without "." and "..". A folder that
// changes meanwhile may give a name twice.
struct FolderListing {
  struct Entry {
    std::uint32_t offset = 0;  // into names
    std::uint16_t length = 0;
    EntryKind kind = EntryKind::Other;
    bool hidden = false;
  };
  FileIdentity identity;  // of the folder itself, as are the next two; they mean what they mean in FileStat
  std::int64_t size = 0;
  std::int64_t changedNs = 0;
  bool forbidden = false;  // on a pseudo file system (told by its type): nothing was listed, nobody may enter
  std::string names;
  std::vector<Entry> entries;

  std::string_view Name(const Entry& entry) const { return {names.data() + entry.offset, entry.length}; }
};

// An open file. Closed by its destructor. One thread at a time.
class FileReader {
 public:
  virtual ~FileReader() = default;
  // Length in bytes when the file was opened.
  virtual std::int64_t Size() const = 0;
  struct Result {
    std::size_t got = 0;  // fewer than asked only at the end of the file or on a failure
    Errors failure = Errors::None;
  };
  // Reads at `offset` (0 or more) until `into` is full, the file ends or reading fails.
  virtual Result ReadAt(std::int64_t offset, std::span<char> into) = 0;
};

// A folder that stays open, so that its files are found by their names alone, which is quicker than by path. It remains
// the same folder when its path leads elsewhere. Closed by its destructor. Any thread, any number of them at once.
class Folder {
 public:
  virtual ~Folder() = default;
  // As the routines of FileSystem, for an entry of this folder.
  virtual Errors Stat(std::string_view name, FileStat& stat) const = 0;
  virtual std::unique_ptr<FileReader> Open(std::string_view name, Errors& failure) const = 0;
};

// How much of some files stands in memory already; a hint and never a failure.
enum class CacheState { Unknown, Warm, Cold };

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  virtual PathStyle Style() const = 0;

  // Lists `folder` (with or without a separator at its end). FileNotFound, PermissionDenied, PathAccess (no folder).
  // A folder that ends unreadable half-way gives what came and the failure.
  virtual Errors List(const std::string& folder, FolderListing& listing) const = 0;

  // FileNotFound, PermissionDenied, ... `stat` is only meaningful with None.
  virtual Errors Stat(const std::string& path, FileStat& stat) const = 0;

  // Opens for reading what Stat told to be a file, without a lock on it and without waiting. What isn't a file any more
  // is refused with PathAccess. Null with the reason in `failure`; TooManyFiles means that descriptors ran out and a
  // later call may succeed.
  virtual std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const = 0;

  // Opens a folder (with or without a separator at its end). Null with the reason in `failure`.
  virtual std::unique_ptr<Folder> OpenFolder(const std::string& folder, Errors& failure) const = 0;

  // Where `path` leads if links stand on it, for who opens a file that the user named; nothing need stand there. `path`
  // itself if none do, or if they can't be followed.
  virtual std::string Resolved(const std::string& path) const = 0;

  // How many files and folders may be open at once, the program's other needs taken off. At least 8.
  virtual std::size_t OpenLimit() const = 0;

  // Whether the first bytes of `path` are in memory.
  virtual CacheState Cached(const std::string& path) const = 0;
  // Asks for `length` bytes at `offset` to be brought into memory soon. Does not wait for them.
  virtual void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const = 0;

  // Whether `folder` is a trash folder of the desktop.
  virtual bool IsTrash(std::string_view folder) const = 0;
};

// Whether `folder`, which has a separator at its end, is a trash folder or lies in one, by its path.
inline bool LiesInTrash(const FileSystem& files, std::string_view folder) {
  const char separator = files.Style().separator;
  for (std::size_t end = folder.find(separator); end != folder.npos; end = folder.find(separator, end + 1)) {
    if (files.IsTrash(folder.substr(0, end + 1))) return true;
  }
  return false;
}

}  // namespace tresmor
