#include "platform/posix/kept_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/path.h"

namespace tresmor {

bool IsKeptFolder(const std::string& folder, const std::vector<std::string>& places, const std::vector<Mount>& mounts) {
  std::error_code failure;
  const std::string within = AddTail(std::filesystem::canonical(folder, failure).string(), "/");
  if (failure || mounts.empty()) return true;
  const auto holds = [&](const std::string& path) { return AddTail(path, "/").starts_with(within); };
  const auto holdsPlace = [&](const std::string& place) {
    if (place.empty()) return false;
    const auto resolved = std::filesystem::weakly_canonical(std::filesystem::absolute(place), failure);
    return failure ? true : holds(resolved.string());
  };
  return within == "/" || std::any_of(places.begin(), places.end(), holdsPlace) ||
         std::any_of(mounts.begin(), mounts.end(), [&](const Mount& mount) { return holds(mount.folder); });
}

}  // namespace tresmor
