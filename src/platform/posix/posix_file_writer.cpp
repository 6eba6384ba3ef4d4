#include "platform/posix/posix_file_writer.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <random>
#include <thread>
#include <utility>

#include "base/path.h"
#include "platform/posix/folder_lock.h"
#include "platform/posix/open_folder.h"
#include "platform/posix/regular_file.h"
#include "platform/posix/short_path.h"

namespace tresmor {

namespace {

// The folder that holds the file at `path`.
Descriptor OpenFolderOf(const std::string& path, Errors& failure) {
  std::string folder(GetFolderOf(path, PathStyle::Posix()));
  if (folder.empty()) folder = ".";
  const ShortPath at(folder);
  failure = at.Failure();
  if (failure != Errors::None) return Descriptor();
  Descriptor opened(openat(at.Folder(), at.Rest(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!opened.IsOpen()) failure = PathFailure(errno);
  return opened;
}

// A new file beside the one that it is to replace; gone at the end unless it has taken its place. Where the file system
// and /proc allow that, it has no name until it is whole, and the end of the program takes it away as well.
class NewFile {
 public:
  explicit NewFile(int folder) : folder_(folder) {
    file_ = Descriptor(openat(folder, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (file_.IsOpen() && access(OwnPath().c_str(), F_OK) == 0) return;
    TakeName([this](const char* name) {
      file_ = Descriptor(openat(folder_, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
      return file_.IsOpen();
    });
  }
  ~NewFile() {
    if (named_ && !placed_) unlinkat(folder_, name_.c_str(), 0);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  bool IsOpen() const { return file_.IsOpen(); }

  bool Write(std::string_view bytes) { return WriteFully(file_.Number(), 0, bytes); }

  // As far as the file system has such things: a stick for cameras has none, and its files can be written all the same.
  void TakeAfter(const struct stat& old) {
    const bool sameGroup = fchown(file_.Number(), static_cast<uid_t>(-1), old.st_gid) == 0;
    SetMode(old.st_mode & (sameGroup ? 07777U : 0707U));  // what one group may, another one may not
  }
  void SetMode(mode_t mode) { fchmod(file_.Number(), mode); }

  // On disk before the name is, or a crash could leave an empty file under it.
  bool Place(const std::string& name) {
    if (fsync(file_.Number()) != 0) return false;
    const auto link = [this](const char* free) {
      return linkat(AT_FDCWD, OwnPath().c_str(), folder_, free, AT_SYMLINK_FOLLOW) == 0;
    };
    if (!named_ && !TakeName(link)) return false;
    placed_ = renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0;
    return placed_;
  }

 private:
  std::string OwnPath() const { return "/proc/self/fd/" + std::to_string(file_.Number()); }

  // `make` makes the name, unless it is taken already (EEXIST).
  template <class Make>
  bool TakeName(Make&& make) {
    std::random_device random;
    do {
      name_ = ".tresmor-" + std::to_string(random());
      named_ = make(name_.c_str());
    } while (!named_ && errno == EEXIST);
    return named_;
  }

  const int folder_;
  std::string name_;
  Descriptor file_;
  bool named_ = false;
  bool placed_ = false;
};

bool LockWithin(std::chrono::milliseconds patience, const Descriptor& folder) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + patience;
  while (flock(folder.Number(), LOCK_EX | LOCK_NB) != 0) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || Clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

unsigned NewFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

PosixFileWriter::PosixFileWriter(NewFiles newFiles, std::chrono::milliseconds patience)
    : newFileMode_(newFiles == NewFiles::OfTheUserAlone ? 0600 : NewFileMode()),
      newFolderMode_(newFiles == NewFiles::OfTheUserAlone ? 0700 : 0777),
      patience_(patience) {}

Errors PosixFileWriter::Replace(const std::string& path, std::string_view bytes) const {
  if (path.empty() || HasNul(path)) return Errors::BadFileName;
  const std::string target = ResolveLinks(path);
  Errors failure = Errors::None;
  const Descriptor folder = OpenFolderOf(target, failure);
  if (!folder.IsOpen()) return failure;
  const std::string name(GetFileNameOf(target, PathStyle::Posix()));
  if (name.empty()) return Errors::PathAccess;
  struct stat old {};
  const bool exists = fstatat(folder.Number(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
  if (exists && !S_ISREG(old.st_mode)) return Errors::PathAccess;
  if (exists && faccessat(folder.Number(), name.c_str(), W_OK, 0) != 0) return PathFailure(errno);
  NewFile file(folder.Number());
  if (!file.IsOpen()) return PathFailure(errno);
  if (exists) {
    file.TakeAfter(old);
  } else {
    file.SetMode(newFileMode_);
  }
  if (!file.Write(bytes) || !file.Place(name)) return PathFailure(errno);
  FlushOpenFolder(folder.Number());
  return Errors::None;
}

// Name by name, so that the path may be of any length.
Errors PosixFileWriter::MakeFolder(const std::string& folder) const {
  if (HasNul(folder)) return Errors::BadFileName;
  Descriptor at(open(folder.starts_with('/') ? "/" : ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!at.IsOpen()) return PathFailure(errno);
  for (std::size_t begin = 0; begin < folder.size();) {
    const std::size_t end = std::min(folder.find('/', begin), folder.size());
    const std::string name = folder.substr(begin, end - begin);
    begin = end + 1;
    if (name.empty()) continue;
    Descriptor next = OpenOrMakeFolder(at.Number(), name, newFolderMode_);
    if (!next.IsOpen()) return PathFailure(errno);
    at = std::move(next);
  }
  return Errors::None;
}

std::unique_ptr<FileLock> PosixFileWriter::Lock(const std::string& path) const {
  Errors failure = Errors::None;
  const Descriptor folder = OpenFolderOf(ResolveLinks(path), failure);
  if (!folder.IsOpen()) return nullptr;
  Descriptor locked(openat(folder.Number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return LockWithin(patience_, locked) ? std::make_unique<FolderLock>(std::move(locked)) : nullptr;
}

}  // namespace tresmor
