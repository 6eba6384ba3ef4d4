#include "platform/posix/posix_file_changes.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/posix_file_copy.h"
#include "platform/posix/regular_file.h"
#include "platform/posix/short_path.h"

namespace tresmor {

namespace {

constexpr mode_t kThisUserAlone = 0600;
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
    file = Descriptor(openat(folder, rest, flags | kOpenFlags, kThisUserAlone));
    return file.IsOpen() ? 0 : -1;
  });
  return file;
}

// The next two are for file systems that can't rename without replacing.

// A second name can't be given where something stands.
Errors MoveByLink(const ShortPath& from, const ShortPath& to) {
  if (linkat(from.Folder(), from.Rest(), to.Folder(), to.Rest(), 0) != 0) {
    // Without second names: these file systems do know how to rename, so it is the name that they refuse.
    return PathFailure(errno == EPERM ? EINVAL : errno);
  }
  if (unlinkat(from.Folder(), from.Rest(), 0) == 0) return Errors::None;
  const Errors failure = PathFailure(errno);
  unlinkat(to.Folder(), to.Rest(), 0);
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
  const Descriptor file = OpenFor(path, O_WRONLY | O_CREAT, failure);
  if (!file.IsOpen()) return failure;
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
  return std::make_unique<PosixFileCopy>(from, std::move(source), opened, std::move(target));
}

Errors PosixFileChanges::Rename(const std::string& from, const std::string& to) {
  const ShortPath here(from);
  const ShortPath there(to);
  if (here.Failure() != Errors::None) return here.Failure();
  if (there.Failure() != Errors::None) return there.Failure();
  if (renameat2(here.Folder(), here.Rest(), there.Folder(), there.Rest(), RENAME_NOREPLACE) == 0) return Errors::None;
  if (errno != EINVAL && errno != ENOSYS) return PathFailure(errno);
  struct stat info {};
  if (fstatat(here.Folder(), here.Rest(), &info, AT_SYMLINK_NOFOLLOW) != 0) return PathFailure(errno);
  return S_ISDIR(info.st_mode) ? MoveOntoNewFolder(here, there) : MoveByLink(here, there);
}

Errors PosixFileChanges::Remove(const std::string& path) {
  return CallOn(path, [](int at, const char* rest) { return unlinkat(at, rest, 0); });
}

Errors PosixFileChanges::RemoveFolder(const std::string& folder) {
  return CallOn(folder, [](int at, const char* rest) { return unlinkat(at, rest, AT_REMOVEDIR); });
}

Errors PosixFileChanges::FlushFolder(const std::string& folder) {
  return CallOn(folder, [](int at, const char* rest) {
    const Descriptor opened(openat(at, rest, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen()) return -1;
    // There are file systems that have nothing to wait for.
    return fsync(opened.Number()) == 0 || errno == EINVAL ? 0 : -1;
  });
}

}  // namespace tresmor
