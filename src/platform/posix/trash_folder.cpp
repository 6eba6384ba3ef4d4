#include "platform/posix/trash_folder.h"

#include "base/path.h"

namespace tresmor {

std::string HomeTrash(const UserFolders& folders) { return folders.data.empty() ? "" : folders.data + "/Trash"; }

bool IsTrashFolder(std::string_view folder, std::string_view homeTrash) {
  while (folder.ends_with('/')) folder.remove_suffix(1);
  if (!homeTrash.empty() && folder == homeTrash) return true;
  if (folder.ends_with("/.local/share/Trash")) return true;
  const std::string_view name = GetFileNameOf(folder, PathStyle::Posix());
  if (!name.starts_with(kTrashOfUser)) return name == kSharedTrash;
  return name.size() > kTrashOfUser.size() &&
         name.find_first_not_of("0123456789", kTrashOfUser.size()) == std::string_view::npos;
}

}  // namespace tresmor
