#include "search/row_criteria.h"

#include <gtest/gtest.h>

#include "search/walk_support.h"
#include "search/zone_guard.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

std::vector<std::string> Steps(const std::string& text) {
  const WalkPattern pattern(text, PathStyle::Posix());
  return {pattern.Text(0), pattern.Text(1), pattern.Text(2), pattern.Text(3), pattern.Text(1000)};
}

using Texts = std::vector<std::string>;

TEST(WalkPattern, IsCutAndJoinedAtEachStep) {
  EXPECT_EQ(Steps("*.jpg"), (Texts{"*.jpg", "*.jpg", "*.jpg", "*.jpg", "*.jpg"}));
  EXPECT_EQ(Steps("*"), (Texts{"*", "*.", "*.", "*.", "*."}));
  EXPECT_EQ(Steps("report"), (Texts{"report", "report.", "report.", "report.", "report."}));
  EXPECT_EQ(Steps(".txt"), (Texts{".txt", "txt", "txt.", "txt.", "txt."}));
  EXPECT_EQ(Steps("a.b.c"), (Texts{"a.b.c", "a.b.c", "a.b.c", "a.b.c", "a.b.c"}));
  EXPECT_EQ(Steps("."), (Texts{".", "", "", "", ""}));
  EXPECT_EQ(Steps(""), (Texts{"", "", "", "", ""}));
}

TEST(ReadRow, CutsTheTextAtItsLastSeparator) {
  const RowCriteria row = ReadRow(Row("C:\\Docs\\*.jpg; *.gif ;;a/b"), PathStyle::Windows());
  EXPECT_EQ(row.folder, "C:\\Docs\\");
  Texts patterns;
  for (const WalkPattern& pattern : row.patterns) patterns.push_back(pattern.Text(0));
  EXPECT_EQ(patterns, (Texts{"*.jpg", "*.gif", "", "a/b"}));
  EXPECT_TRUE(row.recursive);
  EXPECT_FALSE(row.NeedsStat());
}

TEST(ReadRow, ATextWithoutAFolderMeansTheRoot) { EXPECT_EQ(ReadRow(Row("*.jpg"), PathStyle::Posix()).folder, "/"); }

TEST(ReadRow, OnlyYesEntersSubFolders) {
  ScopeRow row = Row("/a/*.*");
  for (const char* cell : {"No", "", "yes"}) {
    row.SubFolder = cell;
    EXPECT_FALSE(ReadRow(row, PathStyle::Posix()).recursive) << cell;
  }
}

TEST(ReadRow, CellsThatDoNotConvertFail) {
  const auto number = [](const std::string& min, const std::string& max, const std::string& date) {
    ScopeRow row = Row("/a/*.*");
    row.MinSize = min;
    row.MaxSize = max;
    row.Date = date;
    return tests::FailureOf([&] { ReadRow(row, PathStyle::Posix()); });
  };
  EXPECT_EQ(number("1.5", "10", "2003-07-02"), Errors::None);
  EXPECT_EQ(number("many", "", ""), Errors::TypeMismatch);
  EXPECT_EQ(number("", "many", ""), Errors::TypeMismatch);
  EXPECT_EQ(number("3000000000", "", ""), Errors::Overflow);
  EXPECT_EQ(number("", "", "some day"), Errors::TypeMismatch);
}

FileStat SizeOf(std::int64_t size) {
  FileStat stat;
  stat.kind = EntryKind::File;
  stat.size = size;
  return stat;
}

TEST(Sizes, BothBoundsAreExclusiveAndOnRoundedKilobytes) {
  const auto passes = [](const std::string& min, const std::string& max, std::int64_t size) {
    ScopeRow row = Row("/a/*.*");
    row.MinSize = min;
    row.MaxSize = max;
    return ReadRow(row, PathStyle::Posix()).Passes(SizeOf(size));
  };
  EXPECT_TRUE(passes("", "", 0));
  EXPECT_TRUE(passes("-1", "", 0));
  EXPECT_FALSE(passes("0", "", 0));
  EXPECT_FALSE(passes("0", "", 512));
  EXPECT_TRUE(passes("0", "", 513));
  EXPECT_FALSE(passes("1", "", 1535));
  EXPECT_TRUE(passes("1", "", 1536));   // a half goes up to 2
  EXPECT_FALSE(passes("2", "", 2560));  // and down to 2
  EXPECT_FALSE(passes("", "100", 102'400));
  EXPECT_TRUE(passes("", "100", 101'887));
  EXPECT_FALSE(passes("", "100", 101'889));
  EXPECT_FALSE(passes("10", "10", 10'240));
  EXPECT_TRUE(passes("9", "11", 10'240));
  EXPECT_FALSE(passes("", "0", 0));
  EXPECT_TRUE(passes("-2", "", 0));  // only -1 is no bound, and every size is above and none below this one
  EXPECT_FALSE(passes("", "-2", 0));
  EXPECT_TRUE(passes("", "-1", 0));
  EXPECT_TRUE(passes("2000000", "", std::int64_t{5} << 30));
  EXPECT_TRUE(passes("2000000000", "", std::int64_t{1} << 60));
}

TEST(Sizes, OnlyFilesPass) {
  FileStat stat = SizeOf(5000);
  stat.kind = EntryKind::Folder;
  EXPECT_FALSE(ReadRow(Row("/a/*.*"), PathStyle::Posix()).Passes(stat));
}

TEST(Dates, AreComparedOnTheLocalClock) {
  const ZoneGuard guard("XXX-10");  // ten hours ahead of UTC
  ScopeRow row = Row("/a/*.*");
  row.Date = "2003-07-02";
  const RowCriteria criteria = ReadRow(row, PathStyle::Posix());
  const auto passes = [&](std::int64_t modified) {
    FileStat stat = SizeOf(0);
    stat.modified = modified;
    return criteria.Passes(stat);
  };
  constexpr std::int64_t midnightUtc = 1'057'104'000;
  constexpr std::int64_t midnight = midnightUtc - 10 * 3600;
  EXPECT_TRUE(criteria.NeedsStat());
  EXPECT_FALSE(passes(midnight - 1));
  EXPECT_TRUE(passes(midnight));
  EXPECT_TRUE(passes(midnight + 5));
  EXPECT_TRUE(passes(midnight + 86'400));
}

}  // namespace
}  // namespace tresmor
