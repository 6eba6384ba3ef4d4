// The desktop on POSIX: the folders that stand for the system's own, and what freedesktop.org tells of the user's.
#pragma once

#include <string>
#include <utility>

#include "platform/shell.h"

namespace tresmor {

// Where the kernel tells of disks: the table of mounts, a file, and its account of devices, a folder.
struct DiskSources {
  std::string mounts = "/proc/self/mounts";
  std::string sysfs = "/sys";
};

class PosixShell final : public Shell {
 public:
  explicit PosixShell(DiskSources disks = {}) : disks_(std::move(disks)) {}

  std::string GetWinDir() const override;
  std::string GetProgramFilesDir() const override;
  // By xdg-open, looked up in PATH.
  void ShellOpen(const std::string& path) const override;

  bool IsLocalDrive(const std::string& root) const override;
  std::string spFolder(int number) const override;
  std::string DefaultEditor() const override;
  void RunProgram(const std::string& program, const std::string& file) const override;
  std::string FirstFolder() const override;
  bool MustStay(const std::string& folder, const std::string& destination) const override;
  void OpenUrl(const std::string& target) const override;
  // The file manager's, over D-Bus.
  bool ShowFileProp(const std::string& file) const override;

 private:
  const DiskSources disks_;
};

}  // namespace tresmor
