#include "platform/posix/mount_table.h"

#include <mntent.h>

#include <array>
#include <cstdio>
#include <memory>

namespace tresmor {

std::vector<Mount> ReadMounts(const std::string& mounts) {
  std::vector<Mount> found;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent(mounts.c_str(), "re"), endmntent);
  if (!table) return found;
  mntent entry{};
  std::array<char, 16384> space{};
  while (getmntent_r(table.get(), &entry, space.data(), space.size()) != nullptr) {
    found.push_back({entry.mnt_fsname, entry.mnt_dir, entry.mnt_type});
  }
  return found;
}

}  // namespace tresmor
