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

// A folder that was to be opened: open, or with the reason, or with neither, if what stands there isn't what was meant.
struct Opened {
  Descriptor folder;
  Errors failure = Errors::None;
  bool IsOpen() const { return folder.IsOpen(); }
};

// Right behind the call that opened it.
Opened WithReason(Descriptor folder) {
  const Errors failure = folder.IsOpen() ? Errors::None : PathFailure(errno);
  return {std::move(folder), failure};
}

Errors Ask(const Descriptor& folder, FolderFacts& facts) {
  struct statx info {};
  constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_MNT_ID;
  if (statx(folder.Number(), "", AT_EMPTY_PATH, kWanted, &info) != 0) return PathFailure(errno);
  facts = {{info.stx_mnt_id, info.stx_dev_major, info.stx_dev_minor}, info.stx_ino, info.stx_mode, info.stx_uid};
  return Errors::None;
}

// Keeps it if its facts are right.
template <class Right>
Opened If(Opened opened, const Right& right) {
  FolderFacts facts;
  if (!opened.IsOpen()) return opened;
  const Errors failure = Ask(opened.folder, facts);
  if (failure == Errors::None && right(facts)) return opened;
  return {Descriptor(), failure};
}

std::string FolderOf(const std::string& path) {
  const std::string folder = ParentOf(WithoutTail(path, PathStyle::Posix()), PathStyle::Posix());
  return folder.empty() ? "." : folder;
}

Opened OpenFolder(const std::string& folder) {
  const ShortPath at(folder);
  if (at.Failure() != Errors::None) return {Descriptor(), at.Failure()};
  return WithReason(Descriptor(openat(at.Folder(), at.Rest(), kFolder)));
}

// Opens a folder of this volume, and makes it where it is missing, with those above it. One that lies, or would lie, on
// another volume isn't meant.
Opened OpenOrMake(const std::string& folder, const Volume& volume) {
  Opened opened = OpenFolder(folder);
  const std::string above = FolderOf(folder);
  if (opened.IsOpen()) return If(std::move(opened), [&](const FolderFacts& facts) { return facts.volume == volume; });
  if (above == folder) return opened;
  const Opened parent = OpenOrMake(above, volume);
  if (!parent.IsOpen()) return {Descriptor(), parent.failure};
  if (opened.failure != Errors::FileNotFound) return opened;
  return WithReason(OpenOrMakeFolder(parent.folder.Number(), std::string(GetFileNameOf(folder, PathStyle::Posix())),
                                     kFolderOfThisUserAlone));
}

// Opens `name` in a folder, and makes it where it is missing. Meant is a real folder, this user's, and on this volume.
Opened OpenOwn(const Opened& parent, const std::string& name, const Volume& volume) {
  if (!parent.IsOpen()) return {Descriptor(), parent.failure};
  return If(WithReason(OpenOrMakeFolder(parent.folder.Number(), name, kFolderOfThisUserAlone, O_NOFOLLOW)),
            [&](const FolderFacts& facts) { return facts.owner == geteuid() && facts.volume == volume; });
}

// The trash folder if all is in it that belongs there.
Opened Ready(Opened trash, const Volume& volume) {
  for (const char* name : {"files", "info"}) {
    if (Opened in = OpenOwn(trash, name, volume); !in.IsOpen()) return in;
  }
  return trash;
}

// The folder for all users counts only if nobody can take others' folders out of it, and is no link to elsewhere.
Opened OpenShared(const Opened& top) {
  return If(
      WithReason(Descriptor(openat(top.folder.Number(), std::string(kSharedTrash).c_str(), kFolder | O_NOFOLLOW))),
      [](const FolderFacts& facts) { return (facts.mode & S_ISVTX) != 0; });
}

// The highest folder from `folder` on upwards that is on its volume.
Opened ClimbToTop(Opened folder, FolderFacts facts) {
  for (;;) {
    Descriptor above(openat(folder.folder.Number(), "..", kFolder));
    FolderFacts factsAbove;
    const bool more = above.IsOpen() && Ask(above, factsAbove) == Errors::None && factsAbove.volume == facts.volume &&
                      factsAbove.inode != facts.inode;
    if (!more) return folder;
    folder.folder = std::move(above);
    facts = factsAbove;
  }
}

// Empty if the system doesn't tell.
std::string PathOf(const Descriptor& folder) {
  std::array<char, PATH_MAX> path{};
  const std::string link = "/proc/self/fd/" + std::to_string(folder.Number());
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : "";
}

// Of this user, below the top of a disk: in the shared folder, and beside it.
std::string InShared() { return std::string(kSharedTrash) + "/" + std::to_string(geteuid()); }
std::string OwnName() { return std::string(kTrashOfUser) + std::to_string(geteuid()); }

std::vector<TrashPlace> AtTop(const Opened& top, const Volume& volume, TrashFailure& why) {
  const std::string path = PathOf(top.folder);
  if (path.empty()) return {};
  const std::string begin = AddTail(path, "/");
  if (Ready(OpenOwn(OpenShared(top), std::to_string(geteuid()), volume), volume).IsOpen()) {
    return {{begin + InShared(), path}};
  }
  const Opened trash = Ready(OpenOwn(top, OwnName(), volume), volume);
  if (trash.IsOpen()) return {{begin + OwnName(), path}};
  why = {trash.failure, begin + OwnName()};
  return {};
}

// Which of the trash folders at the top of its disk a folder without links on its path lies in, or is.
std::string TrashAround(const std::string& realFolder) {
  if (realFolder.find("/" + std::string(kSharedTrash)) == std::string::npos) return "";
  Opened folder = OpenFolder(realFolder);
  FolderFacts facts;
  if (!folder.IsOpen() || Ask(folder.folder, facts) != Errors::None) return "";
  const std::string top = AddTail(PathOf(ClimbToTop(std::move(folder), facts).folder), "/");
  for (const std::string& trash : {top + InShared(), top + OwnName()}) {
    if (IsOrLiesBelow(realFolder, trash, PathStyle::Posix())) return trash;
  }
  return "";
}

}  // namespace

PosixTrashPlaces::PosixTrashPlaces(std::string homeTrash) : homeTrash_(std::move(homeTrash)) {}

std::vector<TrashPlace> PosixTrashPlaces::Places(const std::string& path, TrashFailure& why) {
  Opened folder = OpenFolder(FolderOf(path));
  FolderFacts facts;
  why = {folder.IsOpen() ? Ask(folder.folder, facts) : folder.failure, FolderOf(path)};
  if (why.failure != Errors::None) return {};
  const std::string realFolder = PathOf(folder.folder);
  TrashFailure home;
  if (!homeTrash_.empty()) {
    const Opened trash = Ready(OpenOrMake(homeTrash_, facts.volume), facts.volume);
    if (trash.IsOpen()) {
      const std::string real = PathOf(trash.folder);
      const bool isWithin = !real.empty() && IsOrLiesBelow(realFolder, real, PathStyle::Posix());
      return {{homeTrash_, "", realFolder, isWithin ? real : TrashAround(realFolder)}};
    }
    home = {trash.failure, homeTrash_};
  }
  auto places = AtTop(ClimbToTop(std::move(folder), facts), facts.volume, why);
  for (TrashPlace& place : places) {
    place.realFolder = realFolder;
    place.within = TrashAround(realFolder);
  }
  if (home.failure != Errors::None) why = home;
  return places;
}

}  // namespace tresmor
