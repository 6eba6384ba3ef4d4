// Histories and presets of combo boxes.
#include "desk/history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "desk/options.h"
#include "support/failure_of.h"
#include "support/fake_shell.h"
#include "support/history_boxes.h"
#include "support/memory_settings.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kMostCounted = 32768;  // entries that a counter of 16 bits gets to, from 0

// The entries in front of the separator.
std::vector<std::string> HistoryOf(const ComboBox& combo) {
  std::vector<std::string> entries = HistoryBoxes::Entries(combo);
  entries.erase(std::find(entries.begin(), entries.end(), kSeparator), entries.end());
  return entries;
}

class HistoryTest : public testing::Test, protected HistoryBoxes {
 protected:
  HistoryTest() {
    presets = BuildPresets(shell);
    AddPresets(txtPath, presets.PathDizArr);
    AddPresets(txtExt, presets.FileTypeDizArr);
  }

  std::string Kept(const char* section, const char* key) const { return store.Get(kAppTitle, section, key, "none"); }

  FakeShell shell;
  MemorySettings store;
};

TEST_F(HistoryTest, PresetsAreTheUsersFoldersAndTheKindsOfFiles) {
  EXPECT_THAT(shell.asked, ElementsAre(5, 0, 6));
  EXPECT_THAT(Entries(txtPath), ElementsAre("__________________", "My Documents", "Desktop", "My Favourites"));
  EXPECT_THAT(presets.PathArr, ElementsAre("/home/me/Documents", "/home/me/Desktop", "/home/me"));
  EXPECT_THAT(Entries(txtExt), ElementsAre("__________________", "Photos / Images", "Music / Songs", "Movie Clips",
                                           "Downloads", "All Files"));
  EXPECT_THAT(presets.FileTypeArr, ElementsAre("*.jpg;*.gif;*.bmp", "*.mp3;*.wav;*.rm;*.ra;*.mid",
                                               "*.mpg;*.rm;*.avi;*.ram;*.mov;*.wmv;*.asf", "*.exe;*.zip", "*.*"));
}

TEST_F(HistoryTest, NewEntriesComeToTheTop) {
  EnterPath("/a");
  EnterPath("/b");
  EXPECT_THAT(Entries(txtPath), ElementsAre("/b", "/a", kSeparator, "My Documents", "Desktop", "My Favourites"));
  EXPECT_EQ(txtPath.Text(), "/b");
}

TEST_F(HistoryTest, AnotherSpellingTakesTheOldOnesPlaceAtTheTop) {
  EnterPath("/Docs");
  EnterPath("/b");
  EnterPath("/docs");
  EXPECT_THAT(HistoryOf(txtPath), ElementsAre("/docs", "/b"));
  EXPECT_EQ(txtPath.Text(), "/docs");
}

TEST_F(HistoryTest, ASeventhFolderRemovesTheOldest) {
  for (const char* path : {"/1", "/2", "/3", "/4", "/5", "/6"}) EnterPath(path);
  EXPECT_THAT(HistoryOf(txtPath), ElementsAre("/6", "/5", "/4", "/3", "/2", "/1"));
  EnterPath("/7");
  EXPECT_THAT(Entries(txtPath),
              ElementsAre("/7", "/6", "/5", "/4", "/3", "/2", kSeparator, "My Documents", "Desktop", "My Favourites"));
}

TEST_F(HistoryTest, AFifthPatternRemovesTheOldest) {
  for (const char* ext : {"*.1", "*.2", "*.3", "*.4"}) EnterExt(ext);
  EXPECT_THAT(HistoryOf(txtExt), ElementsAre("*.4", "*.3", "*.2", "*.1"));
  EnterExt("*.5");
  EXPECT_THAT(HistoryOf(txtExt), ElementsAre("*.5", "*.4", "*.3", "*.2"));
  EXPECT_EQ(txtExt.ListCount(), 10);
}

TEST_F(HistoryTest, AKnownEntryNeedsNoRoom) {
  for (const char* ext : {"*.1", "*.2", "*.3", "*.4"}) EnterExt(ext);
  EnterExt("*.1");
  EXPECT_THAT(HistoryOf(txtExt), ElementsAre("*.1", "*.4", "*.3", "*.2"));
}

TEST_F(HistoryTest, ALabelOrTheSeparatorIsMovedLikeAnEntry) {
  EnterPath("/a");
  EnterPath("DESKTOP");
  EXPECT_THAT(Entries(txtPath), ElementsAre("DESKTOP", "/a", kSeparator, "My Documents", "My Favourites"));
  EnterPath(kSeparator);
  EXPECT_THAT(Entries(txtPath), ElementsAre(kSeparator, "DESKTOP", "/a", "My Documents", "My Favourites"));
}

TEST_F(HistoryTest, AnEmptyTextIsAnEntryToo) {
  EnterExt("");
  EXPECT_THAT(HistoryOf(txtExt), ElementsAre(""));
}

TEST_F(HistoryTest, InsTopItemMovesAllDown) {
  ComboBox combo;
  InsTopItem(combo, "a");
  InsTopItem(combo, "b");
  EXPECT_THAT(Entries(combo), ElementsAre("b", "a"));
}

TEST(FindListItem, ComparesWithoutCase) {
  ComboBox combo;
  for (const char* text : {"a", "Grüße", "GRÜßE"}) combo.AddItem(text);
  EXPECT_EQ(FindListItem(combo, "A"), 0);
  EXPECT_EQ(FindListItem(combo, "GRÜßE"), 1);
  EXPECT_EQ(FindListItem(combo, "b"), -1);
}

