#include "results/sort_list.h"

#include "base/failure.h"
#include "results/result_fixture.h"

namespace tresmor {
namespace {

class SortListTest : public tests::ResultFixture {};

TEST_F(SortListTest, TheFirstClickSortsDescending) {
  for (const char* name : {"b", "c", "a"}) Add(ResultList::Duplicates, name);
  ClickColumn(duplicates, 1);
  EXPECT_EQ(duplicates.SortOrder(), kDescending);
  EXPECT_EQ(duplicates.Column(1).text, "v Name");
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"c", "b", "a"}));
}

TEST_F(SortListTest, ClicksTurnTheDirectionOverWhicheverColumnTheyAreOn) {
  for (const char* name : {"b", "c", "a"}) Add(ResultList::Duplicates, name);
  ClickColumn(duplicates, 1);
  ClickColumn(duplicates, 1);
  EXPECT_EQ(duplicates.Column(1).text, "^ Name");
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"a", "b", "c"}));
  ClickColumn(duplicates, 2);
  EXPECT_EQ(duplicates.SortOrder(), kDescending);
  EXPECT_EQ(Headers(duplicates), (std::vector<std::string>{"Name", "v In Folder", "Duplicate #", "Size (Bytes)",
                                                           "Date Modified", "File version"}));
  SortList(duplicates, 3, kAscending);
  ClickColumn(duplicates, 4);
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
  EXPECT_EQ(duplicates.Column(4).text, "v Size (Bytes)");
}

TEST_F(SortListTest, VersionsSortByTheirKeysAndStayInTheirCells) {
  AddVersion(ResultList::Duplicates, "a", "1.10");
  AddVersion(ResultList::Duplicates, "b", "1.9");
  AddVersion(ResultList::Duplicates, "c", "1.2");
  AddVersion(ResultList::Duplicates, "d", "1.2.0");
  duplicates.SetChecked(1, true);
  duplicates.SetForeColor(1, 0x123456);
  SortList(duplicates, 6, kAscending);
  EXPECT_EQ(Texts(duplicates, kVersionItem), (std::vector<std::string>{"1.2", "1.2.0", "1.9", "1.10"}));
  EXPECT_EQ(duplicates.Column(6).text, "^ File version");
  EXPECT_EQ(duplicates.SortKey(), 5);
  EXPECT_EQ(duplicates.CellTag(4, kVersionItem), "00010010");
  EXPECT_TRUE(duplicates.Checked(4));
  EXPECT_EQ(duplicates.ForeColor(4), 0x123456U);
  ClickColumn(duplicates, 6);
  EXPECT_EQ(Texts(duplicates, kVersionItem), (std::vector<std::string>{"1.10", "1.9", "1.2.0", "1.2"}));
}

TEST_F(SortListTest, RowsWithoutAVersionSortAsEmptyAndStayWithoutOne) {
  AddVersion(ResultList::Duplicates, "with", "1.0");
  Add(ResultList::Duplicates, "without");
  SortList(duplicates, 6, kAscending);
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"without", "with"}));
  EXPECT_EQ(duplicates.SubItems(1), 4);

  Add(ResultList::SameName, "b");
  Add(ResultList::SameName, "a");
  ClickColumn(sameName, 6);
  EXPECT_EQ(Texts(sameName), (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(sameName.Column(6).text, "v File version");
}

TEST_F(SortListTest, DatesSortByTime) {
  for (const char* date : {"2003/07/02 10:11:12", "1999/12/31 23:59:59", "2003/07/02 09:00:00"}) {
    Finding finding;
    finding.name = date;
    finding.modified = *ParseStamp(date);
    AddResultItem(duplicates, finding);
  }
  SortList(duplicates, 5, kAscending);
  EXPECT_EQ(Texts(duplicates),
            (std::vector<std::string>{"1999/12/31 23:59:59", "2003/07/02 09:00:00", "2003/07/02 10:11:12"}));
}

TEST_F(SortListTest, SizesBeyondThePaddingSortByValue) {
  for (const std::int64_t size : {123456789012L, 5L, 99999999999L, 2147483648L}) {
    Add(ResultList::Duplicates, std::to_string(size), 0, size);
  }
  SortList(duplicates, 4, kAscending);
  EXPECT_EQ(Texts(duplicates), (std::vector<std::string>{"5", "2147483648", "99999999999", "123456789012"}));
}

TEST_F(SortListTest, AnEmptyListSortsAndGetsItsMark) {
  SortList(zero, 1, kAscending);
  EXPECT_EQ(zero.Column(1).text, "^ Name");
  SortList(zero, 6, kDescending);
  EXPECT_EQ(zero.Column(1).text, "Name");
  EXPECT_EQ(zero.Column(6).text, "v File Version");
  EXPECT_TRUE(zero.Sorted());
}

TEST_F(SortListTest, MarkAndDirectionOutliveTheRows) {
  Add(ResultList::ZeroSize, "a");
  AddVersion(ResultList::ZeroSize, "b", "1.0");
  ClickColumn(zero, 2);
  zero.Clear();
  zero.SetSorted(false);
  EXPECT_EQ(Headers(zero), (std::vector<std::string>{"Name", "v In Folder", "Duplicate #", "Size (Bytes)",
                                                     "Date Modified", "File Version"}));
  EXPECT_EQ(zero.Tag(), kVersionTag);
  ClickColumn(zero, 1);
  EXPECT_EQ(Headers(zero), (std::vector<std::string>{"^ Name", "In Folder", "Duplicate #", "Size (Bytes)",
                                                     "Date Modified", "File Version"}));
}

TEST_F(SortListTest, ACaptionThatBeginsLikeAMarkLosesTwoCharacters) {
  zero.SetColumnText(2, "value");
  zero.SetColumnText(3, "v");
  zero.SetColumnText(4, "");
  zero.SetColumnText(5, "Value");
  SortList(zero, 1, kAscending);
  EXPECT_EQ(Headers(zero), (std::vector<std::string>{"^ Name", "lue", "", "", "Value", "File Version"}));
}

TEST_F(SortListTest, FailsForAColumnThatTheListDoesNotHave) {
  EXPECT_THROW(SortList(zero, 7, kAscending), Failure);
  EXPECT_THROW(SortList(zero, 0, kAscending), Failure);
}

TEST_F(SortListTest, ColoursStayWithTheirGroupsInASort) {
  Add(ResultList::Duplicates, "c", 1);
  Add(ResultList::Duplicates, "a", 1);
  Add(ResultList::Duplicates, "b", 2);
  ColorGroups(duplicates, ResultList::Duplicates);
  SortList(duplicates, 1, kAscending);
  EXPECT_EQ(Colors(duplicates), (std::vector<std::uint32_t>{GroupColors[0], GroupColors[1], GroupColors[0]}));
}

}  // namespace
}  // namespace tresmor
