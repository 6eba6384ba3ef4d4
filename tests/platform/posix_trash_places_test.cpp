// Where the trash is, by freedesktop.org's rules.
#include "platform/posix/posix_trash_places.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_world.h"
#include "platform/own_system.h"
#include "platform/posix/posix_file_changes.h"
#include "platform/posix/trash_folder.h"

namespace tresmor {

namespace {

class PosixTrash : public testing::Test {
 protected:
  std::string At(const std::string& path) const { return world_->Root() + path; }
  static struct stat Stat(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(lstat(path.c_str(), &info), 0) << path;
    return info;
  }
  static bool Exists(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0;
  }
  TrashPlace Place(const std::string& path) {
    const std::vector<TrashPlace> places = places_.Places(path, why_);
    EXPECT_LE(places.size(), 1U);
    return places.empty() ? TrashPlace() : places[0];
  }
  // That a file can go there from `path`.
  void ExpectUsable(const std::string& trash, const std::string& path) {
    for (const std::string& folder : {trash, trash + "/files", trash + "/info"}) {
      EXPECT_TRUE(S_ISDIR(Stat(folder).st_mode)) << folder;
      EXPECT_EQ(Stat(folder).st_mode & 07777, 0700U) << folder;
      EXPECT_EQ(Stat(folder).st_uid, geteuid()) << folder;
    }
    EXPECT_EQ(PosixFileChanges().Rename(path, trash + "/files/thrown away"), Errors::None);
    EXPECT_EQ(PosixFileChanges().Rename(trash + "/files/thrown away", path), Errors::None);
  }
  // Runs `work` with another disk at At("disk"), with a file on it.
  bool WithDisk(const std::function<void()>& work) {
    world_->MakeFolder(At("disk"));
    return WithOwnMounts([&] {
      ASSERT_EQ(mount("tmpfs", At("disk").c_str(), "tmpfs", 0, "mode=0755"), 0);
      world_->MakeFile(At("disk/a/file"), "1");
      work();
    });
  }
  std::string OfUser(const std::string& name) const { return name + std::to_string(geteuid()); }

  const std::unique_ptr<FileWorld> world_ = MakePosixWorld();
  // That there is none, beside this home trash, and why.
  void ExpectNone(const std::string& home, const std::string& path, Errors failure, const std::string& at) {
    EXPECT_TRUE(PosixTrashPlaces(home).Places(path, why_).empty());
    EXPECT_EQ(why_.failure, failure);
    EXPECT_EQ(why_.at, at);
  }

