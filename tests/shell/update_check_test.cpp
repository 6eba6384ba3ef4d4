#include "shell/update_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fake_shell.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DateStamp kNoon = 1000 * kOneDay + kOneDay / 2;

class ReminderTest : public testing::Test {
 protected:
  void ExpectQuestion(BoxAnswer answer) {
    dialogs.boxes.push_back(
        {"Tresmor can check its update periodically, and you haven't checked it for more than 45 days. \r\n\r\nDo you "
         "want to check if new version available online?",
         "Check new version", BoxIcon::Question, BoxButtons::YesNo, answer});
  }
  void Remind(DateStamp last) {
    options.LastUpdateChk = last;
    RemindOfUpdate(options, [this] { return now; }, shell, dialogs, {3, 1, 7});
  }

  Options options;
  DateStamp now = kNoon;
  FakeShell shell;
  ScriptedDialogs dialogs;
};

TEST(ChkUpdate, OpensThePageWithTheVersion) {
  const FakeShell shell;
  ChkUpdate(shell, {.Major = 10, .Minor = 0, .Revision = 123});
  EXPECT_THAT(shell.opened, ElementsAre("https://tresmor.example/ChkUpdate.asp?Major=10&Minor=0&Rev=123"));
}

TEST_F(ReminderTest, ComesAfter45Midnights) {
  const DateStamp day = 955 * kOneDay;
  Remind(day + kOneDay);  // 44
  Remind(day + kOneDay);
  for (const DateStamp last : {day, day + kOneDay - 1, kZeroDate}) {
    ExpectQuestion(BoxAnswer::No);
    Remind(last);
    EXPECT_EQ(options.LastUpdateChk, kNoon);
  }
  EXPECT_THAT(shell.opened, IsEmpty());
}

TEST_F(ReminderTest, AYesOpensThePageAndCountsAsANoDoes) {
  ExpectQuestion(BoxAnswer::Yes);
  Remind(kZeroDate);
  EXPECT_THAT(shell.opened, ElementsAre("https://tresmor.example/ChkUpdate.asp?Major=3&Minor=1&Rev=7"));
  EXPECT_EQ(options.LastUpdateChk, kNoon);
}

TEST_F(ReminderTest, WhenItIsAnsweredIsWhatCounts) {
  ExpectQuestion(BoxAnswer::No);
  dialogs.onBox = [this] { now += 2 * kOneDay; };  // the user is away
  Remind(kZeroDate);
  EXPECT_EQ(options.LastUpdateChk, kNoon + 2 * kOneDay);
}

TEST_F(ReminderTest, WithoutAQuestionTheDateStays) {
  for (const DateStamp last : {kNoon - 44 * kOneDay, kNoon, kNoon + 100 * kOneDay}) {
    Remind(last);
    EXPECT_EQ(options.LastUpdateChk, last);
  }
}

}  // namespace
}  // namespace tresmor
