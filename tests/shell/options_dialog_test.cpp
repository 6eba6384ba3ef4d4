#include "shell/options_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desk/guarded_msg.h"
#include "desk/history.h"
#include "shell/main_window_world.h"
#include "support/history_boxes.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OptionsDialogTest : public testing::Test, protected HistoryBoxes {
 protected:
  OptionsDialogTest() {
    presets = BuildPresets(FakeShell());
    AddPresets(txtPath, presets.PathDizArr);
    AddPresets(txtExt, presets.FileTypeDizArr);
    options.ShowTipsOpt = 1;
    options.DefaultEditorOpt = "/usr/bin/edit";
  }

  // Opens the dialog, in which the user does this.
  void Show(std::function<void(FrmOptions&)> deed) {
    forms.inOptions = std::move(deed);
    dialog.Show();
  }

  Options options;
  MemorySettings settings;
  ScriptedDialogs dialogs;
  tests::ScriptedForms forms;
  std::vector<std::string> log;
  OptionsDialog dialog{{.options = options,
                        .txtPath = txtPath,
                        .txtExt = txtExt,
                        .presets = presets,
                        .InitTooltips = [this] { log.push_back("init"); },
                        .RemoveTooltips = [this] { log.push_back("remove"); }},
                       {settings, dialogs, forms}};
};

TEST_F(OptionsDialogTest, ControlsHaveTheirTexts) {
  const FrmOptions frm;
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.HelpContextID, 112);
  EXPECT_EQ(frm.Caption(), "Options");
  EXPECT_EQ(frm.chkLoadTipsAtStartup.Caption(), "&Show Tips at Startup");
  EXPECT_EQ(frm.chkNoTooltips.Caption(), "&Disable Tool tips");
  EXPECT_EQ(frm.Label1.Caption(), "Default Editor:");
  EXPECT_EQ(frm.cmdBrowse.Caption(), "&Browse");
  EXPECT_EQ(frm.cmdClrHist.Caption(), "Clear &History");
  EXPECT_EQ(frm.cmdResetTips.Caption(), "Reset Warnings and Tips");
  EXPECT_EQ(frm.OKButton.Caption(), "OK");
  EXPECT_EQ(frm.CancelButton.Caption(), "Cancel");
}

TEST_F(OptionsDialogTest, ShowsWhatTheOptionsAreAtEachOpening) {
  for (const bool on : {true, false}) {
    options.ShowTipsOpt = on ? 1 : 0;
    options.NoTooltipsOpt = on ? 1 : 0;
    options.DefaultEditorOpt = on ? "one" : "other";
    Show([&](const FrmOptions& frm) {
      EXPECT_TRUE(frm.Visible());
      EXPECT_EQ(frm.chkLoadTipsAtStartup.Ticked(), on);
      EXPECT_EQ(frm.chkNoTooltips.Ticked(), on);
      EXPECT_EQ(frm.txtEditor.Text(), on ? "one" : "other");
    });
  }
}

TEST_F(OptionsDialogTest, NumbersThatNoBoxShowsLeaveItOff) {
  options.ShowTipsOpt = 5;
  options.NoTooltipsOpt = -1;
  Show([&](const FrmOptions& frm) {
    EXPECT_EQ(frm.chkLoadTipsAtStartup.Value(), kOff);
    EXPECT_EQ(frm.chkNoTooltips.Value(), kOff);
    EXPECT_EQ(frm.txtEditor.Text(), "/usr/bin/edit");
  });
}

TEST_F(OptionsDialogTest, OkTakesAllOver) {
  Show([&](FrmOptions& frm) {
    frm.chkLoadTipsAtStartup.Value = kOff;
    frm.chkNoTooltips.Value = kTicked;
    frm.txtEditor.Text = "no such program";
    EXPECT_EQ(options.ShowTipsOpt, 1);
    frm.OKButton.OnClick();
    EXPECT_FALSE(frm.Visible());
  });
  EXPECT_EQ(options.ShowTipsOpt, 0);
  EXPECT_EQ(options.NoTooltipsOpt, 1);
  EXPECT_EQ(options.DefaultEditorOpt, "no such program");
  EXPECT_THAT(settings.saved, IsEmpty());
}

