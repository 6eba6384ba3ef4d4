// What a start finds and a normal end leaves.
#include "persist/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "desk/guarded_msg.h"
#include "desk/history.h"
#include "persist/program_run.h"
#include "support/failure_of.h"
#include "support/memory_settings.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::ProgramRun;

class SettingsTest : public testing::Test {
 protected:
  std::string Kept(const std::string& section, const std::string& key) const {
    return store.Get("Tresmor", section, key, "none");
  }
  void Keep(const std::string& section, const std::string& key, const std::string& value) {
    store.Save("Tresmor", section, key, value);
    store.saved.clear();
  }

  MemorySettings store;
};

TEST_F(SettingsTest, AFirstRunHasPresetsAndDefaults) {
  const ProgramRun run(store);
  EXPECT_THAT(HistoryBoxes::Entries(run.txtPath),
              ElementsAre("__________________", "My Documents", "Desktop", "My Favourites"));
  EXPECT_THAT(HistoryBoxes::Entries(run.txtExt), ElementsAre("__________________", "Photos / Images", "Music / Songs",
                                                             "Movie Clips", "Downloads", "All Files"));
  EXPECT_EQ(run.presets.PathArr.size(), 3U);
  EXPECT_EQ(run.options.LastUpdateChk, run.now);
  EXPECT_EQ(run.options.NoTooltipsOpt, 0);
  EXPECT_EQ(run.options.ShowTipsOpt, 1);
  EXPECT_EQ(run.options.DefaultEditorOpt, "editor");
  for (const GuardedMessage& message : kGuardedMessages) EXPECT_EQ(run.options.*message.Flag, 0) << message.Key;
}

TEST_F(SettingsTest, OptionsComeBack) {
  {
    ProgramRun run(store);
    run.options.LastUpdateChk = *ParseStamp("2003/05/09 23:59:59");
    run.options.NoTooltipsOpt = 1;
    run.options.ShowTipsOpt = 0;
    run.options.DefaultEditorOpt = "/bin/my editor";
    std::int16_t value = 5;
    for (const GuardedMessage& message : kGuardedMessages) run.options.*message.Flag = value++;
    run.End();
  }
  EXPECT_EQ(Kept("Options", "LastUpdateCheck"), "09 May 2003");
  EXPECT_EQ(Kept("Options", "Show Tips at Startup"), "0");
  EXPECT_EQ(Kept("Options", "DontShowTipLongSrch"), "10");
  const ProgramRun run(store);
  EXPECT_EQ(run.options.LastUpdateChk, ParseStamp("2003/05/09 00:00:00"));
  EXPECT_EQ(run.options.NoTooltipsOpt, 1);
  EXPECT_EQ(run.options.ShowTipsOpt, 0);
  EXPECT_EQ(run.options.DefaultEditorOpt, "/bin/my editor");
  EXPECT_EQ(run.options.DontShowWarmProtWin, 5);
  EXPECT_EQ(run.options.DontShowTipOrgNDup, 6);
  EXPECT_EQ(run.options.DontShowTipOrgNDupSM, 7);
  EXPECT_EQ(run.options.DontShowTipSmartMark, 8);
  EXPECT_EQ(run.options.DontShowSrchPersonal, 9);
  EXPECT_EQ(run.options.DontShowTipLongSrch, 10);
}

TEST_F(SettingsTest, KeysAreWrittenInTheirOrder) {
  ProgramRun run(store);
  run.EnterPath("/a");
  run.EnterExt("*.a");
  run.End();
  EXPECT_THAT(store.saved,
              ElementsAre("PathHistory/0", "ExtHistory/0", "Options/LastUpdateCheck", "Options/Show Tips at Startup",
                          "Options/NoTooltips", "Options/DefaultEditor", "Options/DontShowWarmProtWin",
                          "Options/DontShowTipOrgNDup", "Options/DontShowTipOrgNDupSM", "Options/DontShowTipSmartMark",
                          "Options/DontShowSrchPersonal", "Options/DontShowTipLongSrch"));
}

