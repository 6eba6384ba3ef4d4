#include "controls/list_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "base/failure.h"
#include "base/text.h"

namespace tresmor {
namespace {

using What = Notice::What;
using When = Notice::When;

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

void AddColumns(ListView& lst) {
  lst.AddColumn({"Name", 2540, Alignment::Left});
  lst.AddColumn({"In Folder", 5292, Alignment::Left});
  lst.AddColumn({"Size", 1764, Alignment::Right});
  lst.AddColumn({"Other", 0, Alignment::Left});
}

std::vector<std::string> Texts(const ListView& lst, std::int32_t subItem) {
  std::vector<std::string> texts;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) texts.push_back(lst.Cell(row, subItem));
  return texts;
}

void SortBy(ListView& lst, std::int16_t subItem, std::int16_t order) {
  lst.SortKey = subItem;
  lst.SortOrder = order;
  lst.SetSorted(true);
}

Errors FailureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return Errors::None;
}

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() { AddColumns(lst); }
  ListView lst;
};

TEST_F(ListViewTest, GivesBackEveryTextByteForByte) {
  const std::vector<std::string> odd = {"",
                                        " ",
                                        "5",
                                        "         5",
                                        "        -3",
                                        "        +3",
                                        "         05",
                                        "0000000005",
                                        "          ",
                                        " 1234567890",
                                        "1234567890",
                                        "12345678901",
                                        "999999999999999999",
                                        "9223372036854775807",
                                        "-9223372036854775808",
                                        "99999999999999999999",
                                        "        -0",
                                        "2003/07/02 10:11:12",
                                        "1899/12/30 00:00:00",
                                        "1899/12/29 23:59:59",
                                        "0001/01/01 00:00:00",
                                        "9999/12/31 23:59:59",
                                        "2003/02/30 10:11:12",
                                        "2003/07/02 24:11:12",
                                        "2003/07/02T10:11:12",
                                        "2003-07-02 10:11:12",
                                        std::string("a\0b", 3),
                                        "\xFF\xFE|-\r\n",
                                        std::string(65535, 'x'),
                                        std::string(65536, 'y'),
                                        std::string(300000, 'z')};
  for (const std::string& text : odd) {
    const std::int32_t row = lst.AddRow(text);
    lst.SetCell(row, 1, text);
    lst.SetCell(row, 2, text);
    lst.SetCellTag(row, 2, text);
  }
  EXPECT_EQ(Texts(lst, 0), odd);
  EXPECT_EQ(Texts(lst, 1), odd);
  EXPECT_EQ(Texts(lst, 2), odd);
  for (std::size_t i = 0; i < odd.size(); ++i) EXPECT_EQ(lst.CellTag(static_cast<std::int32_t>(i) + 1, 2), odd[i]);
}

TEST_F(ListViewTest, KeepsManyTextsApart) {
  for (int i = 0; i < 40000; ++i) lst.AddRow("file number " + std::to_string(i) + (i % 7 == 0 ? "" : ".txt"));
  for (std::int32_t i = 0; i < 40000; i += 997) {
    EXPECT_EQ(lst.Cell(i + 1, 0), "file number " + std::to_string(i) + (i % 7 == 0 ? "" : ".txt"));
  }
}

TEST_F(ListViewTest, TakesNumbersAndDatesAsTheirTexts) {
  const std::vector<std::int64_t> numbers = {0, -3, 2147483647, 123456789012, -kLargest - 1, kLargest};
  for (const std::int64_t number : numbers) {
    const std::int32_t row = lst.AddRow("x");
    lst.SetCell(row, 2, PaddedNumber{number});
    EXPECT_EQ(lst.Cell(row, 2), PadNumber(number));
  }
  const std::vector<DateStamp> stamps = {kZeroDate,      -1, 86399, 2958465LL * 86400 + 86399, kLargest / 100,
                                         -kLargest / 100};
  for (const DateStamp stamp : stamps) {
    const std::int32_t row = lst.AddRow("x");
    lst.SetCell(row, 3, StampText{stamp});
    EXPECT_EQ(lst.Cell(row, 3), FormatStamp(stamp));
  }
  // Dates out of bounds share one text, and then they are one.
  for (const DateStamp far : {kLargest / 100, -kLargest / 100}) {
    const std::int32_t row = lst.AddRow("x");
    lst.SetCell(row, 3, StampText{far});
    lst.SetCell(lst.AddRow("x"), 3, StampText{far / 2});
    EXPECT_TRUE(lst.SameCell(row, row + 1, 3));
  }
}

