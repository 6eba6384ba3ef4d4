// File patterns as a directory listing of the Windows kind understands them, without short names.
#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// One pattern such as "*.jpg". No regard to case, in every path style. The rules, which are those of the Win32 file
// name matching (the DOS wildcards that FindFirstFile turns its patterns into):
// - "*.*" is every name, and so is "*".
// - `?` takes one UTF-8 character (an invalid byte counts as one), but never a dot: before a dot, and at the end of the
//   name, it takes nothing. So "a?.txt" matches "a.txt".
// - `*` takes any run of characters, an empty one too. A `*` directly before a dot never takes the last dot of the
//   name, though it may take earlier ones.
// - A dot directly before `*` or `?` also matches the end of the name. So "a.*" matches "a".
// - Dots at the end of the pattern fall away, but a `*` before them still never takes the last dot. So "report."
//   matches "report" alone, and "*." any name without a dot.
// - All else stands for itself. A pattern that is empty, or nothing but dots, matches no name.
class Wildcard {
 public:
  explicit Wildcard(std::string_view pattern);
  bool Matches(std::string_view name) const;

 private:
  bool everything_ = false;
  std::u32string folded_;  // characters as NextFoldedChar gives them, and marks for the wildcards
};

}  // namespace tresmor
