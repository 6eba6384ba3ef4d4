// The desktop around the program on POSIX: the user's folders, disks, and programs that are started.
#include "platform/posix/posix_shell.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/posix/fixed_disk.h"
#include "platform/posix/kept_folder.h"
#include "platform/posix/mount_table.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/run_detached.h"
#include "platform/posix/user_folders.h"

namespace tresmor {
namespace {

// A variable of the environment for the time of a test.
class ForNow {
 public:
  ForNow(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~ForNow() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
  ForNow(const ForNow&) = delete;
  ForNow& operator=(const ForNow&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

class PosixShellTest : public testing::Test {
 protected:
  PosixShellTest() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_shell_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    root_ = std::filesystem::canonical(pattern);
  }
  ~PosixShellTest() override { std::filesystem::remove_all(root_); }

  std::string At(const std::string& path) const { return root_ + "/" + path; }
  void MakeFolder(const std::string& path) const { std::filesystem::create_directories(At(path)); }
  void MakeFile(const std::string& path, const std::string& content) const { std::ofstream(At(path)) << content; }
  // A program that tells where and with what it was called.
  void MakeProgram(const std::string& name) const {
    MakeFile(name, "#!/bin/sh\n{ echo \"$0\"; pwd; for word; do echo \"<$word>\"; done; } >'" + At("told") + "'\n");
    ASSERT_EQ(chmod(At(name).c_str(), 0755), 0);
  }
  // Wants to be read before the program can go on.
  void MakeTold() const { ASSERT_EQ(mkfifo(At("told").c_str(), 0600), 0); }
  // Waits for the program.
  std::string AllTold() const {
    std::ifstream told(At("told"));
    return {std::istreambuf_iterator<char>(told), {}};
  }
  // The same without the program's folder.
  std::string Told() const {
    const std::string text = AllTold();
    return text.substr(text.rfind('/', text.find('\n')) + 1);
  }

  std::string root_;
  PosixShell shell_;
};

// --- Folders

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

// --- Disks

class FixedDiskTest : public PosixShellTest {
 protected:
  FixedDiskTest() {
    MakeFile("mounts",
             "overlay / overlay rw 0 0\n"
             "/dev/sda2 /home ext4 rw 0 0\n"
             "/dev/sdb1 /media/stick vfat rw 0 0\n"
             "/dev/sdc1 /mnt/my\\040disk fuseblk rw 0 0\n"
             "/dev/sr0 /media/cd iso9660 ro 0 0\n"
             "/dev/sr1 /media/dvd udf ro 0 0\n"
             "server:/export /net nfs4 rw 0 0\n"
             "//server/share /share cifs rw 0 0\n"
             "me@host: /remote fuse.sshfs rw 0 0\n"
             "/dev/nbd0 /block ext4 rw 0 0\n"
             "/dev/rbd0 /ceph ext4 rw 0 0\n"
             "/dev/drbd1 /mirror ext4 rw 0 0\n"
             "/dev/loop3 /snap squashfs ro 0 0\n"
             "/dev/fuse /run/doc fuse.portal rw 0 0\n"
             "tmpfs /tmp tmpfs rw 0 0\n"
             "pool/data /pool zfs rw 0 0\n"
             "/dev/sda3 /covered ext4 rw 0 0\n"
             "server:/other /covered nfs rw 0 0\n");
  }
  bool IsFixed(const std::string& root) const {
    return IsFixedDisk(At("mounts"), root, [](const std::string& device) { return device == "/dev/sdb1"; });
  }
};

TEST_F(FixedDiskTest, DisksOfThisMachineAreFixed) {
  for (const char* root : {"/", "/home", "/home/", "/mnt/my disk/", "/pool"}) EXPECT_TRUE(IsFixed(root)) << root;
}

TEST_F(FixedDiskTest, RemovableDisksAndDiscsAndNetworksAreNot) {
  for (const char* root : {"/media/stick", "/media/cd", "/media/dvd/", "/net", "/share", "/remote", "/block", "/ceph",
                           "/mirror", "/snap", "/run/doc", "/tmp", "/covered"}) {
    EXPECT_FALSE(IsFixed(root)) << root;
  }
}

TEST_F(FixedDiskTest, WhatIsNoRootIsNot) {
  for (const char* root : {"", "home", "/home/me", "/mnt/my\\040disk", "//", "/home//"}) {
    EXPECT_FALSE(IsFixed(root)) << root;
  }
  EXPECT_FALSE(IsFixedDisk(At("no mounts"), "/home", [](const std::string&) { return false; }));
}

TEST_F(FixedDiskTest, TheRealTableIsRead) {
  EXPECT_TRUE(shell_.IsLocalDrive("/"));
  EXPECT_FALSE(shell_.IsLocalDrive("/proc"));
  EXPECT_FALSE(shell_.IsLocalDrive(root_));
}

TEST_F(FixedDiskTest, WhatIsNoBlockDeviceHasNoNumberAndIsNotRemovable) {
  for (const std::string& path : {At("mounts"), At("nothing"), std::string("/dev/null")}) {
    EXPECT_EQ(BlockNumber(path), "") << path;
  }
  EXPECT_FALSE(IsRemovable("/sys", ""));
}

// The kernel's account of devices as it stands below /sys, with its links.
class SysfsTest : public PosixShellTest {
 protected:
  // Disks in their folders below "devices", with the numbers 8:0, 8:16, ...
  SysfsTest() {
    MakeDisk("pci/ata/block/sda", "8:0", '0');
    MakePart("pci/ata/block/sda/sda2", "8:2");
    MakeDisk("pci/nvme/nvme0/nvme0n1", "259:0", '0');
    MakePart("pci/nvme/nvme0/nvme0n1/nvme0n1p1", "259:1");
    MakeDisk("pci/usb/stick/block/sdb", "8:16", '1');
    MakePart("pci/usb/stick/block/sdb/sdb1", "8:17");
    MakeDisk("pci/usb/disk/block/sdc", "8:32", '0');
    MakePart("pci/usb/disk/block/sdc/sdc1", "8:33");
  }

  void MakeDisk(const std::string& place, const std::string& number, char removable) {
    MakeFolder("devices/" + place + "/slaves");
    MakeFile("devices/" + place + "/removable", {removable, '\n'});
    MakeLink("dev/block/" + number, place);
  }
  void MakePart(const std::string& place, const std::string& number) {
    MakeFolder("devices/" + place);
    MakeFile("devices/" + place + "/partition", "1\n");
    MakeLink("dev/block/" + number, place);
  }
  // A volume made of others, which are told by their places.
  void MakeVolume(const std::string& name, const std::string& number, const std::vector<std::string>& slaves) {
    const std::string place = "virtual/block/" + name;
    MakeDisk(place, number, '0');
    for (const std::string& slave : slaves) {
      MakeLink("devices/" + place + "/slaves/" + std::filesystem::path(slave).filename().string(), slave);
    }
  }
  void MakeLink(const std::string& path, const std::string& place) {
    MakeFolder(std::filesystem::path(path).parent_path());
    std::filesystem::create_symlink(At("devices/" + place), At(path));
  }
  bool Removable(const std::string& number) const { return IsRemovable(root_, number); }
};

TEST_F(SysfsTest, DisksAndTheirPartitionsAreAsTheKernelSays) {
  for (const char* fixed : {"8:0", "8:2", "259:0", "259:1"}) EXPECT_FALSE(Removable(fixed)) << fixed;
  for (const char* stick : {"8:16", "8:17"}) EXPECT_TRUE(Removable(stick)) << stick;
  for (const char* usbDisk : {"8:32", "8:33"}) EXPECT_FALSE(Removable(usbDisk)) << usbDisk;
}

TEST_F(SysfsTest, CardsCanBeTakenOutButNotWhatIsSolderedOn) {
  for (const auto& [name, number, type] : {std::array{"mmcblk0", "179:0", "MMC"}, {"mmcblk1", "179:8", "SD"}}) {
    const std::string place = std::string("platform/host/block/") + name;
    MakeDisk(place, number, '0');
    MakeFolder("devices/" + place + "/device");
    MakeFile("devices/" + place + "/device/type", std::string(type) + "\n");
    MakePart(place + "/" + name + "p1", number + std::string("1"));
  }
  MakeFolder("devices/pci/ata/block/sda/device");
  MakeFile("devices/pci/ata/block/sda/device/type", "0\n");
  for (const char* fixed : {"179:0", "179:01", "8:0"}) EXPECT_FALSE(Removable(fixed)) << fixed;
  for (const char* card : {"179:8", "179:81"}) EXPECT_TRUE(Removable(card)) << card;
}

TEST_F(SysfsTest, MappedVolumesAreAsTheDisksBelow) {
  MakeVolume("dm-0", "253:0", {"pci/ata/block/sda/sda2"});
  MakeVolume("dm-1", "253:1", {"pci/usb/stick/block/sdb/sdb1"});
  MakeVolume("dm-2", "253:2", {"pci/usb/stick/block/sdb"});
  EXPECT_FALSE(Removable("253:0"));
  EXPECT_TRUE(Removable("253:1"));
  EXPECT_TRUE(Removable("253:2"));
}

TEST_F(SysfsTest, MappedVolumesLieUponEachOtherAndOnSeveralDisks) {
  MakeVolume("dm-0", "253:0", {"pci/usb/stick/block/sdb/sdb1"});
  MakeVolume("dm-1", "253:1", {"virtual/block/dm-0"});
  MakeVolume("md0", "9:0", {"pci/ata/block/sda/sda2", "virtual/block/dm-1"});
  MakePart("virtual/block/md0/md0p1", "259:7");
  MakeVolume("md1", "9:1", {"pci/ata/block/sda/sda2", "pci/nvme/nvme0/nvme0n1/nvme0n1p1"});
  for (const char* onStick : {"253:1", "9:0", "259:7"}) EXPECT_TRUE(Removable(onStick)) << onStick;
  EXPECT_FALSE(Removable("9:1"));
}

TEST_F(SysfsTest, WhatIsNotToldIsNotRemovable) {
  EXPECT_FALSE(Removable("7:0"));
  EXPECT_FALSE(IsRemovable(At("nowhere"), "8:16"));
}

// The whole way from a root to the kernel's word about the disk that is mounted there, over a table of mounts and an
// account of devices of the test's own. The device is a real one of this machine, whichever, or made for the test.
class LocalDriveTest : public SysfsTest {
 protected:
  void SetUp() override {
    const std::string device = AnyBlockDevice();
    if (device.empty()) GTEST_SKIP() << "there is no block device here, and none may be made";
    MakeDisk("pci/ata/block/sdx", BlockNumber(device), '0');
    MakeFile("mounts", device + " /disk ext4 rw 0 0\nserver:/export /net nfs4 rw 0 0\n/dev/none /gone ext4 rw 0 0\n");
  }
  std::string AnyBlockDevice() const {
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator("/dev", none)) {
      if (entry.is_block_file(none) && IsFixedName(entry.path().filename())) return entry.path();
    }
    const bool made = mknod(At("made").c_str(), S_IFBLK | 0600, makedev(240, 7)) == 0;
    return made ? "/dev/.." + At("made") : "";
  }
  // Some are on the network by their names.
  static bool IsFixedName(const std::string& name) {
    return !name.starts_with("nbd") && !name.starts_with("rbd") && !name.starts_with("drbd");
  }
  void SayRemovable(char answer) const { MakeFile("devices/pci/ata/block/sdx/removable", {answer, '\n'}); }

  const PosixShell drives_{{.mounts = At("mounts"), .sysfs = root_}};
};

TEST_F(LocalDriveTest, ADiskIsLocalUnlessTheKernelSaysThatItCanBeTakenOut) {
  for (const char* root : {"/disk", "/disk/"}) {
    SayRemovable('0');
    EXPECT_TRUE(drives_.IsLocalDrive(root)) << root;
    SayRemovable('1');
    EXPECT_FALSE(drives_.IsLocalDrive(root)) << root;
  }
}

TEST_F(LocalDriveTest, NetworksAndWhatIsNoRootAreNotLocal) {
  for (const char* root : {"/net", "/elsewhere", "/disk/folder", ""}) EXPECT_FALSE(drives_.IsLocalDrive(root)) << root;
}

TEST_F(LocalDriveTest, ADiskThatTheKernelTellsNothingOfIsLocal) {
  std::filesystem::remove_all(At("dev"));
  EXPECT_TRUE(drives_.IsLocalDrive("/disk"));
  EXPECT_TRUE(drives_.IsLocalDrive("/gone"));
  EXPECT_TRUE(drives_.IsLocalDrive("/"));
}

TEST_F(LocalDriveTest, WithoutATableOfMountsOnlyTheRootIsLocal) {
  std::filesystem::remove(At("mounts"));
  EXPECT_FALSE(drives_.IsLocalDrive("/disk"));
  EXPECT_TRUE(drives_.IsLocalDrive("/"));
}

TEST_F(LocalDriveTest, MountPointsOfTheTableStay) {
  MakeFolder("mounted/sub");
  EXPECT_FALSE(drives_.MustStay(At("mounted"), ""));
  MakeFile("mounts", "/dev/sda1 " + At("mounted") + " ext4 rw 0 0\n");
  EXPECT_TRUE(drives_.MustStay(At("mounted"), ""));
  EXPECT_FALSE(drives_.MustStay(At("mounted/sub"), ""));
}

// --- Folders that stay

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

// --- Programs

TEST_F(PosixShellTest, AProgramGetsTheFileAsOneArgument) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("my editor");
  shell_.RunProgram("", "/a");
  shell_.RunProgram("no such program", "/a");
  shell_.RunProgram("my editor", "/tmp/a b; $(touch x) \"'*.txt");
  EXPECT_EQ(Told(), "my editor\n/\n</tmp/a b; $(touch x) \"'*.txt>\n");
  shell_.RunProgram(At("my editor"), "--help");
  EXPECT_EQ(Told(), "my editor\n/\n<" + (std::filesystem::current_path() / "--help").string() + ">\n");
}

TEST_F(PosixShellTest, AProgramsPathMayBeRelative) {
  const ForNow path("PATH", "/nowhere:/bin:/usr/bin");
  MakeTold();
  MakeProgram("editor");
  shell_.RunProgram(std::filesystem::relative(At("editor")).string(), "/a");
  EXPECT_EQ(Told(), "editor\n/\n</a>\n");
}

TEST_F(PosixShellTest, AnAddressIsOneArgumentOfTheDesktopsOpener) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("xdg-open");
  shell_.OpenUrl("--help");  // would be an option
  shell_.OpenUrl("https://x/?a=1&b='$HOME' `id`; <|>");
  EXPECT_EQ(Told(), "xdg-open\n/\n<https://x/?a=1&b='$HOME' `id`; <|>>\n");
}

TEST_F(PosixShellTest, AFileIsOneArgumentThatNoShellReadsAndNeverAnOption) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("xdg-open");
  shell_.ShellOpen("/tmp/a b; $(touch x) \"'*.csv");
  EXPECT_EQ(Told(), "xdg-open\n/\n</tmp/a b; $(touch x) \"'*.csv>\n");
  shell_.ShellOpen("--help");
  EXPECT_EQ(Told(), "xdg-open\n/\n<" + (std::filesystem::current_path() / "--help").string() + ">\n");
}

