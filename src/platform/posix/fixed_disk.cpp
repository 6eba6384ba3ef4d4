#include "platform/posix/fixed_disk.h"

#include <mntent.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>

namespace tresmor {

namespace {

struct Mount {
  std::string device;
  std::string type;
};

// What is mounted at `folder`: the last of several that lie upon each other. Nothing if none is.
Mount FindMount(const std::string& mounts, std::string_view folder) {
  Mount found;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent(mounts.c_str(), "re"), endmntent);
  if (!table) return found;
  mntent entry{};
  std::array<char, 16384> space{};
  while (getmntent_r(table.get(), &entry, space.data(), space.size()) != nullptr) {
    if (folder == entry.mnt_dir) found = {entry.mnt_fsname, entry.mnt_type};
  }
  return found;
}

bool IsDisk(const Mount& mount) {
  if (mount.type == "zfs") return true;  // names pools in place of devices
  const bool compactDisc = mount.type == "iso9660" || mount.type == "udf";
  const bool overNetwork = mount.device.starts_with("/dev/nbd");
  return mount.device.starts_with("/dev/") && mount.device != "/dev/fuse" && !compactDisc && !overNetwork;
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

bool IsRemovableDevice(const std::string& device) {
  struct stat info {};
  if (stat(device.c_str(), &info) != 0 || !S_ISBLK(info.st_mode)) return false;
  const std::string block =
      "/sys/dev/block/" + std::to_string(major(info.st_rdev)) + ":" + std::to_string(minor(info.st_rdev));
  // A partition hasn't the file, but its disk above it.
  for (const char* const file : {"/removable", "/../removable"}) {
    char flag = '0';
    if (std::ifstream(block + file) >> flag && flag == '1') return true;
  }
  return false;
}

}  // namespace tresmor
