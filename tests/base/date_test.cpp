#include "base/date.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

namespace tresmor {
namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

class LocalTime : public testing::Test {
 protected:
  LocalTime() {
    if (const char* zone = std::getenv("TZ")) before_ = zone;
  }
  ~LocalTime() override {
    before_.empty() ? unsetenv("TZ") : setenv("TZ", before_.c_str(), 1);
    tzset();
  }
  static void SetZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }

 private:
  std::string before_;
};

TEST_F(LocalTime, FollowsTheZone) {
  SetZone("AAA-2");
  EXPECT_EQ(FormatStamp(LocalStamp(0)), "1970/01/01 02:00:00");
  SetZone("BBB5:30");
  EXPECT_EQ(FormatStamp(LocalStamp(0)), "1969/12/31 18:30:00");
  EXPECT_EQ(FormatStamp(UtcStamp(0)), "1970/01/01 00:00:00");
}

TEST_F(LocalTime, FollowsSummerTimeOfTheDate) {
  SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(FormatStamp(LocalStamp(1057104000)), "2003/07/02 02:00:00");
  EXPECT_EQ(FormatStamp(LocalStamp(1041465600)), "2003/01/02 01:00:00");
}

TEST_F(LocalTime, HoldsAtTheBounds) {
  SetZone("AAA-2");
  EXPECT_EQ(FormatStamp(LocalStamp(kMax)), "9999/12/31 23:59:59");
  EXPECT_EQ(FormatStamp(LocalStamp(kMin)), "0000/01/01 00:00:00");
}

TEST(FormatStamp, WritesTheFixedForm) {
  EXPECT_EQ(FormatStamp(kZeroDate), "1899/12/30 00:00:00");
  EXPECT_EQ(FormatStamp(-1), "1899/12/29 23:59:59");
  EXPECT_EQ(FormatStamp(86400 + 3661), "1899/12/31 01:01:01");
  EXPECT_EQ(FormatStamp(UtcStamp(951782400)), "2000/02/29 00:00:00");
  EXPECT_EQ(FormatStamp(UtcStamp(-1)), "1969/12/31 23:59:59");
}

TEST(FormatStamp, HoldsFarDatesAtTheNearest) {
  EXPECT_EQ(FormatStamp(kMax), "9999/12/31 23:59:59");
  EXPECT_EQ(FormatStamp(kMin), "0000/01/01 00:00:00");
  EXPECT_EQ(FormatStamp(UtcStamp(253402300799)), "9999/12/31 23:59:59");
  EXPECT_EQ(FormatStamp(UtcStamp(253402300800)), "9999/12/31 23:59:59");
  EXPECT_EQ(FormatStamp(UtcStamp(kMax)), "9999/12/31 23:59:59");
  EXPECT_EQ(FormatStamp(UtcStamp(kMin)), "0000/01/01 00:00:00");
}

TEST(ParseStamp, IsTheInverseOfFormatStamp) {
  for (const DateStamp stamp :
       {DateStamp{0}, DateStamp{-1}, UtcStamp(0), UtcStamp(951782400), UtcStamp(253402300799), UtcStamp(1057139999)}) {
    EXPECT_EQ(ParseStamp(FormatStamp(stamp)), stamp) << FormatStamp(stamp);
  }
  EXPECT_EQ(FormatStamp(*ParseStamp("0000/01/01 00:00:00")), "0000/01/01 00:00:00");
}

TEST(ParseStamp, TakesNoOtherForm) {
  for (const char* text :
       {"", "2003/07/02", "2003-07-02 00:00:00", "2003/07/02 00:00", "2003/07/02 00:00:0", "2003/02/29 00:00:00",
        "2003/13/01 00:00:00", "2003/00/01 00:00:00", "2003/01/00 00:00:00", "2003/07/02 24:00:00",
        "2003/07/02 23:60:00", "2003/07/02 23:00:60", "2003/07/02T00:00:00", " 2003/7/02 00:00:00",
        "2003/07/02 00:00:00 ", "2003/07/02  0:00:00", "2003/07/+2 00:00:00", "2003/07/02 0:000:00"}) {
    EXPECT_FALSE(ParseStamp(text)) << text;
  }
}

