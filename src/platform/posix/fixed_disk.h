// Which disks are built in on Linux.
#pragma once

#include <functional>
#include <string>

namespace tresmor {

// Whether `root`, with or without a separator at its end, is "/" or where the file system of a disk of this machine is
// mounted, by the table of mounts in the file `mounts`. No network, no file system in memory, no CD, no image of one in
// a file, and no device that `removable` is true of.
bool IsFixedDisk(const std::string& mounts, const std::string& root,
                 const std::function<bool(const std::string& device)>& removable);

// By which the kernel knows the block device at a path: "8:1". Empty for what is none.
std::string BlockNumber(const std::string& device);

// Whether the kernel says that the disk of a block device can be taken out or is a memory card, or one of the disks
// that a mapped volume lies on. Its account of devices stands in the folder `sysfs`. False where it doesn't tell.
bool IsRemovable(const std::string& sysfs, const std::string& number);

}  // namespace tresmor
