#include "controls/combo_box.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using What = Notice::What;
using When = Notice::When;

class ComboBoxTest : public testing::Test {
 protected:
  ComboBoxTest() {
    for (const char* entry : {"a", "b", "c"}) combo.AddItem(entry);
    combo.OnClick = [this] { clicks.push_back(combo.ListIndex()); };
  }

  std::vector<std::string> Entries() const {
    std::vector<std::string> entries;
    for (std::int32_t i = 0; i < combo.ListCount(); ++i) entries.push_back(combo.List(i));
    return entries;
  }
  void ListenAfter() {
    combo.Listen([this](const Notice& notice) {
      if (notice.when == When::After) heard.emplace_back(notice.what, notice.first);
    });
  }
  static void ExpectSubscript(const std::function<void()>& action) {
    EXPECT_EQ(tests::FailureOf(action), Errors::Subscript);
  }

  ComboBox combo{"typed"};
  std::vector<std::int32_t> clicks;
  std::vector<std::pair<What, std::int32_t>> heard;
};

TEST_F(ComboBoxTest, StartsWithItsTextAndNoChoice) {
  EXPECT_EQ(combo.Text(), "typed");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(ComboBox().ListCount(), 0);
}

TEST_F(ComboBoxTest, KeepsEntriesInOrder) {
  combo.SetList(1, "B");
  combo.AddItem("d");
  EXPECT_THAT(Entries(), ElementsAre("a", "B", "c", "d"));
  combo.RemoveItem(0);
  EXPECT_THAT(Entries(), ElementsAre("B", "c", "d"));
}

TEST_F(ComboBoxTest, AChoiceSetsTheTextAndClicksEveryTime) {
  combo.SetListIndex(1);
  EXPECT_EQ(combo.Text(), "b");
  combo.SetListIndex(1);
  combo.SetListIndex(-1);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_THAT(clicks, ElementsAre(1, 1, -1));
}

TEST_F(ComboBoxTest, ATypedTextIsNoChoiceAndNoClick) {
  combo.SetListIndex(1);
  clicks.clear();
  combo.SetText("c");
  EXPECT_EQ(combo.Text(), "c");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(ComboBoxTest, TheChoiceFollowsItsEntry) {
  combo.SetListIndex(1);
  combo.RemoveItem(2);
  EXPECT_EQ(combo.ListIndex(), 1);
  combo.RemoveItem(0);
  EXPECT_EQ(combo.ListIndex(), 0);
  combo.RemoveItem(0);
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.Text(), "b");
}

TEST_F(ComboBoxTest, TellsOfEveryChange) {
  ListenAfter();
  combo.AddItem("d");
  combo.SetList(0, "A");
  combo.SetList(0, "A");
  combo.SetListIndex(3);
  combo.SetText("d");
  combo.RemoveItem(2);
  combo.BackColor = kDesktopGround;
  EXPECT_THAT(heard, ElementsAre(std::pair(What::RowsAdded, 3), std::pair(What::Item, 0), std::pair(What::ListIndex, 3),
                                 std::pair(What::Text, 0), std::pair(What::ListIndex, -1),
                                 std::pair(What::RowsRemoved, 2), std::pair(What::BackColor, 0)));
}

TEST_F(ComboBoxTest, PositionsWithoutAnEntryFail) {
  for (const std::int32_t index : {-1, 3}) {
    ExpectSubscript([&] { combo.List(index); });
    ExpectSubscript([&] { combo.SetList(index, "x"); });
    ExpectSubscript([&] { combo.RemoveItem(index); });
  }
  ExpectSubscript([&] { combo.SetListIndex(3); });
  ExpectSubscript([&] { combo.SetListIndex(-2); });
  EXPECT_EQ(combo.Text(), "typed");
  EXPECT_THAT(clicks, IsEmpty());
}

}  // namespace
}  // namespace tresmor