// What a text means, in the order of the C locale unless told otherwise.
std::string Meant(const char* text, DateOrder order = DateOrder::MonthDayYear) {
  const auto stamp = ParseDate(text, order);
  return stamp ? FormatStamp(*stamp) : "none";
}

constexpr DateOrder kOrders[] = {DateOrder::DayMonthYear, DateOrder::MonthDayYear, DateOrder::YearMonthDay,
                                 DateOrder::YearDayMonth, DateOrder::OwnEra};

TEST(ParseDate, ReadsIsoInEveryOrder) {
  for (const DateOrder order : kOrders) {
    EXPECT_EQ(Meant("2003-07-02", order), "2003/07/02 00:00:00");
    EXPECT_EQ(Meant(" 2003/7/2 ", order), "2003/07/02 00:00:00");
    EXPECT_EQ(Meant("2003-07-02 13:05", order), "2003/07/02 13:05:00");
    EXPECT_EQ(Meant("2003-07-02T13:05:59", order), "2003/07/02 13:05:59");
    EXPECT_EQ(Meant("2003-25-07", order), "none");
  }
}

TEST(ParseDate, ReadsNamesOfMonths) {
  for (const DateOrder order : kOrders) {
    if (order == DateOrder::OwnEra) continue;
    for (const char* text :
         {"2 Jul 2003", "July 2, 2003", "02-JUL-2003", "2 july 03", "Jul. 2 2003", "2003 Jul 2", "2. Jul 2003"}) {
      EXPECT_EQ(Meant(text, order), "2003/07/02 00:00:00") << text;
    }
  }
  EXPECT_EQ(Meant("2 Oct 2003 9:30"), "2003/10/02 09:30:00");
  EXPECT_EQ(Meant("1 May 1999"), "1999/05/01 00:00:00");
}

