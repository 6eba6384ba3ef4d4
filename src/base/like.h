// Patterns of whole names, as the Like operator of classic Basic has them.
#pragma once

#include <string_view>
#include <vector>

namespace tresmor {

// Letters match in either case. A character is one of UTF-8 or a byte that is part of none.
// - `?` is any one character, `#` one of the digits 0 to 9, `*` any run of characters, an empty one too.
// - `[abc]` is one of the characters of a set, `[a-z]` one of a range by code points, `[!abc]` one that is in neither.
//   The marks above stand for themselves in a set, and so do a `-` that has no character left or right of it to make a
//   range with, and a `!` anywhere but first. A `]` can't stand in a set.
// - `[]` is nothing at all, and `[!]` an exclamation mark.
// - All else stands for itself. An empty pattern matches the empty text alone.
class Like {
 public:
  // Fails with BadPattern for a set that isn't closed and a range that runs backwards.
  explicit Like(std::string_view pattern);
  // Takes time in proportion to the product of both lengths at most.
  bool Matches(std::string_view text) const;

 private:
  struct Range {
    char32_t first = 0;
    char32_t last = 0;
  };
  // One character, in any of the ranges or in none; or a run of any.
  struct Mark {
    enum class Takes { AnyOf, NoneOf, Run } takes = Takes::AnyOf;
    std::vector<Range> ranges;
  };

  static bool TakesChar(const Mark& mark, char32_t c);
  void AddSet(std::string_view set);

  std::vector<Mark> marks_;
};

}  // namespace tresmor
