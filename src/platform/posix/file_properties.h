#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tresmor {

// What there is to say of a file, as pairs of a label and a text: name, folder, size, times, owner, permissions. A text
// may hold any bytes. For a file that can't be asked, name, folder and why. Any thread.
std::vector<std::pair<std::string, std::string>> FileProperties(const std::string& path);

}  // namespace tresmor
