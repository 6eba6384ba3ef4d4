#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// A text that stays on its line and does nothing to a terminal: control characters and bytes that are not UTF-8 become
// \n, \t, \r or \xHH, and a backslash becomes two.
std::string Visible(std::string_view text);

}  // namespace tresmor
