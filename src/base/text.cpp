#include "base/text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstring>

namespace tresmor {

namespace {

constexpr char32_t kInvalidByte = 0x110000;

bool IsAscii(unsigned char byte) { return byte < 0x80; }
bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

unsigned char FoldAscii(unsigned char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

// The length of the character, 0 if there is no valid one.
std::size_t Decode(std::string_view text, std::size_t at, utf8proc_int32_t& code) {
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + at;
  const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size() - at), &code);
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

// utf8proc knows the full folding only. Where that gives several characters the simple folding is the lower case or
// nothing, which is what utf8proc_tolower gives for all of them but U+0130.
char32_t FoldChar(utf8proc_int32_t code) {
  constexpr utf8proc_int32_t kCapitalDottedI = 0x130;
  if (code == kCapitalDottedI) return static_cast<char32_t>(code);
  utf8proc_int32_t folded[4];
  if (utf8proc_decompose_char(code, folded, 4, UTF8PROC_CASEFOLD, nullptr) == 1)
    return static_cast<char32_t>(folded[0]);
  return static_cast<char32_t>(utf8proc_tolower(code));
}

bool IsDigit(utf8proc_int32_t code) { return utf8proc_category(code) == UTF8PROC_CATEGORY_ND; }

// The digits of a script stand in a row from zero to nine; where several such rows follow each other, as many times.
char DigitOf(utf8proc_int32_t code) {
  utf8proc_int32_t value = 0;
  while (IsDigit(code - value - 1)) ++value;
  return static_cast<char>('0' + value % 10);
}

// The bytes of the folded text one after the other, without a copy of the whole.
class FoldedBytes {
 public:
  explicit FoldedBytes(std::string_view text) : text_(text) {}

  // -1 behind the last byte.
  int Next() {
    if (next_ == length_) {
      if (at_ == text_.size()) return -1;
      const auto byte = static_cast<unsigned char>(text_[at_]);
      if (IsAscii(byte)) {
        ++at_;
        return FoldAscii(byte);
      }
      Fill(NextFoldedChar(text_, at_));
    }
    return bytes_[next_++];
  }

 private:
  void Fill(char32_t folded) {
    next_ = 0;
    if (folded >= kInvalidByte) {
      bytes_[0] = static_cast<utf8proc_uint8_t>(folded - kInvalidByte);
      length_ = 1;
    } else {
      length_ = utf8proc_encode_char(static_cast<utf8proc_int32_t>(folded), bytes_);
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  utf8proc_uint8_t bytes_[4] = {};
  utf8proc_ssize_t next_ = 0;
  utf8proc_ssize_t length_ = 0;
};

int CompareFolded(std::string_view a, std::string_view b) {
  FoldedBytes left(a);
  FoldedBytes right(b);
  while (true) {
    const int x = left.Next();
    const int y = right.Next();
    if (x != y) return x < y ? -1 : 1;
    if (x < 0) return 0;
  }
}

}  // namespace

char32_t NextFoldedChar(std::string_view text, std::size_t& at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (IsAscii(byte)) {
    ++at;
    return FoldAscii(byte);
  }
  utf8proc_int32_t code = 0;
  const std::size_t length = Decode(text, at, code);
  at += std::max<std::size_t>(length, 1);
  return length == 0 ? kInvalidByte + byte : FoldChar(code);
}

std::string FoldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  FoldedBytes bytes(text);
  for (int byte = bytes.Next(); byte >= 0; byte = bytes.Next()) folded.push_back(static_cast<char>(byte));
  return folded;
}

int CompareText(std::string_view a, std::string_view b) {
  const std::size_t both = std::min(a.size(), b.size());
  std::size_t at = 0;
  constexpr std::size_t kStride = 8;
  while (both - at >= kStride && std::memcmp(a.data() + at, b.data() + at, kStride) == 0) at += kStride;
  for (; at < both; ++at) {
    const auto x = static_cast<unsigned char>(a[at]);
    const auto y = static_cast<unsigned char>(b[at]);
    if (x == y) continue;
    if (!IsAscii(x | y)) break;
    if (FoldAscii(x) != FoldAscii(y)) return FoldAscii(x) < FoldAscii(y) ? -1 : 1;
  }
  // Only a continuation byte can stand inside a character. Back to where both texts begin one.
  const auto inside = [&at](std::string_view text) {
    return at < text.size() && IsContinuation(static_cast<unsigned char>(text[at]));
  };
  while (at > 0 && (inside(a) || inside(b))) --at;
  return CompareFolded(a.substr(at), b.substr(at));
}

std::uint64_t TextKey(std::string_view text) {
  FoldedBytes bytes(text);
  std::uint64_t key = 0;
  for (int i = 0; i < 8; ++i) key = key << 8 | static_cast<std::uint64_t>(std::max(bytes.Next(), 0));
  return key;
}

std::size_t CharLength(std::string_view text, std::size_t at) {
  utf8proc_int32_t code = 0;
  return std::max<std::size_t>(Decode(text, at, code), 1);
}

bool IsUtf8(std::string_view text) {
  utf8proc_int32_t code = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = Decode(text, at, code);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

bool CommandsText(std::string_view character) {
  utf8proc_int32_t code = 0;
  if (character.size() < 2 || Decode(character, 0, code) == 0) return false;
  return code < 0xA0 || code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x2028 && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

std::string PadNumber(std::int64_t number) {
  constexpr std::size_t kWidth = 10;
  std::string digits = std::to_string(number);
  if (digits.size() < kWidth) digits.insert(0, kWidth - digits.size(), ' ');
  return digits;
}

std::string AsciiDigits(std::string_view text) {
  std::string ascii;
  for (std::size_t at = 0; at < text.size();) {
    utf8proc_int32_t code = 0;
    const std::size_t length = CharLength(text, at);
    if (length > 1 && Decode(text, at, code) == length && IsDigit(code)) {
      ascii += DigitOf(code);
    } else {
      ascii += text.substr(at, length);
    }
    at += length;
  }
  return ascii;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, from)) {
    result.append(text, from, at - from).append(by);
    from = at + what.size();
  }
  return result.append(text, from);
}

std::string WithinALine(std::string_view name) { return ReplaceAll(name, "\r", "\n"); }

std::string PercentEncoded(std::string_view bytes, std::string_view marks) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  std::string text;
  for (const char byte : bytes) {
    if (kPlain.find(byte) != kPlain.npos || marks.find(byte) != marks.npos) {
      text += byte;
      continue;
    }
    const auto value = static_cast<unsigned char>(byte);
    text.append({'%', kDigits[value / 16U], kDigits[value % 16U]});
  }
  return text;
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace tresmor
