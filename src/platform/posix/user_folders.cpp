#include "platform/posix/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "base/text.h"

namespace tresmor {

namespace {

std::string WithoutTail(std::string folder) {
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

// A variable that names a folder; empty unless its path is absolute, as the others don't count.
std::string FolderVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? WithoutTail(value) : "";
}

std::string HomeOfUser() {
  std::array<char, 16384> space{};
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(getuid(), &entry, space.data(), space.size(), &found);
  return found != nullptr && found->pw_dir != nullptr ? WithoutTail(found->pw_dir) : "";
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
  constexpr std::string_view kHome = "$HOME";
  if (*folder == kHome || folder->starts_with("$HOME/")) return WithoutTail(home + folder->substr(kHome.size()));
  if (folder->starts_with('/')) return WithoutTail(*folder);
  return std::nullopt;
}

}  // namespace

UserFolders FindUserFolders() {
  UserFolders folders;
  folders.home = FolderVariable("HOME");
  if (folders.home.empty()) folders.home = HomeOfUser();
  folders.config = FolderVariable("XDG_CONFIG_HOME");
  if (folders.config.empty() && !folders.home.empty()) folders.config = folders.home + "/.config";
  folders.data = FolderVariable("XDG_DATA_HOME");
  if (folders.data.empty() && !folders.home.empty()) folders.data = folders.home + "/.local/share";
  return folders;
}

std::string FindSettingsFile(const UserFolders& folders) {
  return folders.config.empty() ? "" : folders.config + "/tresmor/tresmor.ini";
}

std::string FindUserFolder(const UserFolders& folders, std::string_view name, std::string_view usual) {
  if (folders.home.empty()) return "";
  std::string found = folders.home + "/" + std::string(usual);
  std::ifstream list(folders.config + "/user-dirs.dirs");
  for (std::string line; std::getline(list, line);) {
    if (auto folder = ListedFolder(line, name, folders.home)) found = std::move(*folder);  // the last line holds
  }
  std::error_code failure;
  return std::filesystem::is_directory(found, failure) ? found : "";
}

}  // namespace tresmor
