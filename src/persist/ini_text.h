// The text of a settings file:
//
//   [Tresmor/Options]
//   DefaultEditor=/usr/bin/editor
//
// What would be taken for something else stands as "\\" or "\xHH", a byte in two hexadecimal digits; a backslash in
// front of anything else stands for itself, so that people may write their paths. The first line with a key holds. All
// other lines, whatever they are, are kept byte for byte.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tresmor {

// Compared without regard to case.
struct IniSection {
  std::string_view application;
  std::string_view section;
};

std::optional<std::string> FindIniValue(std::string_view ini, IniSection where, std::string_view key);
// False if the value stands there already.
bool SetIniValue(std::string& ini, IniSection where, std::string_view key, std::string_view value);
// Removes the keys of a section, its heading and its other lines stay. False if there is none.
bool RemoveIniKeys(std::string& ini, IniSection where);

}  // namespace tresmor
