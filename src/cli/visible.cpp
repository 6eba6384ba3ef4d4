#include "cli/visible.h"

#include <algorithm>

#include "base/text.h"

namespace tresmor {
namespace {

constexpr char kHex[] = "0123456789abcdef";

void AppendByte(std::string& visible, unsigned char byte) {
  switch (byte) {
    case '\n':
      visible += "\\n";
      return;
    case '\t':
      visible += "\\t";
      return;
    case '\r':
      visible += "\\r";
      return;
    case '\\':
      visible += "\\\\";
      return;
    default:
      visible.append("\\x").append({kHex[byte >> 4], kHex[byte & 15]});
  }
}

bool IsPlainAscii(unsigned char byte) { return byte >= 0x20 && byte < 0x7F && byte != '\\'; }

// Of one character as CharLength cuts them.
bool IsPlain(std::string_view character) {
  if (character.size() == 1) return IsPlainAscii(static_cast<unsigned char>(character[0]));
  return !CommandsText(character);
}

}  // namespace

std::string Visible(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), [](char c) { return IsPlainAscii(static_cast<unsigned char>(c)); })) {
    return std::string(text);
  }
  std::string visible;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, CharLength(text, 0));
    if (IsPlain(character)) {
      visible.append(character);
    } else {
      for (const char byte : character) AppendByte(visible, static_cast<unsigned char>(byte));
    }
    text.remove_prefix(character.size());
  }
  return visible;
}

}  // namespace tresmor