TEST(FindListItem, CountsIn16Bits) {
  ComboBox combo;
  for (std::int32_t i = 0; i < kMostCounted; ++i) combo.AddItem(std::to_string(i));
  EXPECT_EQ(FindListItem(combo, "32767"), 32767);
  EXPECT_EQ(FindListItem(combo, "beyond"), -1);
  combo.AddItem("beyond");
  EXPECT_EQ(tests::FailureOf([&] { FindListItem(combo, "beyond"); }), Errors::Overflow);
}

TEST_F(HistoryTest, APresetsLabelBecomesItsValue) {
  EnterPath("/a");
  txtPath.OnClick = [this] { PickPreset(txtPath, presets.PathArr); };
  txtPath.SetListIndex(2);
  EXPECT_EQ(txtPath.Text(), "/home/me/Documents");
  txtPath.SetListIndex(4);
  EXPECT_EQ(txtPath.Text(), "/home/me");
  txtPath.SetListIndex(0);
  EXPECT_EQ(txtPath.Text(), "/a");
  txtPath.SetListIndex(1);
  EXPECT_EQ(txtPath.Text(), "");
  txtExt.OnClick = [this] { PickPreset(txtExt, presets.FileTypeArr); };
  txtExt.SetListIndex(4);
  EXPECT_EQ(txtExt.Text(), "*.exe;*.zip");
}

TEST_F(HistoryTest, ABoxWithoutPresetsKeepsItsTextButNotTheSeparator) {
  txtPath.SetListIndex(1);
  PickPreset(txtPath, {});
  EXPECT_EQ(txtPath.Text(), "My Documents");
  txtPath.SetListIndex(0);
  PickPreset(txtPath, {});
  EXPECT_EQ(txtPath.Text(), "");
  txtPath.SetText("typed");
  PickPreset(txtPath, presets.PathArr);
  EXPECT_EQ(txtPath.Text(), "typed");
}

TEST_F(HistoryTest, AFolderThatIsNowhereFillsAnEmptyText) {
  shell.folders.erase(5);
  presets = BuildPresets(shell);
  txtPath.SetListIndex(1);
  PickPreset(txtPath, presets.PathArr);
  EXPECT_EQ(txtPath.Text(), "");
}

TEST_F(HistoryTest, APatternsHistoryComesBackToItsBox) {
  for (const char* pattern : {"*.1", "*.2", "*.3"}) EnterExt(pattern);
  SaveHistory(store, kPatternHistory, txtExt, txtExt);
  EXPECT_THAT(store.saved, ElementsAre("PatternHistory/0", "PatternHistory/1", "PatternHistory/2"));
  ComboBox cmbPattern;
  LoadHistory(store, {{kPatternHistory, cmbPattern}});
  AddPresets(cmbPattern, presets.FileTypeDizArr);
  EXPECT_THAT(HistoryOf(cmbPattern), ElementsAre("*.3", "*.2", "*.1"));
}

TEST_F(HistoryTest, ForgettingLeavesSeparatorAndPresets) {
  EnterPath("/a");
  EnterExt("*.a");
  EnterExt("*.b");
  for (const char* section : {kPathHistory, kExtHistory, kPatternHistory}) store.Save(kAppTitle, section, "0", "x");
  store.Save(kAppTitle, kOptionsSection, "NoTooltips", "1");
  ClrHistory(store, txtPath, txtExt, presets);
  EXPECT_THAT(Entries(txtPath), ElementsAre(kSeparator, "My Documents", "Desktop", "My Favourites"));
  EXPECT_THAT(HistoryOf(txtExt), IsEmpty());
  EXPECT_EQ(txtExt.ListCount(), 6);
  EXPECT_EQ(txtPath.Text() + txtExt.Text(), "");
  for (const char* section : {kPathHistory, kExtHistory, kPatternHistory}) EXPECT_EQ(Kept(section, "0"), "none");
  EXPECT_EQ(Kept(kOptionsSection, "NoTooltips"), "1");
}

TEST_F(HistoryTest, ForgettingGoesOnWhereTheStoreRefuses) {
  store.Save(kAppTitle, kPathHistory, "0", "x");
  store.Save(kAppTitle, kExtHistory, "0", "x");
  store.Fail(Errors::PermissionDenied, kPathHistory);
  EnterPath("/a");
  ClrHistory(store, txtPath, txtExt, presets);
  EXPECT_EQ(Kept(kPathHistory, "0"), "x");
  EXPECT_EQ(Kept(kExtHistory, "0"), "none");
  EXPECT_THAT(HistoryOf(txtPath), IsEmpty());
}

TEST(TakeLatest, IsForABoxOfTwoEntriesThatBeginsWithAHistory) {
  ComboBox box("as it was");
  TakeLatest(box);
  EXPECT_EQ(box.Text(), "as it was");
  box.AddItem("latest");
  TakeLatest(box);
  EXPECT_EQ(box.Text(), "as it was");
  box.AddItem(kSeparator);
  TakeLatest(box);
  EXPECT_EQ(box.Text(), "latest");
  EXPECT_EQ(box.ListIndex(), -1);
  ComboBox presets("as it was");
  AddPresets(presets, {"All Files"});
  TakeLatest(presets);
  EXPECT_EQ(presets.Text(), "as it was");
}

}  // namespace
}  // namespace tresmor
