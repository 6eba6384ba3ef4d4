// How rows of a list compare, and how one is known again.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "controls/list_view.h"

namespace tresmor {
namespace {

class ListRows : public testing::Test {
 protected:
  ListRows() {
    for (const char* header : {"Name", "In Folder"}) lst.AddColumn({header});
    lst.AddColumn({"Size", 1764, Alignment::Right});
    lst.AddColumn({"Other"});
  }
  ListView lst;
};

// Ordered by their bytes, texts and what is kept as something else among each other.
TEST_F(ListRows, OrdersTwoCellsByTheirBytes) {
  const std::vector<std::string> up = {
      "",  "         5", "        -3", "2147483647", "99999999999", "999999999999", "9999999999999999999999",
      "A", "Z",          "a",          "a ",         "\xC3\xA9",    "\xFF"};
  const std::vector<std::string> dates = {"0099/01/01 00:00:00", "1899/12/29 23:59:59", "1899/12/30 00:00:00",
                                          "1900/13/01",          "2003/07/02 10:11:12", "2003/07/02 10:11:13"};
  for (const std::vector<std::string>& texts : {up, dates}) {
    lst.Clear();
    for (const std::string& text : texts) {
      const std::int32_t row = lst.AddRow(text);
      lst.SetCell(row, 1, text);
      lst.SetCellTag(row, 3, text);
    }
    for (std::int32_t a = 1; a <= lst.Count(); ++a) {
      for (std::int32_t b = 1; b <= lst.Count(); ++b) {
        const auto sign = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
        EXPECT_EQ(sign(lst.CompareCells(a, b, 0)), sign(a - b)) << lst.Cell(a, 0) << "|" << lst.Cell(b, 0);
        EXPECT_EQ(sign(lst.CompareCells(a, b, 1)), sign(a - b)) << lst.Cell(a, 0) << "|" << lst.Cell(b, 0);
        EXPECT_EQ(sign(lst.CompareTags(a, b, 3)), sign(a - b)) << lst.Cell(a, 0) << "|" << lst.Cell(b, 0);
      }
    }
  }
}

TEST_F(ListRows, ALongerNumberIsTheGreaterOfTwoCellsOfAColumnOfNumbersAlone) {
  const std::vector<std::string> up = {"",
                                       "         5",
                                       "        -3",
                                       "2147483647",
                                       "9999999999",
                                       "x",
                                       "10000000000",
                                       "99999999999",
                                       "123456789012",
                                       "1234567890123456789012",
                                       "9999999999999999999999"};
  for (const std::string& text : up) {
    const std::int32_t row = lst.AddRow("x");
    lst.SetCell(row, 2, text);
    lst.SetCell(row, 1, text);
    lst.SetCellTag(row, 2, text);
  }
  for (std::int32_t a = 1; a < lst.Count(); ++a) {
    for (std::int32_t b = a + 1; b <= lst.Count(); ++b) {
      EXPECT_LT(lst.CompareCells(a, b, 2), 0) << lst.Cell(a, 2) << "|" << lst.Cell(b, 2);
      EXPECT_GT(lst.CompareCells(b, a, 2), 0) << lst.Cell(a, 2) << "|" << lst.Cell(b, 2);
    }
    EXPECT_EQ(lst.CompareCells(a, a, 2), 0);
  }
  EXPECT_GT(lst.CompareCells(5, 7, 1), 0);  // as texts
  EXPECT_GT(lst.CompareCells(8, 9, 1), 0);
  EXPECT_GT(lst.CompareTags(8, 9, 2), 0);
}

TEST_F(ListRows, KnowsARowAgainUntilRowsMove) {
  for (const char* text : {"b", "a", "c"}) lst.AddRow(text);
  std::vector<std::uint64_t> seen = {ListView().Arrangement()};
  const auto isNew = [&] {
    const bool known = std::find(seen.begin(), seen.end(), lst.Arrangement()) != seen.end();
    seen.push_back(lst.Arrangement());
    return !known;
  };
  EXPECT_TRUE(isNew());
  lst.AddRow("d");
  lst.SetChecked(1, true);
  lst.SetCell(1, 1, "x");
  EXPECT_FALSE(isNew());
  lst.SetSorted(true);
  EXPECT_TRUE(isNew());
  lst.RemoveRow(1);
  EXPECT_TRUE(isNew());
  lst.Visible = false;
  lst.RemoveRows(std::vector<std::int32_t>{1});
  EXPECT_TRUE(isNew());
  lst.Clear();
  EXPECT_TRUE(isNew());
}

TEST_F(ListRows, TheSelectedItemIsTheRowWithTheFocus) {
  for (const char* name : {"a", "b", "c"}) lst.AddRow(name);
  EXPECT_EQ(lst.SelectedItem(), 0);
  lst.SetSelected(2, false);
  EXPECT_EQ(lst.SelectedItem(), 0) << "selecting brings the focus, taking away doesn't";
  lst.SetSelected(3, true);
  lst.SetSelected(1, true);
  EXPECT_EQ(lst.SelectedItem(), 1);
  lst.SetSelected(3, true);  // it was selected already
  EXPECT_EQ(lst.SelectedItem(), 3);
  lst.SetSelected(1, false);
  lst.SetSelected(3, false);
  EXPECT_EQ(lst.SelectedItem(), 3);
  lst.GiveFocus(2);
  EXPECT_EQ(lst.SelectedItem(), 2);
  EXPECT_FALSE(lst.Selected(2));
  EXPECT_THROW(lst.GiveFocus(4), Failure);
}

TEST_F(ListRows, TheSelectedItemStaysTheSameRowWhenRowsMove) {
  for (const char* name : {"d", "b", "e", "a", "c"}) lst.AddRow(name);
  lst.SetSelected(3, true);
  lst.SetSorted(true);
  EXPECT_EQ(lst.SelectedItem(), 5);
  lst.RemoveRow(2);
  EXPECT_EQ(lst.SelectedItem(), 4);
  lst.AddRow("f");
  lst.RemoveRow(5);
  EXPECT_EQ(lst.SelectedItem(), 4);
  lst.RemoveRows(std::vector<std::int32_t>{1, 3});
  EXPECT_EQ(lst.Cell(lst.SelectedItem(), 0), "e");
}

TEST_F(ListRows, NoRowIsTheSelectedItemOnceItIsGone) {
  const auto selectThird = [this] {
    lst.Clear();
    for (const char* name : {"a", "b", "c", "d"}) {
      lst.AddRow(name);
      lst.SetSelected(lst.Count(), true);
    }
    lst.SetSelected(3, true);
  };
  selectThird();
  lst.RemoveRow(3);
  EXPECT_EQ(lst.SelectedItem(), 0);
  selectThird();
  lst.RemoveRows(std::vector<std::int32_t>{1, 3});
  EXPECT_EQ(lst.SelectedItem(), 0);
  selectThird();
  lst.Clear();
  lst.AddRow("a");
  EXPECT_EQ(lst.SelectedItem(), 0);
}

}  // namespace
}  // namespace tresmor
