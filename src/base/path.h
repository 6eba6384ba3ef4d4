// Paths as text. Every rule here is on bytes and touches no file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tresmor {

// The one place that knows how paths are written and when two are the same. POSIX: '/', exact. Windows: '\', without
// regard to case.
struct PathStyle {
  char separator = '/';
  bool ignoreCase = false;

  static constexpr PathStyle Posix() { return {'/', false}; }
  static constexpr PathStyle Windows() { return {'\\', true}; }

  bool Equal(std::string_view a, std::string_view b) const;
  // Whether `text` begins with `prefix` under the style's case rule.
  bool StartsWith(std::string_view text, std::string_view prefix) const;
  // A text that is equal for two paths exactly when Equal holds: the key of maps keyed by path.
  std::string Key(std::string_view path) const;
  std::string Tail() const { return {separator}; }
  // How long a folder's path is at least, with the separator at its end: that of a root. What is shorter is a drive or
  // the start of a computer's name.
  std::size_t ShortestFolder() const { return separator == '\\' ? 3 : 1; }
};

// What SplitFileSpec gives, in bits.
enum : unsigned { kFileName = 1, kFileExt = 2, kFileFolder = 4 };

// Takes a path apart and joins again what `parts` asks for: folder with its separator, name, extension. The dot in
// front of the extension depends on what it is joined to and not on whether there is one to show: name and extension of
// "report" are "report.", and those of ".txt" are "txt".
std::string SplitFileSpec(std::string_view s, unsigned parts, PathStyle style);

// Makes sure, byte for byte, that `s` ends in `t`.
std::string AddTail(std::string_view s, std::string_view t);
// What a C routine would see of `s`.
std::string_view StripNul(std::string_view s);
// Whether that isn't all of it. No file has such a path, though a row of a damaged session may; a call of the system
// would be about another file.
bool HasNul(std::string_view s);
// "b.txt" of "/a/b.txt" and of "b.txt"; nothing of a folder with its separator.
std::string_view GetFileNameOf(std::string_view s, PathStyle style);
// The rest: "/a/" of "/a/b.txt", nothing of "b.txt". A file in a root gives the root.
std::string_view GetFolderOf(std::string_view s, PathStyle style);
// "gz" of "/a/b.tar.gz", nothing of "/a.b/c" and of "/a/b.".
std::string_view GetFileExtOf(std::string_view s, PathStyle style);

// Without separators at its end but for the one that is all of it.
std::string WithoutTail(std::string_view path, PathStyle style);
// "/d/name" of "/d" or "/d/" and "name".
std::string JoinPath(std::string_view folder, std::string_view name, PathStyle style);
// The folder that `path` stands in, without a separator at its end but for the root.
std::string ParentOf(std::string_view path, PathStyle style);
// Whether `path` lies below `folder`.
bool LiesBelow(std::string_view path, std::string_view folder, PathStyle style);
// Whether it does or is the folder itself. Both without a separator at the end.
bool IsOrLiesBelow(std::string_view path, std::string_view folder, PathStyle style);

}  // namespace tresmor
