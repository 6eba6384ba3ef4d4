#include "platform/posix/regular_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tresmor {

// A search asks for what it saw to be a file a moment ago, so a look in front of each open would cost a tenth of a
// search for nothing. Against what took its place stand the flags, which neither follow nor wait, and the look at what
// was opened.
Descriptor OpenRegularFileAt(int folder, const char* path, struct stat& info, Errors& failure) {
  Descriptor file(openat(folder, path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
  failure = Errors::None;
  if (!file.IsOpen() || fstat(file.Number(), &info) != 0) {
    failure = PathFailure(errno);
    return Descriptor();
  }
  if (!S_ISREG(info.st_mode)) {
    failure = Errors::PathAccess;
    return Descriptor();
  }
  return file;
}

Descriptor OpenRegularFile(const std::string& path, struct stat& info, Errors& failure) {
  const ShortPath at(path);
  failure = at.Failure();
  return failure == Errors::None ? OpenRegularFileAt(at.Folder(), at.Rest(), info, failure) : Descriptor();
}

FileReader::Result ReadFully(int file, std::int64_t offset, std::span<char> into) {
  FileReader::Result result;
  while (result.got < into.size()) {
    const ssize_t got =
        pread(file, into.data() + result.got, into.size() - result.got, offset + static_cast<std::int64_t>(result.got));
    if (got == 0) break;
    if (got > 0) {
      result.got += static_cast<std::size_t>(got);
    } else if (errno != EINTR) {
      result.failure = errno == EACCES || errno == EPERM ? Errors::PermissionDenied : Errors::Device;
      break;
    }
  }
  return result;
}

bool WriteFully(int file, std::int64_t offset, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(file, bytes.data(), bytes.size(), offset);
    if (written < 0 && errno != EINTR) return false;
    if (written <= 0) continue;
    offset += written;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace tresmor
