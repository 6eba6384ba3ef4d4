// Scope rows as the user puts them together, drops them and takes them away.
#include "scope/scope_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desk/one_action.h"
#include "desk/scripted_event_queue.h"
#include "support/failure_of.h"
#include "support/fake_shell.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "text|sub-folder|min|max|date|target", and behind it which kind of row it is.
std::vector<std::string> Rows(const ListView& lst) {
  std::vector<std::string> rows;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    std::string text = lst.Cell(row, 0);
    for (std::int32_t item = 1; item <= lst.SubItems(row); ++item) text += "|" + lst.Cell(row, item);
    rows.push_back(text + (lst.SmallIcon(row) == ScopeRow::kExcluded ? " out" : " in"));
  }
  return rows;
}

class ScopePageTest : public testing::Test {
 protected:
  explicit ScopePageTest(PathStyle style = PathStyle::Posix()) : files(style) {
    AddPresets(scope.txtPath, presets.PathDizArr);
    AddPresets(scope.txtExt, presets.FileTypeDizArr);
    events.onPump = [this] {
      events.seconds += 0.25;
      events.Wake();
    };
    Follow(scope.txtPath, "txtPath");
    Follow(scope.txtExt, "txtExt");
    Follow(scope.txtMinSz, "txtMinSz");
    Follow(scope.txtMaxSz, "txtMaxSz");
    Follow(scope.txtDate, "txtDate");
    scope.txtExt.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::BackColor && notice.when == Notice::When::After) ++flashes;
    });
    files.MakeFolder("/data");
    files.MakeFolder("/other");
  }

  void Follow(Control& control, const std::string& name) {
    control.Listen([this, name](const Notice& notice) {
      if (notice.what == Notice::What::Focus) seen.push_back("focus " + name);
      if (notice.what == Notice::What::Selection) seen.push_back("all of " + name);
    });
  }
  void Add(const std::string& path) {
    scope.txtPath.SetText(path);
    scope.cmdAdd.OnClick();
  }
  void Exclude(const std::string& path) {
    scope.chkExclude.Value = kTicked;
    Add(path);
    scope.chkExclude.Value = kOff;
  }
  void Expect(const std::string& text, const std::string& title, BoxIcon icon = BoxIcon::Exclamation) {
    dialogs.boxes.push_back({.text = text, .title = title, .icon = icon});
  }
  Errors FailureOfAdding(const std::string& path) {
    return tests::FailureOf([&] { Add(path); });
  }
  void Choose(std::int32_t entry) { scope.cmbDate.Choose(entry); }
  void Leave(TextBox& size, const std::string& text) {
    size.Text = text;
    size.OnLostFocus();
  }

  MemoryFileSystem files;
  FakeShell shell;
  tests::ScriptedEventQueue events;
  ScriptedDialogs dialogs;
  OneAction action;
  Presets presets = BuildPresets(shell);
  ScopeControls scope;
  std::vector<std::string> seen;
  int flashes = 0;
  DateStamp now = *ParseStamp("2004/03/31 18:30:00");
  bool goesOn = true;
  ScopePage page{scope,
                 presets,
                 {.files = files,
                  .shell = shell,
                  .events = events,
                  .dialogs = dialogs,
                  .Act = [this](const std::function<void()>& act) { action.Run(act); },
                  .GuardedMsg =
                      [this](GuardedId id) {
                        seen.push_back(kGuardedMessages[id].Title);
                        return goesOn;
                      },
                  .Now = [this] { return now; }}};
};

class WindowsScopePageTest : public ScopePageTest {
 protected:
  WindowsScopePageTest() : ScopePageTest(PathStyle::Windows()) {
    shell.localDrive = "C:\\";
    for (const char* folder : {"C:\\Docs", "D:\\"}) files.MakeFolder(folder);
  }
};

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
  scope.lstPath.SetSelected(1, true);
  scope.lstPath.OnDblClick();
  EXPECT_EQ(scope.lstPath.Count(), 0);
}

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
