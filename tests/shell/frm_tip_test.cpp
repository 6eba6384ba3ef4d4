#include "shell/frm_tip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "desk/options.h"
#include "persist/settings.h"
#include "support/memory_file_system.h"
#include "support/memory_settings.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TipTest : public testing::Test {
 protected:
  void Load(const std::string& content) {
    files.MakeFile("/opt/tresmor/TIPOFDAY.TXT", content);
    frm.Load("/opt/tresmor");
  }
  std::string Kept() const { return settings.Get(kAppTitle, kOptionsSection, "Show Tips at Startup", "-"); }

  MemoryFileSystem files;
  MemorySettings settings;
  ScriptedDialogs dialogs;
  double random = 0;
  FrmTip frm{{files, settings, dialogs, [this] { return random; }}};
};

TEST_F(TipTest, ControlsHaveTheirTexts) {
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.HelpContextID, 112);
  EXPECT_EQ(frm.Caption(), "Tip of the Day");
  EXPECT_EQ(frm.Label1.Caption(), "Did you know...");
  EXPECT_EQ(frm.chkLoadTipsAtStartup.Caption(), "&Show Tips at Startup");
  EXPECT_EQ(frm.cmdNextTip.Caption(), "&Next Tip");
  EXPECT_EQ(frm.cmdOK.Caption(), "OK");
}

TEST_F(TipTest, EachLineIsATipBlankOnesToo) {
  Load("one\r\n\n  two \nthree");
  EXPECT_THAT(frm.Tips, ElementsAre("one", "", "  two ", "three"));
  EXPECT_TRUE(frm.Visible());
}

TEST_F(TipTest, ARandomOneShowsAndPerhapsTheSameAgain) {
  Load("one\ntwo\nthree\n");
  EXPECT_EQ(frm.CurrentTip, 1);
  const std::vector<std::pair<double, std::string>> draws = {
      {0.34, "two"}, {0.34, "two"}, {0.99999999999999989, "three"}, {0.33, "one"}};
  for (const auto& [draw, tip] : draws) {
    random = draw;
    frm.cmdNextTip.OnClick();
    EXPECT_EQ(frm.lblTipText.Caption(), tip);
  }
}

TEST_F(TipTest, TheGreatestDrawIsTheLastTipHoweverManyThereAre) {
  random = 0.99999999999999989;
  for (std::size_t count = 1; count < 70; ++count) {
    frm.Tips.assign(count, "tip");
    frm.NextTip();
    EXPECT_EQ(frm.CurrentTip, static_cast<std::int32_t>(count));
  }
}

TEST_F(TipTest, AFileOfOneLineAlwaysShowsIt) {
  Load("only\n");
  for (const double draw : {0.0, 0.5, 0.9999}) {
    random = draw;
    frm.cmdNextTip.OnClick();
    EXPECT_EQ(frm.lblTipText.Caption(), "only");
  }
}

TEST_F(TipTest, WithoutTheFileTheTextTellsHowToMakeOne) {
  frm.Load("/opt/tresmor");
  const std::string text =
      "That the TIPOFDAY.TXT file was not found? \r\n\r\nCreate a text file named TIPOFDAY.TXT using NotePad with 1 "
      "tip "
      "per line. Then place it in the same directory as the application. ";
  EXPECT_EQ(frm.lblTipText.Caption(), text);
  EXPECT_TRUE(frm.Visible());
  frm.cmdNextTip.OnClick();
  EXPECT_EQ(frm.lblTipText.Caption(), text);
}

TEST_F(TipTest, AnEmptyFileLeavesTheTextAsItIs) {
  frm.lblTipText.Caption = "before";
  Load("");
  EXPECT_EQ(frm.lblTipText.Caption(), "before");
  EXPECT_EQ(frm.CurrentTip, 1);
}

TEST_F(TipTest, LoadTipsTellsWhetherThereIsAFile) {
  files.MakeFile("/t", "a\n");
  EXPECT_FALSE(frm.LoadTips(""));
  EXPECT_FALSE(frm.LoadTips("/none"));
  EXPECT_THAT(frm.Tips, IsEmpty());
  EXPECT_TRUE(frm.LoadTips("/t"));
  EXPECT_TRUE(frm.LoadTips("/t"));
  EXPECT_THAT(frm.Tips, ElementsAre("a", "a"));
}

TEST_F(TipTest, TheBoxIsTickedAtEachOpeningAndWritesTheSettingAtOnce) {
  settings.Save(kAppTitle, kOptionsSection, "Show Tips at Startup", "0");
  frm.chkLoadTipsAtStartup.Value = kOff;
  Load("a\n");
  EXPECT_TRUE(frm.chkLoadTipsAtStartup.Ticked());
  EXPECT_EQ(Kept(), "0");
  for (const bool on : {false, true}) {
    frm.chkLoadTipsAtStartup.Value = on;
    frm.chkLoadTipsAtStartup.OnClick();
    EXPECT_EQ(Kept(), on ? "1" : "0");
    EXPECT_EQ(ShowTipsAtStartup(settings), on);
  }
}

TEST_F(TipTest, OkCloses) {
  Load("a\n");
  frm.cmdOK.OnClick();
  EXPECT_FALSE(frm.Visible());
  EXPECT_THAT(settings.saved, IsEmpty());
}

TEST_F(TipTest, ASettingThatCannotBeSavedIsTold) {
  Load("a\n");
  settings.Fail(Errors::DiskFull, kOptionsSection);
  dialogs.boxes = {{"Run-time error '61':\r\n\r\nDisk full", ""}};
  frm.chkLoadTipsAtStartup.OnClick();
  EXPECT_TRUE(frm.Visible());
}

}  // namespace
}  // namespace tresmor
