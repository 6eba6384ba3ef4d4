#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// A text whose order is the order of versions: each part between dots that is a number is filled with zeros to four
// digits, and the parts are joined ("1.10" gives "00010010"). Other parts stay as they are.
std::string VerSortKey(std::string_view sVer);

}  // namespace tresmor
