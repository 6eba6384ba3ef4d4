#include "platform/posix/fixed_disk.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/posix/mount_table.h"

namespace tresmor {

namespace {

// What is mounted at `folder`: the last of several that lie upon each other. Nothing if none is.
Mount FindMount(const std::string& mounts, std::string_view folder) {
  Mount found;
  for (Mount& mount : ReadMounts(mounts)) {
    if (folder == mount.folder) found = std::move(mount);
  }
  return found;
}

bool IsDisk(const Mount& mount) {
  if (mount.type == "zfs") return true;                                    // names pools in place of devices
  constexpr std::string_view kPressed[] = {"iso9660", "udf", "squashfs"};  // whole and for good, on a disc or in a file
  constexpr std::string_view kNoDisks[] = {"/dev/nbd", "/dev/rbd", "/dev/drbd", "/dev/fuse"};
  const auto startsDevice = [&mount](std::string_view start) { return mount.device.starts_with(start); };
  return startsDevice("/dev/") &&
         std::find(std::begin(kPressed), std::end(kPressed), mount.type) == std::end(kPressed) &&
         std::none_of(std::begin(kNoDisks), std::end(kNoDisks), startsDevice);
}

std::string FirstWord(const std::filesystem::path& file) {
  std::string word;
  std::ifstream(file) >> word;
  return word;
}

// What the kernel calls a card in a slot, which it doesn't count as removable.
constexpr char kMemoryCard[] = "SD";

// `block` is a device's folder in sysfs, or a link to it. A volume that was put together of others, by the device
// mapper or as an array, lies on all of these, and they may be such volumes again.
bool LiesOnRemovable(const std::filesystem::path& block) {
  std::error_code none;
  const std::filesystem::path disk = std::filesystem::exists(block / "partition", none) ? block / ".." : block;
  if (FirstWord(disk / "removable") == "1" || FirstWord(disk / "device/type") == kMemoryCard) return true;
  for (const auto& slave : std::filesystem::directory_iterator(disk / "slaves", none)) {
    if (LiesOnRemovable(slave.path())) return true;
  }
  return false;
}

}  // namespace

bool IsFixedDisk(const std::string& mounts, const std::string& root,
                 const std::function<bool(const std::string& device)>& removable) {
  if (root == "/") return true;
  std::string_view folder = root;
  if (folder.ends_with('/')) folder.remove_suffix(1);
  const Mount mount = FindMount(mounts, folder);
  return IsDisk(mount) && !removable(mount.device);
}

std::string BlockNumber(const std::string& device) {
  struct stat info {};
  if (stat(device.c_str(), &info) != 0 || !S_ISBLK(info.st_mode)) return "";
  return std::to_string(major(info.st_rdev)) + ":" + std::to_string(minor(info.st_rdev));
}

bool IsRemovable(const std::string& sysfs, const std::string& number) {
  return !number.empty() && LiesOnRemovable(sysfs + "/dev/block/" + number);
}

}  // namespace tresmor
