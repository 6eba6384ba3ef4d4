#include "platform/posix/program_folder.h"

#include <filesystem>
#include <system_error>

namespace tresmor {

std::string FindExecutableFolder() {
  std::error_code failure;
  return std::filesystem::read_symlink("/proc/self/exe", failure).parent_path().string();
}

std::string ProgramFolder(const std::string& executableFolder) {
  const std::filesystem::path own = executableFolder;
  const std::filesystem::path shared = own.parent_path() / "share/tresmor";
  std::error_code failure;
  return std::filesystem::exists(shared / "err_read.bmp", failure) &&
                 !std::filesystem::exists(own / "err_read.bmp", failure)
             ? shared.string()
             : executableFolder;
}

}  // namespace tresmor
