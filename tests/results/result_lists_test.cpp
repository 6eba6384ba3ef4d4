#include "results/result_lists.h"

#include "results/result_fixture.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

class ResultListsTest : public tests::ResultFixture {};

TEST_F(ResultListsTest, HaveTheirHeadersWidthsAndAlignments) {
  const std::vector<std::string> headers = {"Name",         "In Folder",     "Duplicate #",
                                            "Size (Bytes)", "Date Modified", "File version"};
  std::vector<std::string> ofZero = headers;
  ofZero[5] = "File Version";
  const std::vector<std::vector<int>> widths = {{2540, 5292, 0, 0, 2540, 0},
                                                {2540, 5292, 2117, 1764, 2540, 2540},
                                                {2540, 5292, 0, 1764, 2540, 2540},
                                                {2540, 5292, 2117, 1764, 2540, 2540},
                                                {2540, 5292, 0, 1764, 2540, 2540}};
  for (std::size_t list = 0; list < widths.size(); ++list) {
    const ListView& lst = results.lstResult[list];
    EXPECT_EQ(Headers(lst), list == 0 ? ofZero : headers);
    for (std::int32_t column = 1; column <= 6; ++column) {
      EXPECT_EQ(lst.Column(column).width, widths[list][static_cast<std::size_t>(column - 1)]);
      const bool isRight = column == 3 || column == 4;
      EXPECT_EQ(lst.Column(column).alignment, isRight ? Alignment::Right : Alignment::Left);
    }
  }
  EXPECT_EQ(Captions(),
            (std::vector<std::string>{"Zero Size", "Duplicates", "Same Name", "Portions", "Report - read errors"}));
}

TEST_F(ResultListsTest, ASelectedTabBringsItsListOnShow) {
  EXPECT_EQ(results.mIntCurFrame, 0);
  results.tabMain.Select(5);
  EXPECT_EQ(results.mIntCurFrame, 4);
  results.tabMain.SetCaption(1, "x");
  EXPECT_EQ(results.mIntCurFrame, 4);
}

TEST_F(ResultListsTest, ShowResultSortsThenColoursThenCounts) {
  for (const char* name : {"b", "a"}) Add(ResultList::ZeroSize, name);
  for (const std::int32_t group : {9, 4, 9, 4}) Add(ResultList::Duplicates, std::to_string(group), group);
  for (const char* name : {"b", "A", "B", "a"}) Add(ResultList::SameName, name);
  for (const std::int32_t group : {2, 1}) Add(ResultList::Portions, std::to_string(group), group);
  for (const char* name : {"b", "a"}) Add(ResultList::ReadErrors, name, -3);
  ShowResult(results);
  EXPECT_EQ(Texts(zero), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"4", "4", "9", "9"}));
  EXPECT_EQ(Colors(duplicates),
            (std::vector<std::uint32_t>{GroupColors[0], GroupColors[0], GroupColors[1], GroupColors[1]}));
  EXPECT_EQ(Texts(sameName), (std::vector<std::string>{"A", "a", "b", "B"}));
  EXPECT_EQ(Colors(sameName), Colors(duplicates));
  EXPECT_EQ(Texts(portions), (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(Colors(portions), (std::vector<std::uint32_t>{GroupColors[0], GroupColors[1]}));
  EXPECT_EQ(Texts(errors), (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(Colors(errors), (std::vector<std::uint32_t>{kWindowText, kWindowText}));
  EXPECT_EQ(zero.Column(1).text, "^ Name");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(portions.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(errors.Column(1).text, "Name");
  EXPECT_EQ(Captions(), (std::vector<std::string>{"Zero Size(2)", "Duplicates(4/2)", "Same Name(4/2)", "Portions(2/2)",
                                                  "Report - read errors(2)"}));
  EXPECT_EQ(results.mIntCurFrame, 0);
}

TEST_F(ResultListsTest, ShowResultLetsAWindowAnswerAfterEachStep) {
  Add(ResultList::Duplicates, "b", 1);
  Add(ResultList::Duplicates, "a", 1);
  std::vector<std::string> seen;
  ShowResult(results, [&] { seen.push_back(duplicates.Column(3).text + ", " + results.tabMain.Caption(2)); });
  // Four sorts, three colourings, five counts: only the last but three have the count.
  ASSERT_EQ(seen.size(), 12U);
  EXPECT_EQ(seen.front(), "^ Duplicate #, Duplicates");
  EXPECT_EQ(seen[7], "^ Duplicate #, Duplicates");
  EXPECT_EQ(seen[8], "^ Duplicate #, Duplicates(2/1)");
}

TEST_F(ResultListsTest, ShowResultMarksTheHeadersOfEmptyListsToo) {
  SortList(zero, 2, kDescending);
  ShowResult(results);
  EXPECT_EQ(zero.Column(1).text, "^ Name");
  EXPECT_EQ(zero.Column(2).text, "In Folder");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(sameName.Column(1).text, "^ Name");
  EXPECT_EQ(portions.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(errors.Column(1).text, "Name");
}

TEST_F(ResultListsTest, ShowResultBringsUpTheLastListWithRows) {
  for (const ResultList kind : {ResultList::Duplicates, ResultList::Portions, ResultList::ReadErrors})
    Add(kind, "x", 0);
  ShowResult(results);
  EXPECT_EQ(results.tabMain.SelectedTab(), 4);
  EXPECT_EQ(results.mIntCurFrame, 3);
}

TEST_F(ResultListsTest, ShowResultKeepsAListThatHasRows) {
  results.tabMain.Select(2);
  for (const ResultList kind : {ResultList::Duplicates, ResultList::Portions}) Add(kind, "x", 0);
  ShowResult(results);
  EXPECT_EQ(results.mIntCurFrame, 1);
}

TEST_F(ResultListsTest, ShowResultKeepsTheTabWhereOnlyReadErrorsOrNothingWereFound) {
  results.tabMain.Select(3);
  ShowResult(results);
  EXPECT_EQ(results.mIntCurFrame, 2);
  Add(ResultList::ReadErrors, "x", -3);
  ShowResult(results);
  EXPECT_EQ(results.mIntCurFrame, 2);
}

}  // namespace
}  // namespace tresmor
