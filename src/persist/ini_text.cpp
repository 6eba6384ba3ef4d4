#include "persist/ini_text.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"

namespace tresmor {

namespace {

constexpr std::string_view kNameMarks = "=[]/;#";
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";  // with which some editors begin a file

// Whether a character stands for itself. Bytes that aren't UTF-8 don't, so that the file is a text.
bool IsPlain(std::string_view character, bool atEdge, std::string_view marks) {
  if (character.size() > 1) return true;
  const auto byte = static_cast<unsigned char>(character[0]);
  return byte >= ' ' && byte < 0x7f && marks.find(character) == marks.npos && !(atEdge && byte == ' ');
}

std::string Escape(std::string_view text, std::string_view marks) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  for (std::size_t at = 0; at < text.size();) {
    const std::string_view character = text.substr(at, CharLength(text, at));
    const bool atEdge = at == 0 || at + 1 == text.size();
    if (character == "\\") {
      escaped += "\\\\";
    } else if (IsPlain(character, atEdge, marks)) {
      escaped += character;
    } else {
      const auto byte = static_cast<unsigned char>(character[0]);
      escaped += {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
    }
    at += character.size();
  }
  return escaped;
}

// The byte that "\xHH" at the beginning of `text` stands for.
std::optional<char> EscapedByte(std::string_view text) {
  unsigned byte = 0;
  if (text.size() < 4 || text[1] != 'x') return std::nullopt;
  const auto [end, failure] = std::from_chars(text.data() + 2, text.data() + 4, byte, 16);
  if (failure != std::errc() || end != text.data() + 4) return std::nullopt;
  return static_cast<char>(byte);
}

std::string Unescape(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    std::size_t taken = 1;
    char byte = text[0];
    if (text.starts_with("\\\\")) {
      taken = 2;
    } else if (const auto escaped = byte == '\\' ? EscapedByte(text) : std::nullopt) {
      byte = *escaped;
      taken = 4;
    }
    plain += byte;
    text.remove_prefix(taken);
  }
  return plain;
}

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

struct Line {
  enum class Kind { Header, Entry, Other };
  Kind kind = Kind::Other;
  std::string_view name;   // escaped: the application or the key
  std::string_view value;  // escaped: the section or the value
};

Line ReadLine(std::string_view text) {
  text = Trim(text);
  if (text.starts_with(';') || text.starts_with('#')) return {};
  const bool header = text.starts_with('[');
  if (header) {
    text.remove_prefix(1);
    if (text.ends_with(']')) text.remove_suffix(1);
  }
  const std::size_t mark = text.find(header ? '/' : '=');
  if (mark == text.npos) return {header ? Line::Kind::Header : Line::Kind::Other, text, {}};
  return {header ? Line::Kind::Header : Line::Kind::Entry, Trim(text.substr(0, mark)), Trim(text.substr(mark + 1))};
}

// Goes through the headings and entries of one section.
class SectionLines {
 public:
  SectionLines(std::string_view ini, IniSection where)
      : ini_(ini), where_(where), end_(ini.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

  bool Next() {
    while (end_ < ini_.size()) {
      begin_ = end_;
      end_ = std::min(ini_.find('\n', begin_), ini_.size() - 1) + 1;
      line_ = ReadLine(ini_.substr(begin_, end_ - begin_));
      if (line_.kind == Line::Kind::Header) inside_ = IsWanted();
      if (inside_ && line_.kind != Line::Kind::Other) return true;
    }
    return false;
  }

  bool IsEntry() const { return line_.kind == Line::Kind::Entry; }
  bool IsEntry(std::string_view key) const { return IsEntry() && EqualText(Unescape(line_.name), key); }
  std::string Value() const { return Unescape(line_.value); }
  std::size_t Begin() const { return begin_; }
  std::size_t End() const { return end_; }
  // Without the marks of the line's end.
  std::size_t Length() const {
    const std::string_view line = ini_.substr(begin_, end_ - begin_);
    return line.find_last_not_of("\r\n") + 1;
  }

 private:
  bool IsWanted() const {
    return EqualText(Unescape(line_.name), where_.application) && EqualText(Unescape(line_.value), where_.section);
  }

  std::string_view ini_;
  IniSection where_;
  Line line_;
  std::size_t begin_ = 0;
  std::size_t end_;
  bool inside_ = false;
};

std::string Heading(IniSection where) {
  return "[" + Escape(where.application, kNameMarks) + "/" + Escape(where.section, kNameMarks) + "]\n";
}

void EndLastLine(std::string& ini) {
  if (!ini.empty() && !ini.ends_with('\n')) ini += '\n';
}

}  // namespace

std::optional<std::string> FindIniValue(std::string_view ini, IniSection where, std::string_view key) {
  SectionLines lines(ini, where);
  while (lines.Next()) {
    if (lines.IsEntry(key)) return lines.Value();
  }
  return std::nullopt;
}

bool SetIniValue(std::string& ini, IniSection where, std::string_view key, std::string_view value) {
  const std::string line = Escape(key, kNameMarks) + "=" + Escape(value, "");
  const std::size_t size = ini.size();
  std::optional<std::size_t> end;  // of the section's last line
  SectionLines lines(ini, where);
  while (lines.Next()) {
    if (lines.IsEntry(key)) {
      if (lines.Value() == value) return false;
      ini.replace(lines.Begin(), lines.Length(), line);
      return true;
    }
    end = lines.End();
  }
  EndLastLine(ini);
  if (!end) {
    if (!ini.empty()) ini += '\n';
    ini += Heading(where);
  }
  ini.insert(end.value_or(size) == size ? ini.size() : *end, line + "\n");
  return true;
}

bool RemoveIniKeys(std::string& ini, IniSection where) {
  std::string kept;
  std::size_t from = 0;
  SectionLines lines(ini, where);
  while (lines.Next()) {
    if (!lines.IsEntry()) continue;
    kept.append(ini, from, lines.Begin() - from);
    from = lines.End();
  }
  if (from == 0) return false;
  ini = kept.append(ini, from);
  return true;
}

}  // namespace tresmor
