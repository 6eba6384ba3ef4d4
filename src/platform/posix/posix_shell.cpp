#include "platform/posix/posix_shell.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/path.h"
#include "base/text.h"
#include "platform/posix/fixed_disk.h"
#include "platform/posix/kept_folder.h"
#include "platform/posix/mount_table.h"
#include "platform/posix/run_detached.h"
#include "platform/posix/user_folders.h"

namespace tresmor {

namespace {

constexpr char kOpener[] = "xdg-open";
constexpr unsigned kAnswerSeconds = 5;  // a file manager may have to be started first

// Neither a URI nor the commands below see any other mark.
std::string FileUri(std::string_view path) { return "file://" + PercentEncoded(path, "/-._~"); }

// The file manager's call, by either of two programs, which wait for its answer.
std::vector<Command> PropertyCommands(const std::string& uri) {
  const std::string manager = "org.freedesktop.FileManager1";
  const std::string object = "/org/freedesktop/FileManager1";
  const std::string method = manager + ".ShowItemProperties";
  return {{"gdbus", "call", "--session", "--dest", manager, "--object-path", object, "--method", method,
           "['" + uri + "']", ""},
          {"dbus-send", "--session", "--print-reply", "--dest=" + manager, object, method, "array:string:" + uri,
           "string:"}};
}

}  // namespace

std::string PosixShell::GetWinDir() const { return "/usr"; }
std::string PosixShell::GetProgramFilesDir() const { return "/opt"; }

void PosixShell::ShellOpen(const std::string& path) const {
  // A full path can't be taken for an option or for the address of a page.
  std::error_code failure;
  const auto full = std::filesystem::absolute(path, failure);
  if (!failure) RunDetached({{kOpener, full.string()}}, "/");
}

bool PosixShell::IsLocalDrive(const std::string& root) const {
  return IsFixedDisk(disks_.mounts, root,
                     [this](const std::string& device) { return IsRemovable(disks_.sysfs, BlockNumber(device)); });
}

std::string PosixShell::spFolder(int number) const {
  const UserFolders folders = FindUserFolders();
  std::error_code failure;
  switch (number) {
    case 0:
      return FindUserFolder(folders, "DESKTOP", "Desktop");
    case 5:
      return FindUserFolder(folders, "DOCUMENTS", "Documents");
    case 6:
      return std::filesystem::is_directory(folders.home, failure) ? folders.home : "";
  }
  return "";
}

std::string PosixShell::DefaultEditor() const { return kOpener; }

void PosixShell::RunProgram(const std::string& program, const std::string& file) const {
  std::error_code failure;
  const bool isBare = program.find('/') == program.npos;
  const std::string called = isBare ? program : std::filesystem::absolute(program, failure).string();
  if (failure || program.empty()) return;
  // A full path can't be taken for an option.
  const auto full = std::filesystem::absolute(file, failure);
  if (!failure) RunDetached({{called, full.string()}}, "/");
}

std::string PosixShell::FirstFolder() const {
  const std::string home = FindUserFolders().home;
  return home.empty() ? "/" : home;
}

bool PosixShell::MustStay(const std::string& folder, const std::string& destination) const {
  return IsKeptFolder(folder, {FindUserFolders().home, destination}, ReadMounts(disks_.mounts));
}

void PosixShell::OpenUrl(const std::string& target) const {
  if (target.starts_with('-')) return;  // the program would take it for an option
  RunDetached({{kOpener, target}}, "/");
}

bool PosixShell::ShowFileProp(const std::string& file) const {
  std::error_code failure;
  const auto path = std::filesystem::absolute(file, failure);
  // What a file manager makes of a "%00" is its own affair.
  return !failure && !HasNul(file) && RunToEnd(PropertyCommands(FileUri(path.string())), "/", kAnswerSeconds);
}

}  // namespace tresmor
