// File patterns as a directory listing of the Windows kind understands them, without short names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tresmor {

// One pattern such as "*.jpg". No regard to case, in every path style. `*` takes any run of characters, `?` exactly
// one UTF-8 character (an invalid byte counts as one) but nothing before a dot or at the end of the name. "*.*" is
// every name; "report." is the name report without an extension, and "*." any name without one. An empty pattern
// matches no name. Source of the rules: the documentation of the Win32 file name matching (FsRtlIsNameInExpression and
// the DOS wildcards that FindFirstFile maps to).
class Wildcard {
 public:
  explicit Wildcard(std::string_view pattern);
  bool Matches(std::string_view name) const;

 private:
  bool everything_ = false;
  std::string folded_;
};

}  // namespace tresmor
