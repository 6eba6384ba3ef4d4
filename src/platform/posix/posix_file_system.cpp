#include "platform/posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "platform/posix/open_limit.h"
#include "platform/posix/pseudo_file_system.h"
#include "platform/posix/regular_file.h"
#include "platform/posix/short_path.h"
#include "platform/posix/trash_folder.h"
#include "platform/posix/user_folders.h"

namespace tresmor {

namespace {

constexpr std::size_t kOtherNeeds = 32;  // descriptors left to the rest of the program
constexpr std::size_t kFewestFiles = 8;
constexpr std::size_t kTableSize = 8192;    // more than a search keeps open at once
constexpr std::size_t kListBuffer = 65536;  // a few hundred entries a call

bool IsHidden(std::string_view name) { return name.starts_with('.') && name != "." && name != ".."; }

EntryKind KindOfMode(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::File;
  return S_ISDIR(mode) ? EntryKind::Folder : EntryKind::Other;
}

FileIdentity IdentityOf(const struct stat& info) { return {info.st_dev, info.st_ino}; }

// Wraps for a time centuries away instead of overflowing; it is only ever compared for equality.
std::int64_t ChangedNs(const struct stat& info) {
  const auto seconds = static_cast<std::uint64_t>(info.st_ctim.tv_sec);
  return static_cast<std::int64_t>(seconds * 1'000'000'000 + static_cast<std::uint64_t>(info.st_ctim.tv_nsec));
}

FileStat ToFileStat(const struct stat& info, bool hidden) {
  FileStat stat;
  stat.kind = KindOfMode(info.st_mode);
  stat.hidden = hidden;
  stat.link = S_ISLNK(info.st_mode);
  stat.size = info.st_size;
  stat.modified = info.st_mtim.tv_sec;
  stat.changedNs = ChangedNs(info);
  stat.links = info.st_nlink;
  stat.identity = IdentityOf(info);
  return stat;
}

// Some file systems leave the kind of their entries open.
EntryKind KindOfEntry(int folder, const dirent64& entry) {
  switch (entry.d_type) {
    case DT_REG:
      return EntryKind::File;
    case DT_DIR:
      return EntryKind::Folder;
    case DT_UNKNOWN:
      break;
    default:
      return EntryKind::Other;
  }
  struct stat info {};
  if (fstatat(folder, entry.d_name, &info, AT_SYMLINK_NOFOLLOW) != 0) return EntryKind::Other;
  return KindOfMode(info.st_mode);
}

// Calls visit(entry, name) for each entry of one filled buffer.
template <typename Visit>
void ForEachEntry(const char* buffer, std::size_t filled, const Visit& visit) {
  for (std::size_t at = 0; at < filled;) {
    const auto& entry = *reinterpret_cast<const dirent64*>(buffer + at);
    at += entry.d_reclen;
    const std::string_view name = entry.d_name;
    if (name != "." && name != "..") visit(entry, name);
  }
}

Errors AppendEntries(int folder, const char* buffer, std::size_t filled, FolderListing& listing) {
  // Counted first: most folders fit into one buffer, and their listing then takes no byte more than it needs.
  std::size_t bytes = listing.names.size();
  std::size_t count = listing.entries.size();
  ForEachEntry(buffer, filled, [&](const dirent64&, std::string_view name) {
    bytes += name.size();
    ++count;
  });
  if (bytes > std::numeric_limits<std::uint32_t>::max()) return Errors::Overflow;
  if (bytes > listing.names.capacity()) listing.names.reserve(bytes);
  if (count > listing.entries.capacity()) listing.entries.reserve(std::max(count, 2 * listing.entries.capacity()));
  ForEachEntry(buffer, filled, [&](const dirent64& entry, std::string_view name) {
    listing.entries.push_back({static_cast<std::uint32_t>(listing.names.size()),
                               static_cast<std::uint16_t>(name.size()), KindOfEntry(folder, entry), IsHidden(name)});
    listing.names += name;
  });
  return Errors::None;
}

Errors ReadEntries(int folder, FolderListing& listing) {
  alignas(dirent64) thread_local char buffer[kListBuffer];
  for (;;) {
    const ssize_t got = getdents64(folder, buffer, sizeof buffer);
    if (got == 0) return Errors::None;
    if (got < 0) return PathFailure(errno);
    const Errors failure = AppendEntries(folder, buffer, static_cast<std::size_t>(got), listing);
    if (failure != Errors::None) return failure;
  }
}

Errors StatAt(int folder, const char* path, bool hidden, FileStat& stat) {
  struct stat info {};
  if (fstatat(folder, path, &info, AT_SYMLINK_NOFOLLOW) != 0) return PathFailure(errno);
  stat = ToFileStat(info, hidden);
  return Errors::None;
}

class PosixFileReader final : public FileReader {
 public:
  PosixFileReader(Descriptor file, std::int64_t size) : file_(std::move(file)), size_(size) {}

  std::int64_t Size() const override { return size_; }

  Result ReadAt(std::int64_t offset, std::span<char> into) override { return ReadFully(file_.Number(), offset, into); }

 private:
  const Descriptor file_;
  const std::int64_t size_;
};

// A name with the NUL behind it that calls want and names in a listing don't have.
class EndedName {
 public:
  explicit EndedName(std::string_view name) {
    if (name.size() >= sizeof text_ || name.find('\0') != std::string_view::npos) return;
    text_[name.copy(text_, sizeof text_)] = '\0';
    fits_ = true;
  }
  bool Fits() const { return fits_; }
  const char* Text() const { return text_; }

 private:
  char text_[PATH_MAX];  // some file systems count characters, so that a name may have more than NAME_MAX bytes
  bool fits_ = false;
};

class PosixFolder final : public Folder {
 public:
  explicit PosixFolder(Descriptor folder) : folder_(std::move(folder)) {}

  Errors Stat(std::string_view name, FileStat& stat) const override {
    const EndedName ended(name);
    return ended.Fits() ? StatAt(folder_.Number(), ended.Text(), IsHidden(name), stat) : Errors::BadFileName;
  }

  std::unique_ptr<FileReader> Open(std::string_view name, Errors& failure) const override {
    const EndedName ended(name);
    failure = Errors::BadFileName;
    if (!ended.Fits()) return nullptr;
    struct stat info {};
    Descriptor file = OpenRegularFileAt(folder_.Number(), ended.Text(), info, failure);
    return file.IsOpen() ? std::make_unique<PosixFileReader>(std::move(file), info.st_size) : nullptr;
  }

 private:
  const Descriptor folder_;
};

std::size_t FilesToOpen() { return std::max(RaiseOpenLimit(), kFewestFiles + kOtherNeeds) - kOtherNeeds; }

void GrowDescriptorTable(std::size_t limit) {
  const Descriptor any(open("/", O_PATH | O_CLOEXEC));
  if (!any.IsOpen()) return;
  const Descriptor last(fcntl(any.Number(), F_DUPFD_CLOEXEC, static_cast<int>(std::min(limit, kTableSize) - 1)));
}

}  // namespace

PosixFileSystem::PosixFileSystem() : openLimit_(FilesToOpen()), trashHome_(HomeTrash(FindUserFolders())) {
  GrowDescriptorTable(openLimit_);
}

Errors PosixFileSystem::List(const std::string& folder, FolderListing& listing) const {
  listing.identity = {};
  listing.size = 0;
  listing.changedNs = 0;
  listing.forbidden = false;
  listing.names.clear();
  listing.entries.clear();
  const ShortPath at(folder);
  if (at.Failure() != Errors::None) return at.Failure();
  const Descriptor opened(openat(at.Folder(), at.Rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat info {};
  if (!opened.IsOpen() || fstat(opened.Number(), &info) != 0) return PathFailure(errno);
  listing.identity = IdentityOf(info);
  listing.size = info.st_size;
  listing.changedNs = ChangedNs(info);
  listing.forbidden = IsOnPseudoFileSystem(opened.Number(), info.st_dev);
  return listing.forbidden ? Errors::None : ReadEntries(opened.Number(), listing);
}

Errors PosixFileSystem::Stat(const std::string& path, FileStat& stat) const {
  const ShortPath at(path);
  if (at.Failure() != Errors::None) return at.Failure();
  std::string_view name = path;
  while (name.ends_with('/')) name.remove_suffix(1);
  return StatAt(at.Folder(), at.Rest(), IsHidden(GetFileNameOf(name, Style())), stat);
}

std::unique_ptr<FileReader> PosixFileSystem::Open(const std::string& path, Errors& failure) const {
  struct stat info {};
  Descriptor file = OpenRegularFile(path, info, failure);
  return file.IsOpen() ? std::make_unique<PosixFileReader>(std::move(file), info.st_size) : nullptr;
}

std::unique_ptr<Folder> PosixFileSystem::OpenFolder(const std::string& folder, Errors& failure) const {
  const ShortPath at(folder);
  failure = at.Failure();
  if (failure != Errors::None) return nullptr;
  Descriptor opened(openat(at.Folder(), at.Rest(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!opened.IsOpen()) failure = PathFailure(errno);
  return opened.IsOpen() ? std::make_unique<PosixFolder>(std::move(opened)) : nullptr;
}

CacheState PosixFileSystem::Cached(const std::string& path) const {
  // As linux/mman.h of a kernel from 6.5 on has them; older headers don't, and older kernels refuse the call.
  constexpr long kCacheStat = 451;
  struct Range {
    std::uint64_t offset, length;
  };
  struct Pages {
    std::uint64_t cached, dirty, inWriteback, evicted, recentlyEvicted;
  };
  struct stat info {};
  Errors failure = Errors::None;
  const Descriptor file = OpenRegularFile(path, info, failure);
  if (!file.IsOpen() || info.st_size == 0) return CacheState::Unknown;
  Range first{0, 1};
  Pages pages{};
  if (syscall(kCacheStat, file.Number(), &first, &pages, 0) != 0) return CacheState::Unknown;
  return pages.cached > 0 ? CacheState::Warm : CacheState::Cold;
}

void PosixFileSystem::ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const {
  struct stat info {};
  Errors failure = Errors::None;
  const Descriptor file = OpenRegularFile(path, info, failure);
  if (file.IsOpen()) posix_fadvise(file.Number(), offset, length, POSIX_FADV_WILLNEED);
}

bool PosixFileSystem::IsTrash(std::string_view folder) const { return IsTrashFolder(folder, trashHome_); }

}  // namespace tresmor
