// The main window: its start and end, and what may run when.
#include "shell/main_window.h"
#include "results/counters.h"

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

class MainWindowTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  void Keep(const char* section, const char* key, const char* value) { settings.Save(kAppTitle, section, key, value); }
  void Load() {
    window.Load();
    log.clear();
  }
  // `deed` is done from within an action.
  void InAction(const std::function<void()>& deed) {
    onHook = [this, deed] {
      const auto once = deed;
      onHook = nullptr;
      once();
    };
    frm.mnuOptions.OnClick();
  }
  void ExpectError(const std::string& error) { dialogs.boxes.push_back({"Run-time error " + error, ""}); }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;
  FakeMainView view{frm};
};

// --- The start

TEST_F(MainWindowTest, TheStartGoesStepByStep) {
  Keep(kPathHistory, "0", "/latest");
  onHook = [&] {
    EXPECT_EQ(window.HelpFile(), "/opt/tresmor/Tresmor.chm");
    EXPECT_EQ(frm.PrevPbParent, &frm);
    EXPECT_EQ(frm.Height(), 4365);  // what the panels need, in whole pixels
    EXPECT_GT(view.resizes, 0);
    EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
    EXPECT_GT(frm.txtExt.ListCount(), 0);
    EXPECT_EQ(frm.txtPath.Text(), log.back() == "tip" ? "/latest" : "/home/me");
    EXPECT_FALSE(frm.Visible());
  };
  EXPECT_FALSE(frm.Visible());
  window.Load();
  EXPECT_THAT(log, ElementsAre("tooltips", "reminder", "tip"));
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
  for (const auto& [setting, shows] : cases) {
    onHook = [&, value = setting] {
      if (log.back() == "reminder") Keep(kOptionsSection, "Show Tips at Startup", value.c_str());
    };
    MainWindow(Ports(), AllHooks()).Load();
    EXPECT_EQ(log.back() == "tip", shows) << setting;
  }
}

TEST_F(MainWindowTest, TooltipsThatAreOffAreNotMade) {
  Keep(kOptionsSection, "NoTooltips", "1");
  window.Load();
  EXPECT_THAT(log, ElementsAre("reminder", "tip"));
}

TEST_F(MainWindowTest, AStepOfTheStartThatFailsIsToldAndTheWindowComes) {
  onHook = [] { throw Failure(Errors::DiskFull); };
  ExpectError("'61':\r\n\r\nDisk full");
  window.Load();
  EXPECT_TRUE(frm.Visible());
}

TEST_F(MainWindowTest, NothingElseRunsWhileItStarts) {
  onHook = [&] { frm.mnuAbout.OnClick(); };
  window.Load();
  EXPECT_THAT(log, testing::Not(Contains("about")));
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
                              frm.mnuAbout.OnClick, frm.mnuSrch.OnClick, lst.OnDblClick}) {
      event();
    }
    lst.OnColumnClick(1);
    lst.OnItemClick();
    view.Drag(12000, 9000);
  });
  EXPECT_THAT(log, ElementsAre("options"));
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

// --- New search, and operations

TEST_F(MainWindowTest, ANewSearchNeverAsksAndClearsAllLists) {
  Load();
  for (const auto& command : {frm.mnuNewSrch.OnClick, frm.cmdNewSrch.OnClick}) {
    for (std::size_t i = 0; i < kResultLists; ++i) AddRow(frm, static_cast<ResultList>(i), "row");
    frm.lstPath.AddRow("/data/*.*");
    frm.session.HasSrchResult = true;
    frm.session.SessionFile = "/home/me/s.Tresmor";
    command();
    for (const ListView& lst : frm.results.lstResult) EXPECT_EQ(lst.Count(), 0);
    EXPECT_EQ(frm.lstPath.Count(), 0);
    EXPECT_FALSE(frm.session.HasSrchResult);
    EXPECT_EQ(frm.session.SessionFile, "");
  }
}

TEST_F(MainWindowTest, TheItemsForMarkedFilesAskForMarks) {
  Load();
  const std::vector<std::pair<std::function<void()>*, std::string>> items = {{&frm.mnuDelete.OnClick, "deletion."},
                                                                             {&frm.mnuMove.OnClick, "moving files."},
                                                                             {&frm.mnuCopy.OnClick, "copying files."}};
  frm.results.tabMain.Select(1);
  for (const auto& [item, what] : items) (*item)();  // no rows: not a word
  AddRow(frm, ResultList::ZeroSize, "row");
  frm.results.Shown().SetChecked(1, false);
  for (const auto& [item, what] : items) {
    dialogs.boxes.push_back({"Please mark files before " + what, "", BoxIcon::None});
    (*item)();
    EXPECT_THAT(dialogs.boxes, IsEmpty());
  }
  EXPECT_THAT(operations.calls, IsEmpty());
}

TEST_F(MainWindowTest, CountersFollowOperationsOnTheListThatWasAskedAbout) {
  Load();
  forms.inFileOper = [&](FrmFileOper& form) {
    frm.results.tabMain.Select(5);
    form.txtDestination.Text = "/home/me";
    form.OKButton.OnClick();
  };
  const std::vector<std::function<void()>*> commands = {&frm.mnuDelete.OnClick, &frm.mnuMove.OnClick,
                                                        &frm.mnuCopy.OnClick};
  for (auto* const command : commands) {
    frm.results.tabMain.Select(1);
    const std::string name = std::to_string(operations.calls.size());
    files.MakeFile("/data/" + name, "");
    AddRow(frm, ResultList::ZeroSize, name);
    frm.results.tabMain.SetCaption(1, "old");
    (*command)();
    EXPECT_EQ(frm.results.tabMain.Caption(1), command == commands[2] ? "old(1)" : "old(0)");
  }
  ASSERT_THAT(operations.calls, SizeIs(3));
  EXPECT_EQ(operations.calls[0].wFunc, FO_DELETE);
  EXPECT_EQ(operations.calls[1].wFunc, FO_MOVE);
  EXPECT_EQ(operations.calls[2].wFunc, FO_COPY);
}

}  // namespace
}  // namespace tresmor
