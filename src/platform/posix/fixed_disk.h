// Which disks are built in on Linux.
#pragma once

#include <functional>
#include <string>

namespace tresmor {

// Whether `root`, with or without a separator at its end, is "/" or where the file system of a disk of this machine is
// mounted, by the table of mounts in the file `mounts`. No network, no file system in memory, no CD, and no device that
// `removable` is true of.
bool IsFixedDisk(const std::string& mounts, const std::string& root,
                 const std::function<bool(const std::string& device)>& removable);

// Whether the kernel says that the disk of a block device can be taken out.
bool IsRemovableDevice(const std::string& device);

}  // namespace tresmor
