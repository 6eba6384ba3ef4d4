// The fields of the scope page: presets, sizes, dates, tabs, folders.
#include "scope/scope_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "scope/scope_page_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ScopePageTest, PicksTheValueOfAPreset) {
  scope.txtExt.SetListIndex(1);
  EXPECT_EQ(scope.txtExt.Text(), "*.jpg;*.gif;*.bmp");
  scope.txtPath.SetListIndex(1);
  EXPECT_EQ(scope.txtPath.Text(), "/home/me/Documents");
  files.MakeFolder("/home/me/Documents");
  scope.cmdAdd.OnClick();
  EXPECT_EQ(scope.lstPath.Cell(1, kScopeTextItem), "/home/me/Documents/*.jpg;*.gif;*.bmp");
}

TEST_F(ScopePageTest, TheSeparatorIsNoEntry) {
  scope.txtExt.SetListIndex(0);
  EXPECT_EQ(scope.txtExt.Text(), "");
}

TEST_F(ScopePageTest, ASizeThatIsNoneIsToldOnLeaving) {
  for (TextBox* const size : {&scope.txtMinSz, &scope.txtMaxSz}) {
    const std::string name = size == &scope.txtMinSz ? "txtMinSz" : "txtMaxSz";
    for (const char* text : {"many", " ", "9999999999", "1 2"}) {
      scope.TabPath.Select(kScopeTab);
      seen.clear();
      Expect("Invalid file size.", "");
      Leave(*size, text);
      EXPECT_THAT(seen, ElementsAre("focus " + name));
      EXPECT_EQ(scope.TabPath.SelectedTab(), kFileSizeTab);
      EXPECT_EQ(size->Text(), text);
    }
    seen.clear();
    for (const char* text : {"", "0", "-1", "1.5", "+7", "2147483647"}) {
      Leave(*size, text);
      EXPECT_EQ(size->Text(), text);
    }
    EXPECT_THAT(seen, IsEmpty());
  }
}

TEST_F(ScopePageTest, DatesLieBeforeToday) {
  std::vector<std::string> dates;
  for (const std::int32_t entry : {1, 2, 3, 4, 0, 5}) {
    Choose(entry);
    dates.push_back(scope.txtDate.Text());
  }
  EXPECT_THAT(dates, ElementsAre("2004-03-30", "2004-03-24", "2004-02-29", "2003-03-31", "", "2004-03-31"));
}

TEST_F(ScopePageTest, ALeapDayOfLastYearIsItsFebruarysLast) {
  now = *ParseStamp("2004/02/29 00:00:00");
  Choose(4);
  EXPECT_EQ(scope.txtDate.Text(), "2003-02-28");
}

TEST_F(ScopePageTest, OnlySpecifiedDatesCanBeTyped) {
  EXPECT_FALSE(scope.txtDate.Enabled());
  for (std::int32_t entry = 0; entry < scope.cmbDate.ListCount(); ++entry) {
    Choose(entry);
    EXPECT_EQ(scope.txtDate.Enabled(), scope.cmbDate.List(entry) == "Specified");
  }
  Choose(2);
  EXPECT_FALSE(scope.txtDate.Enabled());
}

TEST_F(ScopePageTest, SpecifiedKeepsTheDateThatStands) {
  Choose(2);
  Choose(5);
  EXPECT_EQ(scope.txtDate.Text(), "2004-03-24");
  EXPECT_TRUE(scope.txtDate.Enabled());
}

TEST_F(ScopePageTest, AnyLeavesTheRowWithoutADate) {
  Choose(2);
  Choose(0);
  Add("/data");
  EXPECT_EQ(scope.lstPath.Cell(1, kSinceItem), "");
}

TEST_F(ScopePageTest, ADateIsThatOfTheDayWhenItWasChosen) {
  Choose(1);
  now += kOneDay;
  Add("/data");
  EXPECT_EQ(scope.lstPath.Cell(1, kSinceItem), "2004-03-30");
  Choose(1);
  EXPECT_EQ(scope.txtDate.Text(), "2004-03-31");
}

