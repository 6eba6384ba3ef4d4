// The rows of the scope: what adds and removes them.
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

TEST_F(ScopePageTest, MakesARowOfTheFields) {
  scope.chkSubDir.Value = kOff;
  scope.txtExt.SetText("*.jpg;*.gif");
  scope.txtMinSz.Text = "1.5";
  scope.txtMaxSz.Text = "20";
  scope.txtDate.Text = "2 Jul 2003";
  scope.cmbSrchArea.Choose(1);
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.jpg;*.gif|No|1.5|20|2003-07-02|No in"));
}

TEST_F(ScopePageTest, MakesARowOfTheFirstFields) {
  Add("/data/");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.*|Yes||||Yes in"));
}

TEST_F(ScopePageTest, ADateKeepsItsTimeOfDay) {
  scope.txtDate.Text = "2 Jul 2003 18:05";
  Add("/data");
  EXPECT_EQ(scope.lstPath.Cell(1, kSinceItem), "2003-07-02 18:05:00");
}

TEST_F(ScopePageTest, AnExcludedRowHasNothingButItsFolder) {
  scope.txtMinSz.Text = "11";
  scope.txtMaxSz.Text = "10";
  scope.txtDate.Text = "no date";
  Exclude("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/|Yes out"));
}

TEST_F(ScopePageTest, AnExcludedRowNeedsNoFileType) {
  scope.txtExt.SetText("");
  Exclude("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/|Yes out"));
}

TEST_F(ScopePageTest, WithoutAFileTypeNothingIsAdded) {
  scope.txtExt.SetText("");
  scope.TabPath.Select(kDateTab);
  seen.clear();
  scope.txtExt.Listen([this](const Notice& notice) {
    if (notice.what != Notice::What::BackColor) return;
    EXPECT_EQ(scope.TabPath.SelectedTab(), kPathTab) << "it flashes where it can't be seen";
  });
  Expect("Please input file type.", "");
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
  EXPECT_EQ(flashes, 4);
  EXPECT_THAT(seen, ElementsAre("focus txtExt"));
  EXPECT_EQ(scope.TabPath.SelectedTab(), kPathTab);
}

TEST_F(ScopePageTest, BlanksAreAFileType) {
  scope.txtExt.SetText("  ");
  Add("/data");
  EXPECT_EQ(scope.lstPath.Cell(1, kScopeTextItem), "/data/  ");
}

TEST_F(ScopePageTest, AFolderThatIsMissingIsTold) {
  Expect("Path '/data/none' does not exist and is not added.", "Path not exist");
  Add("/data/none");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
  EXPECT_THAT(seen, ElementsAre("focus txtPath"));
  EXPECT_EQ(scope.txtPath.Text(), "/data/none");
  EXPECT_EQ(scope.txtPath.ListCount(), 4);
}

TEST_F(ScopePageTest, AFileIsNoFolder) {
  files.MakeFile("/data/file", "x");
  Expect("Path '/data/file' does not exist and is not added.", "Path not exist");
  Add("/data/file");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
}

TEST_F(ScopePageTest, NoPathMeansTheRoot) {
  Add("");
  EXPECT_EQ(scope.lstPath.Cell(1, kScopeTextItem), "/*.*");
}

TEST_F(ScopePageTest, TheSameRowIsNotAddedAgain) {
  Add("/data");
  const std::int32_t entries = scope.txtPath.ListCount();
  scope.txtMinSz.Text = "11";
  scope.txtMaxSz.Text = "10";  // which nobody looks at any more
  Add("/data");
  Add("/data/");
  EXPECT_EQ(scope.lstPath.Count(), 1);
  EXPECT_EQ(scope.txtPath.ListCount(), entries);
  EXPECT_THAT(seen, IsEmpty());
}

TEST_F(ScopePageTest, OtherPatternsMakeAnotherRow) {
  Add("/data");
  scope.txtExt.SetText("*.jpg");
  Add("/data");
  EXPECT_EQ(scope.lstPath.Count(), 2);
}

TEST_F(WindowsScopePageTest, TheSameRowIsNotAddedAgain) {
  Add("C:\\Docs");
  Add("C:\\Docs\\");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("C:\\Docs\\*.*|Yes||||Yes in"));
}

