// Where the user keeps things on POSIX, by the rules of freedesktop.org.
#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// Without a separator at the end; empty if it can't be told.
struct UserFolders {
  std::string home;
  std::string config;   // what programs are set to
  std::string data{};   // what programs keep, the trash among it
  std::string state{};  // what they remember from one run to the next
};

// From the environment, else from the system's list of users.
UserFolders FindUserFolders();

// The file of the program's settings. It needn't be there, and may be a link. Empty without a folder for it.
std::string FindSettingsFile(const UserFolders& folders);

// The file of what can be undone. It needn't be there. Empty without a folder for it.
std::string FindUndoLog(const UserFolders& folders);

// The folder of a name such as "DESKTOP": what the user's list of folders says, else `usual`, which is a folder's name
// in the home folder. Empty if there is no such folder.
std::string FindUserFolder(const UserFolders& folders, std::string_view name, std::string_view usual);

}  // namespace tresmor
