#include "results/version_key.h"

#include <algorithm>

#include "base/text.h"

namespace tresmor {
namespace {

std::string FormatPart(std::string_view part) {
  std::string_view digits = TrimBlanks(part);
  const bool negative = digits.starts_with('-');
  if (negative) digits.remove_prefix(1);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return std::string(part);
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  const std::size_t zeros = digits.size() < 4 ? 4 - digits.size() : 0;
  return (negative && !digits.empty() ? "-" : "") + std::string(zeros, '0').append(digits);
}

}  // namespace

std::string VerSortKey(std::string_view sVer) {
  std::string key;
  for (;;) {
    const std::size_t dot = sVer.find('.');
    key += FormatPart(sVer.substr(0, dot));
    if (dot == std::string_view::npos) return key;
    sVer.remove_prefix(dot + 1);
  }
}

}  // namespace tresmor
