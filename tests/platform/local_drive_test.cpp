// Which disks can be taken out, by the table of mounts and the kernel's account of devices.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/posix/fixed_disk.h"
#include "platform/posix/mount_table.h"
#include "platform/posix_shell_world.h"

namespace tresmor {
namespace {

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

}  // namespace
}  // namespace tresmor