TEST_F(ScopePageTest, TheDateIsSelectedWholeOnFocus) {
  scope.txtDate.OnGotFocus();
  EXPECT_THAT(seen, ElementsAre("all of txtDate"));
}

TEST_F(ScopePageTest, ATabBringsItsFrameOnShow) {
  const auto shown = [&] {
    std::string frames;
    for (const Frame& frame : scope.frmPath) frames += frame.Visible() ? 'x' : '-';
    return frames;
  };
  EXPECT_EQ(shown(), "x---");
  scope.TabPath.Select(3);
  EXPECT_EQ(shown(), "--x-");
  EXPECT_EQ(scope.CurPathTab, 2);
  scope.TabPath.Select(3);
  EXPECT_EQ(shown(), "--x-");
}

TEST_F(ScopePageTest, BrowsesFromThePathThatStands) {
  scope.txtPath.SetText("/data");
  dialogs.folders = {{"Select a folder", "/data", "/other"}};
  scope.cmdBrowseFolder.OnClick();
  EXPECT_EQ(scope.txtPath.Text(), "/other");
  dialogs.folders = {{"Select a folder", "/other", std::nullopt}};
  scope.cmdBrowseFolder.OnClick();
  EXPECT_EQ(scope.txtPath.Text(), "/other");
}

TEST_F(ScopePageTest, WithoutAPathItBrowsesFromTheHomeFolder) {
  dialogs.folders = {{"Select a folder", "/home/me", "/data"}};
  scope.cmdBrowseFolder.OnClick();
  EXPECT_EQ(scope.txtPath.Text(), "/data");
}

TEST(ScopeControls, StartWithTheirDesignValues) {
  const ScopeControls scope;
  EXPECT_EQ(scope.txtMinSz.MaxLength, 9);
  EXPECT_EQ(scope.txtMaxSz.MaxLength, 9);
  EXPECT_EQ(scope.txtMinSz.Text() + scope.txtMaxSz.Text() + scope.txtDate.Text(), "");
  EXPECT_TRUE(scope.chkSubDir.Ticked());
  EXPECT_FALSE(scope.chkExclude.Ticked());
  EXPECT_EQ(scope.cmbDate.ListIndex(), kAnyDate);
  EXPECT_EQ(scope.cmbSrchArea.ListIndex(), kSearchTargetEntry);
  std::vector<std::string> entries;
  for (std::int32_t entry = 0; entry < scope.cmbDate.ListCount(); ++entry) entries.push_back(scope.cmbDate.List(entry));
  EXPECT_THAT(entries, ElementsAre("Any", "Since last day", "Since last week", "Since last month", "Since last year",
                                   "Specified"));
  EXPECT_EQ(scope.cmbSrchArea.ListCount(), 2);
  EXPECT_EQ(scope.cmbSrchArea.List(kSearchTargetEntry), "Search Target");
  EXPECT_EQ(scope.cmbSrchArea.List(1), "Search Area");
  EXPECT_EQ(scope.frmSelPath.HelpContextID, 117);
}

TEST_F(ScopePageTest, ClearingPutsRowsAndCriteriaBack) {
  scope.chkSubDir.Value = kOff;
  scope.txtMinSz.Text = "1";
  scope.txtMaxSz.Text = "2";
  scope.cmbSrchArea.Choose(1);
  Choose(5);
  Exclude("/data");
  scope.chkExclude.Value = kTicked;
  ClearScope(scope);
  EXPECT_EQ(scope.lstPath.Count(), 0);
  EXPECT_EQ(scope.txtMinSz.Text() + scope.txtMaxSz.Text() + scope.txtDate.Text(), "");
  EXPECT_FALSE(scope.chkExclude.Ticked() || scope.txtDate.Enabled());
  EXPECT_EQ(scope.cmbDate.ListIndex(), kAnyDate);
  EXPECT_EQ(scope.cmbSrchArea.ListIndex(), kSearchTargetEntry);
  EXPECT_EQ(scope.txtPath.Text(), "/data");
  EXPECT_FALSE(scope.chkSubDir.Ticked());
}

}  // namespace
}  // namespace tresmor
