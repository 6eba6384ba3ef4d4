#include "results/counters.h"

#include <functional>
#include <limits>

#include "base/failure.h"
#include "results/result_fixture.h"
#include "results/sort_list.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

TEST(ByteSizeStr, StepsUpAbove1024) {
  EXPECT_EQ(ByteSizeStr(0), "0 Bytes");
  EXPECT_EQ(ByteSizeStr(900), "900 Bytes");
  EXPECT_EQ(ByteSizeStr(1024), "1024 Bytes");
  EXPECT_EQ(ByteSizeStr(1025), "1.00 KB");
  EXPECT_EQ(ByteSizeStr(1536), "1.50 KB");
  EXPECT_EQ(ByteSizeStr(1024 * 1024), "1024.00 KB");
  EXPECT_EQ(ByteSizeStr(1024 * 1024 + 1), "1.00 MB");
  EXPECT_EQ(ByteSizeStr(3'221'225'472), "3.00 GB");
}

TEST(ByteSizeStr, RoundsToTwoDecimals) {
  EXPECT_EQ(ByteSizeStr(1024 + 56), "1.05 KB");
  EXPECT_EQ(ByteSizeStr(2047), "2.00 KB");
  EXPECT_EQ(ByteSizeStr(10'240 + 92), "10.09 KB");
}

TEST(ByteSizeStr, RoundsHalvesOfAHundredthToTheEvenOne) {
  EXPECT_EQ(ByteSizeStr(1024 + 128), "1.12 KB");            // 1.125
  EXPECT_EQ(ByteSizeStr(1024 + 384), "1.38 KB");            // 1.375
  EXPECT_EQ(ByteSizeStr(1024 + 129), "1.13 KB");            // just above
  EXPECT_EQ(ByteSizeStr(1024 * (1024 + 128)), "1.12 MB");   // 1.125
  EXPECT_EQ(ByteSizeStr(3 * 1024 + 896 + 128), "4.00 KB");  // no half
}

TEST(ByteSizeStr, WritesTheDecimalMarkOfTheLocale) {
  EXPECT_EQ(ByteSizeStr(1536, {",", "."}), "1,50 KB");
  EXPECT_EQ(ByteSizeStr(1025, {"\xD9\xAB", ""}),
            "1\xD9\xAB"
            "00 KB");                                             // of two bytes
  EXPECT_EQ(ByteSizeStr(1024 * 1024, {",", "."}), "1024,00 KB");  // no thousands marks
  EXPECT_EQ(ByteSizeStr(900, {",", "."}), "900 Bytes");
}

TEST(ByteSizeStr, HasNoUnitAbove1024GB) {
  constexpr std::int64_t k1024GB = std::int64_t{1} << 40;
  EXPECT_EQ(ByteSizeStr(k1024GB), "1024.00 GB");
  EXPECT_EQ(tests::FailureOf([] { ByteSizeStr(k1024GB + 1); }), Errors::Subscript);
  EXPECT_EQ(tests::FailureOf([] { ByteSizeStr(std::numeric_limits<std::int64_t>::max()); }), Errors::Subscript);
}

class CountersTest : public tests::ResultFixture {
 protected:
  void Show(ResultList kind) { results.tabMain.Select(static_cast<std::int32_t>(kind) + 1); }
};

TEST_F(CountersTest, EmptyListsHaveNoRowsAndNoGroups) {
  UpdateCount(results, kAllLists);
  EXPECT_EQ(Captions(), (std::vector<std::string>{"Zero Size(0)", "Duplicates(0/0)", "Same Name(0/0)", "Portions(0/0)",
                                                  "Report - read errors(0)"}));
}

TEST_F(CountersTest, CountsRowsAndGroups) {
  for (const char* name : {"x", "y", "z"}) Add(ResultList::ZeroSize, name);
  for (const std::int32_t group : {9, 4, 9, 4, 11, 11}) Add(ResultList::Duplicates, "d", group);
  for (const char* name : {"b", "A", "B", "a"}) Add(ResultList::SameName, name);
  for (const std::int32_t group : {0, 0}) Add(ResultList::Portions, "p", group);
  for (int i = 0; i < 2; ++i) Add(ResultList::ReadErrors, "e", -3);
  UpdateCount(results, kAllLists);
  EXPECT_EQ(Captions(), (std::vector<std::string>{"Zero Size(3)", "Duplicates(6/3)", "Same Name(4/2)", "Portions(2/1)",
                                                  "Report - read errors(2)"}));
  EXPECT_EQ(results.GroupCnt, (std::array<std::int32_t, 5>{0, 3, 2, 1, 0}));
}

TEST_F(CountersTest, AListOfOneRowHasNoGroup) {
  Add(ResultList::Duplicates, "left over", 3);
  UpdateCount(results, 1);
  EXPECT_EQ(results.tabMain.Caption(2), "Duplicates(1/0)");
  EXPECT_EQ(results.GroupCnt[1], 0);
}

TEST_F(CountersTest, CountsAgainWithoutDoublingTheBracketsAndForOneListAlone) {
  Add(ResultList::ZeroSize, "x");
  Add(ResultList::ReadErrors, "e", -3);
  UpdateCount(results, 0);
  UpdateCount(results, 0);
  EXPECT_EQ(results.tabMain.Caption(1), "Zero Size(1)");
  EXPECT_EQ(results.tabMain.Caption(5), "Report - read errors");
}

TEST_F(CountersTest, SortsListsWithGroupsByTheirKeysAndLeavesTheOthersAndTheColours) {
  for (const char* name : {"b", "a"}) Add(ResultList::ZeroSize, name);
  for (const std::int32_t group : {9, 4}) Add(ResultList::Duplicates, std::to_string(group), group);
  for (const char* name : {"b", "a"}) Add(ResultList::SameName, name);
  SortList(duplicates, 1, kDescending);
  UpdateCount(results, kAllLists);
  EXPECT_EQ(Texts(zero), (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(zero.Column(1).text, "Name");
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"4", "9"}));
  EXPECT_EQ(duplicates.Column(1).text, "Name");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(sameName.Column(1).text, "^ Name");
  EXPECT_EQ(Texts(sameName), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(Colors(duplicates), (std::vector<std::uint32_t>{kWindowText, kWindowText}));
}

TEST_F(CountersTest, TellsOfNothingMarkedOrSelected) {
  UpdateStatus(results, true, true);
  EXPECT_EQ(panel.Text(), "0 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 0 files.");
  for (const char* name : {"a", "b", "c", "d", "e"}) Add(ResultList::Duplicates, name, 0, 10);
  Show(ResultList::Duplicates);
  UpdateStatus(results, true, true);
  EXPECT_EQ(panel.Text(), "0 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 5 files.");
}

TEST_F(CountersTest, CountsMarksAndSelectionOfTheListOnShow) {
  Add(ResultList::ZeroSize, "z");
  zero.SetChecked(1, true);
  for (const std::int64_t size : {1'000'000, 572'864, 900, 5}) Add(ResultList::Duplicates, "d", 0, size);
  Show(ResultList::Duplicates);
  duplicates.SetChecked(1, true);
  duplicates.SetChecked(2, true);
  duplicates.SetSelected(3, true);
  UpdateStatus(results, true, true);
  EXPECT_EQ(panel.Text(), "2 files (1.50 MB) marked, 1 files (900 Bytes) selected, out of 4 files.");
  EXPECT_EQ(results.StatsArr[1].MarkSz, 1'572'864);
  EXPECT_EQ(results.StatsArr[1].SelSz, 900);
  EXPECT_EQ(results.StatsArr[0].MarkCnt, 0);
}

TEST_F(CountersTest, CountsOnlyWhatItIsAskedFor) {
  Add(ResultList::ZeroSize, "z");
  zero.SetChecked(1, true);
  zero.SetSelected(1, true);
  UpdateStatus(results, true, false);
  EXPECT_EQ(panel.Text(), "1 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 1 files.");
  zero.SetChecked(1, false);
  UpdateStatus(results, false, true);
  EXPECT_EQ(panel.Text(), "1 files (0 Bytes) marked, 1 files (0 Bytes) selected, out of 1 files.");
}

TEST_F(CountersTest, TakesSizesFromTheCellsAsTheyStand) {
  Add(ResultList::ZeroSize, "z");
  zero.SetCell(1, kSizeItem, "700");  // as a session file may have it
  zero.SetChecked(1, true);
  UpdateStatus(results, true, true);
  EXPECT_EQ(results.StatsArr[0].MarkSz, 700);
  zero.SetCell(1, kSizeItem, "  5000000000 ");
  UpdateStatus(results, true, true);
  EXPECT_EQ(results.StatsArr[0].MarkSz, 5'000'000'000);
  for (const char* none : {"none", "", " ", "12 3", "1.5", "7x"}) {
    zero.SetCell(1, kSizeItem, none);
    EXPECT_EQ(tests::FailureOf([&] { UpdateStatus(results, true, true); }), Errors::TypeMismatch) << none;
  }
  zero.SetCell(1, kSizeItem, "9223372036854775808");
  EXPECT_EQ(tests::FailureOf([&] { UpdateStatus(results, true, true); }), Errors::Overflow);
}

// Sums as session files of odd sizes may bring them about.
TEST_F(CountersTest, MarkedBytesEndWhereTheirFieldDoes) {
  constexpr std::int64_t kMost = 922'337'203'685'477;
  constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  for (int i = 0; i < 2; ++i) zero.SetChecked(zero.AddRow("z"), true);
  const auto failureFor = [&](std::int64_t first, std::int64_t second) {
    zero.SetCell(1, kSizeItem, PaddedNumber{first});
    zero.SetCell(2, kSizeItem, PaddedNumber{second});
    return tests::FailureOf([&] { UpdateStatus(results, true, false); });
  };
  EXPECT_EQ(failureFor(kMost, 0), Errors::Subscript);  // the sum is kept, though it has no unit
  EXPECT_EQ(results.StatsArr[0].MarkSz, kMost);
  EXPECT_EQ(failureFor(kMost, 1), Errors::Overflow);
  EXPECT_EQ(failureFor(1, kLargest), Errors::Overflow);
  EXPECT_EQ(failureFor(-1, -kLargest - 1), Errors::Overflow);
  EXPECT_EQ(failureFor(-kMost, -1), Errors::Overflow);
  EXPECT_EQ(failureFor(-kMost, kMost), Errors::None);
}

TEST_F(CountersTest, SelectedBytesOverflowAfterEachRowAndBothWays) {
  for (int i = 0; i < 2; ++i) zero.SetSelected(zero.AddRow("z"), true);
  const auto failureFor = [&](std::int64_t first, std::int64_t second) {
    zero.SetCell(1, kSizeItem, PaddedNumber{first});
    zero.SetCell(2, kSizeItem, PaddedNumber{second});
    return tests::FailureOf([&] { UpdateStatus(results, false, true); });
  };
  EXPECT_EQ(failureFor(-2147483648, 0), Errors::None);
  EXPECT_EQ(results.StatsArr[0].SelSz, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(failureFor(-2147483648, -1), Errors::Overflow);
  EXPECT_EQ(failureFor(2147483648, -1), Errors::Overflow);
  EXPECT_EQ(failureFor(-1, 2147483648), Errors::None);
  EXPECT_EQ(failureFor(1, std::numeric_limits<std::int64_t>::max()), Errors::Overflow);
}

TEST_F(CountersTest, MoreThanTwoGigabytesSelectedFailAndLeaveThePanel) {
  panel.Text = "old";
  Add(ResultList::Duplicates, "a", 0, 2147483647);
  Add(ResultList::Duplicates, "b", 0, 1);
  Show(ResultList::Duplicates);
  for (const std::int32_t row : {1, 2}) {
    duplicates.SetChecked(row, true);
    duplicates.SetSelected(row, true);
  }
  EXPECT_EQ(tests::FailureOf([&] { UpdateStatus(results, true, true); }), Errors::Overflow);
  EXPECT_EQ(panel.Text(), "old");
  duplicates.SetSelected(2, false);
  UpdateStatus(results, true, true);
  EXPECT_EQ(panel.Text(), "2 files (2.00 GB) marked, 1 files (2.00 GB) selected, out of 2 files.");
}

TEST_F(CountersTest, MoreThanATerabyteMarkedFailsAndLeavesThePanel) {
  panel.Text = "old";
  for (int i = 0; i < 2; ++i) Add(ResultList::Duplicates, "a", 0, std::int64_t{1} << 40);
  Show(ResultList::Duplicates);
  for (const std::int32_t row : {1, 2}) duplicates.SetChecked(row, true);
  EXPECT_EQ(tests::FailureOf([&] { UpdateStatus(results, true, true); }), Errors::Subscript);
  EXPECT_EQ(panel.Text(), "old");
}

TEST_F(CountersTest, TheReportTellsRowsAndGroupsOfAllLists) {
  Add(ResultList::ZeroSize, "z");
  for (const std::int32_t group : {1, 1, 2, 2}) Add(ResultList::Duplicates, "d", group);
  for (const char* name : {"a", "A"}) Add(ResultList::SameName, name);
  UpdateCount(results, kAllLists);
  EXPECT_EQ(GetReportCountStr(results),
            "No. of zero-size files: 1\r\n"
            "No. of duplicate(same-content) files: 4, 2 group(s)\r\n"
            "No. of same-name files: 2, 1 group(s)\r\n"
            "No. of truncated files(file portions): 0, 0 group(s)\r\n"
            "No. of files with reading error: 0\r\n");
}

}  // namespace
}  // namespace tresmor
