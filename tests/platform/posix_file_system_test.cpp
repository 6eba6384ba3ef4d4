// What only the file system of this machine shows.

#include "platform/posix/posix_file_system.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <thread>

#include "platform/file_world.h"
#include "platform/posix/posix_shell.h"

namespace tresmor {

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class PosixFiles : public testing::Test {
 protected:
  std::string At(const std::string& path) const { return world_->Root() + path; }
  Errors OpenFailure(const std::string& path) const {
    Errors failure = Errors::None;
    EXPECT_EQ(files_.Open(path, failure), nullptr);
    return failure;
  }

  const std::unique_ptr<FileWorld> world_ = MakePosixWorld();
  const FileSystem& files_ = world_->Files();
};

// The type that the table of mounts gives for a folder, where it is a mount point.
std::string MountType(const std::string& folder) {
  std::ifstream mounts("/proc/self/mounts");
  std::string device, at, type, rest, last;
  while (mounts >> device >> at >> type && std::getline(mounts, rest)) {
    if (at == folder) last = type;
  }
  return last;
}

// A variable of the environment while it lives.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    Set(value);
  }
  ~Variable() { Set(old_ ? old_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Set(const char* value) const { value != nullptr ? setenv(name_, value, 1) : unsetenv(name_); }

  const char* name_;
  std::optional<std::string> old_;
};

TEST_F(PosixFiles, KernelFoldersAreForbidden) {
  for (const char* folder : {"/proc", "/proc/self", "/sys", "/sys/kernel"}) {
    FolderListing listing;
    EXPECT_EQ(files_.List(folder, listing), Errors::None) << folder;
    EXPECT_TRUE(listing.forbidden) << folder;
    EXPECT_TRUE(listing.entries.empty()) << folder;
  }
}

TEST_F(PosixFiles, DevicesAreForbiddenButNotMemory) {
  FolderListing listing;
  if (MountType("/dev/shm") == "tmpfs") {
    EXPECT_EQ(files_.List("/dev/shm", listing), Errors::None);
    EXPECT_FALSE(listing.forbidden);
  }
  if (MountType("/dev") != "devtmpfs") GTEST_SKIP() << "/dev is no devtmpfs here";
  EXPECT_EQ(files_.List("/dev", listing), Errors::None);
  EXPECT_TRUE(listing.forbidden);
}

TEST_F(PosixFiles, DevicesAndSocketsAreNoFiles) {
  EXPECT_EQ(OpenFailure("/dev/null"), Errors::PathAccess);
  const int end = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  At("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(end, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(OpenFailure(At("socket")), Errors::PathAccess);
  FolderListing listing;
  ASSERT_EQ(files_.List(world_->Root(), listing), Errors::None);
  ASSERT_EQ(listing.entries.size(), 1u);
  EXPECT_EQ(listing.entries[0].kind, EntryKind::Other);
  close(end);
}

TEST_F(PosixFiles, AFifoInAFilesPlaceIsRefusedWithoutWaiting) {
  world_->MakeFifo(At("fifo"));
  EXPECT_EQ(OpenFailure(At("fifo")), Errors::PathAccess);
  files_.ReadAhead(At("fifo"), 0, 100);
  EXPECT_EQ(files_.Cached(At("fifo")), CacheState::Unknown);
}

TEST_F(PosixFiles, APathMayBeRelative) {
  world_->MakeFile(At("folder/file"), "12345");
  const int before = open(".", O_PATH | O_CLOEXEC);
  ASSERT_EQ(chdir(world_->Root().c_str()), 0);
  FileStat stat;
  EXPECT_EQ(files_.Stat("folder/file", stat), Errors::None);
  std::string around;  // longer than one call takes
  for (int i = 0; i < 1000; ++i) around += "folder/../";
  EXPECT_EQ(files_.Stat(around + "folder/file", stat), Errors::None);
  EXPECT_EQ(stat.size, 5);
  FolderListing listing;
  EXPECT_EQ(files_.List(around + std::string(5000, '/'), listing), Errors::None);
  EXPECT_EQ(listing.entries.size(), 1u);
  ASSERT_EQ(fchdir(before), 0);
  close(before);
}

TEST_F(PosixFiles, ALongPathWithoutSeparatorsIsABadName) {
  FileStat stat;
  EXPECT_EQ(files_.Stat(std::string(5000, 'n'), stat), Errors::BadFileName);
  EXPECT_EQ(files_.Stat(At(std::string(5000, 'n') + "/file"), stat), Errors::BadFileName);
}

TEST_F(PosixFiles, LongPathsLeakNoDescriptor) {
  std::string folder = "0";
  for (int i = 1; i < 1500; ++i) folder += "/level" + std::to_string(i);
  world_->MakeFile(At(folder + "/file"), "1");
  world_->WithFewFiles([&] {
    for (int i = 0; i < 20; ++i) {
      FolderListing listing;
      EXPECT_EQ(files_.List(At(folder), listing), Errors::None);
      FileStat stat;
      EXPECT_EQ(files_.Stat(At(folder + "/file"), stat), Errors::None);
      EXPECT_EQ(files_.Stat(At(folder + "/missing"), stat), Errors::FileNotFound);
      Errors failure = Errors::None;
      EXPECT_NE(files_.Open(At(folder + "/file"), failure), nullptr);
      EXPECT_EQ(files_.Open(At(folder + "/missing"), failure), nullptr);
      files_.ReadAhead(At(folder + "/file"), 0, 1);
      files_.Cached(At(folder + "/file"));
    }
  });
}

TEST_F(PosixFiles, DescriptorsDoNotReachOtherPrograms) {
  world_->MakeFile(At("file"), "1");
  const int lowestFree = open("/", O_PATH | O_CLOEXEC);
  close(lowestFree);
  Errors failure = Errors::None;
  const auto reader = files_.Open(At("file"), failure);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(fcntl(lowestFree, F_GETFD), FD_CLOEXEC);
}

TEST_F(PosixFiles, TheOpenLimitIsRaised) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit low{64, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &low), 0);
  const PosixFileSystem files;
  rlimit after{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &after), 0);
  EXPECT_EQ(after.rlim_cur, before.rlim_max);
  EXPECT_LT(files.OpenLimit(), after.rlim_cur);
  EXPECT_GE(files.OpenLimit(), after.rlim_cur / 2);
  setrlimit(RLIMIT_NOFILE, &before);
}

