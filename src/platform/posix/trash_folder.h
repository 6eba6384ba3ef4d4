// The desktop's trash folders by their names, as freedesktop.org's Trash specification 1.0 has them.
#pragma once

#include <string>
#include <string_view>

#include "platform/posix/user_folders.h"

namespace tresmor {

// At the top of a disk: one for all users, with a folder for each in it, and those that users made for themselves, the
// user's number behind it.
constexpr std::string_view kSharedTrash = ".Trash";
constexpr std::string_view kTrashOfUser = ".Trash-";

// The user's own; empty without a home.
std::string HomeTrash(const UserFolders& folders);

// Whether a folder, with or without separators at its end, is one: `homeTrash`, that of any other user, or one at the
// top of a disk.
bool IsTrashFolder(std::string_view folder, std::string_view homeTrash);

}  // namespace tresmor
