#include "controls/menu.h"

#include <gtest/gtest.h>

namespace tresmor {
namespace {

class MenuTest : public testing::Test {
 protected:
  MenuTest() {
    item.OnClick = [this] { ++clicks; };
  }

  MenuItem item{"&Item", "Ctrl+I"};
  MenuItem idle{"I&dle", "Ctrl+D"};
  Menu menu{"&Menu", {&item, nullptr, &idle}};
  int clicks = 0;
};

TEST_F(MenuTest, AShortcutChoosesItsItem) {
  menu.Shortcut(item);
  menu.Shortcut(idle);
  EXPECT_EQ(clicks, 1);
}

TEST_F(MenuTest, AShortcutWorksOutFirstWhatCanBeChosen) {
  menu.OnOpen = [this] { item.Enabled = false; };
  menu.Shortcut(item);
  EXPECT_EQ(clicks, 0);
  menu.OnOpen = [this] { item.Enabled = true; };
  menu.Shortcut(item);
  EXPECT_EQ(clicks, 1);
}

TEST_F(MenuTest, AMenuThatIsSwitchedOffTakesItsShortcutsAlong) {
  bool opened = false;
  menu.OnOpen = [&] { opened = true; };
  menu.Enabled = false;
  menu.Shortcut(item);
  EXPECT_EQ(clicks, 0);
  EXPECT_FALSE(opened);
}

}  // namespace
}  // namespace tresmor
