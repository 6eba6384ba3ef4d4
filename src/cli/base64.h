#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// RFC 4648's base64, padded.
std::string Base64(std::string_view bytes);

}  // namespace tresmor
