#include "desk/progress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "base/failure.h"
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
    events.Tick();
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

TEST_F(ProgressTest, ATagStaysUntilAHigherIsSet) {
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

TEST_F(ProgressTest, StartTagGoesBackToALowerFigureAtOnce) {
  progress.SetTag(90);
  TickAt(1);
  progress.StartTag(5);
  EXPECT_EQ(tmrProgress.Tag(), "5");
  TickAt(2);
  EXPECT_EQ(tmrProgress.Tag(), "5");
  progress.SetTag(6);
  TickAt(3);
  EXPECT_EQ(tmrProgress.Tag(), "6");
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
  progress.CancelSrch = true;
  TickAt(4);
  EXPECT_EQ(pbMain.Value(), 40);
  EXPECT_EQ(msgBar.Text(), "Loading 201 of 200 files... - 00:00:04 elapsed.");
  EXPECT_FALSE(tmrProgress.Enabled());
  EXPECT_TRUE(events.timers.empty());
}

// Fails on every change of one value of a control.
void FailOn(Control& control, Notice::What what) {
  control.Listen([what](const Notice& notice) {
    if (notice.what == what && notice.when == Notice::When::Before) throw Failure(Errors::Device);
  });
}

TEST_F(ProgressTest, AFailingTagLeavesTheOtherSteps) {
  tmrProgress.Tag = "7";
  progress.SetTag(50);
  FailOn(tmrProgress, Notice::What::Tag);
  progress.CancelSrch = true;
  TickAt(1);
  EXPECT_EQ(msgBar.Text(), "Loading 7 of 200 files... - 00:00:01 elapsed.");
  EXPECT_EQ(pbMain.Value(), 3.5F);
  EXPECT_FALSE(tmrProgress.Enabled());
}

TEST_F(ProgressTest, AFailingTextLeavesTheOtherSteps) {
  progress.SetTag(50);
  FailOn(msgBar, Notice::What::Text);
  progress.CancelSrch = true;
  TickAt(1);
  EXPECT_EQ(tmrProgress.Tag(), "50");
  EXPECT_EQ(pbMain.Value(), 25);
  EXPECT_FALSE(tmrProgress.Enabled());
}

TEST_F(ProgressTest, AFailingBarLeavesTheOtherSteps) {
  progress.SetTag(50);
  FailOn(pbMain, Notice::What::Value);
  progress.CancelSrch = true;
  TickAt(1);
  EXPECT_EQ(msgBar.Text(), "Loading 50 of 200 files... - 00:00:01 elapsed.");
  EXPECT_FALSE(tmrProgress.Enabled());
}

TEST_F(ProgressTest, AFailingStopIsPassedOverToo) {
  progress.SetTag(50);
  FailOn(tmrProgress, Notice::What::Enabled);
  progress.CancelSrch = true;
  EXPECT_NO_THROW(TickAt(1));
  EXPECT_EQ(pbMain.Value(), 25);
  EXPECT_TRUE(tmrProgress.Enabled());
}

TEST_F(ProgressTest, TheFigureOfAPhaseNeverFalls) {
  progress.SetTag(9);
  progress.SetTag(4);
  TickAt(1);
  EXPECT_EQ(tmrProgress.Tag(), "9");
  progress.SetTag(8);
  TickAt(2);
  EXPECT_EQ(tmrProgress.Tag(), "9");
}

TEST_F(ProgressTest, ANewTemplateOrAClearedTagBeginsAfresh) {
  progress.SetTag(90);
  TickAt(1);
  progress.ProgressMsg = "Next [value]";
  TickAt(2);
  EXPECT_EQ(msgBar.Text(), "Next 90 - 00:00:02 elapsed.");
  progress.SetTag(2);
  TickAt(3);
  EXPECT_EQ(msgBar.Text(), "Next 2 - 00:00:03 elapsed.");
  progress.ClearTag();
  progress.SetTag(1);
  TickAt(4);
  EXPECT_EQ(tmrProgress.Tag(), "1");
}

// In no order, as files of different sizes are finished, and while the figure is shown.
TEST_F(ProgressTest, TheHighestFigureOfAllThreadsWins) {
  std::vector<std::thread> job;
  for (unsigned seed = 0; seed < 4; ++seed) {
    job.emplace_back([this, seed] {
      std::vector<int> figures(201);
      std::iota(figures.begin(), figures.end(), 0);
      std::shuffle(figures.begin(), figures.end(), std::mt19937(seed));
      for (const int figure : figures) progress.SetTag(figure);
    });
  }
  int shown = 0;
  for (int i = 0; i < 50; ++i) {
    TickAt(i);
    const int now = tmrProgress.Tag().empty() ? 0 : std::stoi(tmrProgress.Tag());
    EXPECT_GE(now, shown);
    shown = now;
  }
  for (std::thread& thread : job) thread.join();
  TickAt(60);
  EXPECT_EQ(tmrProgress.Tag(), "200");
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
    events.Tick();
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

TEST(BindTimer, ATimerMayStopItselfByItsTick) {
  ScriptedEventQueue events;
  Timer timer(1000);
  int ticks = 0;
  timer.OnTick = [&] {
    timer.Enabled = false;
    ++ticks;
  };
  BindTimer(timer, events);
  timer.Enabled = true;
  events.Tick();
  events.Tick();
  EXPECT_EQ(ticks, 1);
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