TEST_F(PosixFiles, TheCacheIsToldWhereTheKernelTells) {
  world_->MakeFile(At("file"), std::string(100'000, 'x'));
  const CacheState fresh = files_.Cached(At("file"));
  if (fresh == CacheState::Unknown) GTEST_SKIP() << "this kernel does not tell";
  EXPECT_EQ(fresh, CacheState::Warm);  // just written
  EXPECT_EQ(files_.Cached(At("missing")), CacheState::Unknown);

  const int file = open(At("file").c_str(), O_RDONLY | O_CLOEXEC);
  struct statfs info {};
  ASSERT_EQ(fstatfs(file, &info), 0);
  if (info.f_type == 0x01021994) GTEST_SKIP() << "the folder for temporary files is in memory for good";
  ASSERT_EQ(fsync(file), 0);
  ASSERT_EQ(posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED), 0);
  close(file);
  EXPECT_EQ(files_.Cached(At("file")), CacheState::Cold);
}

TEST_F(PosixFiles, TrashFoldersAreTheDesktops) {
  EXPECT_TRUE(files_.IsTrash("/home/somebody/.local/share/Trash"));
  EXPECT_TRUE(files_.IsTrash("/home/somebody/.local/share/Trash/"));
  EXPECT_TRUE(files_.IsTrash("/media/disk/.Trash-1000/"));
  EXPECT_TRUE(files_.IsTrash("/media/disk/.Trash"));
  EXPECT_FALSE(files_.IsTrash("/home/somebody/.local/share/Trash/files/"));
  EXPECT_FALSE(files_.IsTrash("/home/somebody/share/Trash"));
  EXPECT_FALSE(files_.IsTrash("/media/disk/.Trash-"));
  EXPECT_FALSE(files_.IsTrash("/media/disk/.Trash-1000a"));
  EXPECT_FALSE(files_.IsTrash("/media/disk/.Trash-1000/files"));
  EXPECT_FALSE(files_.IsTrash("/"));
  EXPECT_FALSE(files_.IsTrash(""));
}

TEST_F(PosixFiles, TheUsersOwnTrashMayLieElsewhere) {
  {
    const Variable home("XDG_DATA_HOME", "/data/of/me");
    const PosixFileSystem files;
    EXPECT_TRUE(files.IsTrash("/data/of/me/Trash/"));
    EXPECT_FALSE(files.IsTrash("/data/of/you/Trash/"));
  }
  const Variable home("XDG_DATA_HOME", "relative");  // not valid, as if not set
  EXPECT_FALSE(PosixFileSystem().IsTrash("relative/Trash"));
}

TEST(PosixShell, NamesTheFoldersOfTheSystem) {
  EXPECT_EQ(PosixShell().GetWinDir(), "/usr");
  EXPECT_EQ(PosixShell().GetProgramFilesDir(), "/opt");
}

}  // namespace

}  // namespace tresmor
