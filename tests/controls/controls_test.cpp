#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <thread>
#include <vector>

#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/choice_list.h"
#include "controls/frame.h"
#include "controls/option_button.h"
#include "controls/panel.h"
#include "controls/progress_bar.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

using What = Notice::What;
using When = Notice::When;
using tests::FailureOf;

TEST(Property, TellsBeforeAndAfterWithTheValueOfThatMoment) {
  Panel panel;
  panel.Text = "old";
  std::vector<std::pair<When, std::string>> heard;
  panel.Listen([&](const Notice& notice) {
    EXPECT_EQ(notice.what, What::Text);
    heard.emplace_back(notice.when, panel.Text());
  });
  panel.Text = "new";
  const std::vector<std::pair<When, std::string>> expected = {{When::Before, "old"}, {When::After, "new"}};
  EXPECT_EQ(heard, expected);
}

TEST(Property, TellsNobodyOfTheValueItHolds) {
  CheckBox box(true);
  int heard = 0;
  box.Listen([&](const Notice&) { ++heard; });
  box.Value = true;
  EXPECT_EQ(heard, 0);
  box.Value = false;
  EXPECT_EQ(heard, 2);
}

TEST(CheckBoxTest, IsOffTickedOrGrayed) {
  CheckBox box;
  EXPECT_EQ(box.Value(), kOff);
  EXPECT_EQ(CheckBox(true).Value(), kTicked);
  box.Value = kGrayed;
  EXPECT_FALSE(box.Ticked());
  box.Value = kTicked;
  EXPECT_TRUE(box.Ticked());
  for (const std::int16_t none : std::array<std::int16_t, 2>{-1, 3}) {
    EXPECT_EQ(FailureOf([&] { box.Value = none; }), Errors::Overflow);
  }
  EXPECT_TRUE(box.Ticked());
}

TEST(PlacedControl, TakesNoSizeBelowNothing) {
  Frame frame("", {0, 0, 100, 200});
  EXPECT_EQ(FailureOf([&] { frame.Width = -1; }), Errors::Overflow);
  EXPECT_EQ(FailureOf([&] { frame.Height = std::nanf(""); }), Errors::Overflow);
  EXPECT_EQ(frame.Width(), 100);
  EXPECT_EQ(frame.Height(), 200);
  frame.Width = 0;
  frame.Left = -50;
  EXPECT_EQ(frame.Width(), 0);
  EXPECT_EQ(frame.Left(), -50);
}

TEST(Control, AListenerMayAddAnotherWhileItIsCalled) {
  Panel panel;
  int late = 0;
  bool added = false;
  panel.Listen([&](const Notice&) {
    if (!std::exchange(added, true)) panel.Listen([&](const Notice&) { ++late; });
  });
  panel.Text = "new";
  EXPECT_EQ(panel.Text(), "new");
  EXPECT_EQ(late, 2);
}

TEST(Control, IsEnabledAndVisibleAtFirstButATimerRests) {
  const Panel panel;
  EXPECT_TRUE(panel.Enabled());
  EXPECT_TRUE(panel.Visible());
  const Timer timer(1000);
  EXPECT_FALSE(timer.Enabled());
  EXPECT_EQ(timer.Interval(), 1000);
  EXPECT_EQ(timer.Tag(), "");
}

#ifndef NDEBUG
TEST(ControlDeathTest, AssertsItsThread) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        Panel panel;
        std::thread([&] { panel.Text = "x"; }).join();
      },
      "thread");
}
#endif

TEST(ProgressBar, KeepsItsValueWhenANewOneIsOutOfRange) {
  ProgressBar bar;
  bar.Value = 100;
  EXPECT_EQ(FailureOf([&] { bar.Value = 100.5F; }), Errors::Overflow);
  EXPECT_EQ(FailureOf([&] { bar.Value = -1; }), Errors::Overflow);
  EXPECT_EQ(FailureOf([&] { bar.Value = std::nanf(""); }), Errors::Overflow);
  EXPECT_EQ(bar.Value(), 100);
  bar.Value = 0;
  EXPECT_EQ(bar.Value(), 0);
}