TEST(ParseDate, KnowsEveryMonth) {
  const char* const names[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
  for (int i = 0; i < 12; ++i) {
    const std::string day = "3 " + std::string(names[i]) + " 2003";
    const std::string briefDay = "3 " + std::string(names[i]).substr(0, 3) + " 2003";
    const std::string number = std::to_string(101 + i).substr(1);
    EXPECT_EQ(Meant(day.c_str()), "2003/" + number + "/03 00:00:00");
    EXPECT_EQ(Meant(briefDay.c_str()), "2003/" + number + "/03 00:00:00");
  }
}

TEST(ParseDate, FollowsTheOrderWhereItIsOpen) {
  EXPECT_EQ(Meant("7/2/2003", DateOrder::MonthDayYear), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("7/2/2003", DateOrder::DayMonthYear), "2003/02/07 00:00:00");
  EXPECT_EQ(Meant("7/2/2003", DateOrder::YearMonthDay), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("03-07-02", DateOrder::YearMonthDay), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("03-07-02", DateOrder::MonthDayYear), "2002/03/07 00:00:00");
  EXPECT_EQ(Meant("03.07.02", DateOrder::DayMonthYear), "2002/07/03 00:00:00");
  EXPECT_EQ(Meant("2. 7. 2003.", DateOrder::DayMonthYear), "2003/07/02 00:00:00");
}

TEST(ParseDate, ADayMayStandBehindItsYear) {
  EXPECT_EQ(Meant("2003.02.07", DateOrder::YearDayMonth), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("03.02.07", DateOrder::YearDayMonth), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("2.7.2003", DateOrder::YearDayMonth), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("2003/07/02 13:05:00", DateOrder::YearDayMonth), "2003/07/02 13:05:00");
}

TEST(ParseDate, YearsOfAnotherEraAreNotTakenForOurs) {
  for (const char* text : {"2/7/2546", "02.07.46", "46-07-02", "2 Jul 46"}) {
    EXPECT_EQ(Meant(text, DateOrder::OwnEra), "none") << text;
  }
  EXPECT_EQ(Meant("2 Jul 2003", DateOrder::OwnEra), "2003/07/02 00:00:00");
}

TEST(ParseDate, ReadsEightDigits) {
  EXPECT_EQ(Meant("20030702"), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("20030702 13:05"), "2003/07/02 13:05:00");
  for (const char* text : {"20031302", "20030732", "2003070", "200307021", "2003070x"}) EXPECT_EQ(Meant(text), "none");
}

TEST(ParseDate, ReadsHalvesOfTheDay) {
  EXPECT_EQ(Meant("7/2/2003 1:05 PM"), "2003/07/02 13:05:00");
  EXPECT_EQ(Meant("7/2/2003 1:05:59 am"), "2003/07/02 01:05:59");
  EXPECT_EQ(Meant("2 Jul 2003 12:00AM"), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("2003-07-02T12:30pm"), "2003/07/02 12:30:00");
  for (const char* text : {"2003-07-02 0:30 PM", "2003-07-02 13:30 PM", "2003-07-02 1:30 XM", "2003-07-02 PM"}) {
    EXPECT_EQ(Meant(text), "none") << text;
  }
}

TEST(ParseDate, ReadsDigitsOfAnyScript) {
  EXPECT_EQ(Meant("٢٠٠٣-٠٧-٠٢"), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("２００３/７/２"), "2003/07/02 00:00:00");
  EXPECT_EQ(Meant("𝟐-𝟟-𝟡𝟿", DateOrder::DayMonthYear), "1999/07/02 00:00:00");
}

TEST_F(LocalTime, OfATextWithAZIsWorkedOut) {
  SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(Meant("2003-07-02T13:05:59Z"), "2003/07/02 15:05:59");
  EXPECT_EQ(Meant("2003-12-31 23:30z"), "2004/01/01 00:30:00");
  for (const char* text : {"2003-07-02Z", "2003-07-02T1:05pmZ", "2003-07-02T13:05ZZ"}) EXPECT_EQ(Meant(text), "none");
}

TEST(ParseDate, SwapsDayAndMonthWhereOnlyThatIsADate) {
  EXPECT_EQ(Meant("25/12/2003", DateOrder::MonthDayYear), "2003/12/25 00:00:00");
  EXPECT_EQ(Meant("12/25/2003", DateOrder::DayMonthYear), "2003/12/25 00:00:00");
  EXPECT_EQ(Meant("25/13/2003", DateOrder::MonthDayYear), "none");
  EXPECT_EQ(Meant("31/6/2003", DateOrder::DayMonthYear), "none");
}

TEST(ParseDate, ReadsShortYears) {
  EXPECT_EQ(Meant("7/2/30"), "1930/07/02 00:00:00");
  EXPECT_EQ(Meant("7/2/99"), "1999/07/02 00:00:00");
  EXPECT_EQ(Meant("7/2/29"), "2029/07/02 00:00:00");
  EXPECT_EQ(Meant("7/2/00"), "2000/07/02 00:00:00");
  EXPECT_EQ(Meant("7/2/3"), "2003/07/02 00:00:00");
}

TEST(ParseDate, KnowsLeapYears) {
  EXPECT_EQ(Meant("2004-02-29"), "2004/02/29 00:00:00");
  EXPECT_EQ(Meant("2003-02-29"), "none");
  EXPECT_EQ(Meant("1900-02-29"), "none");
  EXPECT_EQ(Meant("29 Feb 2000"), "2000/02/29 00:00:00");
}

TEST(ParseDate, RefusesWhatIsNoDate) {
  for (const char* text : {"",
                           " ",
                           "2003",
                           "7/2",
                           "7/2/2003/1",
                           "7/2-2003",
                           "7 2 2003",
                           "7,2,2003",
                           "2 Foo 2003",
                           "Jul Jul 2003",
                           "2--Jul-2003",
                           "2Jul2003",
                           "-2003-07-02",
                           "2003-07-02 25:00",
                           "2003-07-02 10:60",
                           "2003-07-02 10:00:60",
                           "2003-07-02 10:",
                           "2003-07-02 10:00:00:00",
                           "10:00",
                           "2003-07-02 10",
                           "2003-07-258",
                           "2003-007-02",
                           "2003-07-002",
                           "007/2/2003",
                           "002 Jul 2003",
                           "m Jul 2003",
                           "2003-258-01",
                           "7/2/203",
                           "7/2/20030",
                           "0 Jul 2003",
                           "32 Jul 2003",
                           "2003-07-02x",
                           "2003-07-02,",
                           "99999999999-1-1",
                           "2003-07-02T",
                           "2 Ju 2003",
                           "1.5"}) {
    EXPECT_EQ(Meant(text), "none") << text;
  }
}

TEST(ParseDate, TakesTheOrderOfTheLocale) {
  const auto stamp = ParseDate("7/2/2003");  // no test leaves the C locale
  ASSERT_TRUE(stamp);
  EXPECT_EQ(FormatStamp(*stamp), "2003/07/02 00:00:00");
}

TEST(OrderOf, ReadsFormats) {
  EXPECT_EQ(OrderOf("%m/%d/%y"), DateOrder::MonthDayYear);
  EXPECT_EQ(OrderOf("%d.%m.%Y"), DateOrder::DayMonthYear);
  EXPECT_EQ(OrderOf("%-e. %-m. %Y."), DateOrder::DayMonthYear);
  EXPECT_EQ(OrderOf("%a %d %b %Y"), DateOrder::DayMonthYear);
  EXPECT_EQ(OrderOf("%Y-%m-%d"), DateOrder::YearMonthDay);
  EXPECT_EQ(OrderOf("%Oy/%Om/%Od"), DateOrder::YearMonthDay);
  EXPECT_EQ(OrderOf("%F"), DateOrder::YearMonthDay);
  EXPECT_EQ(OrderOf("%Y.%d.%m"), DateOrder::YearDayMonth);
  EXPECT_EQ(OrderOf("%d/%m/%Ey"), DateOrder::OwnEra);
  EXPECT_EQ(OrderOf("%D"), DateOrder::MonthDayYear);
  EXPECT_EQ(OrderOf(""), DateOrder::MonthDayYear);
  EXPECT_EQ(OrderOf("%"), DateOrder::MonthDayYear);
}

TEST(DaysBetween, CountsMidnights) {
  EXPECT_EQ(DaysBetween(kOneDay - 1, kOneDay), 1);
  EXPECT_EQ(DaysBetween(kOneDay, 2 * kOneDay - 1), 0);
  EXPECT_EQ(DaysBetween(-1, 1), 1);
  EXPECT_EQ(DaysBetween(10 * kOneDay, 3 * kOneDay + 5), -7);
}

TEST(AddMonths, StopsAtTheMonthsEnd) {
  const auto added = [](const char* text, int months) { return FormatStamp(AddMonths(*ParseStamp(text), months)); };
  EXPECT_EQ(added("2004/03/30 18:30:59", -1), "2004/02/29 00:00:00");
  EXPECT_EQ(added("2004/02/29 00:00:00", -12), "2003/02/28 00:00:00");
  EXPECT_EQ(added("2004/01/31 00:00:00", -1), "2003/12/31 00:00:00");
  EXPECT_EQ(added("2003/12/15 00:00:00", 2), "2004/02/15 00:00:00");
  EXPECT_EQ(added("2003/12/15 23:59:59", 0), "2003/12/15 00:00:00");
}

TEST(FormatElapsed, IsATimeOfDay) {
  EXPECT_EQ(FormatElapsed(0), "00:00:00");
  EXPECT_EQ(FormatElapsed(3661), "01:01:01");
  EXPECT_EQ(FormatElapsed(86399), "23:59:59");
  EXPECT_EQ(FormatElapsed(86400), "00:00:00");
  EXPECT_EQ(FormatElapsed(90061), "01:01:01");
  EXPECT_EQ(FormatElapsed(-1), "23:59:59");
}

}  // namespace
}  // namespace tresmor
