// The tips that come with the program, held to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>

#include "base/text.h"
#include "shell/frm_options.h"
#include "shell/main_window_world.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> ShippedTips() {
  std::ifstream in(TRESMOR_HELP "../TIPOFDAY.TXT", std::ios::binary);
  EXPECT_TRUE(in);
  std::vector<std::string> tips;
  for (std::string line; std::getline(in, line);) tips.push_back(line);
  return tips;
}

// All that a pattern finds in the tips, by its first group.
std::set<std::string> InTips(const std::regex& pattern) {
  std::set<std::string> found;
  for (const std::string& tip : ShippedTips()) {
    for (std::sregex_iterator match(tip.begin(), tip.end(), pattern); match != std::sregex_iterator(); ++match) {
      found.insert((*match)[1]);
    }
  }
  return found;
}

std::string PlainWords(const std::string& caption) {
  std::string words = ReplaceAll(caption, "&", "");
  while (!words.empty() && std::string_view(":!.").find(words.back()) != std::string_view::npos) words.pop_back();
  return words;
}

TEST(ShippedTips, AreManyAndNoneIsBlankOrTwice) {
  const std::vector<std::string> tips = ShippedTips();
  EXPECT_GE(tips.size(), 40U);
  for (const std::string& tip : tips) {
    EXPECT_FALSE(TrimBlanks(tip).empty());
    EXPECT_FALSE(tip.ends_with('\r') || tip.ends_with(' ')) << tip;
    EXPECT_LT(tip.size(), 260U) << tip;
    EXPECT_TRUE(std::ranges::all_of(tip, [](char letter) { return letter >= ' ' && letter <= '~'; })) << tip;
  }
  EXPECT_EQ(std::set<std::string>(tips.begin(), tips.end()).size(), tips.size());
}

class ShippedTipsTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  // Every caption of the program that a tip may name.
  std::set<std::string> Captions() {
    std::set<std::string> captions;
    for (const Menu* const menu : frm.Menus()) {
      captions.insert(PlainWords(menu->Caption()));
      for (const MenuItem* const item : menu->Items()) {
        if (item != nullptr) captions.insert(PlainWords(item->Caption()));
      }
    }
    const FrmSmartDel smartDel;
    const FrmOptions options;
    for (const std::string& caption :
         {frm.chkExclude.Caption(), frm.chkTolerant.Caption(), frm.chkHidden.Caption(), frm.chkProtectWinDir.Caption(),
          frm.chkVer.Caption(), smartDel.chkLeaveAtLeast1.Caption(), smartDel.cmdGetSelections.Caption(),
          smartDel.chkSubFolder.Caption(), options.cmdClrHist.Caption(), options.cmdResetTips.Caption(),
          options.chkLoadTipsAtStartup.Caption(), frm.cmdTask.Caption(),
          window.Files().frmFileOper.chkDirStruct.Caption()}) {
      captions.insert(PlainWords(caption));
    }
    AddEntries(captions, smartDel.lstDate);
    AddEntries(captions, frm.cmbSrchArea);
    for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) captions.insert(PlainWords(frm.lstSrchType.Text(i)));
    return captions;
  }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;

 private:
  static void AddEntries(std::set<std::string>& captions, const ChoiceList& list) {
    for (std::int32_t i = 0; i < list.ListCount(); ++i) captions.insert(PlainWords(list.List(i)));
  }
};

// What stands in quotes and begins with a capital is a caption, but for words of lists and labels.
TEST_F(ShippedTipsTest, SpellCaptionsAsTheProgramDoes) {
  window.Files().frmFileOper.SetOperMode(kMoveMode, "");
  std::set<std::string> known = Captions();
  // Words of labels and columns, which are no controls.
  known.insert({"File type", "File Size", "Date", "Duplicate #"});
  int captions = 0;
  for (const std::string& quoted : InTips(std::regex("\"([A-Z][^\"]*)\""))) {
    EXPECT_THAT(known, Contains(PlainWords(quoted)));
    ++captions;
  }
  EXPECT_GT(captions, 20);
}

TEST_F(ShippedTipsTest, NameKeysThatTheProgramHas) {
  std::set<std::string> keys;
  for (const Menu* const menu : frm.Menus()) {
    for (const MenuItem* const item : menu->Items()) {
      if (item != nullptr) keys.insert(item->Key());
    }
  }
  const std::set<std::string> named = InTips(std::regex("(Ctrl\\+[A-Z]|F[0-9]+)\\b"));
  EXPECT_GE(named.size(), 8U);
  for (const std::string& key : named) EXPECT_THAT(keys, Contains(key));
}

TEST(ShippedTips, OwnUpToTheOddRules) {
  std::string all;
  for (const std::string& tip : ShippedTips()) all += tip + "\n";
  EXPECT_THAT(all, HasSubstr("Unless you tick \"Portions\" or \"Show File Version\""));
  EXPECT_THAT(all, HasSubstr("\"Keep at least one\" doesn't save them"));
  EXPECT_THAT(all, HasSubstr("one alone in the last row can keep it from the group before: look there"));
  EXPECT_THAT(all, HasSubstr("counts it as one of the group before it, and may mark all files of that"));
  EXPECT_THAT(all, HasSubstr("cancelled before that, they aren't listed"));
  EXPECT_THAT(all, HasSubstr("goes with all its sub-folders and the files in them"));
  EXPECT_THAT(all, HasSubstr("Only --no-verify"));
  EXPECT_THAT(all, Not(HasSubstr("each marked file once more")));
}

}  // namespace
}  // namespace tresmor
