#include "base/path.h"

#include "base/text.h"

namespace tresmor {

namespace {

// Where the last dot behind the last separator stands, npos if there is none.
std::size_t ExtensionDot(std::string_view s, PathStyle style) {
  const std::size_t dot = s.rfind('.');
  return dot == s.npos || dot < GetFolderOf(s, style).size() ? s.npos : dot;
}

}  // namespace

bool PathStyle::Equal(std::string_view a, std::string_view b) const { return ignoreCase ? EqualText(a, b) : a == b; }

bool PathStyle::StartsWith(std::string_view text, std::string_view prefix) const {
  return ignoreCase ? FoldCase(text).starts_with(FoldCase(prefix)) : text.starts_with(prefix);
}

std::string PathStyle::Key(std::string_view path) const { return ignoreCase ? FoldCase(path) : std::string(path); }

std::string SplitFileSpec(std::string_view s, unsigned parts, PathStyle style) {
  const std::string_view folder = GetFolderOf(s, style);
  const std::string_view name = s.substr(folder.size(), ExtensionDot(s, style) - folder.size());
  std::string result;
  if (parts & kFileFolder) result += folder;
  if (parts & kFileName) result += name;
  if (parts & kFileExt) {
    if (!result.empty()) result += '.';
    result += GetFileExtOf(s, style);
  }
  return result;
}

std::string AddTail(std::string_view s, std::string_view t) {
  std::string result(s);
  if (!s.ends_with(t)) result += t;
  return result;
}

std::string_view StripNul(std::string_view s) { return s.substr(0, s.find('\0')); }
bool HasNul(std::string_view s) { return s.find('\0') != s.npos; }

std::string_view GetFileNameOf(std::string_view s, PathStyle style) { return s.substr(GetFolderOf(s, style).size()); }

std::string_view GetFolderOf(std::string_view s, PathStyle style) { return s.substr(0, s.rfind(style.separator) + 1); }

std::string_view GetFileExtOf(std::string_view s, PathStyle style) {
  const std::size_t dot = ExtensionDot(s, style);
  return dot == s.npos ? std::string_view() : s.substr(dot + 1);
}

std::string WithoutTail(std::string_view path, PathStyle style) {
  while (path.size() > 1 && path.ends_with(style.separator)) path.remove_suffix(1);
  return std::string(path);
}

std::string JoinPath(std::string_view folder, std::string_view name, PathStyle style) {
  return AddTail(folder, style.Tail()).append(name);
}

std::string ParentOf(std::string_view path, PathStyle style) { return WithoutTail(GetFolderOf(path, style), style); }

bool LiesBelow(std::string_view path, std::string_view folder, PathStyle style) {
  return style.StartsWith(path, AddTail(folder, style.Tail()));
}

bool IsOrLiesBelow(std::string_view path, std::string_view folder, PathStyle style) {
  return style.Equal(path, folder) || LiesBelow(path, folder, style);
}

}  // namespace tresmor
