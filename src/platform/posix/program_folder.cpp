#include "platform/posix/program_folder.h"

#include <filesystem>
#include <system_error>

namespace tresmor {
namespace {

// The folder of the two that holds `file`, behind all links; the first as it is if neither does. `installed` is told
// from `own` on.
std::string FolderWith(const char* file, const std::filesystem::path& own, const char* installed) {
  for (const std::filesystem::path& folder : {own, (own / installed).lexically_normal()}) {
    std::error_code failure;
    const std::filesystem::path found = std::filesystem::canonical(folder / file, failure);
    if (!failure) return found.parent_path().string();
  }
  return own.string();
}

}  // namespace

std::string FindExecutableFolder() {
  std::error_code failure;
  return std::filesystem::read_symlink("/proc/self/exe", failure).parent_path().string();
}

std::string ProgramFolder(const std::string& executableFolder) {
  return FolderWith("err_read.bmp", executableFolder, TRESMOR_DATA_FROM_BIN);
}

std::string HelperFolder(const std::string& executableFolder) {
  return FolderWith("tresmor-picture", executableFolder, TRESMOR_HELPERS_FROM_BIN);
}

}  // namespace tresmor
