#include "platform/posix/posix_trash_places.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/path.h"
#include "platform/posix/open_folder.h"
#include "platform/posix/short_path.h"
#include "platform/posix/trash_folder.h"

namespace tresmor {

namespace {

constexpr int kFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr mode_t kFolderOfThisUserAlone = 0700;

// Where a rename stays within: a mount, since it crosses none even if both show the same disk, and on it a device,
// since some file systems have several.
struct Volume {
  std::uint64_t mount = 0;
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
  friend bool operator==(const Volume&, const Volume&) = default;
};

struct FolderFacts {
  Volume volume;
  std::uint64_t inode = 0;
  mode_t mode = 0;
  uid_t owner = 0;
};

bool Ask(const Descriptor& folder, FolderFacts& facts) {
  struct statx info {};
  if (!folder.IsOpen()) return false;
  if (statx(folder.Number(), "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_MNT_ID, &info) != 0) return false;
  facts = {{info.stx_mnt_id, info.stx_dev_major, info.stx_dev_minor}, info.stx_ino, info.stx_mode, info.stx_uid};
  return true;
}

std::string FolderOf(const std::string& path) {
  const std::string folder = ParentOf(WithoutTail(path, PathStyle::Posix()), PathStyle::Posix());
  return folder.empty() ? "." : folder;
}

Descriptor OpenFolder(const std::string& folder) {
  const ShortPath at(folder);
  return at.Failure() == Errors::None ? Descriptor(openat(at.Folder(), at.Rest(), kFolder)) : Descriptor();
}

// Opens a folder of this volume, and makes it where it is missing, with those above it. None if it lies, or would lie,
// on another one.
Descriptor OpenOrMake(const std::string& folder, const Volume& volume) {
  Descriptor opened = OpenFolder(folder);
  const bool missing = !opened.IsOpen() && errno == ENOENT;
  FolderFacts facts;
  if (!missing) return Ask(opened, facts) && facts.volume == volume ? std::move(opened) : Descriptor();
  const std::string above = FolderOf(folder);
  const Descriptor parent = above == folder ? Descriptor() : OpenOrMake(above, volume);
  if (!parent.IsOpen()) return Descriptor();
  return OpenOrMakeFolder(parent.Number(), std::string(GetFileNameOf(folder, PathStyle::Posix())),
                          kFolderOfThisUserAlone);
}

// Opens `name` in a folder, and makes it where it is missing. None unless it is a real folder, this user's, and on this
// volume.
Descriptor OpenOwn(const Descriptor& parent, const std::string& name, const Volume& volume) {
  if (!parent.IsOpen()) return Descriptor();
  Descriptor own = OpenOrMakeFolder(parent.Number(), name, kFolderOfThisUserAlone, O_NOFOLLOW);
  FolderFacts facts;
  const bool mine = Ask(own, facts) && facts.owner == geteuid() && facts.volume == volume;
  return mine ? std::move(own) : Descriptor();
}

bool IsReady(const Descriptor& trash, const Volume& volume) {
  return OpenOwn(trash, "files", volume).IsOpen() && OpenOwn(trash, "info", volume).IsOpen();
}

// The folder for all users counts only if nobody can take others' folders out of it, and is no link to elsewhere.
Descriptor OpenShared(const Descriptor& top) {
  Descriptor shared(openat(top.Number(), std::string(kSharedTrash).c_str(), kFolder | O_NOFOLLOW));
  FolderFacts facts;
  return Ask(shared, facts) && (facts.mode & S_ISVTX) != 0 ? std::move(shared) : Descriptor();
}

// The highest folder from `folder` on upwards that is on its volume.
Descriptor ClimbToTop(Descriptor folder) {
  FolderFacts facts;
  for (bool more = Ask(folder, facts); more;) {
    Descriptor above(openat(folder.Number(), "..", kFolder));
    FolderFacts factsAbove;
    more = Ask(above, factsAbove) && factsAbove.volume == facts.volume && factsAbove.inode != facts.inode;
    if (!more) break;
    folder = std::move(above);
    facts = factsAbove;
  }
  return folder;
}

// Empty if the system doesn't tell.
std::string PathOf(const Descriptor& folder) {
  std::array<char, PATH_MAX> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(folder.Number());
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : "";
}

std::vector<TrashPlace> AtTop(const Descriptor& top, const Volume& volume, const std::string& realFolder) {
  const std::string path = PathOf(top);
  if (path.empty()) return {};
  const std::string user = std::to_string(geteuid());
  const std::string begin = AddTail(path, "/");
  if (IsReady(OpenOwn(OpenShared(top), user, volume), volume)) {
    return {{begin + std::string(kSharedTrash) + "/" + user, path, realFolder}};
  }
  const std::string own = std::string(kTrashOfUser) + user;
  if (IsReady(OpenOwn(top, own, volume), volume)) return {{begin + own, path, realFolder}};
  return {};
}

}  // namespace

PosixTrashPlaces::PosixTrashPlaces(std::string homeTrash) : homeTrash_(std::move(homeTrash)) {}

std::vector<TrashPlace> PosixTrashPlaces::Places(const std::string& path) {
  Descriptor folder = OpenFolder(FolderOf(path));
  FolderFacts facts;
  if (!Ask(folder, facts)) return {};
  const std::string realFolder = PathOf(folder);
  if (!homeTrash_.empty() && IsReady(OpenOrMake(homeTrash_, facts.volume), facts.volume)) {
    return {{homeTrash_, "", realFolder}};
  }
  return AtTop(ClimbToTop(std::move(folder)), facts.volume, realFolder);
}

}  // namespace tresmor
