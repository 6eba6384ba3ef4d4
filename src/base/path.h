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
};

// What SplitFileSpec gives, in bits.
enum : unsigned { kFileName = 1, kFileExt = 2, kFileFolder = 4 };

// Cuts `s` at its last separator and the last dot behind it, and joins the wanted parts in the order folder (with its
// separator), name, extension. An extension that was asked for is put behind a dot whenever anything stands in front
// of it, so name plus extension of "report" gives "report.".
std::string SplitFileSpec(std::string_view s, unsigned parts, PathStyle style);

// `s` plus `t`, unless `s` ends in `t` already (exact bytes).
std::string AddTail(std::string_view s, std::string_view t);
// `s` up to its first NUL.
std::string_view StripNul(std::string_view s);
// Behind the last separator; all of `s` if there is none.
std::string_view GetFileNameOf(std::string_view s, PathStyle style);
// Up to and including the last separator; empty if there is none.
std::string_view GetFolderOf(std::string_view s, PathStyle style);
// Behind the last dot if that dot lies behind the last separator, else empty.
std::string_view GetFileExtOf(std::string_view s, PathStyle style);

}  // namespace tresmor
