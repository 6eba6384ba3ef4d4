// File patterns as a directory listing of the Windows kind understands them, without short names.
#pragma once

#include <string>
#include <string_view>

namespace tresmor {

// One pattern such as "*.jpg". Letters match in either case, whatever the path style. The rules are those of the DOS
// wildcards, to which FindFirstFile of Win32 turns its patterns:
// - "*.*" takes names without a dot too, as "*" does.
// - `?` stands for a UTF-8 character or a byte that is part of none, and stops at dots: where the name has a dot or is
//   over, `?` is passed by. So "a?.txt" matches "a.txt".
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
