#include "platform/posix/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "base/path.h"
#include "base/text.h"

namespace tresmor {

namespace {

// A variable that names a folder; empty unless its path is absolute, as the others don't count.
std::string FolderVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? WithoutTail(value, PathStyle::Posix()) : "";
}

std::string HomeOfUser() {
  std::array<char, 16384> space{};
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(getuid(), &entry, space.data(), space.size(), &found);
  return found != nullptr && found->pw_dir != nullptr ? WithoutTail(found->pw_dir, PathStyle::Posix()) : "";
}

// Cuts `what` off the beginning of `text`, with the blanks around it.
bool Take(std::string_view& text, std::string_view what) {
  text = TrimBlanks(text);
  if (!text.starts_with(what)) return false;
  text = TrimBlanks(text.substr(what.size()));
  return true;
}

// The text in quotes at the beginning of `text`, where a backslash stands in front of what is meant as it is.
std::optional<std::string> Quoted(std::string_view text) {
  if (!text.starts_with('"')) return std::nullopt;
  std::string plain;
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at] == '"') return plain;
    if (text[at] == '\\' && ++at == text.size()) break;
    plain += text[at];
  }
  return std::nullopt;
}

// XDG_DESKTOP_DIR="$HOME/Desktop", or a full path in the quotes.
std::optional<std::string> ListedFolder(std::string_view line, std::string_view name, const std::string& home) {
  if (!Take(line, "XDG_" + std::string(name) + "_DIR") || !Take(line, "=")) return std::nullopt;
  const auto folder = Quoted(line);
  if (!folder) return std::nullopt;
  constexpr std::string_view kBelowHome = "$HOME/";
  if (*folder == "$HOME") return home;
  if (folder->starts_with(kBelowHome))
    return WithoutTail(AddTail(home, "/") + folder->substr(kBelowHome.size()), PathStyle::Posix());
  if (folder->starts_with('/')) return WithoutTail(*folder, PathStyle::Posix());
  return std::nullopt;
}

}  // namespace

UserFolders FindUserFolders() {
  UserFolders folders;
  folders.home = FolderVariable("HOME");
  if (folders.home.empty()) folders.home = HomeOfUser();
  const auto below = [&](const char* variable, const char* usual) {
    const std::string told = FolderVariable(variable);
    return told.empty() && !folders.home.empty() ? AddTail(folders.home, "/") + usual : told;
  };
  folders.config = below("XDG_CONFIG_HOME", ".config");
  folders.data = below("XDG_DATA_HOME", ".local/share");
  folders.state = below("XDG_STATE_HOME", ".local/state");
  return folders;
}

std::string FindSettingsFile(const UserFolders& folders) {
  return folders.config.empty() ? "" : AddTail(folders.config, "/") + "tresmor/tresmor.ini";
}

std::string FindUndoLog(const UserFolders& folders) {
  return folders.state.empty() ? "" : AddTail(folders.state, "/") + "tresmor/undo";
}

std::string FindUserFolder(const UserFolders& folders, std::string_view name, std::string_view usual) {
  if (folders.home.empty()) return "";
  std::string found = AddTail(folders.home, "/") + std::string(usual);
  std::ifstream list(folders.config + "/user-dirs.dirs");
  for (std::string line; std::getline(list, line);) {
    if (auto folder = ListedFolder(line, name, folders.home)) found = std::move(*folder);  // the last line holds
  }
  std::error_code failure;
  return std::filesystem::is_directory(found, failure) ? found : "";
}

}  // namespace tresmor
