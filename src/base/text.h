// Text as the program compares and shows it. A text is bytes: UTF-8 where it came from people, anything where it came
// from a directory. No routine here fails on bytes that are not UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tresmor {

// Simple Unicode case folding (one character to one character, as in CaseFolding.txt, statuses C and S). A byte that
// is not part of valid UTF-8 stands for itself.
std::string FoldCase(std::string_view text);

// The folded character at text[at], which moves behind it. An invalid byte gives 0x110000 plus the byte, so it equals
// no character.
char32_t NextFoldedChar(std::string_view text, std::size_t& at);

// The order of texts without regard to case: the folded texts compared byte by byte. Gives -1, 0 or 1. Equal here is
// what "the same name" means everywhere.
int CompareText(std::string_view a, std::string_view b);
inline bool EqualText(std::string_view a, std::string_view b) { return CompareText(a, b) == 0; }

// The first eight bytes of FoldCase(text) as a big-endian number, short texts filled with zero bytes: where two keys
// differ they order the texts as CompareText does; where they are equal only CompareText knows.
std::uint64_t TextKey(std::string_view text);

// The length in bytes (1 to 4) of the UTF-8 character at text[at]; an invalid byte counts as a character of one byte.
std::size_t CharLength(std::string_view text, std::size_t at);
bool IsUtf8(std::string_view text);
// Whether a character of several bytes, as CharLength cuts them, shows nothing itself and has power over the text about
// it: control characters, ends of lines and paragraphs, and what turns or isolates the direction of reading.
bool CommandsText(std::string_view character);

// A number as lists hold it: right-aligned in 10 columns, so that texts of up to that width order as numbers do. A
// number that needs more columns takes them.
std::string PadNumber(std::int64_t number);

// `text` with "0" to "9" for the decimal digits of every script.
std::string AsciiDigits(std::string_view text);

// `text` with each `what` (not empty) replaced by `by`.
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by);

// A file's name as a caption of several lines may hold it, where CR LF ends a line: each CR of the name becomes LF.
std::string WithinALine(std::string_view name);

// `bytes` with "%" and two hexadecimal digits for all but ASCII letters, digits and `marks`.
std::string PercentEncoded(std::string_view bytes, std::string_view marks);

// For sets of texts that are asked for parts of other texts.
struct TextHash : std::hash<std::string_view> {
  using is_transparent = void;
};

// Without the blanks (U+0020 only) at both ends.
std::string_view TrimBlanks(std::string_view text);

}  // namespace tresmor
