// Names of months in the locales of other countries. Their sources are compiled for the test, where they are installed,
// and each locale gets a process of its own, since what a locale says is read once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "base/date.h"

namespace tresmor {
namespace {

using testing::ExitedWithCode;
using testing::StrEq;

constexpr char kFolder[] = "LOCPATH";  // where the system looks for locales

struct Country {
  const char* locale;
  const char* told;  // by TellDays
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

  // How days in March and July are written, and the days of a year that are not read back.
  [[noreturn]] static void TellDays(const std::string& locale) {
    if (std::setlocale(LC_ALL, (locale + ".UTF-8").c_str()) == nullptr) std::exit(1);
    const DateStamp year = *ParseStamp("2003/01/01 00:00:00");
    std::string text;
    for (const char* day : {"2003/03/02", "2003/07/31"}) {
      text += FormatNamedDay(*ParseStamp(std::string(day) + " 00:00:00")) + "\n";
    }
    for (DateStamp day = year; day < year + 365 * 86400; day += 86400) {
      if (ParseDate(FormatNamedDay(day)) != day) text += "lost: " + FormatNamedDay(day) + "\n";
      if (ParseDate(FormatDay(day)) != day) text += "lost: " + FormatDay(day) + "\n";
    }
    std::fputs(text.c_str(), stderr);
    std::exit(0);
  }

  std::filesystem::path folder_;
  bool made_ = true;
};

TEST_P(LocaleNamesTest, AreWrittenAndReadBack) {
  if (!made_) GTEST_SKIP() << "the sources of " << GetParam().locale << " or localedef are not installed";
  EXPECT_EXIT(TellDays(GetParam().locale), ExitedWithCode(0), StrEq(GetParam().told));
}

// Names with letters beyond ASCII, with a full stop behind them, filled up with blanks, and in two words, which can't
// be told from the other parts of a date.
INSTANTIATE_TEST_SUITE_P(All, LocaleNamesTest,
                         testing::Values(Country{"de_DE", "02 Mär 2003\n31 Jul 2003\n"},
                                         Country{"fr_FR", "02 mars 2003\n31 juil. 2003\n"},
                                         Country{"ja_JP", "02 3月 2003\n31 7月 2003\n"},
                                         Country{"vi_VN", "02 Mar 2003\n31 Jul 2003\n"}),
                         [](const testing::TestParamInfo<Country>& info) { return std::string(info.param.locale); });

}  // namespace
}  // namespace tresmor
