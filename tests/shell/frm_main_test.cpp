// The main window as it comes up, and its timer for the status line.
#include "shell/frm_main.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"
#include "results/rows.h"

namespace tresmor {
namespace {

class FrmMainTest : public testing::Test {
 protected:
  FrmMainTest() { BindTimer(frm.tmrUpdate, events); }

  void AddSelected(std::int64_t size) {
    Finding finding;
    finding.name = "x";
    finding.size = size;
    ListView& zero = frm.results.List(ResultList::ZeroSize);
    AddResultItem(zero, finding);
    zero.SetSelected(zero.Count(), true);
  }

  tests::ScriptedEventQueue events;
  FrmMain frm;
};

TEST_F(FrmMainTest, OffersTheTypesOfASearchWithThreeTicked) {
  std::vector<std::string> types;
  for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) {
    types.push_back(frm.lstSrchType.Text(i) + (frm.lstSrchType.Ticked(i) ? " +" : ""));
  }
  EXPECT_EQ(types, (std::vector<std::string>{"Zero Size +", "Duplicates +", "Same File Name +", "Portions"}));
}

TEST_F(FrmMainTest, ControlsStandWhereTheyWereDrawn) {
  const std::vector<std::pair<const PlacedControl*, Place>> drawn = {
      {&frm.frmSelPath, {120, 0, 6615, 3135}},    {&frm.TabPath, {120, 240, 6615, 1215}},
      {&frm.lstPath, {1200, 1560, 5295, 1455}},   {&frm.cmdAdd, {120, 1560, 975, 375}},
      {&frm.cmdRemove, {120, 2040, 975, 375}},    {&frm.fraSrch, {6960, 0, 2775, 3255}},
      {&frm.fraSrchOpt, {0, 0, 2655, 2600}},      {&frm.results.tabMain, {120, 3360, 6015, 975}},
      {&frm.frmFileOp, {6960, 3360, 2175, 3975}}, {&frm.StatusBar1, {0, 7272, 10140, 252}}};
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    const auto& [control, place] = drawn[i];
    EXPECT_EQ((Place{control->Left(), control->Top(), control->Width(), control->Height()}), place) << i;
  }
}

TEST_F(FrmMainTest, SearchingHasTheTopicOfItsMenuItemsAndItsOptionsTheirOwn) {
  EXPECT_EQ(frm.fraSrch.HelpContextID, 118);
  EXPECT_EQ(frm.cmdSrch.HelpContextID, frm.mnuSrch.HelpContextID);
  EXPECT_EQ(frm.cmdNewSrch.HelpContextID, frm.mnuNewSrch.HelpContextID);
}

TEST_F(FrmMainTest, OffersVersionsButShowsNoneAtFirst) {
  EXPECT_EQ(frm.chkVer.Caption(), "Show File Version");
  EXPECT_FALSE(frm.chkVer.Ticked());
}

TEST_F(FrmMainTest, TabsTellOfNoRowsAtOnce) {
  std::vector<std::string> captions;
  for (std::int32_t tab = 1; tab <= frm.results.tabMain.Count(); ++tab) {
    captions.push_back(frm.results.tabMain.Caption(tab));
  }
  EXPECT_EQ(captions, (std::vector<std::string>{"Zero Size(0)", "Duplicates(0/0)", "Same Name(0/0)", "Portions(0/0)",
                                                "Report - read errors(0)"}));
}

TEST_F(FrmMainTest, ANewSearchEmptiesTheCriteriaAndLeavesTheOptions) {
  const std::vector<CheckBox*> options = {&frm.chkSubDir,   &frm.chkHidden, &frm.chkProtectWinDir,
                                          &frm.chkTolerant, &frm.chkVer,    &frm.preview.chkPreview};
  std::vector<std::int16_t> turned;
  for (CheckBox* const option : options) {
    option->Value = option->Ticked() ? kOff : kTicked;
    turned.push_back(option->Value());
  }
  AddIncludedRow(frm.lstPath, {"/data/*.*", "Yes", "", "", "", "Yes"});
  frm.txtMinSz.Text = "1";
  frm.txtMaxSz.Text = "2";
  frm.chkExclude.Value = kTicked;
  frm.cmbSrchArea.Choose(1);
  frm.cmbDate.Choose(3);
  for (std::int32_t i = 0; i < 4; ++i) frm.lstSrchType.SetTicked(i, i == 3);
  frm.msgBar.Text = "old";
  Init(frm);
  EXPECT_EQ(frm.lstPath.Count(), 0);
  EXPECT_EQ(frm.txtMinSz.Text() + frm.txtMaxSz.Text(), "");
  EXPECT_FALSE(frm.chkExclude.Ticked());
  EXPECT_EQ(frm.cmbSrchArea.ListIndex(), 0);
  EXPECT_EQ(frm.cmbDate.ListIndex(), 0);
  for (std::int32_t i = 0; i < 4; ++i) EXPECT_EQ(frm.lstSrchType.Ticked(i), i != 3);
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  for (std::size_t i = 0; i < options.size(); ++i) EXPECT_EQ(options[i]->Value(), turned[i]);
}

TEST_F(FrmMainTest, AFormWithoutAWindowKeepsItsHeight) {
  const float height = frm.Height();
  Init(frm);
  ShowResult(frm);
  EXPECT_EQ(frm.Height(), height);
}

TEST_F(FrmMainTest, TimerOfTheStatusRests) {
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
  EXPECT_EQ(frm.tmrUpdate.Interval(), 1000);
  EXPECT_TRUE(events.timers.empty());
}

TEST_F(FrmMainTest, OneTickTellsTheStatusAndStopsTheTimer) {
  frm.tmrUpdate.Enabled = true;
  ASSERT_EQ(events.timers.size(), 1U);
  EXPECT_EQ(events.timers.begin()->second.interval.count(), 1000);
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  events.Tick();
  EXPECT_EQ(frm.msgBar.Text(), "0 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 0 files.");
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
  EXPECT_TRUE(events.timers.empty());
}

TEST_F(FrmMainTest, TickCountsWhatIsMarkedAndSelectedByThen) {
  frm.tmrUpdate.Enabled = true;
  AddSelected(900);
  frm.results.List(ResultList::ZeroSize).SetChecked(1, true);
  events.Tick();
  EXPECT_EQ(frm.msgBar.Text(), "1 files (900 Bytes) marked, 1 files (900 Bytes) selected, out of 1 files.");
}

TEST_F(FrmMainTest, TickThatCannotCountLeavesThePanelAndStopsTheTimer) {
  AddSelected(2'000'000'000);
  AddSelected(2'000'000'000);
  frm.msgBar.Text = "old";
  frm.tmrUpdate.Enabled = true;
  events.Tick();
  EXPECT_EQ(frm.msgBar.Text(), "old");
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

}  // namespace
}  // namespace tresmor