TEST_F(SettingsTest, KeysAreReadInTheirOrder) {
  const ProgramRun run(store);
  std::vector<std::string> expected;
  for (const char* key : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    expected.push_back(std::string("PathHistory/") + key);
    expected.push_back(std::string("ExtHistory/") + key);
  }
  for (const char* key : {"LastUpdateCheck", "NoTooltips", "Show Tips at Startup", "DefaultEditor",
                          "DontShowWarmProtWin", "DontShowTipOrgNDup", "DontShowTipOrgNDupSM", "DontShowTipSmartMark",
                          "DontShowSrchPersonal", "DontShowTipLongSrch"}) {
    expected.push_back(std::string("Options/") + key);
  }
  EXPECT_EQ(store.asked, expected);
}

// The cap is on what is added, one entry at a time, not on what a start brings back.
TEST_F(SettingsTest, AListAboveTenEntriesLosesOneForEachThatIsAdded) {
  for (int i = 0; i < 10; ++i) Keep("PathHistory", std::to_string(i), "/" + std::to_string(i));
  ProgramRun run(store);
  EXPECT_EQ(run.txtPath.ListCount(), 14);
  run.EnterPath("/new");
  EXPECT_THAT(HistoryBoxes::Entries(run.txtPath),
              ElementsAre("/new", "/0", "/1", "/2", "/3", "/4", "/5", "/6", "/7", "/8", kSeparator, "My Documents",
                          "Desktop", "My Favourites"));
  run.EnterPath("/newer");
  EXPECT_EQ(run.txtPath.ListCount(), 14);
  EXPECT_EQ(run.txtPath.List(9), "/7");
  run.EnterPath("/0");  // known: it needs no room
  EXPECT_EQ(run.txtPath.ListCount(), 14);
  EXPECT_EQ(run.txtPath.List(9), "/7");
}

TEST_F(SettingsTest, TenPatternsOfAStoreAreAllKept) {
  for (int i = 0; i < 10; ++i) Keep("ExtHistory", std::to_string(i), "*." + std::to_string(i));
  ProgramRun run(store);
  run.EnterExt("*.new");
  EXPECT_EQ(run.txtExt.ListCount(), 16);
  run.EnterPath("/a");
  run.End();
  EXPECT_EQ(Kept("ExtHistory", "0"), "*.new");
  EXPECT_EQ(Kept("ExtHistory", "4"), "*.3");
  EXPECT_EQ(Kept("ExtHistory", "9"), "*.8");
  EXPECT_EQ(Kept("ExtHistory", "10"), "none");
  EXPECT_EQ(Kept("PathHistory", "1"), "__________________");
  EXPECT_EQ(Kept("PathHistory", "4"), "My Favourites");
  EXPECT_EQ(Kept("PathHistory", "5"), "none");
}

TEST_F(SettingsTest, GapsInAHistoryAreClosed) {
  Keep("PathHistory", "0", "/a");
  Keep("PathHistory", "2", "/c");
  Keep("PathHistory", "9", "/j");
  Keep("PathHistory", "10", "/k");  // not looked for
  const ProgramRun run(store);
  EXPECT_THAT(HistoryBoxes::Entries(run.txtPath),
              ElementsAre("/a", "/c", "/j", kSeparator, "My Documents", "Desktop", "My Favourites"));
}

TEST_F(SettingsTest, WhatCannotBeConvertedIsPassedOver) {
  Keep("Options", "LastUpdateCheck", "02 července 2003");
  Keep("Options", "NoTooltips", "yes");
  Keep("Options", "Show Tips at Startup", "32768");
  Keep("Options", "DontShowWarmProtWin", "");
  Keep("Options", "DontShowTipOrgNDup", "2");
  const ProgramRun run(store);
  EXPECT_EQ(run.options.LastUpdateChk, kZeroDate);  // so long ago that the reminder comes
  EXPECT_EQ(run.options.NoTooltipsOpt, 0);
  EXPECT_EQ(run.options.ShowTipsOpt, 0);
  EXPECT_EQ(run.options.DontShowWarmProtWin, 0);
  EXPECT_EQ(run.options.DontShowTipOrgNDup, 2);
}

TEST_F(SettingsTest, AsManyFoldersAreKeptAsPatterns) {
  {
    ProgramRun run(store);
    run.EnterPath("/a");
    run.EnterPath("/b");
    run.EnterExt("*.a");
    run.End();
  }
  EXPECT_EQ(Kept("PathHistory", "0"), "/b");
  EXPECT_EQ(Kept("PathHistory", "1"), "none");
  EXPECT_EQ(Kept("ExtHistory", "0"), "*.a");
}

