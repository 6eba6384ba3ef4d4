// Sorting the rows of a list.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "controls/list_view.h"
#include "controls/list_view_fixture.h"

namespace tresmor {
namespace {

class ListSort : public tests::ListViewFixture {};

TEST_F(ListSort, ASortMovesAllThatBelongsToARow) {
  for (const char* text : {"dd", "a", "c"}) AddMarked(lst, text);
  AddMarked(lst, "bb", true);
  SortBy(lst, 0, kAscending);
  ExpectMarked(lst, 1, "a");
  ExpectMarked(lst, 2, "bb", true);
  ExpectMarked(lst, 3, "c");
  ExpectMarked(lst, 4, "dd");
}

TEST_F(ListSort, SortsWithoutRegardToCaseAndStablyInBothDirections) {
  const std::vector<std::string> names = {"b",  "A",        "B",        "a",         "",
                                          "ab", "\xC3\xA4", "\xC3\x84", "abcdefghi", "ABCDEFGHH"};
  for (const std::string& name : names) lst.AddRow(name);
  SortBy(lst, 0, kAscending);
  const std::vector<std::string> up = {"", "A", "a", "ab", "ABCDEFGHH", "abcdefghi", "b", "B", "\xC3\xA4", "\xC3\x84"};
  EXPECT_EQ(Texts(lst, 0), up);
  SortBy(lst, 0, kDescending);
  const std::vector<std::string> down = {"\xC3\xA4",  "\xC3\x84", "b", "B", "abcdefghi",
                                         "ABCDEFGHH", "ab",       "A", "a", ""};
  EXPECT_EQ(Texts(lst, 0), down);
}

TEST_F(ListSort, InAColumnOfNumbersALongerNumberIsTheGreater) {
  for (const std::int64_t size : {99999999999L, 5L, 123456789012L, 2147483647L, 10000000000L}) {
    const std::int32_t row = lst.AddRow("x");
    lst.SetCell(row, 2, PaddedNumber{size});
  }
  const std::vector<std::string> up = {"         5", "2147483647", "10000000000", "99999999999", "123456789012"};
  SortBy(lst, 2, kAscending);
  EXPECT_EQ(Texts(lst, 2), up);
  SortBy(lst, 2, kDescending);
  EXPECT_EQ(Texts(lst, 2), std::vector<std::string>(up.rbegin(), up.rend()));

  // So does one that is too large to be kept as a number.
  for (const std::int64_t size : {kLargest, k2To59, k2To59 - 1}) lst.SetCell(lst.AddRow("x"), 2, PaddedNumber{size});
  std::vector<std::string> large = up;
  for (const std::int64_t size : {k2To59 - 1, k2To59, kLargest}) large.push_back(std::to_string(size));
  SortBy(lst, 2, kAscending);
  EXPECT_EQ(Texts(lst, 2), large);
  SortBy(lst, 2, kDescending);
  EXPECT_EQ(Texts(lst, 2), std::vector<std::string>(large.rbegin(), large.rend()));

  // The rule stays where other texts stand among the numbers.
  lst.AddRow("missing");
  for (const char* text : {" ", "x", "        -3", "5", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}) {
    lst.SetCell(lst.AddRow("odd"), 2, text);
  }
  SortBy(lst, 2, kAscending);
  const std::vector<std::string> mixed = {"",
                                          " ",
                                          "         5",
                                          "        -3",
                                          "2147483647",
                                          "5",
                                          "x",
                                          "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF",
                                          "10000000000",
                                          "99999999999",
                                          "123456789012",
                                          "576460752303423487",
                                          "576460752303423488",
                                          "9223372036854775807"};
  EXPECT_EQ(Texts(lst, 2), mixed);
}

TEST_F(ListSort, InOtherColumnsDigitsAreTextLikeAnyOther) {
  for (const char* name : {"99999999999", "zebra", "123456789012"}) lst.SetCell(lst.AddRow(name), 3, name);
  const std::vector<std::string> up = {"123456789012", "99999999999", "zebra"};
  SortBy(lst, 0, kAscending);
  EXPECT_EQ(Texts(lst, 0), up);
  lst.RemoveRow(3);
  SortBy(lst, 3, kDescending);
  EXPECT_EQ(Texts(lst, 3), (std::vector<std::string>{"99999999999", "123456789012"}));
}

TEST_F(ListSort, SortsDatesByTime) {
  const std::vector<std::string> up = {"0099/01/01 00:00:00", "1899/12/29 23:59:59", "1899/12/30 00:00:00",
                                       "2003/07/02 10:11:12", "2003/07/02 10:11:13", "9999/12/31 23:59:59"};
  for (const int i : {3, 1, 5, 0, 4, 2}) lst.SetCell(lst.AddRow("x"), 3, up[static_cast<std::size_t>(i)]);
  SortBy(lst, 3, kAscending);
  EXPECT_EQ(Texts(lst, 3), up);
  lst.AddRow("missing");
  lst.SetCell(lst.AddRow("odd"), 3, "1900/13/01");
  SortBy(lst, 3, kAscending);
  EXPECT_EQ(Texts(lst, 3), (std::vector<std::string>{"", up[0], up[1], up[2], "1900/13/01", up[3], up[4], up[5]}));
}

TEST_F(ListSort, SortsAnyTextsAsComparingThemDoes) {
  std::mt19937 random(7);
  const std::vector<std::string> parts = {"a", "A", "\xC3\x89", "\xC3\xA9", "long part ",
                                          "1", " ", "\xFF",     ".",        std::string(1, '\0')};
  for (int i = 0; i < 500; ++i) {
    std::string name;
    for (auto n = random() % 12; n > 0; --n) name += parts[random() % parts.size()];
    lst.SetCell(lst.AddRow(name), 1, name);
  }
  for (const std::int16_t subItem : {std::int16_t{0}, std::int16_t{1}}) {
    std::vector<std::string> expected = Texts(lst, subItem);
    std::stable_sort(expected.begin(), expected.end(),
                     [](const std::string& a, const std::string& b) { return CompareText(a, b) > 0; });
    SortBy(lst, subItem, kDescending);
    EXPECT_EQ(Texts(lst, subItem), expected);
    std::stable_sort(expected.begin(), expected.end(),
                     [](const std::string& a, const std::string& b) { return CompareText(a, b) < 0; });
    SortBy(lst, subItem, kAscending);
    EXPECT_EQ(Texts(lst, subItem), expected);
  }
}

TEST_F(ListSort, SortsTextsThatDifferAtTheirVeryEnds) {
  const std::string start(60000, 'x');
  for (const char* end : {"b", "", "c", "a", "b"}) {
    const std::int32_t row = lst.AddRow(start + end);
    lst.SetCell(row, 1, start + end);
    lst.SetCell(row, 3, PaddedNumber{row});
  }
  for (const std::int16_t subItem : {std::int16_t{0}, std::int16_t{1}}) {
    SortBy(lst, subItem, kDescending);
    std::string rows;
    for (const std::string& row : Texts(lst, 3)) rows += row.back();
    EXPECT_EQ(rows, "31542");
    SortBy(lst, 3, kAscending);
  }
}

TEST_F(ListSort, SortsByTagsWhereAskedTo) {
  for (const char* version : {"1.10", "1.9"}) {
    const std::int32_t row = lst.AddRow(version);
    lst.SetCell(row, 3, version);
    lst.SetCellTag(row, 3, std::string(version) == "1.9" ? "00010009" : "00010010");
  }
  lst.AddRow("none");
  lst.SortKey = 3;
  lst.SortOrder = kAscending;
  lst.SortByTags();
  EXPECT_TRUE(lst.Sorted());
  EXPECT_EQ(Texts(lst, 3), (std::vector<std::string>{"", "1.9", "1.10"}));
  EXPECT_EQ(lst.CellTag(3, 3), "00010010");
  EXPECT_EQ(lst.SubItems(1), 0);
}

TEST_F(ListSort, SortsWhenSortedIsWrittenAndAtNoOtherTime) {
  for (const char* name : {"b", "c"}) lst.AddRow(name);
  SortBy(lst, 0, kAscending);
  EXPECT_TRUE(lst.Sorted());
  lst.AddRow("a");
  lst.SortOrder = kDescending;
  EXPECT_EQ(Texts(lst, 0), (std::vector<std::string>{"b", "c", "a"}));
  lst.SetSorted(true);
  EXPECT_EQ(Texts(lst, 0), (std::vector<std::string>{"c", "b", "a"}));
  lst.SetSorted(false);
  EXPECT_FALSE(lst.Sorted());
  EXPECT_EQ(Texts(lst, 0), (std::vector<std::string>{"c", "b", "a"}));
}

}  // namespace
}  // namespace tresmor