TEST(TabStrip, TellsOfASelectionByTheProgramButNotOfTheSelectedTab) {
  TabStrip tabs({"a", "b", "c"});
  std::vector<std::int32_t> selected;
  tabs.Listen([&](const Notice& notice) {
    if (notice.what == What::SelectedTab && notice.when == When::After) selected.push_back(tabs.SelectedTab());
  });
  tabs.Select(1);
  tabs.Select(3);
  tabs.Select(3);
  EXPECT_EQ(selected, std::vector<std::int32_t>{3});
  EXPECT_EQ(FailureOf([&] { tabs.Select(4); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { tabs.Select(0); }), Errors::Subscript);
  EXPECT_EQ(tabs.SelectedTab(), 3);
}

TEST(TabStrip, TellsWhichCaptionChanges) {
  TabStrip tabs({"a", "b"});
  std::vector<Notice> heard;
  tabs.Listen([&](const Notice& notice) { heard.push_back(notice); });
  tabs.SetCaption(2, "b");
  EXPECT_TRUE(heard.empty());
  tabs.SetCaption(2, "b(1)");
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_EQ(heard[1].what, What::Item);
  EXPECT_EQ(heard[1].first, 2);
  EXPECT_EQ(tabs.Caption(1), "a");
  EXPECT_EQ(tabs.Caption(2), "b(1)");
}

TEST(CheckList, CountsFromZeroAndTicksOneEntry) {
  CheckList list({"Zero Size", "Duplicates"});
  EXPECT_EQ(list.Count(), 2);
  EXPECT_FALSE(list.Ticked(0));
  std::vector<Notice> heard;
  list.Listen([&](const Notice& notice) { heard.push_back(notice); });
  list.SetTicked(1, true);
  list.SetTicked(1, true);
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_EQ(heard[0].when, When::Before);
  EXPECT_EQ(heard[1].first, 1);
  EXPECT_FALSE(list.Ticked(0));
  EXPECT_TRUE(list.Ticked(1));
  EXPECT_EQ(list.Text(1), "Duplicates");
  EXPECT_EQ(FailureOf([&] { list.SetTicked(2, true); }), Errors::Subscript);
  EXPECT_EQ(FailureOf([&] { (void)list.Ticked(-1); }), Errors::Subscript);
}

TEST(ChoiceList, TellsOfTheEntryThatIsChosen) {
  ChoiceList list({"none", "new", "old"}, 1);
  EXPECT_EQ(list.ListCount(), 3);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.List(2), "old");
  std::vector<std::pair<When, std::int32_t>> heard;
  list.Listen([&](const Notice& notice) {
    EXPECT_EQ(notice.what, What::Value);
    EXPECT_EQ(notice.first, 2);
    heard.emplace_back(notice.when, list.ListIndex());
  });
  list.Choose(1);
  EXPECT_TRUE(heard.empty());
  list.Choose(2);
  const std::vector<std::pair<When, std::int32_t>> expected = {{When::Before, 1}, {When::After, 2}};
  EXPECT_EQ(heard, expected);
}

TEST(ChoiceList, CallsAfterEveryChoice) {
  ChoiceList list({"none", "new", "old"});
  std::vector<std::int32_t> chosen;
  list.OnClick = [&] { chosen.push_back(list.ListIndex()); };
  list.Choose(2);
  list.Choose(2);
  EXPECT_EQ(FailureOf([&] { list.Choose(3); }), Errors::Subscript);
  EXPECT_EQ(chosen, (std::vector<std::int32_t>{2, 2}));
}

TEST(ChoiceList, FailsWhereNoEntryStands) {
  ChoiceList list({"none", "new"});
  for (const std::int32_t index : {-1, 2}) {
    EXPECT_EQ(FailureOf([&] { list.Choose(index); }), Errors::Subscript);
    EXPECT_EQ(FailureOf([&] { (void)list.List(index); }), Errors::Subscript);
  }
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(FailureOf([] { const ChoiceList none({}, 0); }), Errors::Subscript);
}

TEST(OptionButton, ChoosingOneClearsTheOthers) {
  OptionButton first("first", true);
  OptionButton second("second");
  OptionButton apart("apart", true);
  JoinOptions({&first, &second});
  second.Value = true;
  EXPECT_FALSE(first.Value());
  first.Value = true;
  EXPECT_FALSE(second.Value());
  first.Value = false;
  EXPECT_FALSE(second.Value());
  EXPECT_TRUE(apart.Value());
}

TEST(TextBox, AsksForTheKeyboard) {
  TextBox box;
  std::vector<What> heard;
  box.Listen([&](const Notice& notice) { heard.push_back(notice.what); });
  box.SetFocus();
  EXPECT_EQ(heard, std::vector<What>{What::Focus});
}

TEST(PlacedControl, StandsWhereItWasPut) {
  const Frame frame("caption", {1, 2, 3, 4});
  EXPECT_EQ(frame.Left(), 1);
  EXPECT_EQ(frame.Top(), 2);
  EXPECT_EQ(frame.Width(), 3);
  EXPECT_EQ(frame.Height(), 4);
  EXPECT_EQ(frame.Caption(), "caption");
}

}  // namespace
}  // namespace tresmor