TEST_F(PosixShellTest, PropertiesAreAskedOfTheFileManager) {
  const ForNow path("PATH", root_);
  MakeProgram("dbus-send");
  EXPECT_TRUE(shell_.ShowFileProp("/a b/it's,\xff.txt"));
  EXPECT_EQ(Told(),
            "dbus-send\n/\n<--session>\n<--print-reply>\n<--dest=org.freedesktop.FileManager1>\n"
            "</org/freedesktop/FileManager1>\n<org.freedesktop.FileManager1.ShowItemProperties>\n"
            "<array:string:file:///a%20b/it%27s%2C%FF.txt>\n<string:>\n");
  MakeProgram("gdbus");
  EXPECT_TRUE(shell_.ShowFileProp("/~a-b_c.d"));
  EXPECT_EQ(Told(),
            "gdbus\n/\n<call>\n<--session>\n<--dest>\n<org.freedesktop.FileManager1>\n<--object-path>\n"
            "</org/freedesktop/FileManager1>\n<--method>\n<org.freedesktop.FileManager1.ShowItemProperties>\n"
            "<['file:///~a-b_c.d']>\n<>\n");
}

TEST_F(PosixShellTest, WhoAsksForPropertiesLearnsThatNobodyAnswered) {
  const ForNow path("PATH", root_);
  EXPECT_FALSE(shell_.ShowFileProp("/a"));
  MakeFile("gdbus", "#!/bin/sh\nexit 1\n");
  ASSERT_EQ(chmod(At("gdbus").c_str(), 0755), 0);
  MakeProgram("dbus-send");
  EXPECT_FALSE(shell_.ShowFileProp("/a"));
  EXPECT_FALSE(std::filesystem::exists(At("told")));  // the answer of the first holds
}

