#include "platform/posix/open_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tresmor {

Descriptor OpenOrMakeFolder(int parent, const std::string& name, mode_t mode, int flags) {
  const int folder = O_PATH | O_DIRECTORY | O_CLOEXEC | flags;
  Descriptor opened(openat(parent, name.c_str(), folder));
  if (opened.IsOpen() || errno != ENOENT) return opened;
  if (mkdirat(parent, name.c_str(), mode) != 0 && errno != EEXIST) return opened;
  return Descriptor(openat(parent, name.c_str(), folder));
}

Errors FlushOpenFolder(int folder) {
  const Descriptor readable(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (readable.IsOpen()) {
    // There are file systems that have nothing to wait for.
    return fsync(readable.Number()) == 0 || errno == EINVAL ? Errors::None : PathFailure(errno);
  }
  if (errno != EACCES) return PathFailure(errno);
  const Descriptor nameless(openat(folder, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
  if (!nameless.IsOpen()) return Errors::PermissionDenied;
  return syncfs(nameless.Number()) == 0 ? Errors::None : PathFailure(errno);
}

}  // namespace tresmor
