#include "platform/posix/pseudo_file_system.h"

#include <linux/magic.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <string>
#include <string_view>

namespace tresmor {

namespace {

// The last five have no name in the kernel's public headers.
constexpr auto kPseudo = std::to_array<std::uint32_t>({
    PROC_SUPER_MAGIC,     SYSFS_MAGIC,
    DEVPTS_SUPER_MAGIC,   CGROUP_SUPER_MAGIC,
    CGROUP2_SUPER_MAGIC,  RDTGROUP_SUPER_MAGIC,
    DEBUGFS_MAGIC,        TRACEFS_MAGIC,
    SECURITYFS_MAGIC,     SELINUX_MAGIC,
    SMACK_MAGIC,          AAFS_MAGIC,
    BPF_FS_MAGIC,         PSTOREFS_MAGIC,
    EFIVARFS_MAGIC,       HUGETLBFS_MAGIC,
    BINFMTFS_MAGIC,       NSFS_MAGIC,
    BINDERFS_SUPER_MAGIC, XENFS_SUPER_MAGIC,
    OPENPROM_SUPER_MAGIC, USBDEVICE_SUPER_MAGIC,
    0x62656570,  // configfs
    0x19800202,  // mqueue
    0x65735543,  // fusectl
    0x67596969,  // rpc_pipefs
    0x6e667364,  // nfsd
});

// devtmpfs calls itself tmpfs (or ramfs, in small kernels); only the table of mounts tells it from the real one.
bool IsMountedAsDevices(std::uint64_t device) {
  std::ifstream mounts("/proc/self/mountinfo");
  const std::string number = " " + std::to_string(major(device)) + ":" + std::to_string(minor(device)) + " ";
  for (std::string line; std::getline(mounts, line);) {
    // "24 27 0:6 / /dev rw,relatime - devtmpfs devtmpfs rw": blanks within paths are escaped.
    const std::size_t numberAt = line.find(number);
    const std::size_t root = line.find(" /");
    if (numberAt < root && line.find(" - devtmpfs ") != std::string::npos) return true;
  }
  return false;
}

bool Ask(int folder, std::uint64_t device) {
  struct statfs info {};
  if (fstatfs(folder, &info) != 0) return false;
  const auto type = static_cast<std::uint32_t>(info.f_type);
  if (type == TMPFS_MAGIC || type == RAMFS_MAGIC) return IsMountedAsDevices(device);
  return std::find(kPseudo.begin(), kPseudo.end(), type) != kPseudo.end();
}

}  // namespace

// A walk stays on one device for long, so each thread keeps its last answer and no lock is needed. Device numbers are
// used again after an unmount, hence the answer is kept for a short while only.
bool IsOnPseudoFileSystem(int folder, std::uint64_t device) {
  using Clock = std::chrono::steady_clock;
  struct Answer {
    std::uint64_t device = 0;
    bool pseudo = false;
    Clock::time_point until = Clock::time_point::min();
  };
  thread_local Answer last;
  const Clock::time_point now = Clock::now();
  if (device != last.device || now >= last.until) last = {device, Ask(folder, device), now + std::chrono::seconds(2)};
  return last.pseudo;
}

}  // namespace tresmor
