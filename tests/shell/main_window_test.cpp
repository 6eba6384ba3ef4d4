// The main window: its start and end, and what may run when.
#include "shell/main_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "desk/history.h"
#include "shell/layout.h"
#include "shell/main_window_world.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::MainWindowTest;

// --- The start

TEST_F(MainWindowTest, TheStartGoesStepByStep) {
  Keep(kPathHistory, "0", "/latest");
  LetDaysPass(45);
  ExpectReminder();
  const auto check = [&](const char* path) {
    EXPECT_EQ(frm.PrevPbParent, &frm);
    EXPECT_EQ(frm.Height(), 4365);  // what the panels need, in whole pixels
    EXPECT_GT(view.resizes, 0);
    EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
    EXPECT_GT(frm.txtExt.ListCount(), 0);
    EXPECT_EQ(frm.cmdSrch.ToolTipText(), "Start the search");
    EXPECT_EQ(frm.txtPath.Text(), path);
    EXPECT_FALSE(frm.Visible());
  };
  dialogs.onBox = [&] {
    check("/home/me");
    EXPECT_FALSE(window.frmTip.Visible());
  };
  int tips = 0;
  window.frmTip.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::Visible || notice.when != Notice::When::After) return;
    check("/latest");
    ++tips;
  });
  EXPECT_FALSE(frm.Visible());
  window.Load();
  EXPECT_EQ(tips, 1);
  EXPECT_TRUE(window.frmTip.Visible());
  EXPECT_TRUE(frm.Visible());
  EXPECT_TRUE(frm.StatusBar1.Visible());
}

TEST_F(MainWindowTest, FirstTextsAreTheLatestOfTheHistories) {
  Keep(kPathHistory, "0", "/latest");
  Keep(kPathHistory, "1", "/older");
  Keep(kExtHistory, "0", "*.txt");
  Load();
  EXPECT_EQ(frm.txtPath.Text(), "/latest");
  EXPECT_EQ(frm.txtExt.Text(), "*.txt");
}

TEST_F(MainWindowTest, WithoutHistoriesTheDesignTextsStay) {
  Load();
  EXPECT_EQ(frm.txtPath.Text(), "/home/me");
  EXPECT_EQ(frm.txtExt.Text(), "*.*");
}

TEST_F(MainWindowTest, ATipShowsIfItsSettingIsOneByThen) {
  const std::vector<std::pair<std::string, bool>> cases = {{"1", true}, {"0", false}, {"2", false}, {"yes", false}};
  LetDaysPass(45);
  for (const auto& [setting, shows] : cases) {
    ExpectReminder();
    dialogs.onBox = [&, value = setting] { Keep(kOptionsSection, "Show Tips at Startup", value.c_str()); };
    MainWindow next(Ports(), AllHooks());
    next.Load();
    EXPECT_EQ(next.frmTip.Visible(), shows) << setting;
  }
}

TEST_F(MainWindowTest, TheTipComesFromTheProgramsFolderAndGoesWithTheWindow) {
  files.MakeFile("/opt/tresmor/TIPOFDAY.TXT", "Only this.\n");
  window.Load();
  EXPECT_EQ(window.frmTip.lblTipText.Caption(), "Only this.");
  EXPECT_TRUE(frm.Visible());
  frm.mnuSuppForum.OnClick();  // the window can be used meanwhile
  EXPECT_THAT(shell.opened, SizeIs(1));
  EXPECT_TRUE(window.frmTip.Visible());
  EXPECT_TRUE(frm.Unload());
  EXPECT_FALSE(window.frmTip.Visible());
}

TEST_F(MainWindowTest, TheReminderIsKeptInTheSettingsAtTheEnd) {
  LetDaysPass(45);
  ExpectReminder(BoxAnswer::Yes);
  window.Load();
  EXPECT_THAT(shell.opened, ElementsAre("https://tresmor.example/ChkUpdate.asp?Major=3&Minor=1&Rev=7"));
  EXPECT_TRUE(frm.Unload());
  EXPECT_EQ(settings.Get(kAppTitle, kOptionsSection, "LastUpdateCheck", ""), FormatNamedDay(now));
}

TEST_F(MainWindowTest, AnUpdateCheckByTheMenuDoesNotPutTheReminderOff) {
  LetDaysPass(44);
  Load();
  frm.mnuChkUpdate.OnClick();
  EXPECT_THAT(shell.opened, SizeIs(1));
  EXPECT_TRUE(frm.Unload());
  now += kOneDay;
  ExpectReminder();
  MainWindow(Ports(), AllHooks()).Load();
}

TEST_F(MainWindowTest, TooltipsThatAreOffAreNotMade) {
  Keep(kOptionsSection, "NoTooltips", "1");
  window.Load();
  EXPECT_EQ(frm.cmdSrch.ToolTipText(), "");
}

TEST_F(MainWindowTest, AStepOfTheStartThatFailsIsToldAndTheWindowComes) {
  files.MakeFile("/opt/tresmor/TIPOFDAY.TXT", "tip");
  files.FailOpen("/opt/tresmor/TIPOFDAY.TXT", Errors::PermissionDenied);
  ExpectError("'70':\r\n\r\n" + std::string(Describe(Errors::PermissionDenied)));
  window.Load();
  EXPECT_TRUE(frm.Visible());
}

