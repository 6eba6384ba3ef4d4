#include "results/version_text.h"

#include <algorithm>
#include <cstdlib>

namespace tresmor {
namespace {

constexpr std::int32_t kUpperDivisor = 65535;

// With zeros in front up to so many digits; a sign counts as none.
std::string Format(std::int32_t number, std::size_t digits) {
  const std::string text = std::to_string(std::abs(std::int64_t{number}));
  return (number < 0 ? "-" : "") + std::string(digits - std::min(digits, text.size()), '0') + text;
}

}  // namespace

std::int32_t HiWord(std::int32_t value) {
  const std::int32_t quotient = value / kUpperDivisor;
  return value < 0 ? quotient - 1 : quotient;
}

std::int32_t LoWord(std::int32_t value) { return value & 0xFFFF; }

std::string VersionText(const VS_FIXEDFILEINFO& info) {
  const std::int32_t ls = info.dwFileVersionLS;
  const std::string start =
      std::to_string(HiWord(info.dwFileVersionMS)) + "." + Format(LoWord(info.dwFileVersionMS), 2) + ".";
  if (ls < 1) return start + Format(ls, 4);
  return start + Format(HiWord(ls), 2) + "." + Format(LoWord(ls), 2);
}

}  // namespace tresmor
