#include "desk/progress.h"

#include <gtest/gtest.h>

#include <thread>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"

namespace tresmor {
namespace {

using tests::ScriptedEventQueue;

class ProgressTest : public testing::Test {
 protected:
  ProgressTest() {
    BindTimer(tmrProgress, events);
    events.seconds = 500;
    progress.SrchStartTime = 500;
    progress.ProgressMsg = "Loading [value] of 200 files...";
    progress.pbItemsCnt = 200;
    tmrProgress.Enabled = true;
  }
  void TickAt(double seconds) {
    events.seconds = 500 + seconds;
    ASSERT_EQ(events.timers.size(), 1U);
    events.timers.begin()->second.tick();
  }

  ScriptedEventQueue events;
  Timer tmrProgress{1000};
  Panel msgBar;
  ProgressBar pbMain;
  Progress progress{events, tmrProgress, msgBar, pbMain};
};

TEST_F(ProgressTest, ShowsTemplateTagAndTime) {
  progress.SetTag(50);
  TickAt(3661.9);
  EXPECT_EQ(msgBar.Text(), "Loading 50 of 200 files... - 01:01:01 elapsed.");
  EXPECT_EQ(tmrProgress.Tag(), "50");
  EXPECT_EQ(pbMain.Value(), 25);
}

TEST_F(ProgressTest, ReplacesEachPlaceholderAndWrapsAfterADay) {
  progress.ProgressMsg = "[value]/[value]";
  tmrProgress.Tag = "7";
  TickAt(24 * 3600 + 5);
  EXPECT_EQ(msgBar.Text(), "7/7 - 00:00:05 elapsed.");
  EXPECT_EQ(pbMain.Value(), 3.5F);
}

TEST_F(ProgressTest, AnEmptyTagTakesThePlaceholderAwayAndLeavesTheBar) {
  pbMain.Value = 40;
  TickAt(1);
  EXPECT_EQ(msgBar.Text(), "Loading  of 200 files... - 00:00:01 elapsed.");
  EXPECT_EQ(pbMain.Value(), 40);
}

TEST_F(ProgressTest, ATagStaysUntilTheNextIsSet) {
  progress.SetTag(1);
  progress.SetTag(2);
  TickAt(1);
  TickAt(2);
  EXPECT_EQ(msgBar.Text(), "Loading 2 of 200 files... - 00:00:02 elapsed.");
}

TEST_F(ProgressTest, ClearTagTakesBackWhatWasSet) {
  progress.SetTag(0);
  TickAt(1);
  EXPECT_EQ(tmrProgress.Tag(), "0");
  progress.SetTag(2);
  progress.ClearTag();
  EXPECT_EQ(tmrProgress.Tag(), "");
  TickAt(2);
  EXPECT_EQ(tmrProgress.Tag(), "");
}

TEST_F(ProgressTest, PassesOverFailuresAndStillLooksForTheCancel) {
  pbMain.Value = 40;
  tmrProgress.Tag = "no number";
  TickAt(1);
  EXPECT_EQ(msgBar.Text(), "Loading no number of 200 files... - 00:00:01 elapsed.");
  progress.SetTag(201);
  TickAt(2);
  progress.pbItemsCnt = 0;
  TickAt(3);
  progress.SetTag(0);
  progress.CancelSrch = true;
  TickAt(4);
  EXPECT_EQ(pbMain.Value(), 40);
  EXPECT_EQ(msgBar.Text(), "Loading 0 of 200 files... - 00:00:04 elapsed.");
  EXPECT_FALSE(tmrProgress.Enabled());
  EXPECT_TRUE(events.timers.empty());
}

TEST_F(ProgressTest, TakesTagsFromAnyThread) {
  std::thread job([&] {
    for (int i = 0; i <= 100; ++i) progress.SetTag(i);
  });
  for (int i = 0; i < 50; ++i) TickAt(i);
  job.join();
  TickAt(60);
  EXPECT_EQ(tmrProgress.Tag(), "100");
  EXPECT_EQ(pbMain.Value(), 50);
}

TEST(BindTimer, RunsATimerExactlyWhileItIsEnabled) {
  ScriptedEventQueue events;
  int ticks = 0;
  {
    Timer timer(250);
    timer.OnTick = [&] { ++ticks; };
    BindTimer(timer, events);
    EXPECT_TRUE(events.timers.empty());
    timer.Enabled = true;
    ASSERT_EQ(events.timers.size(), 1U);
    EXPECT_EQ(events.timers.begin()->second.interval, std::chrono::milliseconds(250));
    events.timers.begin()->second.tick();
    EXPECT_EQ(ticks, 1);
    timer.Tag = "x";
    EXPECT_EQ(events.timers.size(), 1U);
    timer.Enabled = false;
    EXPECT_TRUE(events.timers.empty());
    timer.Enabled = true;
    EXPECT_EQ(events.timers.size(), 1U);
  }
  EXPECT_TRUE(events.timers.empty());
}

TEST(BindTimer, TakesUpATimerThatIsEnabledAlready) {
  ScriptedEventQueue events;
  Timer timer(1000);
  timer.Enabled = true;
  BindTimer(timer, events);
  EXPECT_EQ(events.timers.size(), 1U);
}

}  // namespace
}  // namespace tresmor