  TrashFailure why_;
  PosixTrashPlaces places_{At("home/.local/share/Trash")};
};

TEST_F(PosixTrash, OnTheDiskOfTheHomeFolderItIsTheUsersOwn) {
  world_->MakeFolder(At("home"));
  world_->MakeFile(At("elsewhere/file"), "1");
  const TrashPlace place = Place(At("elsewhere/file"));
  EXPECT_EQ(place.folder, At("home/.local/share/Trash"));
  EXPECT_EQ(place.topFolder, "");
  ExpectUsable(place.folder, At("elsewhere/file"));
  EXPECT_EQ(Place(At("elsewhere/")).folder, place.folder);  // a folder
  EXPECT_EQ(Place(At("elsewhere/file")).folder, place.folder);
}

TEST_F(PosixTrash, TheWayToAFileIsTheRealOneWhicheverTrashItGoesTo) {
  world_->MakeFolder(At("home"));
  world_->MakeFile(At("real/in/file"), "1");
  world_->MakeLink(At("linked"), At("real/in"));
  EXPECT_EQ(Place(At("linked/../in/file")).realFolder, At("real/in"));
  EXPECT_EQ(Place(At("linked/file")).folder, At("home/.local/share/Trash"));
}

TEST_F(PosixTrash, TheUsersOwnMayBeALinkOnTheSameDisk) {
  world_->MakeFolder(At("home/.local/share"));
  world_->MakeFolder(At("kept here"));
  world_->MakeLink(At("home/.local/share/Trash"), At("kept here"));
  world_->MakeFile(At("file"), "1");
  EXPECT_EQ(Place(At("file")).folder, At("home/.local/share/Trash"));
  EXPECT_TRUE(Exists(At("kept here/files")));
}

TEST_F(PosixTrash, AnotherDiskHasItsOwnAtItsTop) {
  const bool mounted = WithDisk([&] {
    world_->MakeFolder(At("disk/a/b/c"));
    world_->MakeFile(At("disk/a/b/c/deep"), "1");
    const std::string own = At("disk/.Trash-") + std::to_string(geteuid());
    const TrashPlace place = Place(At("disk/a/b/c/deep"));
    EXPECT_EQ(place.folder, own);
    EXPECT_EQ(place.topFolder, At("disk"));
    ExpectUsable(own, At("disk/a/b/c/deep"));
    EXPECT_EQ(Place(At("disk/a")).folder, own);
    EXPECT_FALSE(Exists(At("disk/.Trash")));
    EXPECT_FALSE(Exists(At("home")));  // nothing is made that isn't used
    EXPECT_TRUE(IsTrashFolder(own, ""));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, OfAllLinksOnAPathTheDiskIsFound) {
  world_->MakeLink(At("link"), At("disk/a"));
  const bool mounted = WithDisk([&] {
    const TrashPlace place = Place(At("link/file"));
    EXPECT_EQ(place.folder, At("disk/.Trash-") + std::to_string(geteuid()));
    EXPECT_EQ(place.topFolder, At("disk"));
    EXPECT_EQ(place.realFolder, At("disk/a"));
    EXPECT_EQ(Place(At("disk/a/../a/./file")).realFolder, At("disk/a"));
    EXPECT_EQ(Place(At("disk/a")).realFolder, At("disk"));
    EXPECT_NE(Place(At("link")).topFolder, At("disk"));  // the link itself lies here
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, AFolderForAllUsersComesFirst) {
  const bool mounted = WithDisk([&] {
    world_->MakeFolder(At("disk/.Trash"));
    ASSERT_EQ(chmod(At("disk/.Trash").c_str(), 01777), 0);
    const TrashPlace place = Place(At("disk/a/file"));
    EXPECT_EQ(place.folder, OfUser(At("disk/.Trash/")));
    EXPECT_EQ(place.topFolder, At("disk"));
    ExpectUsable(place.folder, At("disk/a/file"));
    EXPECT_FALSE(Exists(OfUser(At("disk/.Trash-"))));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

// The top of the disk fails in the same way.
TEST_F(PosixTrash, WhyTheUsersOwnCannotBeMadeIsTold) {
  const bool mounted = WithDisk([&] {
    const std::string home = At("disk/home/.local/share/Trash");
    for (const auto& [error, failure] :
         {std::pair(ENOSPC, Errors::DiskFull), std::pair(EACCES, Errors::PermissionDenied),
          std::pair(EROFS, Errors::PermissionDenied), std::pair(EMFILE, Errors::TooManyFiles)}) {
      EXPECT_TRUE(WithFailingCall(SYS_mkdirat, error, [&] { ExpectNone(home, At("disk/a/file"), failure, home); }));
    }
    EXPECT_TRUE(WithFailingCall(SYS_openat, EMFILE,
                                [&] { ExpectNone(home, At("disk/a/file"), Errors::TooManyFiles, At("disk/a")); }));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, OnAnotherDiskTheReasonIsThatOfItsTop) {
  const std::string home = At("home/.local/share/Trash");
  world_->MakeFile(home, "no folder, but that is no matter there");
  const bool mounted = WithDisk([&] {
    const std::string own = OfUser(At("disk/.Trash-"));
    world_->MakeFile(own, "1");
    ExpectNone(home, At("disk/a/file"), Errors::PathAccess, own);
    std::filesystem::remove(own);
    ASSERT_EQ(mount("", At("disk").c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr), 0);
    ExpectNone(home, At("disk/a/file"), Errors::PermissionDenied, own);
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

// Its top has no trash that could be made, and the home's is where one would look.
TEST_F(PosixTrash, OnTheDiskOfTheHomeFolderTheReasonIsThatOfTheUsersOwn) {
  const bool mounted = WithDisk([&] {
    const std::string home = At("disk/home/.local/share/Trash");
    world_->MakeFile(home, "no folder");
    world_->MakeFile(OfUser(At("disk/.Trash-")), "none either");
    ExpectNone(home, At("disk/a/file"), Errors::PathAccess, home);
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, AFolderForAllUsersMustBeSafe) {
  const bool mounted = WithDisk([&] {
    const std::string own = OfUser(At("disk/.Trash-"));
    world_->MakeFolder(At("disk/.Trash"));
    ASSERT_EQ(chmod(At("disk/.Trash").c_str(), 0777), 0);  // anyone may take away what is others'
    EXPECT_EQ(Place(At("disk/a/file")).folder, own);
    EXPECT_FALSE(Exists(OfUser(At("disk/.Trash/"))));
    std::filesystem::remove(At("disk/.Trash"));
    world_->MakeFolder(At("disk/real"));
    ASSERT_EQ(chmod(At("disk/real").c_str(), 01777), 0);
    world_->MakeLink(At("disk/.Trash"), "real");
    EXPECT_EQ(Place(At("disk/a/file")).folder, own);
    EXPECT_FALSE(Exists(OfUser(At("disk/real/"))));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, ALinkOrAnothersFolderIsNoTrash) {
  const bool mounted = WithDisk([&] {
    const std::string own = OfUser(At("disk/.Trash-"));
    world_->MakeFolder(At("disk/real"));
    world_->MakeLink(own, "real");
    EXPECT_TRUE(places_.Places(At("disk/a/file"), why_).empty());
    EXPECT_FALSE(Exists(At("disk/real/files")));
    std::filesystem::remove(own);
    world_->MakeFolder(own);
    ASSERT_EQ(chown(own.c_str(), 1234, 1234), 0);
    EXPECT_TRUE(places_.Places(At("disk/a/file"), why_).empty());
    EXPECT_FALSE(Exists(own + "/files"));
    // What is wrong with the user's folder in the shared one isn't wrong with the disk's.
    std::filesystem::remove(own);
    world_->MakeFile(OfUser(At("disk/.Trash/")), "");
    ASSERT_EQ(chmod(At("disk/.Trash").c_str(), 01777), 0);
    EXPECT_EQ(Place(At("disk/a/file")).folder, own);
    std::filesystem::remove(own + "/files");
    world_->MakeLink(own + "/files", "../real");
    EXPECT_TRUE(places_.Places(At("disk/a/file"), why_).empty());
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, ADiskThatCantBeWrittenHasNone) {
  const bool mounted = WithDisk([&] {
    ASSERT_EQ(mount("", At("disk").c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr), 0);
    EXPECT_TRUE(places_.Places(At("disk/a/file"), why_).empty());
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

// No rename leads out of a mount, even if the same disk lies on both sides.
TEST_F(PosixTrash, AFolderMountedAtAnotherPlaceIsADiskOfItsOwn) {
  world_->MakeFolder(At("home"));
  world_->MakeFile(At("shown/a/file"), "1");
  world_->MakeFolder(At("view"));
  const bool mounted = WithOwnMounts([&] {
    ASSERT_EQ(mount(At("shown").c_str(), At("view").c_str(), nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(Stat(At("view/a")).st_dev, Stat(At("home")).st_dev);
    const TrashPlace place = Place(At("view/a/file"));
    EXPECT_EQ(place.topFolder, At("view"));
    ExpectUsable(place.folder, At("view/a/file"));
    EXPECT_EQ(Place(At("shown/a/file")).folder, At("home/.local/share/Trash"));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, TellsWhatLiesInATrashAlready) {
  const std::string trash = At("home/.local/share/Trash");
  world_->MakeFolder(trash + "/files/in/one");
  world_->MakeLink(At("linked"), "home/.local/share/Trash/files");
  world_->MakeLink(At("me"), "home");
  for (const char* path : {"home/.local/share/Trash/files/in/one", "home/.local/share/Trash/info",
                           "me/.local/share/Trash/files/in", "linked/in"}) {
    EXPECT_EQ(Place(At(path)).within, trash) << path;
  }
  EXPECT_EQ(PosixTrashPlaces(At("me/.local/share/Trash")).Places(trash + "/files/in", why_).at(0).within, trash);
  for (const char* path : {"home/.Trash-7/files/one", "home/old/.local/share/Trash/files/one", "home/.Trash"}) {
    world_->MakeFile(At(path), "1");
    EXPECT_EQ(Place(At(path)).within, "") << path;
    std::filesystem::remove_all(At("home/.Trash"));
  }
}

TEST_F(PosixTrash, TellsWhatLiesInEitherTrashOfADisk) {
  const bool mounted = WithDisk([&] {
    world_->MakeFile(OfUser(At("disk/.Trash-")) + "/files/one", "1");
    world_->MakeFile(OfUser(At("disk/.Trash/")) + "/files/two", "1");
    world_->MakeFile(At("disk/.Trash-elsewhere/files/three"), "1");
    ASSERT_EQ(chmod(At("disk/.Trash").c_str(), 01777), 0);
    EXPECT_EQ(Place(OfUser(At("disk/.Trash-")) + "/files/one").within, OfUser(At("disk/.Trash-")));
    EXPECT_EQ(Place(OfUser(At("disk/.Trash/")) + "/files/two").within, OfUser(At("disk/.Trash/")));
    EXPECT_EQ(Place(At("disk/.Trash-elsewhere/files/three")).within, "");
    EXPECT_EQ(Place(At("disk/a/file")).within, "");
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, LongPathsHaveATrashToo) {
  world_->MakeFolder(At("home"));
  std::string folder = "long";
  for (int i = 0; i < 60; ++i) folder += "/" + std::string(200, 'd');
  world_->MakeFile(At(folder + "/file"), "1");
  EXPECT_EQ(Place(At(folder + "/file")).folder, At("home/.local/share/Trash"));
  const bool mounted = WithDisk([&] {
    world_->MakeFile(At("disk/" + folder + "/file"), "1");
    EXPECT_EQ(Place(At("disk/" + folder + "/file")).topFolder, At("disk"));
  });
  if (!mounted) GTEST_SKIP() << kNoMounts;
}

TEST_F(PosixTrash, WhatIsNotThereHasNone) {
  world_->MakeFolder(At("home"));
  EXPECT_TRUE(places_.Places(At("missing/file"), why_).empty());
  EXPECT_TRUE(places_.Places(std::string("/a\0b/c", 6), why_).empty());
  EXPECT_FALSE(Exists(At("home/.local")));
}

TEST_F(PosixTrash, TheHomeTrashIsBesideWhatProgramsKeep) {
  EXPECT_EQ(HomeTrash({.home = "/me", .config = "/me/c", .data = "/me/d"}), "/me/d/Trash");
  EXPECT_EQ(HomeTrash({.home = "", .config = "", .data = ""}), "");
}

}  // namespace

}  // namespace tresmor