TEST_F(PosixShellTest, AProgramThatIsWaitedForEndsInTime) {
  EXPECT_TRUE(RunToEnd({{"no program"}, {"/bin/sh", "-c", "exit 0"}}, root_, 60));
  EXPECT_FALSE(RunToEnd({{"/bin/sh", "-c", "exit 3"}}, root_, 60));
  EXPECT_FALSE(RunToEnd({}, root_, 60));
  MakeTold();
  EXPECT_FALSE(RunToEnd({{"/bin/sh", "-c", "read line <told"}}, root_, 1));  // nobody ever writes
}

TEST_F(PosixShellTest, FailuresShowNothingAndLeaveNoChildBehind) {
  const ForNow path("PATH", root_);
  shell_.OpenUrl("https://x/");
  shell_.ShellOpen("/a");
  shell_.ShellOpen("");
  shell_.ShowFileProp("/a");
  RunDetached({{"/bin/sh", "-c", "exit 1"}}, At("no folder"));
  RunDetached({}, "/");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixShellTest, ADetachedProgramHasNothingOfThisOnes) {
  MakeTold();
  RunDetached({{"no program"},
               {"/bin/sh", "-c", "links=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2); echo \"$links\" >told"}},
              root_);
  EXPECT_EQ(AllTold(), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(PosixShellTest, OtherProgramsMayOpenAsManyFilesAsThisOneMightAtItsStart) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  ASSERT_GT(before.rlim_max, 200U);
  const rlimit atStart{200, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &atStart), 0);
  const PosixFileSystem raises;
  const PosixFileSystem changesNothingMore;
  rlimit raised{};
  getrlimit(RLIMIT_NOFILE, &raised);
  EXPECT_EQ(raised.rlim_cur, before.rlim_max);
  MakeTold();
  RunDetached({{"/bin/sh", "-c", "{ ulimit -Sn; ulimit -Hn; } >told"}}, root_);
  const std::string limits = AllTold();
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(limits, "200\n" + std::to_string(before.rlim_max) + "\n");
}

TEST(PosixShellEditor, IsTheDesktopsOpener) { EXPECT_EQ(PosixShell().DefaultEditor(), "xdg-open"); }

}  // namespace
}  // namespace tresmor
