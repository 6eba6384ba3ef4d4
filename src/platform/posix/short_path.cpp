#include "platform/posix/short_path.h"

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <cerrno>

#include "base/path.h"

namespace tresmor {

namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows

}  // namespace

Descriptor::~Descriptor() {
  if (IsOpen()) close(number_);
}

Errors PathFailure(int error) {
  switch (error) {
    case ENOENT:
      return Errors::FileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EAGAIN:
      return Errors::PermissionDenied;  // EAGAIN: another program holds a lease on the file
    case ENAMETOOLONG:
    case EILSEQ:
    case EINVAL:
      return Errors::BadFileName;
    case EMFILE:
    case ENFILE:
      return Errors::TooManyFiles;
    case ENOTDIR:
    case EISDIR:
    case ENOTEMPTY:
    case EBUSY:
    case ELOOP:
    case ENXIO:
      return Errors::PathAccess;  // EBUSY: a disk is mounted there
    case EEXIST:
      return Errors::FileExists;
    case EXDEV:
      return Errors::DifferentDrive;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return Errors::DiskFull;  // EFBIG: all that the file system takes in one file
    default:
      return Errors::Device;  // ESTALE too: what a server has lost sight of needn't be gone
  }
}

std::string ResolveLinks(const std::string& path) {
  std::string at = path;
  for (int links = 0; links < kMostLinks; ++links) {
    const ShortPath place(at);
    if (place.Failure() != Errors::None) return path;
    char target[PATH_MAX];
    const ssize_t length = readlinkat(place.Folder(), place.Rest(), target, sizeof target);
    if (length < 0)
      return errno == EINVAL || errno == ENOENT ? at : path;  // something else than a link, or nothing at all
    std::string next(target, static_cast<std::size_t>(length));
    if (!next.starts_with('/')) next.insert(0, GetFolderOf(at, PathStyle::Posix()));
    at = std::move(next);
  }
  return path;
}

ShortPath::ShortPath(const std::string& path) : rest_(path.c_str()) {
  // The calls would stop at a NUL and find another file.
  if (HasNul(path)) {
    failure_ = Errors::BadFileName;
  } else if (path.size() >= PATH_MAX) {
    WalkDown(path);
  }
}

int ShortPath::Folder() const { return folder_.IsOpen() ? folder_.Number() : AT_FDCWD; }

void ShortPath::WalkDown(const std::string& path) {
  std::size_t at = 0;
  while (path.size() - at >= PATH_MAX) {
    // The longest piece that ends with a separator and is not the whole rest.
    const std::size_t end = path.rfind('/', at + PATH_MAX - 2);
    if (end == std::string::npos || end < at) {
      failure_ = Errors::BadFileName;
      return;
    }
    const std::string piece = path.substr(at, end + 1 - at);
    Descriptor next(openat(Folder(), piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!next.IsOpen()) {
      failure_ = PathFailure(errno);
      return;
    }
    folder_ = std::move(next);
    at = end + 1;
    while (at < path.size() && path[at] == '/') ++at;  // a rest that starts with '/' would start at the root
  }
  rest_ = at < path.size() ? path.c_str() + at : ".";
}

}  // namespace tresmor
