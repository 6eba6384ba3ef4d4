#include "platform/posix/file_attributes.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "platform/posix/short_path.h"

namespace tresmor {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

// What a call's result says, where a refusal is none: the file system hasn't got it or no room for it, or this user may
// not set it.
Errors UnlessRefused(int result) {
  if (result == 0) return Errors::None;
  switch (errno) {
    case EPERM:
    case EACCES:
    case ENOTSUP:
    case ENOSYS:
    case EINVAL:
    case ENOSPC:
    case EDQUOT:
    case E2BIG:
    case ERANGE:
    case EOVERFLOW:
      return Errors::None;
    default:
      return PathFailure(errno);
  }
}

Errors CopyExtendedAttribute(int from, int to, const char* name) {
  std::string value(XATTR_SIZE_MAX, '\0');
  const ssize_t size = fgetxattr(from, name, value.data(), value.size());
  if (size >= 0) return UnlessRefused(fsetxattr(to, name, value.data(), static_cast<std::size_t>(size), 0));
  return errno == ENODATA ? Errors::None : UnlessRefused(-1);  // taken away meanwhile
}

Errors CopyExtendedAttributes(int from, int to) {
  if (flistxattr(from, nullptr, 0) == 0) return Errors::None;  // as most files have none
  std::string names(XATTR_LIST_MAX, '\0');
  const ssize_t length = flistxattr(from, names.data(), names.size());
  if (length < 0) return UnlessRefused(-1);
  names.resize(static_cast<std::size_t>(length));
  for (std::size_t at = 0; at < names.size(); at += std::string_view(names.c_str() + at).size() + 1) {
    const Errors failure = CopyExtendedAttribute(from, to, names.c_str() + at);
    if (failure != Errors::None) return failure;
  }
  return Errors::None;
}

bool HasAccessList(int file) { return fgetxattr(file, kAccessList, nullptr, 0) >= 0; }

// The permissions of `source` without those that would go to somebody else now.
mode_t ModeFor(const struct stat& source, const struct stat& target, bool sameAccessList) {
  const bool sameOwner = source.st_uid == target.st_uid;
  const bool sameGroup = source.st_gid == target.st_gid;
  mode_t mode = source.st_mode & 07777U;
  if (!sameOwner) mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
  if (!sameGroup) mode &= ~static_cast<mode_t>(S_ISGID);
  // Beside a list the group's bits are the most that anyone on it has. A group that may not be meant gets what all
  // have.
  if (!sameGroup || !sameAccessList) mode &= ~static_cast<mode_t>(S_IRWXG) | (mode & S_IRWXO) << 3U;
  return mode;
}

}  // namespace

Errors CopyAttributes(int from, const struct stat& source, int to) {
  struct stat target {};
  if (fchown(to, source.st_uid, source.st_gid) != 0) {
    const Errors failure = UnlessRefused(fchown(to, static_cast<uid_t>(-1), source.st_gid));
    if (failure != Errors::None) return failure;
  }
  if (fstat(to, &target) != 0) return PathFailure(errno);
  fremovexattr(to, kAccessList);                      // that its folder may have given to it
  Errors failure = CopyExtendedAttributes(from, to);  // needs the right to write, so the permissions come after it
  if (failure != Errors::None) return failure;
  failure = UnlessRefused(fchmod(to, ModeFor(source, target, HasAccessList(from) == HasAccessList(to))));
  if (failure != Errors::None) return failure;
  const timespec times[2] = {source.st_atim, source.st_mtim};
  return UnlessRefused(futimens(to, times));
}

}  // namespace tresmor
