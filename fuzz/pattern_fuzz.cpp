// A pattern and, behind the first line end, a name, for both kinds of patterns. What they take is held against their
// rules in the plainest form, which tries everything out; names of any length mustn't take long.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/like.h"
#include "base/text.h"
#include "base/wildcard.h"

namespace tresmor {
namespace {

using Text = std::u32string_view;

std::u32string Folded(std::string_view text) {
  std::u32string folded;
  for (std::size_t at = 0; at < text.size();) folded += NextFoldedChar(text, at);
  return folded;
}

// Each star multiplies the tries.
bool IsSmall(Text pattern, Text name) {
  return pattern.size() <= 24 && name.size() <= 24 && std::count(pattern.begin(), pattern.end(), U'*') <= 4;
}

bool IsNegated(Text set) { return set.size() > 1 && set[0] == '!'; }

std::vector<std::pair<char32_t, char32_t>> Ranges(Text set) {
  std::vector<std::pair<char32_t, char32_t>> ranges;
  if (IsNegated(set)) set.remove_prefix(1);
  while (!set.empty()) {
    const bool isRange = set.size() > 2 && set[1] == '-';
    ranges.emplace_back(set[0], set[isRange ? 2 : 0]);
    set.remove_prefix(isRange ? 3 : 1);
  }
  return ranges;
}

bool SetTakes(Text set, char32_t c) {
  const auto ranges = Ranges(set);
  const auto holds = [c](const auto& range) { return range.first <= c && c <= range.second; };
  return std::any_of(ranges.begin(), ranges.end(), holds) != IsNegated(set);
}

// Whether all sets are closed and no range runs backwards.
bool IsSound(Text pattern) {
  for (std::size_t begin = pattern.find('['); begin != pattern.npos; begin = pattern.find('[')) {
    const std::size_t end = pattern.find(']', begin);
    if (end == pattern.npos) return false;
    for (const auto& [first, last] : Ranges(pattern.substr(begin + 1, end - begin - 1))) {
      if (first > last) return false;
    }
    pattern.remove_prefix(end + 1);
  }
  return true;
}

bool LikeTakes(Text pattern, Text name) {
  if (pattern.empty()) return name.empty();
  const char32_t mark = pattern[0];
  if (mark == '*') {
    return LikeTakes(pattern.substr(1), name) || (!name.empty() && LikeTakes(pattern, name.substr(1)));
  }
  Text set;
  if (mark == '[') {
    set = pattern.substr(1, pattern.find(']') - 1);
    pattern.remove_prefix(set.size() + 1);
  }
  const Text rest = pattern.substr(1);
  if (mark == '[' && set.empty()) return LikeTakes(rest, name);
  if (name.empty()) return false;
  const char32_t c = name[0];
  const bool isDigit = c >= '0' && c <= '9';
  const bool takes = mark == '[' ? SetTakes(set, c) : mark == '#' ? isDigit : mark == '?' || mark == c;
  return takes && LikeTakes(rest, name.substr(1));
}

bool WildcardTakes(Text pattern, Text name) {
  if (pattern.find_first_not_of('.') == pattern.npos) return name.empty();
  const char32_t mark = pattern[0];
  const Text rest = pattern.substr(1);
  const char32_t next = rest.empty() ? U'\0' : rest[0];
  if (mark == '*') {
    const bool atLastDot = name.rfind('.') == 0;
    const bool goesOn = !name.empty() && !(next == '.' && atLastDot);
    return WildcardTakes(rest, name) || (goesOn && WildcardTakes(pattern, name.substr(1)));
  }
  if (mark == '?' && (name.empty() || name[0] == '.')) return WildcardTakes(rest, name);
  if (mark == '.' && name.empty() && (next == '*' || next == '?')) return WildcardTakes(rest, name);
  return !name.empty() && (mark == '?' || mark == name[0]) && WildcardTakes(rest, name.substr(1));
}

// Each character as a pattern that takes it alone.
std::string Quoted(std::string_view name) {
  constexpr std::string_view kMarks = "*?#[";
  std::string pattern;
  for (const char c : name) pattern += kMarks.find(c) == kMarks.npos ? std::string(1, c) : std::string{'[', c, ']'};
  return pattern;
}

void CheckLike(const std::string& pattern, const std::string& name) {
  const std::u32string marks = Folded(pattern);
  const std::u32string chars = Folded(name);
  EXPECT_TRUE(Like(Quoted(name)).Matches(name)) << name;
  try {
    const bool matches = Like(pattern).Matches(name);
    EXPECT_TRUE(IsSound(marks)) << pattern;
    if (IsSmall(marks, chars)) {
      EXPECT_EQ(matches, LikeTakes(marks, chars)) << pattern << '\n' << name;
    }
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), Errors::BadPattern);
    EXPECT_FALSE(IsSound(marks)) << pattern;
  }
}

void CheckWildcard(const std::string& pattern, const std::string& name) {
  const std::u32string marks = Folded(pattern);
  const std::u32string chars = Folded(name);
  const bool matches = Wildcard(pattern).Matches(name);
  if (IsSmall(marks, chars)) {
    const bool isNothing = pattern.find_first_not_of('.') == pattern.npos;
    const bool takes = pattern == "*.*" || (!isNothing && WildcardTakes(marks, chars));
    EXPECT_EQ(matches, takes) << pattern << '\n' << name;
  }
  if (!name.empty() && !name.ends_with('.') && name.find_first_of("*?") == name.npos) {
    EXPECT_TRUE(Wildcard(name).Matches(name)) << name;
  }
}

}  // namespace
}  // namespace tresmor

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const std::string input(bytes, bytes + count);
  const std::string pattern = input.substr(0, input.find('\n'));
  const std::string name = input.substr(std::min(pattern.size() + 1, input.size()));
  tresmor::CheckLike(pattern, name);
  tresmor::CheckWildcard(pattern, name);
  return 0;
}
