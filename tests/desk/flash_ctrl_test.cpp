#include "desk/flash_ctrl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/check_list.h"
#include "controls/combo_box.h"
#include "desk/scripted_event_queue.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

// A clock that goes by an eighth of a second with each look at the events.
class FlashTest : public testing::Test {
 protected:
  FlashTest() {
    events.onPump = [this] {
      events.seconds += 0.125;
      events.Wake();
    };
  }
  template <class Show>
  void Record(Control& control, Show show) {
    control.Listen([this, show](const Notice& notice) {
      if (notice.when == Notice::When::After) seen.push_back(show() + " at " + std::to_string(events.pumps));
    });
  }

  tests::ScriptedEventQueue events;
  std::vector<std::string> seen;
};

TEST_F(FlashTest, WaitsUntilMoreThanTheTimeHasPassed) {
  WaitSecs(events, 0.5);
  EXPECT_EQ(events.pumps, 5);
  WaitSecs(events, 0);
  EXPECT_EQ(events.pumps, 6);
}

TEST_F(FlashTest, AButtonsCaptionGoesAndComesTwice) {
  Button button("Add&>");
  Record(button, [&] { return "'" + button.Caption() + "'"; });
  FlashCtrl(button, events);
  EXPECT_THAT(seen, ElementsAre("'' at 0", "'Add&>' at 5", "'' at 10", "'Add&>' at 15"));
  EXPECT_EQ(events.pumps, 20);
}

TEST_F(FlashTest, ABoxFlashesByItsGround) {
  ComboBox combo;
  combo.BackColor = 0xC0FFEEU;
  Record(combo, [&] { return std::to_string(combo.BackColor()); });
  FlashCtrl(combo, events);
  const std::string away = std::to_string(0x80000001U);
  const std::string back = std::to_string(0xC0FFEEU);
  EXPECT_THAT(seen, ElementsAre(away + " at 0", back + " at 5", away + " at 10", back + " at 15"));

  CheckList list({"a"});
  FlashCtrl(list, events);
  EXPECT_EQ(list.BackColor(), kWindowGround);
  EXPECT_EQ(events.pumps, 40);
}

}  // namespace
}  // namespace tresmor
