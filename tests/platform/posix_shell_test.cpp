// The desktop around the program on POSIX: the user's folders, and those that stay.
#include "platform/posix/posix_shell.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/posix/kept_folder.h"
#include "platform/posix/user_folders.h"
#include "platform/posix_shell_world.h"

namespace tresmor {
namespace {

TEST_F(PosixShellTest, FoldersAreThoseOfTheUsersList) {
  const ForNow home("HOME", At("me/"));
  const ForNow config("XDG_CONFIG_HOME", At("config"));
  for (const char* folder : {"me/Schreibtisch", "me/Desktop", "config", "my \"docs\""}) MakeFolder(folder);
  MakeFile("config/user-dirs.dirs",
           "# XDG_DESKTOP_DIR=\"$HOME/x\"\nXDG_DESKTOP_DIR=\"$HOME/Schreibtisch/\"\n"
           "  XDG_DOCUMENTS_DIR = \"" +
               At("my \\\"docs\\\"") + "\"\nXDG_DESKTOP_DIR=relative\nXDG_DESKTOP_DIR=\"relative\"\n" +
               "XDG_DESKTOP_DIR=\"$HOMELESS/x\"\nXDG_DESKTOP_DIR=\"/open\n");
  EXPECT_EQ(shell_.spFolder(0), At("me/Schreibtisch"));
  EXPECT_EQ(shell_.spFolder(5), At("my \"docs\""));
  EXPECT_EQ(shell_.spFolder(6), At("me"));
  EXPECT_EQ(shell_.spFolder(1), "");
  EXPECT_EQ(shell_.spFolder(-5), "");
}

TEST_F(PosixShellTest, WithoutAListFoldersHaveTheirUsualNames) {
  const ForNow home("HOME", At("me"));
  const ForNow config("XDG_CONFIG_HOME", "relative");  // not valid, as if not set
  MakeFolder("me/Desktop");
  EXPECT_EQ(shell_.spFolder(0), At("me/Desktop"));
  EXPECT_EQ(FindUserFolders().config, At("me/.config"));
}

TEST_F(PosixShellTest, AFolderThatDoesNotExistIsEmpty) {
  const ForNow home("HOME", At("nobody"));
  const ForNow config("XDG_CONFIG_HOME", "");
  EXPECT_EQ(shell_.spFolder(0), "");
  EXPECT_EQ(shell_.spFolder(5), "");
  EXPECT_EQ(shell_.spFolder(6), "");
  MakeFolder("nobody/.config");
  MakeFile("nobody/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/gone\"\nXDG_DESKTOP_DIR=\"$HOME\"\n");
  EXPECT_EQ(shell_.spFolder(5), "");
  EXPECT_EQ(shell_.spFolder(0), At("nobody"));
}

TEST_F(PosixShellTest, TheRootMayBeTheHome) {
  const ForNow home("HOME", "/");
  const ForNow config("XDG_CONFIG_HOME", "");
  EXPECT_EQ(FindUserFolders().config, "/.config");
  EXPECT_EQ(FindUserFolder(FindUserFolders(), "NONE", "usr"), "/usr");
  EXPECT_EQ(FindSettingsFile({"/", "/"}), "/tresmor/tresmor.ini");
  MakeFile("user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/usr\"\nXDG_DOCUMENTS_DIR=\"$HOME\"\n");
  EXPECT_EQ(FindUserFolder({"/", root_}, "DESKTOP", "none"), "/usr");
  EXPECT_EQ(FindUserFolder({"/", root_}, "DOCUMENTS", "none"), "/");
}

TEST_F(PosixShellTest, SettingsLieInTheFolderForThem) {
  EXPECT_EQ(FindSettingsFile({"/home/me", "/nowhere/config"}), "/nowhere/config/tresmor/tresmor.ini");
  EXPECT_EQ(FindSettingsFile({"", ""}), "");
}

TEST_F(PosixShellTest, WhatCanBeUndoneLiesInTheFolderForStates) {
  const ForNow home("HOME", At("me"));
  {
    const ForNow state("XDG_STATE_HOME", At("state"));
    EXPECT_EQ(FindUndoLog(FindUserFolders()), At("state/tresmor/undo"));
  }
  const ForNow state("XDG_STATE_HOME", "relative");
  EXPECT_EQ(FindUndoLog(FindUserFolders()), At("me/.local/state/tresmor/undo"));
  EXPECT_EQ(FindUndoLog({.home = "", .config = ""}), "");
}

class KeptFolderTest : public PosixShellTest {
 protected:
  bool IsKept(const std::string& folder, const std::vector<std::string>& places = {}) const {
    return IsKeptFolder(folder, places, {{"/dev/sda1", "/", "ext4"}, {"/dev/sdb1", At("disks/b"), "ext4"}});
  }
};

TEST_F(KeptFolderTest, MountPointsStayWithWhatIsAboveThem) {
  for (const char* folder : {"disks/b/sub", "disks/bb", "other"}) MakeFolder(folder);
  EXPECT_TRUE(IsKept("/"));
  EXPECT_TRUE(IsKept(root_));
  EXPECT_TRUE(IsKept(At("disks")));
  EXPECT_TRUE(IsKept(At("disks/b")));
  EXPECT_FALSE(IsKept(At("disks/b/sub")));
  EXPECT_FALSE(IsKept(At("disks/bb")));
  EXPECT_FALSE(IsKept(At("other")));
}

TEST_F(KeptFolderTest, PlacesStayWithWhatIsAboveThem) {
  for (const char* folder : {"a/keep/sub", "a/keeper", "other"}) MakeFolder(folder);
  const std::vector<std::string> places = {"", At("a/keep/"), At("a/keep/../not yet there")};
  EXPECT_TRUE(IsKept(At("a"), places));
  EXPECT_TRUE(IsKept(At("a/keep"), places));
  EXPECT_FALSE(IsKept(At("a/keep/sub"), places));
  EXPECT_FALSE(IsKept(At("a/keeper"), places));
  EXPECT_FALSE(IsKept(At("other"), places));
}

TEST_F(KeptFolderTest, LinksLeadNowhereElse) {
  MakeFolder("real/keep");
  std::filesystem::create_symlink(At("real"), At("link"));
  EXPECT_TRUE(IsKept(At("real"), {At("link/keep")}));
  EXPECT_TRUE(IsKept(At("link"), {At("real/keep")}));
  EXPECT_TRUE(IsKept(At("real/keep/.."), {At("real/keep")}));
}

TEST_F(KeptFolderTest, ARelativePlaceCounts) {
  const std::string here = std::filesystem::current_path();
  EXPECT_TRUE(IsKept(here, {"somewhere"}));
  EXPECT_FALSE(IsKept(here));
}

TEST_F(KeptFolderTest, WhatCantBeToldStays) {
  MakeFolder("a");
  EXPECT_FALSE(IsKept(At("a")));
  EXPECT_TRUE(IsKept(At("gone")));
  EXPECT_TRUE(IsKept(""));
  EXPECT_TRUE(IsKeptFolder(At("a"), {}, ReadMounts(At("no mounts"))));
}

TEST_F(PosixShellTest, TheHomeFolderAndTheDestinationStay) {
  const ForNow home("HOME", At("people/me"));
  for (const char* folder : {"people/me/empty", "people/you", "a/keep"}) MakeFolder(folder);
  for (const char* folder : {"people", "people/me", "a", "a/keep"}) {
    EXPECT_TRUE(shell_.MustStay(At(folder), At("a/keep"))) << folder;
  }
  EXPECT_FALSE(shell_.MustStay(At("people/me/empty"), At("a/keep")));
  EXPECT_FALSE(shell_.MustStay(At("people/you"), At("a/keep")));
  EXPECT_FALSE(shell_.MustStay(At("a"), ""));
  EXPECT_TRUE(shell_.MustStay("/", ""));
  EXPECT_TRUE(shell_.MustStay("/proc", ""));
}

TEST_F(PosixShellTest, AChoiceOfFoldersBeginsAtHome) {
  const ForNow home("HOME", At("me"));
  EXPECT_EQ(shell_.FirstFolder(), At("me"));
}

}  // namespace
}  // namespace tresmor
