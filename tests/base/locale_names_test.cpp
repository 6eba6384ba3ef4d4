// Dates in the locales of other countries, and their names of months. Their sources are compiled for the test, where
// they are installed, and each locale gets a process of its own, since what a locale says is read once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/date.h"

namespace tresmor {
namespace {

using testing::ExitedWithCode;
using testing::StrEq;

constexpr char kFolder[] = "LOCPATH";  // where the system looks for locales

struct Country {
  const char* locale;
  std::vector<const char*> typed;  // what people there write
  const char* told;                // by TellDays
};

void PrintTo(const Country& country, std::ostream* out) { *out << country.locale; }

class LocaleNamesTest : public testing::TestWithParam<Country> {
 protected:
  // The process that is to use the locale comes here too, and finds it made.
  LocaleNamesTest() {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    if (std::getenv(kFolder) != nullptr) return;
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_locale_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    folder_ = pattern;
    setenv(kFolder, pattern.c_str(), 1);
    const std::string name = GetParam().locale;
    const std::string call =
        "localedef -i " + name + " -f UTF-8 --no-archive '" + pattern + "/" + name + ".UTF-8' >/dev/null 2>&1";
    made_ = std::system(call.c_str()) == 0;
  }
  ~LocaleNamesTest() override {
    if (folder_.empty()) return;
    unsetenv(kFolder);
    std::filesystem::remove_all(folder_);
  }

  // How days in March and July are written, what the typed texts mean, and the days of a year that are not read back.
  [[noreturn]] static void TellDays(const Country& country) {
    if (std::setlocale(LC_ALL, (std::string(country.locale) + ".UTF-8").c_str()) == nullptr) std::exit(1);
    const DateStamp year = *ParseStamp("2003/01/01 00:00:00");
    std::string text;
    for (const char* day : {"2003/03/02", "2003/07/31"}) {
      text += FormatNamedDay(*ParseStamp(std::string(day) + " 00:00:00")) + "\n";
    }
    text += FormatDay(year) + "\n";
    for (const char* typed : country.typed) {
      const auto stamp = ParseDate(typed);
      text += std::string(typed) + ": " + (stamp ? FormatStamp(*stamp) : "none") + "\n";
    }
    for (DateStamp day = year; day < year + 365 * 86400; day += 86400) {
      if (ParseDate(FormatNamedDay(day)) != day) text += "lost: " + FormatNamedDay(day) + "\n";
      const DateStamp evening = day + 86399;
      for (const DateStamp stamp : {day, evening}) {
        if (ParseDate(FormatDate(stamp)) != stamp) text += "lost: " + FormatDate(stamp) + "\n";
      }
    }
    std::fputs(text.c_str(), stderr);
    std::exit(0);
  }

  std::filesystem::path folder_;
  bool made_ = true;
};

TEST_P(LocaleNamesTest, AreWrittenAndReadBack) {
  if (!made_) GTEST_SKIP() << "the sources of " << GetParam().locale << " or localedef are not installed";
  EXPECT_EXIT(TellDays(GetParam()), ExitedWithCode(0), StrEq(GetParam().told));
}

// Names with letters beyond ASCII, with full stops, filled up with blanks, in two words, other ones beside a day; forms
// without a mark, with the day before the month, in digits of another script; years of another era.
const Country kCountries[] = {
    {"de_DE",
     {"2.7.2003", "2. Juli 2003 13:05"},
     "02 Mär 2003\n31 Jul 2003\n01.01.2003\n"
     "2.7.2003: 2003/07/02 00:00:00\n2. Juli 2003 13:05: 2003/07/02 13:05:00\n"},
    {"fr_FR", {}, "02 mars 2003\n31 juil. 2003\n01/01/2003\n"},
    {"ru_RU",
     {"2 Июль 2003", "2 июля 2003"},
     "02 мар 2003\n31 июл 2003\n01.01.2003\n2 Июль 2003: 2003/07/02 00:00:00\n2 июля 2003: 2003/07/02 00:00:00\n"},
    {"en_US",
     {"7/2/2003 1:05 PM", "7/2/03 12:05am", "7/2/2003 13:05 PM", "7/2/2003 0:05 PM"},
     "02 Mar 2003\n31 Jul 2003\n01/01/2003\n7/2/2003 1:05 PM: 2003/07/02 13:05:00\n"
     "7/2/03 12:05am: 2003/07/02 00:05:00\n7/2/2003 13:05 PM: none\n7/2/2003 0:05 PM: none\n"},
    {"el_GR", {"2/7/2003 1:05 μμ"}, "02 Μαρ 2003\n31 Ιουλ 2003\n01/01/2003\n2/7/2003 1:05 μμ: 2003/07/02 13:05:00\n"},
    {"ja_JP",
     {"2003年7月2日", "2003年7月2日 13:05", "03年07月02日"},
     "02 3月 2003\n31 7月 2003\n2003年01月01日\n2003年7月2日: 2003/07/02 00:00:00\n"
     "2003年7月2日 13:05: 2003/07/02 13:05:00\n03年07月02日: 2003/07/02 00:00:00\n"},
    {"vi_VN",
     {"2 Tháng 7 2003", "2 Tháng 12 2003"},
     "02 Thg 3 2003\n31 Thg 7 2003\n01/01/2003\n"
     "2 Tháng 7 2003: 2003/07/02 00:00:00\n2 Tháng 12 2003: 2003/12/02 00:00:00\n"},
    {"th_TH",
     {"02/07/2546", "2/7/46", "2 ก.ค. 46", "2 ก.ค. 2003", "46-07-02"},
     "02 มี.ค. 2003\n31 ก.ค. 2003\n2003-01-01\n02/07/2546: none\n2/7/46: none\n2 ก.ค. 46: none\n"
     "2 ก.ค. 2003: 2003/07/02 00:00:00\n46-07-02: none\n"},
    {"fa_IR",
     {"۰۳/۰۷/۰۲", "۵۰/۷/۲"},
     "02 مارس 2003\n31 ژوئیه 2003\n۲۰۰۳/۰۱/۰۱\n۰۳/۰۷/۰۲: 2003/07/02 00:00:00\n۵۰/۷/۲: 1950/07/02 00:00:00\n"},
    {"or_IN", {"୨-୭-୩"}, "02 ମାର୍ଚ୍ଚ 2003\n31 ଜୁଲାଇ 2003\n01-01-2003\n୨-୭-୩: 2003/07/02 00:00:00\n"},
    {"dz_BT", {"པསྱི་ལོ50ཟལ07ཚེས02"}, "02 ཟླ་༣ 2003\n31 ཟླ་༧ 2003\nཔསྱི་ལོ2003ཟལ01ཚེས01\nཔསྱི་ལོ50ཟལ07ཚེས02: 1950/07/02 00:00:00\n"},
    {"ce_RU",
     {"2003.02.07", "2003-07-02", "2003/07/02"},
     "02 мар 2003\n31 июл 2003\n2003.01.01\n2003.02.07: 2003/07/02 00:00:00\n"
     "2003-07-02: 2003/07/02 00:00:00\n2003/07/02: 2003/07/02 00:00:00\n"},
};

INSTANTIATE_TEST_SUITE_P(All, LocaleNamesTest, testing::ValuesIn(kCountries),
                         [](const testing::TestParamInfo<Country>& info) { return std::string(info.param.locale); });

}  // namespace
}  // namespace tresmor
