#include "cli/base64.h"

#include <algorithm>
#include <cstdint>

namespace tresmor {

std::string Base64(std::string_view bytes) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
      bits = bits << 8 | (i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U);
    for (std::size_t i = 0; i < 4; ++i) text.push_back(i <= bytes.size() ? kDigits[bits >> (18 - 6 * i) & 63] : '=');
  }
  return text;
}

}  // namespace tresmor
