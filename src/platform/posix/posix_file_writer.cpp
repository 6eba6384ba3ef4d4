#include "platform/posix/posix_file_writer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/path.h"
#include "platform/posix/short_path.h"

namespace tresmor {

namespace {

Errors WriteFailure(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return Errors::DiskFull;
    case EROFS:
      return Errors::PermissionDenied;
    case EISDIR:
      return Errors::PathAccess;
    default:
      return PathFailure(error);
  }
}

// A new file beside the one that it is to replace; gone at the end unless it has taken its place.
class NewFile {
 public:
  explicit NewFile(const std::string& folder) : path_(folder + ".tresmor-XXXXXX") {
    file_ = Descriptor(mkostemp(path_.data(), O_CLOEXEC));
  }
  ~NewFile() {
    if (file_.IsOpen() && !placed_) unlink(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  bool IsOpen() const { return file_.IsOpen(); }

  bool Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(file_.Number(), bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) return false;
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  // As far as the file system has such things: a stick for cameras has none, and its files can be written all the same.
  void TakeAfter(const struct stat& old) {
    const bool sameGroup = fchown(file_.Number(), static_cast<uid_t>(-1), old.st_gid) == 0;
    SetMode(old.st_mode & (sameGroup ? 07777U : 0707U));  // what one group may, another one may not
  }
  void SetMode(mode_t mode) { fchmod(file_.Number(), mode); }

  // On disk before the name is, or a crash could leave an empty file under it.
  bool Place(const std::string& at) {
    if (fsync(file_.Number()) != 0) return false;
    placed_ = rename(path_.c_str(), at.c_str()) == 0;
    return placed_;
  }

 private:
  std::string path_;
  Descriptor file_;
  bool placed_ = false;
};

unsigned NewFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

void FlushFolder(const std::string& folder) {
  const Descriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.IsOpen()) fsync(opened.Number());
}

}  // namespace

PosixFileWriter::PosixFileWriter() : newFileMode_(NewFileMode()) {}

Errors PosixFileWriter::Replace(const std::string& path, std::string_view bytes) const {
  if (path.empty() || path.find('\0') != std::string::npos) return Errors::BadFileName;
  const std::string target = ResolveLinks(path);
  struct stat old {};
  const bool exists = lstat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) return Errors::PathAccess;
  if (exists && access(target.c_str(), W_OK) != 0) return WriteFailure(errno);
  const std::string folder(GetFolderOf(target, PathStyle::Posix()));
  NewFile file(folder);
  if (!file.IsOpen()) return WriteFailure(errno);
  if (exists) {
    file.TakeAfter(old);
  } else {
    file.SetMode(newFileMode_);
  }
  if (!file.Write(bytes) || !file.Place(target)) return WriteFailure(errno);
  FlushFolder(folder);
  return Errors::None;
}

Errors PosixFileWriter::MakeFolder(const std::string& folder) const {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  std::error_code none;
  if (!error || std::filesystem::is_directory(folder, none)) return Errors::None;
  return WriteFailure(error.value());
}

}  // namespace tresmor
