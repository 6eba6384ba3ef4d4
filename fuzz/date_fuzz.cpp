// Any text as a date that a user typed. What is taken for one says so by its numbers, and is read back as the same in
// every form in which dates are written.
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/date.h"
#include "base/text.h"

namespace tresmor {
namespace {

constexpr DateOrder kOrders[] = {DateOrder::DayMonthYear, DateOrder::MonthDayYear, DateOrder::YearMonthDay,
                                 DateOrder::YearDayMonth, DateOrder::OwnEra};

constexpr std::string_view kDigits = "0123456789";

// That of the digits in front.
unsigned Number(std::string_view digits) {
  unsigned number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::set<unsigned> Numbers(std::string_view text) {
  constexpr std::size_t kWholeDay = 8;  // digits in a row
  std::set<unsigned> numbers;
  for (std::size_t at = text.find_first_of(kDigits); at != text.npos; at = text.find_first_of(kDigits)) {
    text.remove_prefix(at);
    const std::size_t size = std::min(text.find_first_not_of(kDigits), text.size());
    numbers.insert(Number(text.substr(0, size)));
    if (size == kWholeDay) numbers.insert({Number(text.substr(0, 4)), Number(text.substr(6, 2))});
    text.remove_prefix(size);
  }
  return numbers;
}

// The hours that a text tells at its colon.
unsigned Hours(const std::string& text, std::size_t colon) {
  const std::size_t at = text.find_last_not_of(kDigits, colon - 1) + 1;
  const unsigned hours = Number(std::string_view(text).substr(at, colon - at));
  const bool isHalf = text.ends_with('m');
  return isHalf ? hours % 12 + (text.ends_with("pm") ? 12 : 0) : hours;
}

// A month may have a name; all else is told by numbers, the time by those at a colon. `typed` may be any text; what is
// told on another clock can't be compared.
void CheckTold(const std::string& typed, DateStamp stamp) {
  const std::string text = FoldCase(AsciiDigits(TrimBlanks(typed)));
  if (text.ends_with('z')) return;
  const std::set<unsigned> numbers = Numbers(text);
  const std::string written = FormatStamp(stamp);
  const unsigned year = Number(written.substr(0, 4));
  EXPECT_TRUE(numbers.contains(year) || numbers.contains(year % 100)) << text << " is no " << written;
  EXPECT_TRUE(numbers.contains(Number(written.substr(8, 2)))) << text << " is no " << written;
  const std::size_t colon = text.find(':');
  const bool hasTime = colon != text.npos;
  EXPECT_EQ(Number(written.substr(11, 2)), hasTime ? Hours(text, colon) : 0) << text;
  EXPECT_EQ(Number(written.substr(14, 2)), hasTime ? Number(text.substr(colon + 1)) : 0) << text;
}

void CheckReadBack(DateStamp stamp) {
  const std::string written = FormatStamp(stamp);
  const std::optional<DateStamp> day = ParseStamp(written.substr(0, 10) + " 00:00:00");
  EXPECT_EQ(ParseStamp(written), stamp) << written;
  EXPECT_EQ(ParseDate(written), stamp) << written;
  EXPECT_EQ(ParseDate(FormatDay(stamp)), day) << written;
  EXPECT_EQ(ParseDate(FormatNamedDay(stamp)), day) << written;
  for (const DateOrder order : kOrders) EXPECT_EQ(ParseDate(written, order), stamp) << written;
  // Of earlier years formats write fewer digits, which they alone can read.
  if (stamp < *ParseStamp("1000/01/01 00:00:00")) return;
  for (const char* format : {"%d.%m.%Y", "%m/%d/%y", "%Y-%m-%d", "%y-%m-%d", "%e %B %Y", "%b %d, %Y"}) {
    EXPECT_EQ(ParseDate(FormatDay(stamp, format), OrderOf(format)), day) << written << " as " << format;
  }
}

void Check(const std::string& text, const std::optional<DateStamp>& stamp, const std::optional<DateStamp>& withBlanks) {
  EXPECT_EQ(withBlanks, stamp) << text;
  if (!stamp) return;
  CheckTold(text, *stamp);
  CheckReadBack(*stamp);
}

}  // namespace
}  // namespace tresmor

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  using namespace tresmor;
  const std::string text(bytes, bytes + count);
  const std::string withBlanks = "  " + text + " ";
  for (const DateOrder order : kOrders) Check(text, ParseDate(text, order), ParseDate(withBlanks, order));
  Check(text, ParseDate(text), ParseDate(withBlanks));
  const auto stamp = ParseStamp(text);
  EXPECT_TRUE(!stamp || FormatStamp(*stamp) == text) << text;
  return 0;
}
