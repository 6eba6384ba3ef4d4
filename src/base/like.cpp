#include "base/like.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"

namespace tresmor {

Like::Like(std::string_view pattern) {
  for (std::size_t at = 0; at < pattern.size();) {
    const char32_t c = NextFoldedChar(pattern, at);
    if (c == '*') {
      marks_.push_back({Mark::Takes::Run, {}});
    } else if (c == '?') {
      marks_.push_back({Mark::Takes::NoneOf, {}});
    } else if (c == '#') {
      marks_.push_back({Mark::Takes::AnyOf, {{'0', '9'}}});
    } else if (c == '[') {
      const std::size_t end = pattern.find(']', at);
      if (end == std::string_view::npos) throw Failure(Errors::BadPattern);
      AddSet(pattern.substr(at, end - at));
      at = end + 1;
    } else {
      marks_.push_back({Mark::Takes::AnyOf, {{c, c}}});
    }
  }
}

void Like::AddSet(std::string_view set) {
  if (set.empty()) return;
  Mark mark;
  std::size_t at = 0;
  if (set.size() > 1 && set[0] == '!') {
    mark.takes = Mark::Takes::NoneOf;
    at = 1;
  }
  while (at < set.size()) {
    const char32_t first = NextFoldedChar(set, at);
    char32_t last = first;
    if (at + 1 < set.size() && set[at] == '-') {
      ++at;
      last = NextFoldedChar(set, at);
    }
    if (first > last) throw Failure(Errors::BadPattern);
    mark.ranges.push_back({first, last});
  }
  marks_.push_back(std::move(mark));
}

bool Like::TakesChar(const Mark& mark, char32_t c) {
  const bool isIn = std::any_of(mark.ranges.begin(), mark.ranges.end(),
                                [c](const Range& range) { return range.first <= c && c <= range.last; });
  return isIn == (mark.takes == Mark::Takes::AnyOf);
}

// Goes back to the last run only: what an earlier one would take more, the last can take as well.
bool Like::Matches(std::string_view text) const {
  const std::size_t none = marks_.size() + 1;
  std::size_t run = none;  // the last run that was come to
  std::size_t runEnd = 0;  // where in the text its part ends
  std::size_t mark = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    if (mark < marks_.size() && marks_[mark].takes == Mark::Takes::Run) {
      run = mark++;
      runEnd = at;
      continue;
    }
    std::size_t next = at;
    if (mark < marks_.size() && TakesChar(marks_[mark], NextFoldedChar(text, next))) {
      ++mark;
      at = next;
      continue;
    }
    if (run == none) return false;
    runEnd += CharLength(text, runEnd);
    at = runEnd;
    mark = run + 1;
  }
  const auto rest = marks_.begin() + static_cast<std::ptrdiff_t>(mark);
  return std::all_of(rest, marks_.end(), [](const Mark& last) { return last.takes == Mark::Takes::Run; });
}

}  // namespace tresmor
