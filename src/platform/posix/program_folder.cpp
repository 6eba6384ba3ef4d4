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
  for (const std::filesystem::path& folder : {own, own.parent_path() / "share/tresmor"}) {
    std::error_code failure;
    const std::filesystem::path file = std::filesystem::canonical(folder / "err_read.bmp", failure);
    if (!failure) return file.parent_path().string();
  }
  return executableFolder;
}

}  // namespace tresmor
