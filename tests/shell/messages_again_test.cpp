// Messages that were switched off, each where the program shows it, and how they come back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/main_window_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class MessagesAgainTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  MessagesAgainTest() {
    files.MakeFile("/data/one", "words");
    files.MakeFile("/data/two", "words");
  }

  // Does all that messages come with, and gives those that came.
  std::vector<std::string> DoAll(MainWindow& window) {
    FrmMain& frm = window.frm;
    forms.shown.clear();
    frm.mnuNewSrch.OnClick();
    frm.txtPath.SetText("/");  // a disk
    frm.cmdAdd.OnClick();
    frm.chkProtectWinDir.Value = kOff;
    dialogs.boxes.push_back(
        {"Search is completed. 1 file(s) compared.\r\n\r\nNo. of zero-size files: 0\r\nNo. of "
         "duplicate(same-content) files: 2, 1 group(s)\r\nNo. of same-name files: 0, 0 group(s)\r\nNo. of truncated "
         "files(file portions): 0, 0 group(s)\r\nNo. of files with reading error: 0\r\n\r\nINFO: Duplicate files are "
         "grouped by unquie 'Duplicate #' and different colours (not unqiue).",
         "Search completed", BoxIcon::Information});
    frm.cmdSrch.OnClick();
    frm.results.tabMain.Select(2);
    frm.mnuMarkAll.OnClick();
    forms.inSmartDel = [](FrmSmartDel& form) {
      form.chkLeaveAtLeast1.Value = kOff;
      form.cmdMark.OnClick();
    };
    frm.mnuSmartDel.OnClick();
    return forms.shown;
  }
  void Reset(MainWindow& window) {
    forms.inOptions = [](FrmOptions& form) {
      EXPECT_EQ(form.cmdResetTips.Caption(), "Reset Warnings and Tips");
      form.cmdResetTips.OnClick();
      form.CancelButton.OnClick();
    };
    dialogs.boxes.push_back(
        {"Warnings and tips will be shown again.", "Reset warnings and tips", BoxIcon::Information});
    window.frm.mnuOptions.OnClick();
  }
};

TEST_F(MessagesAgainTest, FiveComeBackAndTheOneAboutPatienceDoesNot) {
  MainWindow window(Ports(), AllHooks());
  const FakeMainView view(window.frm);
  window.Load();
  const auto personal = StartsWith("Searching the whole hard drive");
  const auto risky = StartsWith("It is risky");
  const auto patience = StartsWith("The search can be a lengthy process");
  const auto mark = StartsWith("You can now mark those files");
  const auto original = StartsWith("Both original and duplicate files");
  EXPECT_THAT(DoAll(window), ElementsAre(personal, risky, patience, mark, original, original));
  forms.ticksDontShow = true;
  EXPECT_THAT(DoAll(window), ElementsAre(personal, risky, patience, mark, original, original));
  EXPECT_THAT(DoAll(window), IsEmpty());
  Reset(window);
  forms.ticksDontShow = false;
  EXPECT_THAT(DoAll(window), ElementsAre(personal, risky, mark, original, original));
}

// What was brought back counts from the next start on too.
TEST_F(MessagesAgainTest, TheSettingsKeepIt) {
  forms.ticksDontShow = true;
  for (const int expected : {6, 0, 5}) {
    MainWindow window(Ports(), AllHooks());
    const FakeMainView view(window.frm);
    window.Load();
    EXPECT_EQ(static_cast<int>(DoAll(window).size()), expected);
    if (expected == 0) Reset(window);
    window.frm.Unload();
  }
}

// Known so to settings and eyes of old, misspelt or not.
TEST_F(MessagesAgainTest, SpellingsStay) {
  MainWindow window(Ports(), AllHooks());
  const FakeMainView view(window.frm);
  window.Load();
  forms.ticksDontShow = true;
  const std::vector<std::string> shown = DoAll(window);
  EXPECT_THAT(shown.front(), testing::HasSubstr("path containing your persoanl data. "));
  EXPECT_THAT(shown[2], testing::HasSubstr("may not response for a few minutes"));
  window.frm.Unload();
  EXPECT_EQ(settings.Get(kAppTitle, kOptionsSection, "DontShowWarmProtWin", ""), "1");
}

}  // namespace
}  // namespace tresmor
