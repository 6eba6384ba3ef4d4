#include "base/wildcard.h"

#include <algorithm>

#include "base/text.h"

namespace tresmor {

namespace {

// Marks in a pattern, beyond all that NextFoldedChar gives.
constexpr char32_t kStar = 0x120000;           // any run of characters
constexpr char32_t kStarBeforeDot = 0x120001;  // any run without the last dot of the name
constexpr char32_t kQuestion = 0x120002;       // one character but a dot, passed by before a dot and at the end
constexpr char32_t kDotOrEnd = 0x120003;       // a dot, or nothing at the end
// Stands behind the last character of a name.
constexpr char32_t kEnd = 0x120004;

char32_t MarkOf(char32_t c) { return c == '*' ? kStar : c == '?' ? kQuestion : c; }

bool IsStar(char32_t mark) { return mark == kStar || mark == kStarBeforeDot; }

// Whether `mark` may take nothing where `c` comes next.
bool TakesNothing(char32_t mark, char32_t c) {
  if (mark == kQuestion) return c == '.' || c == kEnd;
  if (mark == kDotOrEnd) return c == kEnd;
  return IsStar(mark);
}

// Whether `mark` takes `c` and is done with that. What stars take keeps them where they are.
bool Takes(char32_t mark, char32_t c) {
  if (mark == kQuestion) return c != '.';
  if (mark == kDotOrEnd) return c == '.';
  return mark == c;
}

bool TakesAndStays(char32_t mark, bool lastDot) { return mark == kStar || (mark == kStarBeforeDot && !lastDot); }

// All places in a pattern that the part of a name read so far can have reached.
struct Places {
  explicit Places(std::size_t size) : reached(size + 1, '\0') { reached[0] = 1; }

  // Goes on by one character of the name. False if that leaves no place.
  bool Advance(const std::u32string& marks, char32_t c, bool isLastDot) {
    bool taken = false;   // whether the mark before took c
    bool passed = false;  // whether the mark before took nothing
    const std::size_t end = highest + 1;
    bool any = false;
    for (std::size_t k = 0; k < end || taken || passed; ++k) {
      const bool here = reached[k] || passed;
      const char32_t mark = k < marks.size() ? marks[k] : kEnd;
      reached[k] = taken || (here && TakesAndStays(mark, isLastDot));
      if (reached[k]) highest = k;
      any = any || reached[k];
      taken = here && Takes(mark, c);
      passed = here && TakesNothing(mark, c);
    }
    return any;
  }

  std::string reached;  // a string, since the places of a short pattern need no memory of their own that way
  std::size_t highest = 0;
};

}  // namespace

Wildcard::Wildcard(std::string_view pattern) : everything_(pattern == "*.*" || pattern == "*") {
  const std::string_view bare = pattern.substr(0, pattern.find_last_not_of('.') + 1);
  for (std::size_t at = 0; at < bare.size();) {
    const char32_t mark = MarkOf(NextFoldedChar(bare, at));
    if (!folded_.empty()) {
      char32_t& before = folded_.back();
      if (mark == '.' && before == kStar) before = kStarBeforeDot;
      if ((mark == kStar || mark == kQuestion) && before == '.') before = kDotOrEnd;
    }
    folded_.push_back(mark);
  }
  if (bare.size() < pattern.size() && !folded_.empty() && folded_.back() == kStar) folded_.back() = kStarBeforeDot;
}

// Walks the name once, so the time is bounded by the product of both lengths, whatever the stars.
bool Wildcard::Matches(std::string_view name) const {
  if (everything_) return true;
  if (folded_.empty()) return false;
  const std::size_t lastDot = name.rfind('.');
  Places places(folded_.size());
  for (std::size_t at = 0; at < name.size();) {
    const bool isLastDot = at == lastDot;
    if (!places.Advance(folded_, NextFoldedChar(name, at), isLastDot)) return false;
  }
  // Where a lower place can pass over all the rest, the highest can too.
  const auto rest = folded_.begin() + static_cast<std::ptrdiff_t>(places.highest);
  return std::all_of(rest, folded_.end(), [](char32_t mark) { return TakesNothing(mark, kEnd); });
}

}  // namespace tresmor
