// Days as a locale writes them. No test leaves the C locale; formats stand for others.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/date.h"

namespace tresmor {
namespace {

DateStamp Day(const std::string& text) { return *ParseStamp(text + " 00:00:00"); }

TEST(IsDateText, TakesIsoTheLocalesFormAndNames) {
  for (const char* text : {"2 Jul 2003", "2003-07-02", "7/2/2003", "July 2, 2003", "2003-07-02 13:05"}) {
    EXPECT_TRUE(IsDateText(text)) << text;
  }
  for (const char* text : {"", "soon", "2003", "31 Jun 2003", "2003-02-29"}) EXPECT_FALSE(IsDateText(text)) << text;
}

TEST(FormatDay, IsIsoInTheCLocale) {
  EXPECT_EQ(FormatDay(Day("2003/07/02") + 86399), "2003-07-02");
  EXPECT_EQ(FormatDay(kZeroDate), "1899-12-30");
  EXPECT_EQ(FormatDay(std::numeric_limits<DateStamp>::max()), "9999-12-31");
  EXPECT_EQ(FormatDay(std::numeric_limits<DateStamp>::min()), "0000-01-01");
}

TEST(FormatDay, FollowsTheFormat) {
  const DateStamp day = Day("2003/07/02") + 3600;
  EXPECT_EQ(FormatDay(day, "%d.%m.%Y"), "02.07.2003");
  EXPECT_EQ(FormatDay(day, "%m/%d/%Y"), "07/02/2003");
  EXPECT_EQ(FormatDay(day, "%-d. %-m. %Y"), "2. 7. 2003");
  EXPECT_EQ(FormatDay(day, "%Y年%m月%d日"), "2003年07月02日");
  EXPECT_EQ(FormatDay(day, "%a %d %b %Y"), "Wed 02 Jul 2003");
  EXPECT_EQ(FormatDay(day, "%Y.%d.%m"), "2003.02.07");
}

TEST(FormatDay, IsIsoWhereTheFormTellsNoDay) {
  const DateStamp day = Day("1903/07/02");
  EXPECT_EQ(FormatDay(day, "%d/%m/%y"), "1903-07-02");  // read back it would be 2003
  EXPECT_EQ(FormatDay(day, "%B %Y"), "1903-07-02");
  EXPECT_EQ(FormatDay(day, ""), "1903-07-02");
  EXPECT_EQ(FormatDay(day, "%d/%m/%Ey"), "1903-07-02");
  EXPECT_EQ(FormatDay(day, "%d/%Y"), "1903-07-02");
  EXPECT_EQ(FormatDay(day, "%d, %m"), "1903-07-02");
}

TEST(FormatDay, IsReadBack) {
  for (int days = -40000; days < 60000; days += 97) {
    const DateStamp day = std::int64_t{days} * 86400;
    EXPECT_EQ(ParseDate(FormatDay(day)), day) << FormatDay(day);
    EXPECT_EQ(ParseDate(FormatNamedDay(day)), day) << FormatNamedDay(day);
    const DateStamp stamp = day + (days % 86400 + 86400) % 86400;
    EXPECT_EQ(ParseDate(FormatDate(stamp)), stamp) << FormatDate(stamp);
  }
}

TEST(FormatDate, TellsTheTimeUnlessItIsMidnight) {
  EXPECT_EQ(FormatDate(Day("2003/07/02")), "2003-07-02");
  EXPECT_EQ(FormatDate(Day("2003/07/02") + 47105), "2003-07-02 13:05:05");
}

TEST(FormatNamedDay, HasTwoDigitsAShortNameAndFourDigits) {
  EXPECT_EQ(FormatNamedDay(Day("2003/07/02") + 86399), "02 Jul 2003");
  EXPECT_EQ(FormatNamedDay(Day("1999/12/31")), "31 Dec 1999");
  EXPECT_EQ(FormatNamedDay(kZeroDate), "30 Dec 1899");
}

}  // namespace
}  // namespace tresmor