TEST_F(ListViewTest, TellsTheNumberOfAPaddedCellHoweverItWasWritten) {
  const std::int32_t row = lst.AddRow("x");
  lst.SetCell(row, 1, PaddedNumber{42});
  lst.SetCell(row, 2, PadNumber(123456789012));
  lst.SetCell(row, 3, "42");
  EXPECT_EQ(lst.CellNumber(row, 1), 42);
  EXPECT_EQ(lst.CellNumber(row, 2), 123456789012);
  EXPECT_EQ(lst.CellNumber(row, 3), std::nullopt);
}

constexpr std::int64_t k2To59 = std::int64_t{1} << 59;

TEST_F(ListViewTest, TellsNumbersThatAreTooLargeForACell) {
  for (const std::int64_t number : {k2To59 - 1, k2To59, kLargest, -k2To59, -kLargest - 1}) {
    const std::int32_t row = lst.AddRow(std::to_string(number));
    lst.SetCell(row, 1, PaddedNumber{number});
    lst.SetCell(row, 2, std::to_string(number));
    for (const std::int32_t subItem : {0, 1, 2}) {
      EXPECT_EQ(lst.CellNumber(row, subItem), number);
      EXPECT_EQ(lst.Cell(row, subItem), std::to_string(number));
    }
    EXPECT_TRUE(lst.SameCell(row, row, 1));
  }
}

TEST_F(ListViewTest, TellsNoNumberOfAnyOtherText) {
  for (const char* text : {"", "5", "         05", "        +3", "        -0", "9223372036854775808", "12345678901 ",
                           "576460752303423488x", "2003/07/02 10:11:12"}) {
    const std::int32_t row = lst.AddRow(text);
    lst.SetCell(row, 2, text);
    EXPECT_EQ(lst.CellNumber(row, 0), std::nullopt) << text;
    EXPECT_EQ(lst.CellNumber(row, 2), std::nullopt) << text;
    EXPECT_EQ(lst.CellNumber(row, 3), std::nullopt) << "a missing cell";
  }
}

TEST_F(ListViewTest, AMissingCellReadsAsEmptyAndIsNotCounted) {
  lst.AddRow("a");
  EXPECT_EQ(lst.Cell(1, 3), "");
  EXPECT_EQ(lst.CellTag(1, 3), "");
  EXPECT_EQ(lst.SubItems(1), 0);
  lst.SetCell(1, 2, "");
  EXPECT_EQ(lst.SubItems(1), 2);
  lst.AddRow("b", std::vector<CellValue>{"f"});
  EXPECT_EQ(lst.SubItems(2), 1);
  EXPECT_EQ(lst.SubItems(1), 2);
}