TEST_F(MainWindowTest, NothingElseRunsWhileItStarts) {
  LetDaysPass(45);
  ExpectReminder();
  dialogs.onBox = [&] {
    AddRow(frm, ResultList::ZeroSize, "row");
    frm.mnuClearMarks.OnClick();
  };
  window.Load();
  EXPECT_TRUE(frm.results.Shown().Checked(1));
}

TEST_F(MainWindowTest, ASessionThatItWasStartedWithIsLoadedAndSavedUnderItsName) {
  files.MakeFile("/data/s.Tresmor",
                 "3.0.0\r\nFalse\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 1 \r\n 0 \r\n 1 \r\n"
                 "/data/*.*|-Yes|-|-|-|-Yes|-True\r\nFalse\r\n 4 \r\n 0 \r\n\r\n 0 \r\nVer\r\n 0 \r\n\r\n 0 \r\n\r\n");
  Load();
  window.OpenSession("/data/s.Tresmor");
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_TRUE(frm.mnuSrchSession.Enabled());
  frm.mnuSaveResultList.OnClick();  // asks for no name
  EXPECT_EQ(frm.session.SessionFile, "/data/s.Tresmor");
}

TEST_F(MainWindowTest, ASessionThatCannotBeLoadedAtTheStartIsTold) {
  Load();
  dialogs.boxes.push_back(
      {"Loading search session failed. \r\nError : #53 " + std::string(Describe(Errors::FileNotFound)), "Failed"});
  window.OpenSession("/data/gone.Tresmor");
  EXPECT_TRUE(dialogs.boxes.empty());
}

// --- The end

TEST_F(MainWindowTest, QuittingSavesTheSettingsAndThenTakesTheBarBack) {
  Load();
  frm.pbMain.Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::Parent) {
      EXPECT_THAT(settings.saved, Contains("Options/DefaultEditor"));
    }
  });
  EXPECT_THAT(settings.saved, IsEmpty());
  frm.session.HasSrchResult = true;  // and not saved
  AddRow(frm, ResultList::Duplicates, "marked");
  frm.MnuQuit.OnClick();
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.pbMain.Parent(), &frm);
  EXPECT_THAT(settings.saved, Contains("Options/DefaultEditor"));
}

TEST_F(MainWindowTest, WhileASearchRunsQuittingIsRefused) {
  Load();
  const ScriptedDialogs::Box refusal{"Please cancel your search before quitting.", "Quit", BoxIcon::Information};
  dialogs.boxes = {refusal, refusal};
  dialogs.onBox = [&] { EXPECT_FALSE(frm.Unload()); };  // no second box on top
  frm.cmdSrch.Caption = kCancelCaption;
  EXPECT_FALSE(frm.Unload());
  frm.MnuQuit.OnClick();
  EXPECT_TRUE(frm.Visible());
  EXPECT_THAT(settings.saved, IsEmpty());
  frm.cmdSrch.Caption = kSearchCaption;
  EXPECT_TRUE(frm.Unload());
}

TEST_F(MainWindowTest, ACloseInTheMiddleOfAnActionWaitsForItsEnd) {
  Load();
  InAction([&] {
    frm.MnuQuit.OnClick();
    EXPECT_FALSE(frm.Unload());
    EXPECT_TRUE(frm.Visible());
    EXPECT_THAT(settings.saved, IsEmpty());
  });
  EXPECT_FALSE(frm.Visible());
  EXPECT_THAT(settings.saved, Contains("Options/DefaultEditor"));
}

TEST_F(MainWindowTest, SettingsThatCannotBeSavedKeepNobodyFromQuitting) {
  Keep(kPathHistory, "0", "/latest");
  Keep(kExtHistory, "0", "*.txt");
  Load();
  settings.Fail(Errors::DiskFull, kPathHistory);
  ExpectError("'61':\r\n\r\nDisk full");
  EXPECT_TRUE(frm.Unload());
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.pbMain.Parent(), &frm);
}

// --- One action at a time

TEST_F(MainWindowTest, OtherActionsAreDroppedMeanwhileAndPassiveHandlersAreNot) {
  Load();
  AddRow(frm, ResultList::ZeroSize, "row.jpg");
  ListView& lst = frm.results.Shown();
  InAction([&] {
    for (const auto& event : {frm.mnuNewSrch.OnClick, frm.cmdNewSrch.OnClick, frm.mnuClearMarks.OnClick,
                              frm.mnuSrch.OnClick, lst.OnDblClick}) {
      event();
    }
    lst.OnColumnClick(1);
    lst.OnItemClick();
    view.Drag(12000, 9000);
  });
  ASSERT_THAT(pictures.asked, SizeIs(1));
  EXPECT_EQ(pictures.asked.front().file, "/data/row.jpg");
  EXPECT_EQ(lst.Count(), 1);
  EXPECT_TRUE(lst.Checked(1));
  EXPECT_THAT(shell.opened, IsEmpty());
  EXPECT_EQ(lst.Column(1).text, "Name");
  EXPECT_EQ(frm.frmFileOp.Left(), 12000 - 2175 - 160);
  lst.OnDblClick();
  EXPECT_THAT(shell.opened, ElementsAre("/data/row.jpg"));
}

