// The main window's dialogs, its hover texts, and what it does with its lists.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desk/history.h"
#include "results/counters.h"
#include "shell/main_window_world.h"

namespace tresmor {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using tests::MainWindowTest;

// --- Its dialogs

TEST_F(MainWindowTest, OptionsSwitchTheTooltipsOfTheWindow) {
  Load();
  AddRow(frm, ResultList::ZeroSize, "row");
  frm.results.Shown().OnMouseMove(1);
  EXPECT_FALSE(window.Tips().texts.empty());
  for (const bool off : {true, false}) {
    forms.inOptions = [&](FrmOptions& form) {
      form.chkNoTooltips.Value = off;
      form.OKButton.OnClick();
    };
    frm.mnuOptions.OnClick();
    EXPECT_EQ(frm.cmdSrch.ToolTipText(), off ? "" : "Start the search");
    EXPECT_TRUE(window.Tips().texts.empty());
  }
}

TEST_F(MainWindowTest, OptionsClearTheHistoriesOfTheWindow) {
  Keep(kPathHistory, "0", "/latest");
  Load();
  InAction([] {});
  EXPECT_EQ(frm.txtPath.List(0), "/latest");
  forms.inOptions = [](FrmOptions& form) { form.cmdClrHist.OnClick(); };
  frm.mnuOptions.OnClick();
  EXPECT_EQ(frm.txtPath.List(0), kSeparator);
}

TEST_F(MainWindowTest, SmartMarkerWorksOnTheListOnShow) {
  Load();
  AddRow(frm, ResultList::ZeroSize, "a.jpg");
  AddRow(frm, ResultList::ZeroSize, "b.txt");
  for (const std::int32_t row : {1, 2}) frm.results.Shown().SetChecked(row, false);
  forms.inSmartDel = [](FrmSmartDel& form) {
    EXPECT_EQ(form.lstFolder.Count(), 2);
    form.cmbPattern.SetText("*.jpg");
    form.cmdMark.OnClick();
    EXPECT_FALSE(form.Visible());
  };
  frm.mnuSmartDel.OnClick();
  EXPECT_TRUE(frm.results.Shown().Checked(1));
  EXPECT_FALSE(frm.results.Shown().Checked(2));
  EXPECT_TRUE(frm.tmrUpdate.Enabled());
}

TEST_F(MainWindowTest, HelpIsAskedForByNumberAndByPage) {
  for (const char* const page : {"scope.htm", "quickstart.htm", "mark.htm"}) {
    files.MakeFile(std::string("/opt/tresmor/help/") + page, "");
  }
  Load();
  const FrmHelp& help = window.frmHelp;
  window.Help(117);
  EXPECT_TRUE(help.Visible());
  EXPECT_EQ(help.Address(), "scope.htm");
  EXPECT_TRUE(frm.mnuHelp.Enabled());
  frm.mnuHelp.OnClick();
  EXPECT_EQ(help.Address(), "quickstart.htm");
  AddRow(frm, ResultList::ZeroSize, "row");
  forms.inSmartDel = [&](FrmSmartDel& form) {
    EXPECT_TRUE(form.cmdHelp.Enabled());
    form.cmdHelp.OnClick();
    EXPECT_EQ(help.Address(), "mark.htm");
    frm.mnuHelp.OnClick();
    EXPECT_EQ(help.Address(), "quickstart.htm") << "in the middle of an action, too";
  };
  frm.mnuSmartDel.OnClick();
  frm.Unload();
  EXPECT_FALSE(help.Visible());
}

TEST_F(MainWindowTest, HelpThatIsMissingIsTold) {
  Load();
  dialogs.boxes.push_back(
      {"The help can't be shown, since this file of it is missing:\r\n\r\n"
       "/opt/tresmor/help/quickstart.htm",
       "Help", BoxIcon::Exclamation});
  frm.mnuHelp.OnClick();
  EXPECT_FALSE(window.frmHelp.Visible());
}

// --- Hover texts of the status bar

TEST_F(MainWindowTest, TheMessageIsItsHoverTextWhileHoverTextsAreOn) {
  Load();
  EXPECT_EQ(frm.msgBar.ToolTipText(), "Tresmor is ready.");
  frm.msgBar.Text = "A long message";
  EXPECT_EQ(frm.msgBar.ToolTipText(), "A long message");
  const auto setTips = [&](std::int16_t off) {
    forms.inOptions = [off](FrmOptions& form) {
      form.chkNoTooltips.Value = off;
      form.OKButton.OnClick();
    };
    frm.mnuOptions.OnClick();
  };
  setTips(kTicked);
  EXPECT_EQ(frm.msgBar.ToolTipText(), "");
  frm.msgBar.Text = "Another";
  EXPECT_EQ(frm.msgBar.ToolTipText(), "");
  setTips(kOff);
  EXPECT_EQ(frm.msgBar.ToolTipText(), "Another");
}

TEST_F(MainWindowTest, NoMessageHoversWhereTheSettingsSwitchHoverTextsOff) {
  Keep(kOptionsSection, "NoTooltips", "1");
  Load();
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  frm.msgBar.Text = "Another";
  EXPECT_EQ(frm.msgBar.ToolTipText(), "");
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
    EXPECT_THAT(forms.shown, IsEmpty());
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
    EXPECT_EQ(frm.tmrUpdate.Enabled(), command != commands[2])
        << "where rows have gone the line below tells other figures";
    frm.tmrUpdate.Enabled = false;
  }
  ASSERT_THAT(operations.calls, SizeIs(3));
  EXPECT_EQ(operations.calls[0].wFunc, FO_DELETE);
  EXPECT_EQ(operations.calls[1].wFunc, FO_MOVE);
  EXPECT_EQ(operations.calls[2].wFunc, FO_COPY);
}

}  // namespace
}  // namespace tresmor
