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
#include <vector>

#include "base/date_names.h"
#include "base/text.h"

namespace tresmor {

namespace {

namespace chr = std::chrono;

constexpr chr::sys_days kDayZero = chr::year{1899} / 12 / 30;
constexpr std::int64_t kUnixZero = -std::int64_t{kDayZero.time_since_epoch().count()} * kOneDay;

constexpr DateStamp Midnight(chr::sys_days day) { return std::int64_t{(day - kDayZero).count()} * kOneDay; }

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

struct Clock {
  std::int64_t seconds = 0;
  bool isUtc = false;
};

// `folded` is in folded case. A "z" at its end is for UTC.
std::optional<Clock> ParseClock(std::string_view folded) {
  const bool isUtc = folded.ends_with('z');
  if (isUtc) folded.remove_suffix(1);
  const std::optional<bool> afternoon = isUtc ? std::nullopt : TakeHalfOfDay(folded);
  auto seconds = ParseTime(TrimBlanks(folded));
  if (!seconds) return std::nullopt;
  if (afternoon) {
    const std::int64_t hours = *seconds / 3600;
    if (hours < 1 || hours > 12) return std::nullopt;
    *seconds += (hours % 12 - hours + (*afternoon ? 12 : 0)) * 3600;
  }
  return Clock{*seconds, isUtc};
}

// One of the three parts of a date, with the mark that stands in front of it: a blank for blanks alone, NUL for
// nothing.
struct Piece {
  std::string_view text;
  char mark = '\0';