// Also where the file system takes both for one.
TEST_F(WindowsScopePageTest, CaseTellsRowsApart) {
  Add("C:\\Docs");
  Add("c:\\docs");
  scope.txtExt.SetText("*.JPG");
  Add("C:\\Docs");
  scope.txtExt.SetText("*.jpg");
  Add("C:\\Docs");
  EXPECT_EQ(scope.lstPath.Count(), 4);
}

TEST_F(ScopePageTest, CaseTellsRowsApart) {
  files.MakeFolder("/Data");
  Add("/data");
  Add("/Data");
  EXPECT_EQ(scope.lstPath.Count(), 2);
}

TEST_F(ScopePageTest, AnExcludedRowBlocksOnlyItsLike) {
  Exclude("/data");
  Exclude("/data/");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/|Yes out"));
  Add("/data");
  Exclude("/other");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/|Yes out", "/data/*.*|Yes||||Yes in", "/other/|Yes out"));
}

TEST_F(ScopePageTest, AnIncludedRowBlocksAllThatHasItsText) {
  Add("/data");
  Exclude("/data");
  EXPECT_EQ(scope.lstPath.Count(), 1);
  scope.txtExt.SetText("*.jpg");
  Exclude("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.*|Yes||||Yes in", "/data/|Yes out"));
}

TEST_F(ScopePageTest, AMinimumAloneIsEnough) {
  scope.txtMinSz.Text = "5";
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.*|Yes|5|||Yes in"));
}

TEST_F(ScopePageTest, EqualSizesPass) {
  scope.txtMinSz.Text = "10";
  scope.txtMaxSz.Text = "10";
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.*|Yes|10|10||Yes in"));
}

TEST_F(ScopePageTest, AMaximumBelowTheMinimumIsToldAsTyped) {
  scope.txtMinSz.Text = "11";
  scope.txtMaxSz.Text = " 9.6";
  Expect("Max File Size( 9.6) must be greater than Min File Size(11).", "Wrong Size");
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
  EXPECT_EQ(scope.txtPath.ListCount(), 4);
}

TEST_F(ScopePageTest, SizesThatAreNoneFail) {
  scope.txtMaxSz.Text = "many";
  scope.txtMinSz.Text = "1";
  EXPECT_EQ(FailureOfAdding("/data"), Errors::TypeMismatch);
  scope.txtMaxSz.Text = "1e9";
  scope.txtMinSz.Text = "";  // only two are compared
  EXPECT_EQ(FailureOfAdding("/data"), Errors::None);
}

TEST_F(ScopePageTest, WhatIsNoDateIsTold) {
  scope.txtDate.Text = "2003-02-30";
  Expect("Please input a valid date. e.g. 2 Jul 2003", "Invalid date", BoxIcon::Critical);
  Add("/data");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
  EXPECT_THAT(seen, ElementsAre("focus txtDate"));
  EXPECT_EQ(scope.TabPath.SelectedTab(), kDateTab);
}

TEST_F(ScopePageTest, AWholeDiskIsWarnedOfButAdded) {
  for (const bool answer : {true, false}) {
    goesOn = answer;
    scope.lstPath.Clear();
    seen.clear();
    Add("/");
    EXPECT_THAT(seen, ElementsAre("Personal data"));
    EXPECT_EQ(scope.lstPath.Count(), 1);
  }
}

TEST_F(WindowsScopePageTest, OnlyTheRootOfAFixedDiskIsWarnedOf) {
  Add("D:\\");
  Add("C:\\Docs");
  Exclude("C:\\");
  EXPECT_THAT(seen, IsEmpty());
  Add("C:");
  EXPECT_THAT(seen, ElementsAre("Personal data"));
  EXPECT_EQ(scope.lstPath.Cell(4, kScopeTextItem), "C:\\*.*");
}

TEST_F(ScopePageTest, AddingRemembersPathAndPatterns) {
  scope.txtExt.SetText("*.jpg");
  Add("/data");
  Exclude("/other");
  EXPECT_EQ(scope.txtPath.List(0), "/other");
  EXPECT_EQ(scope.txtPath.List(1), "/data");
  EXPECT_EQ(scope.txtPath.List(2), kSeparator);
  EXPECT_EQ(scope.txtExt.List(0), "*.jpg");
  EXPECT_EQ(scope.txtExt.List(1), kSeparator);
}

TEST_F(ScopePageTest, TheFieldsKeepTheirContents) {
  scope.txtMinSz.Text = "1";
  scope.txtDate.Text = "2003-07-02";
  Exclude("/other");
  scope.chkExclude.Value = kTicked;
  Add("/data");
  EXPECT_EQ(scope.txtPath.Text(), "/data");
  EXPECT_EQ(scope.txtExt.Text(), "*.*");
  EXPECT_EQ(scope.txtMinSz.Text(), "1");
  EXPECT_EQ(scope.txtDate.Text(), "2003-07-02");
  EXPECT_TRUE(scope.chkExclude.Ticked());
}

TEST_F(ScopePageTest, Row32768Fails) {
  for (int i = 0; i < 32'766; ++i) AddExcludedRow(scope.lstPath, "/x/");
  Add("/data");
  EXPECT_EQ(scope.lstPath.Count(), 32'767);
  EXPECT_EQ(FailureOfAdding("/other"), Errors::Overflow);
  EXPECT_EQ(scope.lstPath.Count(), 32'767);
  Add("/data");  // which is found before the counter is used up
  EXPECT_EQ(scope.lstPath.Count(), 32'767);
}

TEST_F(ScopePageTest, RemovesTheSelectedRow) {
  Add("/data");
  Add("/other");
  scope.cmdRemove.OnClick();
  EXPECT_EQ(scope.lstPath.Count(), 2);
  scope.lstPath.SetSelected(1, true);
  scope.cmdRemove.OnClick();
  EXPECT_EQ(scope.lstPath.Cell(1, kScopeTextItem), "/other/*.*");
  scope.lstPath.OnDblClick();
  EXPECT_EQ(scope.lstPath.Count(), 1);
  scope.lstPath.GiveFocus(1);
  scope.lstPath.OnDblClick();
  EXPECT_EQ(scope.lstPath.Count(), 1) << "the focus alone selects none";
  scope.lstPath.SetSelected(1, true);
  scope.lstPath.OnDblClick();
  EXPECT_EQ(scope.lstPath.Count(), 0);
}

TEST_F(ScopePageTest, DroppedFoldersAreAdded) {
  files.MakeFile("/data/file", "x");
  Expect("Path '/data/file' does not exist and is not added.", "Path not exist");
  scope.lstPath.OnDrop({"/data", "/data/file", "/data", "/other"});
  EXPECT_THAT(Rows(scope.lstPath), ElementsAre("/data/*.*|Yes||||Yes in", "/other/*.*|Yes||||Yes in"));
  EXPECT_EQ(scope.txtPath.Text(), "/other");
  EXPECT_EQ(scope.txtPath.List(1), "/data");
}

TEST_F(ScopePageTest, WhatKeepsAllDroppedFoldersOutIsToldOnce) {
  scope.txtExt.SetText("");
  Expect("Please input file type.", "");
  scope.lstPath.OnDrop({"/data", "/other"});
  scope.txtExt.SetText("*.*");
  scope.txtDate.Text = "no date";
  Expect("Please input a valid date. e.g. 2 Jul 2003", "Invalid date", BoxIcon::Critical);
  scope.lstPath.OnDrop({"/data", "/other"});
  EXPECT_EQ(scope.txtPath.Text(), "/data");
  EXPECT_THAT(Rows(scope.lstPath), IsEmpty());
}

// Tabs, presets and dates are there to choose while a long action runs; all else waits.
TEST_F(ScopePageTest, ActionsAreDroppedWhileAnotherRuns) {
  Add("/data");
  scope.lstPath.SetSelected(1, true);
  scope.txtPath.SetText("/other");
  scope.txtMinSz.Text = "many";
  action.Run([&] {
    scope.cmdAdd.OnClick();
    scope.cmdRemove.OnClick();
    scope.lstPath.OnDblClick();
    scope.lstPath.OnDrop({"/other"});
    scope.cmdBrowseFolder.OnClick();
    scope.txtMinSz.OnLostFocus();
    EXPECT_EQ(scope.lstPath.Count(), 1);
    EXPECT_EQ(scope.txtPath.Text(), "/other");
    scope.TabPath.Select(2);
    scope.txtExt.SetListIndex(scope.txtExt.ListCount() - 1);
    Choose(1);
  });
  EXPECT_EQ(scope.CurPathTab, 1);
  EXPECT_EQ(scope.txtExt.Text(), "*.*");
  EXPECT_EQ(scope.txtDate.Text(), "2004-03-30");
}

}  // namespace
}  // namespace tresmor
