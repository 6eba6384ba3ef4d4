#include "base/date.h"

#include <langinfo.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <clocale>
#include <ctime>
#include <limits>
#include <utility>

#include "base/text.h"

namespace tresmor {

namespace {

namespace chr = std::chrono;

constexpr std::int64_t kDay = 86400;
constexpr chr::sys_days kDayZero = chr::year{1899} / 12 / 30;
constexpr std::int64_t kUnixZero = -std::int64_t{kDayZero.time_since_epoch().count()} * kDay;

constexpr DateStamp Midnight(chr::sys_days day) { return std::int64_t{(day - kDayZero).count()} * kDay; }

std::optional<DateStamp> Midnight(unsigned year, unsigned month, unsigned day) {
  if (month > 12 || day > 31) return std::nullopt;  // the types below keep a byte of these
  const chr::year_month_day date{chr::year{static_cast<int>(year)}, chr::month{month}, chr::day{day}};
  if (!date.ok()) return std::nullopt;
  return Midnight(chr::sys_days{date});
}

// Digits and nothing else.
std::optional<unsigned> Number(std::string_view text) {
  unsigned value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// Writes `value` with leading zeros over the digits that end before `end`.
void PutNumber(std::string& text, std::size_t end, std::size_t digits, unsigned value) {
  for (; digits > 0; --digits, value /= 10) text[--end] = static_cast<char>('0' + value % 10);
}

void PutTime(std::string& text, std::size_t at, std::int64_t secondsOfDay) {
  const auto seconds = static_cast<unsigned>(secondsOfDay);
  PutNumber(text, at + 2, 2, seconds / 3600);
  PutNumber(text, at + 5, 2, seconds / 60 % 60);
  PutNumber(text, at + 8, 2, seconds % 60);
}

// "hh:mm" or "hh:mm:ss", each of one or two digits, as seconds.
std::optional<std::int64_t> ParseTime(std::string_view text) {
  constexpr std::array<unsigned, 3> kBounds = {24, 60, 60};
  std::int64_t seconds = 0;
  std::size_t parts = 0;
  for (bool more = true; more; ++parts) {
    const std::size_t colon = text.find(':');
    const std::string_view part = text.substr(0, colon);
    const auto value = Number(part);
    if (parts == kBounds.size() || part.size() > 2 || !value || *value >= kBounds[parts]) return std::nullopt;
    seconds = seconds * 60 + *value;
    more = colon != text.npos;
    if (more) text.remove_prefix(colon + 1);
  }
  if (parts < 2) return std::nullopt;
  return parts == 2 ? seconds * 60 : seconds;
}

// One of the three parts of a date, with the mark that stands in front of it: a blank for blanks alone, NUL for
// nothing.
struct Piece {
  std::string_view text;
  char mark = '\0';

  bool IsLongYear() const { return text.size() == 4; }
};
using Pieces = std::array<Piece, 3>;

bool IsMark(char c) { return c == '.' || c == '/' || c == '-' || c == ','; }
bool IsPart(char c) { return c != ' ' && !IsMark(c); }

// The mark at the beginning of `text`, which is cut off with the blanks around it.
char TakeMark(std::string_view& text) {
  const std::size_t size = text.size();
  text = TrimBlanks(text);
  if (!text.empty() && IsMark(text[0])) {
    const char mark = text[0];
    text = TrimBlanks(text.substr(1));
    return mark;
  }
  return text.size() < size ? ' ' : '\0';
}

std::optional<Pieces> CutDate(std::string_view text) {
  Pieces pieces;
  for (Piece& piece : pieces) {
    piece.mark = TakeMark(text);
    const auto end = std::find_if_not(text.begin(), text.end(), IsPart);
    piece.text = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    if (piece.text.empty()) return std::nullopt;
    text.remove_prefix(piece.text.size());
  }
  // Some locales put a full stop behind a date.
  if (pieces[0].mark != '\0' || !(text.empty() || text == ".")) return std::nullopt;
  return pieces;
}

std::optional<unsigned> Year(std::string_view text) {
  const auto year = Number(text);
  if (!year || text.size() == 3 || text.size() > 4) return std::nullopt;
  if (text.size() == 4) return year;
  return *year < 30 ? *year + 2000 : *year + 1900;
}

std::optional<DateStamp> DateOf(std::string_view yearText, unsigned month, std::string_view dayText) {
  const auto year = Year(yearText);
  const auto day = Number(dayText);
  if (!year || !day) return std::nullopt;
  return Midnight(*year, month, *day);
}

std::optional<DateStamp> NumericDate(const Pieces& pieces, DateOrder order) {
  const bool oneMark = pieces[1].mark == pieces[2].mark;
  if (!oneMark || pieces[1].mark == ' ' || pieces[1].mark == ',') return std::nullopt;
  const bool yearInFront = pieces[0].IsLongYear() || (order == DateOrder::YearMonthDay && !pieces[2].IsLongYear());
  const Piece& year = yearInFront ? pieces[0] : pieces[2];
  Piece month = pieces[yearInFront ? 1 : 0];
  Piece day = pieces[yearInFront ? 2 : 1];
  if (!yearInFront && order == DateOrder::DayMonthYear) std::swap(month, day);
  auto value = Number(month.text);
  if (value > 12u && !yearInFront) {
    std::swap(month, day);
    value = Number(month.text);
  }
  if (!value) return std::nullopt;
  return DateOf(year.text, *value, day.text);
}

bool IsName(std::string_view text, std::string_view name) {
  if (name.ends_with('.')) name.remove_suffix(1);
  return EqualText(text, name);
}

struct Month {
  std::string_view english;
  std::string full, shortForm;  // of the locale
};

// Some locales fill short names up with blanks.
Month MonthOfLocale(std::string_view english, nl_item full, nl_item shortForm) {
  return {english, std::string(TrimBlanks(nl_langinfo(full))), std::string(TrimBlanks(nl_langinfo(shortForm)))};
}

const std::array<Month, 12>& Months() {
  static const std::array<Month, 12> months = {
      MonthOfLocale("January", MON_1, ABMON_1),    MonthOfLocale("February", MON_2, ABMON_2),
      MonthOfLocale("March", MON_3, ABMON_3),      MonthOfLocale("April", MON_4, ABMON_4),
      MonthOfLocale("May", MON_5, ABMON_5),        MonthOfLocale("June", MON_6, ABMON_6),
      MonthOfLocale("July", MON_7, ABMON_7),       MonthOfLocale("August", MON_8, ABMON_8),
      MonthOfLocale("September", MON_9, ABMON_9),  MonthOfLocale("October", MON_10, ABMON_10),
      MonthOfLocale("November", MON_11, ABMON_11), MonthOfLocale("December", MON_12, ABMON_12)};
  return months;
}

// 1 to 12, 0 if `text` names no month.
unsigned MonthOf(std::string_view text) {
  const auto named = [text](const Month& month) {
    return IsName(text, month.english) || IsName(text, month.english.substr(0, 3)) || IsName(text, month.full) ||
           IsName(text, month.shortForm);
  };
  const auto found = std::find_if(Months().begin(), Months().end(), named);
  return found == Months().end() ? 0 : static_cast<unsigned>(found - Months().begin()) + 1;
}

std::optional<DateStamp> DateWithName(const Pieces& pieces) {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const unsigned month = MonthOf(pieces[i].text);
    if (month == 0) continue;
    const Piece& first = pieces[i == 0 ? 1 : 0];
    const Piece& second = pieces[i == 2 ? 1 : 2];
    return first.IsLongYear() ? DateOf(first.text, month, second.text) : DateOf(second.text, month, first.text);
  }
  return std::nullopt;
}

// What a cell can hold of `stamp`.
chr::seconds HeldStamp(DateStamp stamp) {
  constexpr DateStamp kFirst = Midnight(chr::sys_days{chr::year{0} / 1 / 1});
  constexpr DateStamp kLast = Midnight(chr::sys_days{chr::year{10000} / 1 / 1}) - 1;
  return chr::seconds{std::clamp(stamp, kFirst, kLast)};
}

chr::sys_days DayOf(DateStamp stamp) { return kDayZero + chr::floor<chr::days>(HeldStamp(stamp)); }

std::string WriteDay(chr::sys_days day, const std::string& format) {
  const chr::year_month_day date{day};
  std::tm fields{};
  fields.tm_year = static_cast<int>(date.year()) - 1900;
  fields.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  fields.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  fields.tm_wday = static_cast<int>(chr::weekday{day}.c_encoding());
  std::array<char, 256> text{};
  return {text.data(), std::strftime(text.data(), text.size(), format.c_str(), &fields)};
}

std::string WriteIso(chr::sys_days day) { return ReplaceAll(FormatStamp(Midnight(day)).substr(0, 10), "/", "-"); }

// The inverse of WriteDay: only what it writes, byte for byte.
std::optional<DateStamp> ReadWritten(const std::string& text, const std::string& format) {
  std::tm fields{};
  const char* const end = strptime(text.c_str(), format.c_str(), &fields);
  if (end != text.c_str() + text.size() || fields.tm_year < -1900 || fields.tm_mday < 1) return std::nullopt;
  const auto date = Midnight(static_cast<unsigned>(fields.tm_year + 1900), static_cast<unsigned>(fields.tm_mon + 1),
                             static_cast<unsigned>(fields.tm_mday));
  if (!date || WriteDay(DayOf(*date), format) != text) return std::nullopt;
  return date;
}

std::optional<DateStamp> ReadDay(std::string_view text, DateOrder order, const std::string& format) {
  const auto date = ParseDate(text, order);
  return date ? date : ReadWritten(std::string(TrimBlanks(text)), format);
}

bool IsCLocale(std::string_view name) { return name == "C" || name == "POSIX" || name.starts_with("C."); }

// Two digits of a year don't tell it.
const std::string& LocaleFormat() {
  static const std::string format =
      IsCLocale(std::setlocale(LC_TIME, nullptr)) ? "%Y-%m-%d" : ReplaceAll(nl_langinfo(D_FMT), "%y", "%Y");
  return format;
}

}  // namespace

DateStamp UtcStamp(std::int64_t unixSeconds) {
  return std::min(unixSeconds, std::numeric_limits<std::int64_t>::max() - kUnixZero) + kUnixZero;
}

DateStamp LocalStamp(std::int64_t unixSeconds) {
  const std::time_t time = unixSeconds;
  std::tm fields{};
  // A year that the fields can't hold has no local time.
  if (localtime_r(&time, &fields) == nullptr) return UtcStamp(unixSeconds);
  return UtcStamp(unixSeconds) + fields.tm_gmtoff;
}

std::string FormatStamp(DateStamp stamp) {
  const chr::seconds seconds = HeldStamp(stamp);
  const auto days = chr::floor<chr::days>(seconds);
  const chr::year_month_day date{kDayZero + days};
  std::string text = "yyyy/mm/dd hh:mm:ss";
  PutNumber(text, 4, 4, static_cast<unsigned>(static_cast<int>(date.year())));
  PutNumber(text, 7, 2, static_cast<unsigned>(date.month()));
  PutNumber(text, 10, 2, static_cast<unsigned>(date.day()));
  PutTime(text, 11, (seconds - days).count());
  return text;
}

std::optional<DateStamp> ParseStamp(std::string_view text) {
  if (text.size() != 19 || text[4] != '/' || text[7] != '/' || text[10] != ' ' || text[13] != ':' || text[16] != ':') {
    return std::nullopt;
  }
  const auto year = Number(text.substr(0, 4));
  const auto month = Number(text.substr(5, 2));
  const auto day = Number(text.substr(8, 2));
  const auto time = ParseTime(text.substr(11));
  if (!year || !month || !day || !time) return std::nullopt;
  const auto date = Midnight(*year, *month, *day);
  if (!date) return std::nullopt;
  return *date + *time;
}

DateOrder OrderOf(std::string_view format) {
  std::string order;
  for (std::size_t at = format.find('%'); at != format.npos; at = format.find('%', at + 1)) {
    at = format.find_first_not_of("-_0^#EO", at + 1);
    if (at == format.npos) break;
    switch (format[at]) {
      case 'd':
      case 'e':
        order += 'd';
        break;
      case 'm':
      case 'b':
      case 'B':
      case 'h':
        order += 'm';
        break;
      case 'y':
      case 'Y':
        order += 'y';
        break;
      case 'F':
        order += "ymd";
        break;
    }
  }
  if (order == "dmy") return DateOrder::DayMonthYear;
  if (order == "ymd") return DateOrder::YearMonthDay;
  return DateOrder::MonthDayYear;
}

std::optional<DateStamp> ParseDate(std::string_view text, DateOrder order) {
  text = TrimBlanks(text);
  std::int64_t secondsOfDay = 0;
  if (const std::size_t colon = text.find(':'); colon != text.npos) {
    const std::size_t mark = text.find_last_of(" T", colon);
    if (mark == text.npos) return std::nullopt;
    const auto time = ParseTime(text.substr(mark + 1));
    if (!time) return std::nullopt;
    secondsOfDay = *time;
    text = TrimBlanks(text.substr(0, mark));
  }
  const auto pieces = CutDate(text);
  if (!pieces) return std::nullopt;
  auto date = NumericDate(*pieces, order);
  if (!date) date = DateWithName(*pieces);
  if (date) *date += secondsOfDay;
  return date;
}

std::optional<DateStamp> ParseDate(std::string_view text) {
  static const DateOrder order = OrderOf(nl_langinfo(D_FMT));
  return ReadDay(text, order, LocaleFormat());
}

std::string FormatDay(DateStamp stamp, const std::string& format) {
  const chr::sys_days day = DayOf(stamp);
  std::string text = WriteDay(day, format);
  return ReadDay(text, OrderOf(format), format) == Midnight(day) ? text : WriteIso(day);
}

std::string FormatDay(DateStamp stamp) { return FormatDay(stamp, LocaleFormat()); }

std::string FormatNamedDay(DateStamp stamp) {
  const chr::sys_days day = DayOf(stamp);
  const std::string iso = WriteIso(day);
  const Month& month = Months()[static_cast<unsigned>(chr::year_month_day{day}.month()) - 1];
  const auto with = [&iso](std::string_view name) {
    return iso.substr(8, 2) + " " + std::string(name) + " " + iso.substr(0, 4);
  };
  std::string text = with(month.shortForm);
  return ParseDate(text) == Midnight(day) ? text : with(month.english.substr(0, 3));
}

std::string FormatElapsed(std::int64_t seconds) {
  std::string text = "hh:mm:ss";
  PutTime(text, 0, (seconds % kDay + kDay) % kDay);
  return text;
}

}  // namespace tresmor