TEST_F(ListViewTest, FailsWhereNothingStands) {
  lst.AddRow("a");
  std::string scratch;
  EXPECT_EQ(FailureOf([&] { (void)lst.CellView(0, 0, scratch); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { (void)lst.Cell(2, 0); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { (void)lst.Cell(1, 4); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { lst.SetCell(1, 4, "x"); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { lst.RemoveRow(2); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { lst.SetChecked(2, true); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { (void)lst.Column(5); }), Errors::Subscript);
  EXPECT_EQ(lst.Count(), 1);
}

TEST_F(ListViewTest, KeepsMarkSelectionIconAndColourApart) {
  lst.AddRow("a");
  lst.AddRow("b");
  EXPECT_FALSE(lst.Checked(1));
  EXPECT_FALSE(lst.Selected(1));
  EXPECT_EQ(lst.ForeColor(1), kWindowText);
  lst.SetSmallIcon(1, 2);
  lst.SetChecked(1, true);
  lst.SetSelected(2, true);
  lst.SetForeColor(2, 0);
  EXPECT_TRUE(lst.Checked(1));
  EXPECT_FALSE(lst.Selected(1));
  EXPECT_EQ(lst.SmallIcon(1), 2);
  EXPECT_EQ(lst.ForeColor(1), kWindowText);
  EXPECT_FALSE(lst.Checked(2));
  EXPECT_TRUE(lst.Selected(2));
  EXPECT_EQ(lst.SmallIcon(2), 0);
  EXPECT_EQ(lst.ForeColor(2), 0U);
  lst.SetSmallIcon(1, 1);
  lst.SetChecked(1, false);
  EXPECT_EQ(lst.SmallIcon(1), 1);
  EXPECT_FALSE(lst.Checked(1));
}

// A row told by all that belongs to it.
void AddMarked(ListView& lst, const std::string& text, bool isLast = false) {
  const std::int32_t row = lst.AddRow(text);
  lst.SetCell(row, 1, "folder of " + text);
  lst.SetChecked(row, text.size() % 2 == 1);
  if (isLast) return;  // no tag, no colour: these columns end before the list does
  lst.SetCellTag(row, 3, "tag of " + text);
  lst.SetForeColor(row, static_cast<std::uint32_t>(text[0]));
}

void ExpectMarked(const ListView& lst, std::int32_t row, const std::string& text, bool isLast = false) {
  EXPECT_EQ(lst.Cell(row, 0), text);
  EXPECT_EQ(lst.Cell(row, 1), "folder of " + text);
  EXPECT_EQ(lst.Checked(row), text.size() % 2 == 1);
  EXPECT_EQ(lst.CellTag(row, 3), isLast ? "" : "tag of " + text);
  EXPECT_EQ(lst.ForeColor(row), isLast ? kWindowText : static_cast<std::uint32_t>(text[0]));
}

TEST_F(ListViewTest, RemovesOneRowWithAllThatBelongsToIt) {
  for (const char* text : {"a", "bb", "c"}) AddMarked(lst, text);
  AddMarked(lst, "dd", true);
  lst.RemoveRow(2);
  ASSERT_EQ(lst.Count(), 3);
  ExpectMarked(lst, 1, "a");
  ExpectMarked(lst, 2, "c");
  ExpectMarked(lst, 3, "dd", true);
  lst.RemoveRow(3);
  lst.RemoveRow(1);
  ExpectMarked(lst, 1, "c");
}

TEST_F(ListViewTest, ASortMovesAllThatBelongsToARow) {
  for (const char* text : {"dd", "a", "c"}) AddMarked(lst, text);
  AddMarked(lst, "bb", true);
  SortBy(lst, 0, kAscending);
  ExpectMarked(lst, 1, "a");
  ExpectMarked(lst, 2, "bb", true);
  ExpectMarked(lst, 3, "c");
  ExpectMarked(lst, 4, "dd");
}

TEST_F(ListViewTest, SortsWithoutRegardToCaseAndStablyInBothDirections) {
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

TEST_F(ListViewTest, InAColumnOfNumbersALongerNumberIsTheGreater) {
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

TEST_F(ListViewTest, InOtherColumnsDigitsAreTextLikeAnyOther) {
  for (const char* name : {"99999999999", "zebra", "123456789012"}) lst.SetCell(lst.AddRow(name), 3, name);
  const std::vector<std::string> up = {"123456789012", "99999999999", "zebra"};
  SortBy(lst, 0, kAscending);
  EXPECT_EQ(Texts(lst, 0), up);
  lst.RemoveRow(3);
  SortBy(lst, 3, kDescending);
  EXPECT_EQ(Texts(lst, 3), (std::vector<std::string>{"99999999999", "123456789012"}));
}

TEST_F(ListViewTest, SortsDatesByTime) {
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

TEST_F(ListViewTest, SortsAnyTextsAsComparingThemDoes) {
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

TEST_F(ListViewTest, SortsTextsThatDifferAtTheirVeryEnds) {
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

TEST_F(ListViewTest, SortsByTagsWhereAskedTo) {
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

TEST_F(ListViewTest, SortsWhenSortedIsWrittenAndAtNoOtherTime) {
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

TEST_F(ListViewTest, ComparesTwoCellsByTheirBytes) {
  lst.AddRow("a");
  lst.AddRow("A");
  lst.AddRow("a");
  EXPECT_FALSE(lst.SameCell(1, 2, 0));
  EXPECT_TRUE(lst.SameCell(1, 3, 0));
  EXPECT_TRUE(lst.SameCell(1, 2, 1));
  lst.SetCell(1, 2, PaddedNumber{7});
  lst.SetCell(2, 2, "         7");
  lst.SetCell(3, 2, "7");
  EXPECT_TRUE(lst.SameCell(1, 2, 2));
  EXPECT_FALSE(lst.SameCell(1, 3, 2));
  lst.SetCell(1, 1, "");
  EXPECT_TRUE(lst.SameCell(1, 2, 1));
}

TEST_F(ListViewTest, ClearForgetsRowsButNotColumns) {
  for (const char* text : {"a", "bb"}) AddMarked(lst, text);
  lst.SetColumnText(2, "v In Folder");
  lst.Tag = "Ver";
  SortBy(lst, 1, kDescending);
  lst.Clear();
  lst.SetSorted(false);
  EXPECT_EQ(lst.Count(), 0);
  EXPECT_EQ(lst.Columns(), 4);
  EXPECT_EQ(lst.Column(2).text, "v In Folder");
  EXPECT_EQ(lst.Tag(), "Ver");
  EXPECT_EQ(lst.SortKey(), 1);
  EXPECT_EQ(lst.SortOrder(), kDescending);
  lst.AddRow("new");
  EXPECT_EQ(lst.Cell(1, 0), "new");
  EXPECT_EQ(lst.Cell(1, 1), "");
  EXPECT_EQ(lst.CellTag(1, 3), "");
  EXPECT_FALSE(lst.Checked(1));
  EXPECT_EQ(lst.ForeColor(1), kWindowText);
}

struct Heard {
  What what;
  When when;
  std::int32_t first;
  std::int32_t last;
  std::int32_t count;  // rows of the list at that moment
  friend bool operator==(const Heard&, const Heard&) = default;
};

class ListNotices : public ListViewTest {
 protected:
  ListNotices() {
    for (const char* name : {"b", "a", "c"}) lst.AddRow(name);
    lst.Listen([this](const Notice& n) { heard.push_back({n.what, n.when, n.first, n.last, lst.Count()}); });
  }
  std::vector<Heard> heard;
};

TEST_F(ListNotices, TellRowsBeforeAndAfter) {
  lst.AddRow("d");
  EXPECT_EQ(heard,
            (std::vector<Heard>{{What::RowsAdded, When::Before, 4, 4, 3}, {What::RowsAdded, When::After, 4, 4, 4}}));
  heard.clear();
  lst.RemoveRow(2);
  EXPECT_EQ(heard, (std::vector<Heard>{{What::RowsRemoved, When::Before, 2, 2, 4},
                                       {What::RowsRemoved, When::After, 2, 2, 3}}));
  heard.clear();
  lst.Clear();
  EXPECT_EQ(heard,
            (std::vector<Heard>{{What::RowsReset, When::Before, 1, 3, 3}, {What::RowsReset, When::After, 1, 3, 0}}));
  lst.AddRow("e");
  heard.clear();
  lst.SetCell(1, 1, "f");
  lst.SetChecked(1, true);
  EXPECT_EQ(heard.size(), 4U);
  for (const Heard& one : heard) EXPECT_EQ(one.what, What::RowsChanged);
}

TEST_F(ListNotices, StaySilentWhereNothingChanges) {
  lst.SetChecked(1, false);
  lst.SetForeColor(1, kWindowText);
  EXPECT_TRUE(heard.empty());
  lst.SortOrder = kAscending;
  SortBy(lst, 0, kAscending);
  EXPECT_EQ(heard.size(), 2U);
  heard.clear();
  lst.SetSorted(true);  // stands in this order already
  EXPECT_TRUE(heard.empty());
}

TEST_F(ListNotices, AHiddenListIsSilentUntilItIsShown) {
  lst.Visible = false;
  heard.clear();
  lst.AddRow("d");
  lst.SetChecked(1, true);
  lst.SetColumnText(1, "^ Name");
  SortBy(lst, 0, kAscending);
  lst.RemoveRow(1);
  lst.Clear();
  EXPECT_TRUE(heard.empty());
  lst.Visible = true;
  EXPECT_EQ(heard, (std::vector<Heard>{{What::Visible, When::Before, 0, 0, 0}, {What::Visible, When::After, 0, 0, 0}}));
}

}  // namespace
}  // namespace tresmor
