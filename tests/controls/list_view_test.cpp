#include "controls/list_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/date.h"
#include "base/text.h"
#include "controls/list_view_fixture.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

using What = Notice::What;
using When = Notice::When;
using tests::FailureOf;

class ListViewTest : public tests::ListViewFixture {};

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
  EXPECT_EQ(FailureOf([&] { lst.RemoveRows(std::vector<std::int32_t>{1, 2}); }), Errors::Subscript);
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

TEST_F(ListViewTest, RemovesManyRowsAtOnce) {
  for (const char* text : {"a", "bb", "c", "dd", "e"}) AddMarked(lst, text);
  AddMarked(lst, "ff", true);
  lst.RemoveRows(std::vector<std::int32_t>{1, 3, 5});
  ASSERT_EQ(lst.Count(), 3);
  ExpectMarked(lst, 1, "bb");
  ExpectMarked(lst, 2, "dd");
  ExpectMarked(lst, 3, "ff", true);
  lst.RemoveRows({});
  EXPECT_EQ(lst.Count(), 3);
  lst.RemoveRows(std::vector<std::int32_t>{3});
  ASSERT_EQ(lst.Count(), 2);
  ExpectMarked(lst, 2, "dd");
  lst.RemoveRows(std::vector<std::int32_t>{1, 2});
  EXPECT_EQ(lst.Count(), 0);
  AddMarked(lst, "g");
  ExpectMarked(lst, 1, "g");
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
  lst.AddRow("e");
  heard.clear();
  lst.RemoveRows(std::vector<std::int32_t>{2});
  EXPECT_EQ(heard,
            (std::vector<Heard>{{What::RowsReset, When::Before, 1, 4, 4}, {What::RowsReset, When::After, 1, 4, 3}}));
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
  lst.RemoveRows({});
  EXPECT_TRUE(heard.empty());
  lst.SortOrder = kAscending;
  SortBy(lst, 0, kAscending);
  EXPECT_EQ(heard.size(), 2U);
  heard.clear();
  lst.SetSorted(true);  // stands in this order already
  EXPECT_TRUE(heard.empty());
}

TEST_F(ListNotices, TellManyChangesAtOnce) {
  const auto markAll = [&] {
    for (std::int32_t row = 1; row <= lst.Count(); ++row) lst.SetChecked(row, true);
    lst.SetSelected(2, true);
    lst.SetForeColor(3, 7);
    lst.SetCell(1, 1, "f");
  };
  const std::vector<Heard> once = {{What::RowsChanged, When::Before, 1, 3, 3},
                                   {What::RowsChanged, When::After, 1, 3, 3}};
  lst.ChangeMany(markAll);
  EXPECT_EQ(heard, once);
  EXPECT_TRUE(lst.Checked(1) && lst.Checked(3));
  EXPECT_EQ(lst.SelectedItem(), 2);
  EXPECT_EQ(lst.Cell(1, 1), "f");
  heard.clear();
  lst.SetChecked(1, false);
  EXPECT_EQ(heard.size(), 2U) << "one by one again";
  heard.clear();
  lst.Visible = false;
  heard.clear();
  lst.ChangeMany(markAll);
  EXPECT_TRUE(heard.empty()) << "a hidden list";
  lst.Visible = true;
  heard.clear();
  lst.ChangeMany([&] { lst.SetChecked(1, true); });
  EXPECT_TRUE(heard.empty()) << "nothing new";
}

TEST_F(ListNotices, TellManyChangesThatFailed) {
  EXPECT_THROW(lst.ChangeMany([&] {
    lst.SetChecked(2, true);
    lst.SetChecked(4, true);
  }),
               Failure);
  EXPECT_EQ(heard, (std::vector<Heard>{{What::RowsChanged, When::Before, 1, 3, 3},
                                       {What::RowsChanged, When::After, 1, 3, 3}}));
  EXPECT_TRUE(lst.Checked(2));
  heard.clear();
  lst.SetChecked(1, true);
  EXPECT_EQ(heard.size(), 2U) << "one by one again";
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