TEST_F(SettingsTest, MorePatternsThanFoldersKeepTheSeparatorAndLabelsAsFolders) {
  {
    ProgramRun run(store);
    run.EnterPath("/a");
    for (const char* ext : {"*.1", "*.2", "*.3"}) run.EnterExt(ext);
    run.End();
  }
  EXPECT_EQ(Kept("PathHistory", "0"), "/a");
  EXPECT_EQ(Kept("PathHistory", "1"), "__________________");
  EXPECT_EQ(Kept("PathHistory", "2"), "My Documents");
  EXPECT_EQ(Kept("PathHistory", "3"), "none");
  const ProgramRun run(store);
  EXPECT_THAT(HistoryBoxes::Entries(run.txtPath),
              ElementsAre("/a", kSeparator, "My Documents", kSeparator, "My Documents", "Desktop", "My Favourites"));
}

TEST_F(SettingsTest, WithoutPatternsTheOldFoldersStay) {
  Keep("PathHistory", "0", "/old");
  {
    ProgramRun run(store);
    run.EnterPath("/new");
    run.End();
  }
  EXPECT_EQ(Kept("PathHistory", "0"), "/old");
  EXPECT_EQ(Kept("ExtHistory", "0"), "none");
}

TEST_F(SettingsTest, KeysBehindAShorterListStay) {
  Keep("ExtHistory", "0", "*.a");
  Keep("ExtHistory", "1", "*.b");
  {
    ProgramRun run(store);
    run.txtExt.RemoveItem(1);
    run.End();
  }
  const ProgramRun run(store);
  EXPECT_EQ(run.txtExt.List(0), "*.a");
  EXPECT_EQ(run.txtExt.List(1), "*.b");
}

TEST_F(SettingsTest, NoHistoryIsWrittenAfterForgettingIt) {
  ProgramRun run(store);
  run.EnterPath("/a");
  run.EnterExt("*.a");
  ClrHistory(store, run.txtPath, run.txtExt, run.presets);
  run.End();
  EXPECT_THAT(store.saved, testing::Not(testing::Contains(testing::HasSubstr("History"))));
}

TEST_F(SettingsTest, AListThatLostItsSeparatorIsSavedToItsEnd) {
  ProgramRun run(store);
  run.txtExt.SetText(kSeparator);
  AddHistory(run.txtExt, run.presets.FileTypeDizArr);
  run.txtExt.RemoveItem(0);
  for (int i = 0; i < 6; ++i) run.EnterPath("/" + std::to_string(i));
  run.End();
  EXPECT_EQ(Kept("ExtHistory", "4"), "All Files");
  EXPECT_EQ(Kept("PathHistory", "9"), "My Favourites");
}

TEST_F(SettingsTest, AHistoryThatCannotBeSavedIsTold) {
  for (const char* section : {kPathHistory, kExtHistory}) {
    ProgramRun run(store);
    run.EnterPath("/a");
    run.EnterExt("*.a");
    store.saved.clear();
    store.Fail(Errors::DiskFull, section);
    EXPECT_EQ(tests::FailureOf([&] { run.End(); }), Errors::DiskFull);
    EXPECT_EQ(store.saved.back(), std::string(section) + "/0");  // nothing is saved behind it
  }
}

TEST_F(SettingsTest, AnOptionThatCannotBeSavedIsPassedOver) {
  ProgramRun run(store);
  store.Fail(Errors::DiskFull, "Options", "NoTooltips");
  EXPECT_NO_THROW(run.End());
  EXPECT_EQ(Kept("Options", "NoTooltips"), "none");
  EXPECT_EQ(Kept("Options", "Show Tips at Startup"), "1");
  EXPECT_EQ(Kept("Options", "DefaultEditor"), "editor");
}

// Another box writes this key at once; the option in memory wins at a normal end.
TEST_F(SettingsTest, ANormalEndWritesTheOptionsThatTheProgramHolds) {
  ProgramRun run(store);
  store.Save("Tresmor", "Options", "Show Tips at Startup", "0");
  run.End();
  EXPECT_EQ(Kept("Options", "Show Tips at Startup"), "1");
}

}  // namespace
}  // namespace tresmor
