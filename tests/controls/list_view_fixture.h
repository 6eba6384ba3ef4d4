// A list of four columns with short ways to fill and read it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "controls/list_view.h"

namespace tresmor::tests {

class ListViewFixture : public testing::Test {
 protected:
  ListViewFixture() {
    lst.AddColumn({"Name", 2540, Alignment::Left});
    lst.AddColumn({"In Folder", 5292, Alignment::Left});
    lst.AddColumn({"Size", 1764, Alignment::Right});
    lst.AddColumn({"Other", 0, Alignment::Left});
  }

  static std::vector<std::string> Texts(const ListView& lst, std::int32_t subItem) {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) texts.push_back(lst.Cell(row, subItem));
    return texts;
  }

  static void SortBy(ListView& lst, std::int16_t subItem, std::int16_t order) {
    lst.SortKey = subItem;
    lst.SortOrder = order;
    lst.SetSorted(true);
  }

  // A row told by all that belongs to it.
  static void AddMarked(ListView& lst, const std::string& text, bool isLast = false) {
    const std::int32_t row = lst.AddRow(text);
    lst.SetCell(row, 1, "folder of " + text);
    lst.SetChecked(row, text.size() % 2 == 1);
    if (isLast) return;  // no tag, no colour: these columns end before the list does
    lst.SetCellTag(row, 3, "tag of " + text);
    lst.SetForeColor(row, static_cast<std::uint32_t>(text[0]));
  }

  static void ExpectMarked(const ListView& lst, std::int32_t row, const std::string& text, bool isLast = false) {
    EXPECT_EQ(lst.Cell(row, 0), text);
    EXPECT_EQ(lst.Cell(row, 1), "folder of " + text);
    EXPECT_EQ(lst.Checked(row), text.size() % 2 == 1);
    EXPECT_EQ(lst.CellTag(row, 3), isLast ? "" : "tag of " + text);
    EXPECT_EQ(lst.ForeColor(row), isLast ? kWindowText : static_cast<std::uint32_t>(text[0]));
  }

  static constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  static constexpr std::int64_t k2To59 = std::int64_t{1} << 59;  // too large for a cell

  ListView lst;
};

}  // namespace tresmor::tests