TEST_F(OptionsDialogTest, TooltipsGoAndComeAtOnceAndOnlyIfTheirBoxChanged) {
  const auto ok = [](FrmOptions& frm) { frm.OKButton.OnClick(); };
  Show(ok);
  EXPECT_THAT(log, IsEmpty());
  Show([&](FrmOptions& frm) {
    frm.chkNoTooltips.Value = kTicked;
    EXPECT_THAT(log, IsEmpty());
    ok(frm);
  });
  Show(ok);
  EXPECT_THAT(log, ElementsAre("remove"));
  Show([&](FrmOptions& frm) {
    frm.chkNoTooltips.Value = kOff;
    ok(frm);
  });
  EXPECT_THAT(log, ElementsAre("remove", "init"));
}

TEST_F(OptionsDialogTest, CancelChangesNothing) {
  Show([&](FrmOptions& frm) {
    frm.chkNoTooltips.Value = kTicked;
    frm.chkLoadTipsAtStartup.Value = kOff;
    frm.txtEditor.Text = "other";
    frm.CancelButton.OnClick();
    EXPECT_FALSE(frm.Visible());
  });
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(options.NoTooltipsOpt, 0);
  EXPECT_EQ(options.ShowTipsOpt, 1);
  EXPECT_EQ(options.DefaultEditorOpt, "/usr/bin/edit");
}

TEST_F(OptionsDialogTest, BrowseAsksForAProgramAndLeavesTheOptionToOk) {
  dialogs.files = {"/usr/bin/other", "", std::nullopt};
  Show([&](FrmOptions& frm) {
    frm.txtEditor.Text = "typed";
    for (int i = 0; i < 3; ++i) frm.cmdBrowse.OnClick();
    EXPECT_EQ(frm.txtEditor.Text(), "/usr/bin/other");
  });
  EXPECT_EQ(options.DefaultEditorOpt, "/usr/bin/edit");
  const FileQuestion& asked = dialogs.asked.front();
  EXPECT_EQ(asked.mode, FileDialogMode::Open);
  EXPECT_EQ(asked.title, "Default editor");
  ASSERT_EQ(asked.filters.size(), 2U);
  EXPECT_EQ(asked.filters[0].label + asked.filters[0].pattern, "Executables (*.exe)*.exe");
  EXPECT_EQ(asked.filters[1].label + asked.filters[1].pattern, "All Files*.*");
  EXPECT_EQ(asked.defaultExtension, "EXE");
  EXPECT_EQ(asked.startName, "/usr/bin/edit");
  EXPECT_EQ(asked.startFolder, "/usr/bin/edit");
}

TEST_F(OptionsDialogTest, HistoriesGoAtOnceAlsoBeforeACancel) {
  const std::vector<const char*> histories = {kPathHistory, kExtHistory, kPatternHistory};
  for (const char* const section : histories) settings.Save(kAppTitle, section, "0", "kept");
  EnterPath("/a");
  EnterExt("*.txt");
  Show([&](FrmOptions& frm) {
    frm.cmdClrHist.OnClick();
    EXPECT_TRUE(frm.Visible());
    frm.CancelButton.OnClick();
  });
  EXPECT_EQ(txtPath.List(0), kSeparator);
  EXPECT_EQ(txtExt.List(0), kSeparator);
  EXPECT_EQ(txtPath.Text() + txtExt.Text(), "");
  for (const char* const section : histories) EXPECT_EQ(settings.Get(kAppTitle, section, "0", "-"), "-") << section;
}

TEST_F(OptionsDialogTest, AllWarningsComeAgainButThatOfLongSearches) {
  for (const GuardedMessage& message : kGuardedMessages) options.*message.Flag = 1;
  dialogs.boxes = {{"Warnings and tips will be shown again.", "Reset warnings and tips", BoxIcon::Information}};
  Show([&](FrmOptions& frm) {
    frm.cmdResetTips.OnClick();
    frm.CancelButton.OnClick();
  });
  for (const GuardedMessage& message : kGuardedMessages) {
    EXPECT_EQ(options.*message.Flag, message.Flag == &Options::DontShowTipLongSrch ? 1 : 0) << message.Key;
  }
}

TEST_F(OptionsDialogTest, AFailureIsToldAndTheDialogStays) {
  dialogs.boxes = {{"Run-time error '7':\r\n\r\nOut of memory", ""}};
  dialogs.files = {"/usr/bin/other"};
  dialogs.onFile = [] { throw std::bad_alloc(); };
  Show([&](FrmOptions& frm) {
    frm.cmdBrowse.OnClick();
    EXPECT_TRUE(frm.Visible());
  });
}

}  // namespace
}  // namespace tresmor
