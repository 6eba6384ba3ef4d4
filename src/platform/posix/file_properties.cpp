#include "platform/posix/file_properties.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

#include "base/date.h"
#include "platform/posix/short_path.h"

namespace tresmor {
namespace {

std::string UserName(uid_t user) {
  std::array<char, 4096> room{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(user, &entry, room.data(), room.size(), &found) == 0 && found != nullptr) return entry.pw_name;
  return std::to_string(user);
}

std::string GroupName(gid_t group) {
  std::array<char, 4096> room{};
  struct group entry {};
  struct group* found = nullptr;
  if (getgrgid_r(group, &entry, room.data(), room.size(), &found) == 0 && found != nullptr) return entry.gr_name;
  return std::to_string(group);
}

// As the listing of a folder shows them, "rw-r--r--".
std::string PermissionText(mode_t mode) {
  constexpr std::array<char, 3> kLetters = {'r', 'w', 'x'};
  std::string text;
  for (unsigned bit = 0; bit < 9; ++bit) text += (mode >> (8 - bit) & 1U) != 0 ? kLetters[bit % 3] : '-';
  return text;
}

std::string TimeText(const timespec& time) { return FormatStamp(LocalStamp(time.tv_sec)); }

}  // namespace

std::vector<std::pair<std::string, std::string>> FileProperties(const std::string& path) {
  const std::size_t name = path.rfind('/') + 1;  // 0 where there is none
  std::vector<std::pair<std::string, std::string>> properties = {{"Name", path.substr(name)},
                                                                 {"Folder", path.substr(0, name)}};
  struct stat info {};
  const ShortPath at(path);
  Errors failure = at.Failure();
  if (failure == Errors::None && fstatat(at.Folder(), at.Rest(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
    failure = PathFailure(errno);
  }
  if (failure != Errors::None) {
    properties.emplace_back("Not known", Describe(failure));
    return properties;
  }
  properties.emplace_back("Size", std::to_string(info.st_size) + " bytes");
  properties.emplace_back("Modified", TimeText(info.st_mtim));
  properties.emplace_back("Read", TimeText(info.st_atim));
  properties.emplace_back("Owner", UserName(info.st_uid) + ", group " + GroupName(info.st_gid));
  properties.emplace_back("Permissions", PermissionText(info.st_mode));
  return properties;
}

}  // namespace tresmor