  bool IsLongYear() const { return text.size() == 4; }
};
using Pieces = std::array<Piece, 3>;

// The mark at the beginning of `text`, which is cut off with the blanks around it.
char TakeMark(std::string_view& text) {
  const std::size_t size = text.size();
  text = TrimBlanks(text);
  if (!text.empty() && IsDateMark(text[0])) {
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
    const auto end = std::find_if_not(text.begin(), text.end(), IsDatePart);
    piece.text = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    if (piece.text.empty()) return std::nullopt;
    text.remove_prefix(piece.text.size());
  }
  // Some locales put a full stop behind a date.
  if (pieces[0].mark != '\0' || !(text.empty() || text == ".")) return std::nullopt;
  return pieces;
}

// Of one or two digits.
unsigned WholeYear(unsigned shortYear) { return shortYear < 30 ? shortYear + 2000 : shortYear + 1900; }

std::optional<unsigned> Year(std::string_view text) {
  const auto year = Number(text);
  if (!year || text.size() == 3 || text.size() > 4) return std::nullopt;
  return text.size() == 4 ? *year : WholeYear(*year);
}

std::optional<DateStamp> DateOf(std::string_view yearText, unsigned month, std::string_view dayText) {
  const auto year = Year(yearText);
  const auto day = Number(dayText);
  if (!year || !day || dayText.size() > 2) return std::nullopt;
  return Midnight(*year, month, *day);
}

std::optional<DateStamp> NumericDate(const Pieces& pieces, DateOrder order) {
  const char mark = pieces[1].mark;
  if (mark != pieces[2].mark || mark == ' ' || mark == ',') return std::nullopt;
  const bool yearComesFirst = order == DateOrder::YearMonthDay || order == DateOrder::YearDayMonth;
  const bool yearInFront = pieces[0].IsLongYear() || (yearComesFirst && !pieces[2].IsLongYear());
  if (order == DateOrder::OwnEra && !yearInFront) return std::nullopt;
  const bool dayInFront = yearInFront ? order == DateOrder::YearDayMonth && mark == '.'
                                      : order == DateOrder::DayMonthYear || order == DateOrder::YearDayMonth;
  const Piece& year = yearInFront ? pieces[0] : pieces[2];
  Piece month = pieces[yearInFront ? 1 : 0];
  Piece day = pieces[yearInFront ? 2 : 1];
  if (dayInFront) std::swap(month, day);
  auto value = Number(month.text);
  if (value > 12u && !yearInFront) {
    std::swap(month, day);
    value = Number(month.text);
  }
  if (!value || month.text.size() > 2) return std::nullopt;
  return DateOf(year.text, *value, day.text);
}

std::optional<DateStamp> DateWithName(std::string_view text, DateOrder order) {
  std::string folded = FoldCase(text);
  const auto month = FindMonth(folded);
  if (!month) return std::nullopt;
  constexpr std::string_view kMonth = "m";  // one part, whatever the name is made of
  folded.replace(month->at, month->size, kMonth);
  const auto pieces = CutDate(folded);
  if (!pieces) return std::nullopt;
  std::vector<Piece> others(pieces->begin(), pieces->end());
  std::erase_if(others, [kMonth](const Piece& piece) { return piece.text == kMonth; });
  if (others.size() != 2) return std::nullopt;
  if (others[0].IsLongYear()) std::swap(others[0], others[1]);
  if (order == DateOrder::OwnEra && !others[1].IsLongYear()) return std::nullopt;
  return DateOf(others[1].text, month->month, others[0].text);
}

// "20030702"
std::optional<DateStamp> CompactDate(std::string_view text) {
  if (text.size() != 8) return std::nullopt;
  const auto month = Number(text.substr(4, 2));
  return month ? DateOf(text.substr(0, 4), *month, text.substr(6)) : std::nullopt;
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

// `format` with ordinary digits and the whole year.
std::string PlainFormat(std::string_view format) {
  return ReplaceAll(ReplaceAll(ReplaceAll(format, "%O", "%"), "%C%y", "%y"), "%y", "%Y");
}

// What `format` writes, in ordinary digits; zeros and blanks in front of numbers may be missing, and so may the
// hundreds of the year.
std::optional<DateStamp> ReadWritten(const std::string& text, const std::string& format) {
  constexpr int kUnset = -10000;
  std::tm fields{};
  fields.tm_year = kUnset;
  fields.tm_mon = -1;
  const char* const end = strptime(text.c_str(), PlainFormat(format).c_str(), &fields);
  if (end != text.c_str() + text.size() || fields.tm_year < -1900 || fields.tm_mday < 1) return std::nullopt;
  auto year = static_cast<unsigned>(fields.tm_year + 1900);
  if (year < 100) year = WholeYear(year);
  if (year < 1000) return std::nullopt;
  return Midnight(year, static_cast<unsigned>(fields.tm_mon + 1), static_cast<unsigned>(fields.tm_mday));
}

std::optional<DateStamp> ReadDay(const std::string& text, DateOrder order, const std::string& format) {
  auto date = DateWithName(text, order);
  if (!date) {
    if (const auto pieces = CutDate(text)) date = NumericDate(*pieces, order);
  }
  if (!date) date = CompactDate(text);
  return date ? date : ReadWritten(text, format);
}

std::optional<DateStamp> ReadDate(std::string_view typed, DateOrder order, const std::string& format) {
  const std::string text = AsciiDigits(TrimBlanks(typed));
  if (const auto day = ReadDay(text, order, format)) return day;
  const std::size_t mark = text.find_last_of(" T", text.find(':'));
  if (mark == text.npos) return std::nullopt;
  const auto clock = ParseClock(FoldCase(text.substr(mark + 1)));
  const auto day = ReadDay(std::string(TrimBlanks(std::string_view(text).substr(0, mark))), order, format);
  if (!clock || !day) return std::nullopt;
  return clock->isUtc ? LocalStamp(*day + clock->seconds - kUnixZero) : *day + clock->seconds;
}

bool IsCLocale(std::string_view name) { return name == "C" || name == "POSIX" || name.starts_with("C."); }

struct LocaleForm {
  DateOrder order;
  std::string format;                // by which days are read, empty where ISO is written
  std::vector<std::string> toWrite;  // formats, the best first
};

// Two digits of a year don't tell it, nor does the year of an era that we don't read.
const LocaleForm& FormOfLocale() {
  static const LocaleForm form = [] {
    const std::string format = nl_langinfo(D_FMT);
    const DateOrder order = OrderOf(format);
    if (IsCLocale(std::setlocale(LC_TIME, nullptr)) || order == DateOrder::OwnEra) return LocaleForm{order, "", {}};
    const std::string whole = ReplaceAll(format, "%y", "%Y");
    const std::string ownDigits = ReplaceAll(ReplaceAll(whole, "%OC%Oy", "%Oy"), "%Oy", "%OC%Oy");
    return LocaleForm{order, format, {ownDigits, PlainFormat(format)}};
  }();
  return form;
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

DateStamp AddMonths(DateStamp stamp, int months) {
  const chr::year_month_day date = chr::year_month_day{DayOf(stamp)} + chr::months{months};
  return Midnight(date.ok() ? date : date.year() / date.month() / chr::last);
}

std::int64_t DaysBetween(DateStamp from, DateStamp to) { return (DayOf(to) - DayOf(from)).count(); }

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
  if (format.find("%E") != format.npos) return DateOrder::OwnEra;
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
  if (order == "ydm") return DateOrder::YearDayMonth;
  return DateOrder::MonthDayYear;
}

std::optional<DateStamp> ParseDate(std::string_view text, DateOrder order) { return ReadDate(text, order, ""); }

std::optional<DateStamp> ParseDate(std::string_view text) {
  const LocaleForm& form = FormOfLocale();
  return ReadDate(text, form.order, form.format);
}

std::string FormatDay(DateStamp stamp, const std::string& format) {
  const chr::sys_days day = DayOf(stamp);
  std::string text = WriteDay(day, format);
  return ReadDate(text, OrderOf(format), format) == Midnight(day) ? text : WriteIso(day);
}

std::string FormatDay(DateStamp stamp) {
  const chr::sys_days day = DayOf(stamp);
  for (const std::string& format : FormOfLocale().toWrite) {
    std::string text = WriteDay(day, format);
    if (ParseDate(text) == Midnight(day)) return text;
  }
  return WriteIso(day);
}

std::string FormatDate(DateStamp stamp) {
  const std::string time = FormatStamp(stamp).substr(11);
  return FormatDay(stamp) + (time == "00:00:00" ? "" : " " + time);
}

std::string FormatNamedDay(DateStamp stamp) {
  const chr::sys_days day = DayOf(stamp);
  const auto month = static_cast<unsigned>(chr::year_month_day{day}.month());
  const std::string iso = WriteIso(day);
  const auto with = [&iso](const std::string& name) { return iso.substr(8, 2) + " " + name + " " + iso.substr(0, 4); };
  std::string text = with(ShortMonth(month));
  return ParseDate(text) == Midnight(day) ? text : with(EnglishShortMonth(month));
}

std::string FormatElapsed(std::int64_t seconds) {
  std::string text = "hh:mm:ss";
  PutTime(text, 0, (seconds % kOneDay + kOneDay) % kOneDay);
  return text;
}

}  // namespace tresmor
