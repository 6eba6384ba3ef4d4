// Calendar dates. A DateStamp counts seconds from 1899-12-30 00:00:00, the zero date of the program's cells; it has no
// time zone of its own, the routine that makes it tells which clock it means.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tresmor {

using DateStamp = std::int64_t;
inline constexpr DateStamp kZeroDate = 0;
inline constexpr DateStamp kOneDay = 86400;

// Seconds since 1970-01-01 00:00:00 UTC to a stamp on the UTC clock and on this machine's local clock.
DateStamp UtcStamp(std::int64_t unixSeconds);
DateStamp LocalStamp(std::int64_t unixSeconds);

// The day so many calendar months later, or earlier for a negative number: midnight of the same day of the month, or of
// the month's last day where it has no such one.
DateStamp AddMonths(DateStamp stamp, int months);

// How many midnights lie between, counted backwards if `to` comes first.
std::int64_t DaysBetween(DateStamp from, DateStamp to);

// "yyyy/mm/dd hh:mm:ss"; years above 9999 or below 0 are held at the nearest date that fits.
std::string FormatStamp(DateStamp stamp);
// The inverse, for exactly that form and a real date.
std::optional<DateStamp> ParseStamp(std::string_view text);

// OwnEra: years count from another day, which only the locale knows; dates that might mean such a year are not read.
enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay, YearDayMonth, OwnEra };

// The order in which a format of strftime writes a date; month, day, year where it can't be told.
DateOrder OrderOf(std::string_view format);

// A date as people type it, in the digits of any script and in one of these forms:
// - three numbers with ".", "/" or "-" between them, the same both times, blanks behind it allowed. A number of four
//   digits in front is the year, followed by month and day (ISO), or with dots as `order` has it. A number of four
//   digits at the end is the year too. What that leaves open follows `order`, but day and month change places where
//   that alone gives a month;
// - a name of a month, English or of the process's locale, full or short, with day and year in any places ("2 Jul
//   2003", "July 2, 2003", "2-Jul-03"). The year is the number of four digits, else the later one;
// - eight digits, year, month and day.
// Behind it may stand a time of day, "hh:mm" or "hh:mm:ss", after a blank or a T; none means midnight. Behind that may
// stand AM or PM, or what the locale writes for it, or Z for UTC, which becomes this machine's local time. Years of one
// or two digits lie between 1930 and 2029. What the locale says is read at the first call and kept: any thread may
// call. None if it is no date.
std::optional<DateStamp> ParseDate(std::string_view text, DateOrder order);
// The same in the order of the process's locale, and by that locale's own short form.
std::optional<DateStamp> ParseDate(std::string_view text);
// Whether a text is a date by that.
inline bool IsDateText(std::string_view value) { return ParseDate(value).has_value(); }

// The day of `stamp` as `format`, one of strftime, writes it in the process's locale; as ISO ("2003-07-02") where that
// could not be read back as the same day. Year 0 to 9999, others are held at the nearest.
std::string FormatDay(DateStamp stamp, const std::string& format);
// The same in the short form of the process's locale, the year with all digits; ISO in the C locale, and where the
// locale counts the years of an era of its own. What is written is read by ParseDate(text). Any thread may call, as for
// ParseDate.
std::string FormatDay(DateStamp stamp);
// A date in a cell: that, and behind it the time of day, "hh:mm:ss", unless it is midnight. Read as the same by
// ParseDate(text).
std::string FormatDate(DateStamp stamp);
// "dd mmm yyyy" with the locale's short name of the month, or the English one where the locale's could not be read
// back by ParseDate(text).
std::string FormatNamedDay(DateStamp stamp);

// Seconds as "hh:mm:ss", a time of day: wraps at 24 hours.
std::string FormatElapsed(std::int64_t seconds);

}  // namespace tresmor
