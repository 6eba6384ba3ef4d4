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

// Seconds since 1970-01-01 00:00:00 UTC to a stamp on the UTC clock and on this machine's local clock.
DateStamp UtcStamp(std::int64_t unixSeconds);
DateStamp LocalStamp(std::int64_t unixSeconds);

// "yyyy/mm/dd hh:mm:ss"; years above 9999 or below 0 are held at the nearest date that fits.
std::string FormatStamp(DateStamp stamp);
// The inverse, for exactly that form and a real date.
std::optional<DateStamp> ParseStamp(std::string_view text);

// A date as people type it: ISO ("2003-07-02", with "hh:mm[:ss]" behind a blank or T), names of months ("2 Jul 2003",
// "July 2, 2003"), or numbers with ".", "/" or "-" in the order of the process's locale (in the C locale a year in
// front means ISO, otherwise month, day, year as C writes it). Two-digit years 30 to 99 are 19xx, others 20xx. No time
// means midnight. None if it is no date.
std::optional<DateStamp> ParseDate(std::string_view text);

// Seconds as "hh:mm:ss", a time of day: wraps at 24 hours.
std::string FormatElapsed(std::int64_t seconds);

}  // namespace tresmor
