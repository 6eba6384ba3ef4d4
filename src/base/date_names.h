// Names that dates are written with: English ones, and those of the process's locale, which are read at the first call
// and kept. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tresmor {

// Between the parts of a date: blanks and the marks ".", "/", "-" and ",".
bool IsDateMark(char c);
inline bool IsDatePart(char c) { return c != ' ' && !IsDateMark(c); }

struct FoundMonth {
  std::size_t at;
  std::size_t size;
  unsigned month;  // 1 to 12
};

// The longest name of a month, full or short, that stands in `folded`, a text in folded case, as parts of its own. A
// full stop at a name's end is no part of it.
std::optional<FoundMonth> FindMonth(std::string_view folded);

// The short name of a month, 1 to 12, as it is written.
std::string ShortMonth(unsigned month);
std::string EnglishShortMonth(unsigned month);

// Takes the mark of a half of the day ("pm") off the end of a text in folded case: whether it is the second one. None
// if there is no such mark.
std::optional<bool> TakeHalfOfDay(std::string_view& folded);

}  // namespace tresmor
