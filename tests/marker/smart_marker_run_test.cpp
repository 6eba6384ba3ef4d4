// A run of Smart Marker from rule to rule: order, lists, history, failures.
#include <gmock/gmock.h>

#include <utility>

#include "base/failure.h"
#include "desk/history.h"
#include "marker/smart_marker_world.h"
#include "results/marks.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::SmartMarkerTest;

// A group rule leaves no group marked wholly and rewrites every one, so the order shows only on the way.
TEST_F(SmartMarkerTest, OneOfEachGroupIsKeptBeforeTheGroupRulesMarkAnew) {
  Add({"/d/old", 1, "2001/01/01 00:00:00"});
  Add({"/d/new", 1, "2002/01/01 00:00:00"});
  SetAllMarks(results, true);
  frm.lstDate.Choose(1);
  PumpAtEachMark();
  std::vector<std::string> seen;
  events.onPump = [&] { seen.push_back(Marks()); };
  EXPECT_TRUE(Run());
  EXPECT_THAT(seen, ElementsAre("x-", "-x"));
}

TEST_F(SmartMarkerTest, ARunWithNothingChosenKeepsOneOfEachGroupAndSorts) {
  Add({"/d/1", 2, "2001/01/01 00:00:00"});
  Add({"/d/2", 1, "2001/01/01 00:00:00"});
  Add({"/d/3", 2, "2002/01/01 00:00:00"});
  Add({"/d/4", 1, "2002/01/01 00:00:00"});
  duplicates.SetChecked(1, true);
  duplicates.SetChecked(3, true);
  duplicates.SetChecked(4, true);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "4 1 ");
  EXPECT_EQ(duplicates.Cell(1, kNameItem), "2");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(duplicates.Count(), 4);
}

TEST_F(SmartMarkerTest, WorksOnTheListOnShowAlone) {
  Add(ResultList::ZeroSize, {"/d/a", -1});
  Add({"/d/a"});
  frm.cmbPattern.SetText("*");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_TRUE(duplicates.Checked(1));
  EXPECT_FALSE(results.List(ResultList::ZeroSize).Checked(1));
}

TEST_F(SmartMarkerTest, KeepsToItsListWhenAnotherComesUpBetweenRules) {
  results.tabMain.Select(3);
  ListView& sameName = results.List(ResultList::SameName);
  const std::vector<std::pair<std::string, std::int64_t>> files = {
      {"2001/01/01 00:00:00", 30}, {"2002/01/01 00:00:00", 10}, {"2003/01/01 00:00:00", 20}};
  for (const auto& [date, size] : files) {
    Add(ResultList::SameName, {"/d/a", -1, date, size});
    Add({"/d/a", 1, date, size});
  }
  SetAllMarks(results, true);
  frm.lstDate.Choose(1);
  frm.lstSize.Choose(1);
  PumpAtEachMark();
  std::vector<std::string> seen;
  events.onPump = [&] {
    results.tabMain.Select(2);
    seen.push_back(Marks(sameName));
  };
  EXPECT_TRUE(Run());
  EXPECT_THAT(seen, ElementsAre("xx-", "-xx", "x-x"));
  EXPECT_EQ(Marks(duplicates), "---");
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
  EXPECT_EQ(sameName.Column(1).text, "^ Name");
}

TEST_F(SmartMarkerTest, KeepsToItsListWhenAnotherComesUpDuringTheWarning) {
  Add(ResultList::ZeroSize, {"/d/a", -1});
  Add({"/d/a"});
  AddFolder("/d/");
  frm.cmbPattern.SetText("*");
  KeepNone();
  duringWarning = [this] {
    EXPECT_EQ(Marks(duplicates), "-");  // it comes before anything is marked
    results.tabMain.Select(1);
  };
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(duplicates), "x");
  EXPECT_EQ(Marks(results.List(ResultList::ZeroSize)), "-");
}

TEST_F(SmartMarkerTest, KeepsThePatternAndAsksForARecountAtTheEnd) {
  Add({"/d/a"});
  EXPECT_TRUE(RunPattern("*.x; y"));
  EXPECT_THAT(Kept(2), ElementsAre("*.x; y", "-"));
  EXPECT_TRUE(tmrUpdate.Enabled());
  EXPECT_TRUE(RunPattern(""));
  EXPECT_THAT(Kept(3), ElementsAre("", "*.x; y", "-"));
  EXPECT_THAT(PatternList(), ElementsAre("", "*.x; y"));
}

TEST_F(SmartMarkerTest, TheHistoryEndsAtTheSeparatorAndHoldsFourPatterns) {
  AddPresets(frm.cmbPattern, presets.FileTypeDizArr);
  for (const char* pattern : {"1", "2", "3", "4", "5"}) EXPECT_TRUE(RunPattern(pattern));
  EXPECT_THAT(Kept(6), ElementsAre("5", "4", "3", "2", "-", "-"));
  EXPECT_THAT(PatternList(), ElementsAre("5", "4", "3", "2", kSeparator, "Photos / Images", "Music / Songs",
                                         "Movie Clips", "Downloads", "All Files"));
  EXPECT_TRUE(RunPattern("3"));
  EXPECT_THAT(Kept(5), ElementsAre("3", "5", "4", "2", "-"));
}

TEST_F(SmartMarkerTest, AHistoryThatCannotBeKeptFailsTheRunButLeavesTheMarks) {
  Add({"/d/a"});
  KeepNone();
  settings.Fail(Errors::PermissionDenied, "PatternHistory");
  EXPECT_THROW(RunPattern("a"), Failure);
  EXPECT_EQ(Marks(), "x");
  EXPECT_FALSE(tmrUpdate.Enabled());
}

TEST_F(SmartMarkerTest, AnEmptyListMarksNothingAndClosesTheDialog) {
  AddFolder("/d/");
  frm.cmbPattern.SetText("*");
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
}

TEST_F(SmartMarkerTest, TooManyMarksOfOneGroupFail) {
  results.tabMain.Select(1);
  for (int i = 0; i < 32'768; ++i) Add(ResultList::ZeroSize, {"/d/a", -1});
  frm.cmbPattern.SetText("a");
  try {
    Run();
    FAIL() << "row 32768 was counted";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), Errors::Overflow);
  }
  EXPECT_THAT(settings.saved, IsEmpty());
}

}  // namespace
}  // namespace tresmor
