#include "desk/check_date.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

// An unexpected box fails the test, and so does one that doesn't come.
TEST(CheckDateText, LetsDatesAndNothingAtAllStand) {
  ScriptedDialogs dialogs;
  for (const char* text : {"", "2 Jul 2003", "2003-07-02 13:05"}) EXPECT_TRUE(CheckDateText(dialogs, text)) << text;
}

TEST(CheckDateText, TellsWhatIsNoDate) {
  for (const char* text : {" ", "soon", "31 Jun 2003"}) {
    ScriptedDialogs dialogs;
    dialogs.boxes = {{.text = "Please input a valid date. e.g. 2 Jul 2003", .title = "Invalid date"}};
    EXPECT_FALSE(CheckDateText(dialogs, text)) << text;
  }
}

}  // namespace
}  // namespace tresmor
