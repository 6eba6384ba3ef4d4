#include "platform/posix/posix_file_changes.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/path.h"
#include "base/text.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/open_folder.h"
#include "platform/posix/posix_file_copy.h"
#include "platform/posix/regular_file.h"
#include "platform/posix/short_path.h"

namespace tresmor {

namespace {

constexpr mode_t kFileOfThisUserAlone = 0600;
constexpr int kOpenFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// One call on a path; `call(folder, rest)` gives 0 or leaves its reason in errno.
template <class Call>
Errors CallOn(const std::string& path, const Call& call) {
  const ShortPath at(path);
  if (at.Failure() != Errors::None) return at.Failure();
  return call(at.Folder(), at.Rest()) == 0 ? Errors::None : PathFailure(errno);
}

Descriptor OpenFor(const std::string& path, int flags, Errors& failure) {
  Descriptor file;
  failure = CallOn(path, [&](int folder, const char* rest) {
    file = Descriptor(openat(folder, rest, flags | kOpenFlags, kFileOfThisUserAlone));
    return file.IsOpen() ? 0 : -1;
  });
  return file;
}

struct stat Look(const ShortPath& at, bool& there) {
  struct stat info {};
  there = fstatat(at.Folder(), at.Rest(), &info, AT_SYMLINK_NOFOLLOW) == 0;
  return info;
}

bool IsAt(const ShortPath& at, const struct stat& wanted) {
  bool there = false;
  const struct stat info = Look(at, there);
  return there && info.st_dev == wanted.st_dev && info.st_ino == wanted.st_ino;
}

// Whether two names are one entry of a folder that takes no notice of case.
bool IsSameEntry(const ShortPath& from, const ShortPath& to, const struct stat& info) {
  const std::string_view a = GetFileNameOf(from.Rest(), PathStyle::Posix());
  const std::string_view b = GetFileNameOf(to.Rest(), PathStyle::Posix());
  const bool oneName = S_ISDIR(info.st_mode) || info.st_nlink == 1;
  return oneName && a != b && EqualText(a, b) && IsAt(to, info);
}

// The next ones are for file systems that can't rename without replacing.

// Nor do they know second names, or not of this file. They may have refused the name itself, which a file of it shows.
Errors WhyNoLink(const ShortPath& to, int error) {
  if (error != EPERM && error != ENOSYS && error != EOPNOTSUPP && error != EMLINK) return PathFailure(error);
  const Descriptor tried(
      openat(to.Folder(), to.Rest(), O_WRONLY | O_CREAT | O_EXCL | kOpenFlags, kFileOfThisUserAlone));
  if (!tried.IsOpen()) return PathFailure(errno);
  struct stat info {};
  if (fstat(tried.Number(), &info) == 0 && IsAt(to, info)) unlinkat(to.Folder(), to.Rest(), 0);
  return Errors::DifferentDrive;
}

// A second name can't be given where something stands.
Errors MoveByLink(const ShortPath& from, const ShortPath& to) {
  if (linkat(from.Folder(), from.Rest(), to.Folder(), to.Rest(), 0) != 0) return WhyNoLink(to, errno);
  bool there = false;
  const struct stat linked = Look(to, there);
  if (!there) return PathFailure(errno);
  if (!IsAt(from, linked)) return Errors::None;  // somebody has put something else there, and it has one name already
  if (unlinkat(from.Folder(), from.Rest(), 0) == 0) return Errors::None;
  const Errors failure = PathFailure(errno);
  if (IsAt(to, linked)) unlinkat(to.Folder(), to.Rest(), 0);
  return failure;
}

// A folder takes the place of an empty one and of nothing else.
Errors MoveOntoNewFolder(const ShortPath& from, const ShortPath& to) {
  if (mkdirat(to.Folder(), to.Rest(), 0700) != 0) return PathFailure(errno);
  if (renameat(from.Folder(), from.Rest(), to.Folder(), to.Rest()) == 0) return Errors::None;
  const int error = errno;
  unlinkat(to.Folder(), to.Rest(), AT_REMOVEDIR);
  if (error == ENOTEMPTY) return Errors::FileExists;                 // somebody was quick to put something into it
  return error == EINVAL ? Errors::PathAccess : PathFailure(error);  // into itself
}

Descriptor OpenFolder(const std::string& folder, int flags, Errors& failure) {
  Descriptor opened;
  failure = CallOn(folder, [&](int at, const char* rest) {
    opened = Descriptor(openat(at, rest, flags | O_DIRECTORY | O_CLOEXEC));
    return opened.IsOpen() ? 0 : -1;
  });
  return opened;
}

// As long as it lives a copy isn't abandoned. Without locks on its file system nothing there is taken for abandoned.
bool LockCopy(const Descriptor& file) { return flock(file.Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

}  // namespace

Errors PosixFileChanges::MakeFolder(const std::string& folder) {
  return CallOn(folder, [](int at, const char* rest) { return mkdirat(at, rest, 0777); });
}

Errors PosixFileChanges::Create(const std::string& path, std::string_view bytes) {
  Errors failure = Errors::None;
  const Descriptor file = OpenFor(path, O_WRONLY | O_CREAT | O_EXCL, failure);
  if (!file.IsOpen() || WriteFully(file.Number(), 0, bytes)) return failure;
  failure = PathFailure(errno);
  Remove(path);
  return failure;
}

Errors PosixFileChanges::Append(const std::string& path, std::string_view bytes) {
  Errors failure = Errors::None;
  const Descriptor file = OpenFor(path, O_WRONLY | O_CREAT | O_APPEND, failure);
  if (!file.IsOpen()) return failure;
  // So that what is cut off below is this program's; where there are no locks it may not be.
  flock(file.Number(), LOCK_EX);
  struct stat info {};
  if (fstat(file.Number(), &info) != 0) return PathFailure(errno);
  if (!S_ISREG(info.st_mode)) return Errors::PathAccess;
  if (WriteFully(file.Number(), info.st_size, bytes)) return Errors::None;
  failure = PathFailure(errno);
  // A part of it is worse than nothing; a file that can't even be shortened has lost nothing, either.
  return ftruncate(file.Number(), info.st_size) == 0 ? failure : Errors::Device;
}

std::unique_ptr<FileCopy> PosixFileChanges::BeginCopy(const std::string& from, const std::string& to, Errors& failure,
                                                      bool& atSource) {
  struct stat opened {};
  Descriptor source = OpenRegularFile(from, opened, failure);
  atSource = !source.IsOpen();
  if (atSource) return nullptr;
  Descriptor target = OpenFor(to, O_RDWR | O_CREAT | O_EXCL, failure);
  if (!target.IsOpen()) return nullptr;
  const bool locked = LockCopy(target);
  auto copy = std::make_unique<PosixFileCopy>(from, std::move(source), opened, std::move(target));
  if (locked && copy->StandsAt(to)) return copy;
  failure = Errors::FileExists;  // somebody took it for an abandoned one in the moment before it was locked
  return nullptr;
}

Errors PosixFileChanges::RemoveAbandoned(const std::string& path) {
  Errors failure = Errors::None;
  Descriptor file = OpenFor(path, O_WRONLY, failure);  // network file systems lock alone only what may be written
  // The copy of a file that nobody may write to can't be written to either, once it has the attributes.
  if (failure == Errors::PermissionDenied) file = OpenFor(path, O_RDONLY, failure);
  if (!file.IsOpen()) return failure;
  struct stat info {};
  if (fstat(file.Number(), &info) != 0) return PathFailure(errno);
  const bool own = S_ISREG(info.st_mode) && info.st_uid == geteuid();
  if (!own || flock(file.Number(), LOCK_EX | LOCK_NB) != 0) return Errors::PathAccess;
  const ShortPath at(path);
  if (at.Failure() != Errors::None) return at.Failure();
  return IsAt(at, info) ? Remove(path) : Errors::PathAccess;
}

Errors PosixFileChanges::Rename(const std::string& from, const std::string& to) {
  const ShortPath here(from);
  const ShortPath there(to);
  if (here.Failure() != Errors::None) return here.Failure();
  if (there.Failure() != Errors::None) return there.Failure();
  if (renameat2(here.Folder(), here.Rest(), there.Folder(), there.Rest(), RENAME_NOREPLACE) == 0) return Errors::None;
  const int error = errno;
  if (error != EINVAL && error != ENOSYS && error != EEXIST) return PathFailure(error);
  bool stands = false;
  const struct stat info = Look(here, stands);
  if (!stands) return PathFailure(errno);
  if (IsSameEntry(here, there, info)) {
    return renameat(here.Folder(), here.Rest(), there.Folder(), there.Rest()) == 0 ? Errors::None : PathFailure(errno);
  }
  if (error == EEXIST) return Errors::FileExists;
  return S_ISDIR(info.st_mode) ? MoveOntoNewFolder(here, there) : MoveByLink(here, there);
}

Errors PosixFileChanges::Replace(const std::string& from, const std::string& to) {
  const ShortPath here(from);
  const ShortPath there(to);
  if (here.Failure() != Errors::None) return here.Failure();
  if (there.Failure() != Errors::None) return there.Failure();
  return renameat(here.Folder(), here.Rest(), there.Folder(), there.Rest()) == 0 ? Errors::None : PathFailure(errno);
}

Errors PosixFileChanges::Remove(const std::string& path) {
  return CallOn(path, [](int at, const char* rest) { return unlinkat(at, rest, 0); });
}

Errors PosixFileChanges::FlushFolder(const std::string& folder) {
  Errors failure = Errors::None;
  const Descriptor opened = OpenFolder(folder, O_PATH, failure);
  return opened.IsOpen() ? FlushOpenFolder(opened.Number()) : failure;
}

std::unique_ptr<FileLock> PosixFileChanges::Lock(const std::string& folder, Sharing sharing, Errors& failure) {
  Descriptor opened = OpenFolder(folder, O_RDONLY, failure);
  if (!opened.IsOpen()) return nullptr;
  const int kind = sharing == Sharing::Alone ? LOCK_EX : LOCK_SH;
  if (flock(opened.Number(), kind | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    failure = Errors::PathAccess;
    return nullptr;
  }
  return std::make_unique<FolderLock>(std::move(opened));
}

}  // namespace tresmor