TEST_F(MainWindowTest, LinksAndAboutWorkInTheMiddleOfAnAction) {
  Load();
  dialogs.boxes = {
      {"Tresmor Ver. 3.1.7\r\n\r\nFree software under the MIT licence, without warranty of any "
       "kind.\r\n\r\nWeb site: https://tresmor.example\r\nEmail: support@tresmor.example\r\n",
       "About Tresmor", BoxIcon::Information}};
  InAction([&] {
    for (const MenuItem* const item :
         {&frm.mnuSuppForum, &frm.mnuWebSite, &frm.mnuEmail, &frm.mnuChkUpdate, &frm.mnuAbout}) {
      EXPECT_TRUE(item->Enabled());
      item->OnClick();
    }
  });
  EXPECT_THAT(shell.opened, SizeIs(4));
  EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(MainWindowTest, WhatWouldBeDroppedCannotBeChosenMeanwhile) {
  Load();
  const auto expect = [&](bool enabled) {
    frm.MnuMain.OnOpen();
    EXPECT_EQ(frm.mnuOptions.Enabled(), enabled);
    EXPECT_TRUE(frm.MnuQuit.Enabled() && frm.mnuHelp.Enabled() && frm.mnuChkUpdate.Enabled());
  };
  expect(true);
  InAction([&] { expect(false); });
  expect(true);
}

TEST_F(MainWindowTest, APictureThatCannotBeReadGivesWayToTheProgramsOwn) {
  Load();
  AddRow(frm, ResultList::ZeroSize, "row.jpg");
  frm.results.Shown().OnItemClick();
  pictures.Fail();
  ASSERT_THAT(pictures.asked, SizeIs(2));
  EXPECT_EQ(pictures.asked.back().file, "/opt/tresmor/err_read.bmp");
}

TEST_F(MainWindowTest, ARunningSearchCanBeCancelledAndNothingElseStarts) {
  Load();
  files.MakeFile("/data/a", "x");
  const std::vector<CellValue> cells = {"Yes", "", "", "", "Yes"};
  frm.lstPath.SetSmallIcon(frm.lstPath.AddRow("/data/*.*", cells), ScopeRow::kIncluded);
  std::vector<std::string> texts;
  dialogs.boxes = {
      {"Are you sure to cancel searching?", "Cancel Search", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes},
      {"Search is completed. 0 file(s) compared.\r\n\r\n" + GetReportCountStr(frm.results) +
           "\r\nINFO: Duplicate files are grouped by unquie 'Duplicate #' and different colours (not unqiue).",
       "Search completed", BoxIcon::Information, BoxButtons::Ok}};
  events.onPump = [&] {
    frm.cmdNewSrch.OnClick();
    if (!texts.empty()) return;
    frm.mnuSrch.OnClick();
    texts.push_back(frm.msgBar.Text());
  };
  frm.cmdSrch.OnClick();
  EXPECT_THAT(texts, ElementsAre("Stopping ..."));
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_TRUE(frm.msgBar.Text().starts_with("Completed in "));
}

TEST_F(MainWindowTest, AnActionThatFailedLeavesNothingLocked) {
  Load();
  const std::vector<Control*> inputs = {&frm.frmSelPath,  &frm.cmdNewSrch, &frm.lstSrchType,
                                        &frm.chkTolerant, &frm.chkHidden,  &frm.chkProtectWinDir,
                                        &frm.chkVer,      &frm.mnuFile,    &frm.mnuSrchSession};
  AddRow(frm, ResultList::ReadErrors, "kept");
  dialogs.onBox = [&] { EXPECT_EQ(frm.cmdSrch.Caption(), kSearchCaption); };
  ExpectError("'7':\r\n\r\nOut of memory");
  InAction([&] {
    for (Control* const input : inputs) input->Enabled = false;
    for (ListView& lst : frm.results.lstResult) lst.Visible = false;
    frm.cmdSrch.Caption = kCancelCaption;
    frm.pointer.Shape = PointerShape::HourglassAndArrow;
    frm.tmrProgress.Enabled = true;
    throw std::bad_alloc();
  });
  for (const Control* const input : inputs) EXPECT_TRUE(input->Enabled());
  for (const ListView& lst : frm.results.lstResult) EXPECT_TRUE(lst.Visible());
  EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.results.List(ResultList::ReadErrors).Count(), 1);
}

TEST_F(MainWindowTest, TimersTickByTheQueue) {
  Load();
  frm.tmrUpdate.Enabled = true;
  frm.tmrProgress.Enabled = true;
  window.Files().frmFileProgress.tmrProgress.Enabled = true;
  EXPECT_THAT(events.timers, SizeIs(3));
  events.Tick();
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

}  // namespace
}  // namespace tresmor
