#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// A text that stays on its line, reads in its own order and does nothing to a terminal: characters that command text
// and bytes that are not UTF-8 become \n, \t, \r or \xHH, and a backslash becomes two.
std::string Visible(std::string_view text);

}  // namespace tresmor
