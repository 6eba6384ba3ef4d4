// Sessions as they are read, whole and damaged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "persist/golden.h"
#include "persist/session_world.h"
#include "results/sort_list.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using tests::Golden;
using tests::Join;
using tests::Lines;
using tests::SessionWorld;

// Where things stand in results.Tresmor, lines counted from 0.
enum Line : std::size_t {
  kTypes = 1,
  kOptions = 5,
  kScopeCount = 8,
  kScopeRows = 9,
  kResultsFollow = 12,
  kListCount = 13,
  kFirstCount = 14,
  kFirstRow = 16,
  kSecondCount = 17,
  kSecondRow = 19,
};

std::string With(std::size_t line, const std::string& text) {
  std::vector<std::string> lines = Lines(Golden("results.Tresmor"));
  lines.at(line) = text;
  return Join(lines);
}

class LoadSessionTest : public testing::Test, protected SessionWorld {};

TEST_F(LoadSessionTest, BringsEverythingBack) {
  lstSrchType.SetTicked(2, true);
  chkHidden.Value = true;
  EXPECT_TRUE(Load(Golden("results.Tresmor")));
  EXPECT_TRUE(lstSrchType.Ticked(0) && lstSrchType.Ticked(1) && lstSrchType.Ticked(3));
  EXPECT_FALSE(lstSrchType.Ticked(2));
  EXPECT_TRUE(chkTolerant.Value());
  EXPECT_FALSE(chkHidden.Value());
  EXPECT_TRUE(chkProtectWinDir.Value());
  EXPECT_TRUE(session.SaveSrchResult);
  ASSERT_EQ(lstPath.Count(), 3);
  EXPECT_THAT(Cells(lstPath, 1), ElementsAre("/home/ann/*.jpg;*.gif", "Yes", "10", "", "", "Yes"));
  EXPECT_THAT(Cells(lstPath, 3), ElementsAre("/home/ann/keep/", "Yes"));
  EXPECT_EQ(lstPath.SmallIcon(2), ScopeRow::kIncluded);
  EXPECT_EQ(lstPath.SmallIcon(3), ScopeRow::kExcluded);
  ListView& duplicates = List(ResultList::Duplicates);
  ASSERT_EQ(duplicates.Count(), 2);
  EXPECT_THAT(Cells(duplicates, 1),
              ElementsAre("a.dll", "/x/", "         7", "        12", "2004/01/02 10:20:30", "1.10"));
  EXPECT_EQ(duplicates.CellTag(1, kVersionItem), "00010010");
  EXPECT_THAT(Cells(duplicates, 2), ElementsAre("b.dll", "/y/", "         7", "        12", "1899/12/30 00:00:00", ""));
  EXPECT_EQ(duplicates.CellTag(2, kVersionItem), "");
  EXPECT_TRUE(duplicates.Checked(1));
  EXPECT_FALSE(duplicates.Checked(2));
  EXPECT_EQ(duplicates.Tag(), kVersionTag);
  EXPECT_EQ(List(ResultList::SameName).Tag(), kVersionTag);
  EXPECT_EQ(List(ResultList::ZeroSize).Tag(), "");
  EXPECT_EQ(List(ResultList::ReadErrors).Count(), 0);
  for (const ListView& lst : results.lstResult) EXPECT_TRUE(lst.Visible());
}

TEST_F(LoadSessionTest, WhatWasReadIsWrittenAgain) {
  for (const char* name : {"results.Tresmor", "parameters.Tresmor", "options.Tresmor"}) {
    SessionWorld world;
    EXPECT_TRUE(world.Load(Golden(name)));
    EXPECT_TRUE(world.Save());
    EXPECT_EQ(world.SavedText(), Golden(name));
  }
}

// Lines 6 to 8 are the loose comparison, hidden files and the protection, in this order.
TEST_F(LoadSessionTest, EachOptionHasItsLine) {
  chkHidden.Value = true;
  chkProtectWinDir.Value = true;
  EXPECT_TRUE(Load(Golden("options.Tresmor")));
  EXPECT_EQ(chkTolerant.Value(), kTicked);
  EXPECT_EQ(chkHidden.Value(), kOff);
  EXPECT_EQ(chkProtectWinDir.Value(), kOff);
}

TEST_F(LoadSessionTest, AGrayedBoxComesBackGrayed) {
  const std::string file = With(kOptions + 1, " 2 ");
  EXPECT_TRUE(Load(file));
  EXPECT_EQ(chkHidden.Value(), kGrayed);
  EXPECT_TRUE(Save());
  EXPECT_EQ(Lines(SavedText()).at(kOptions + 1), " 2 ");
}

TEST_F(LoadSessionTest, WhetherResultsAreSavedIsTheFilesToSay) {
  session.SaveSrchResult = true;
  EXPECT_TRUE(Load(Golden("parameters.Tresmor")));
  EXPECT_FALSE(session.SaveSrchResult);
  EXPECT_TRUE(Load(Golden("results.Tresmor")));
  EXPECT_TRUE(session.SaveSrchResult);
}

TEST_F(LoadSessionTest, AFileOfTheOldVersionIncludesEveryRowAndHasResults) {
  EXPECT_TRUE(Load(Golden("old.Tresmor")));
  ASSERT_EQ(lstPath.Count(), 2);
  EXPECT_THAT(Cells(lstPath, 1), ElementsAre("/data/*.*", "Yes", "", "", "", "Yes"));
  EXPECT_THAT(Cells(lstPath, 2), ElementsAre("/data/more/*.*", "No"));
  EXPECT_EQ(lstPath.SmallIcon(1), ScopeRow::kIncluded);
  EXPECT_EQ(lstPath.SmallIcon(2), ScopeRow::kIncluded);
  EXPECT_TRUE(session.SaveSrchResult);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
  EXPECT_TRUE(List(ResultList::Duplicates).Checked(2));
  EXPECT_TRUE(Save());
  std::vector<std::string> lines = Lines(Golden("old.Tresmor"));
  lines[0] = "3.0.0";
  lines[9] += "|-True";
  lines[10] += "|-True";
  lines.insert(lines.begin() + 11, "True");
  EXPECT_EQ(SavedText(), Join(lines));
}

TEST_F(LoadSessionTest, AnotherVersionIsRefused) {
  lstPath.AddRow("untouched");
  dialogs.boxes = {
      {.text = "File version 2.0.0 not supported. Search session can't be read.", .title = "Incorrect version"}};
  EXPECT_FALSE(Load(With(0, "2.0.0")));
  EXPECT_EQ(lstPath.Count(), 1);
  EXPECT_FALSE(tmrProgress.Enabled());
}

// A box with all of the first line of a picture or a song would be larger than the screen.
TEST_F(LoadSessionTest, OfAVersionThatIsNoneOnlyTheBeginningIsTold) {
  for (const auto& [version, told] : {std::pair(std::string(60, 'x'), std::string(60, 'x')),
                                      std::pair(std::string(100'000, 'x'), std::string(60, 'x') + "...")}) {
    dialogs.boxes = {{.text = "File version " + told + " not supported. Search session can't be read.",
                      .title = "Incorrect version"}};
    EXPECT_FALSE(Load(With(0, version)));
  }
}

TEST_F(LoadSessionTest, SortingByVersionNeedsNoFile) {
  EXPECT_TRUE(
      Load(With(kSecondRow + 1, "b.dll|-/y/|-         7|-        12|-1899/12/30 00:00:00|-1.9|-00010009|-False")));
  files.ClearCalls();
  SortList(List(ResultList::Duplicates), kVersionItem + 1, kAscending);
  EXPECT_EQ(List(ResultList::Duplicates).Cell(1, kNameItem), "b.dll");
  EXPECT_TRUE(files.Calls().empty());
}

TEST_F(LoadSessionTest, ListsAreHiddenAndEventsGetTheirTurnAfterRows) {
  std::vector<std::string> seen;
  progress.CancelSrch = true;
  events.onPump = [&] {
    EXPECT_TRUE(tmrProgress.Enabled());
    EXPECT_FALSE(progress.CancelSrch);
    progress.Tick();
    std::string hidden;
    for (const ListView& lst : results.lstResult) hidden += lst.Visible() ? '.' : 'h';
    seen.push_back(hidden + tmrProgress.Tag() + "/" + std::to_string(progress.pbItemsCnt) + progress.ProgressMsg());
  };
  EXPECT_TRUE(Load(Golden("results.Tresmor")));
  EXPECT_THAT(seen, ElementsAre("h....1/1Loading search session 1 of  4  - processing [value] of 1 files...",
                                ".h...1/2Loading search session 2 of  4  - processing [value] of 2 files...",
                                ".h...2/2Loading search session 2 of  4  - processing [value] of 2 files...",
                                "...h.1/1Loading search session 4 of  4  - processing [value] of 1 files..."));
}

TEST_F(LoadSessionTest, AListThatIsHiddenTellsNothingOfItsRows) {
  int notices = 0;
  List(ResultList::Duplicates).Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::RowsAdded || notice.what == Notice::What::RowsChanged) ++notices;
  });
  Load(Golden("results.Tresmor"));
  EXPECT_EQ(notices, 0);
}

TEST_F(LoadSessionTest, AFileThatEndsEarlyLeavesWhatWasRead) {
  std::vector<std::string> lines = Lines(Golden("results.Tresmor"));
  lines.resize(kSecondRow + 1);
  EXPECT_EQ(LoadFailure(Join(lines) + "b.dll|-/y"), Errors::PastEnd);
  EXPECT_EQ(List(ResultList::ZeroSize).Count(), 1);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 1);
  EXPECT_TRUE(List(ResultList::ZeroSize).Visible());
  EXPECT_FALSE(List(ResultList::Duplicates).Visible());
  EXPECT_TRUE(tmrProgress.Enabled());
}

TEST_F(LoadSessionTest, AListIsHiddenBeforeItsCountIsRead) {
  std::vector<std::string> lines = Lines(Golden("results.Tresmor"));
  lines.resize(kFirstCount);
  EXPECT_EQ(LoadFailure(Join(lines)), Errors::PastEnd);
  EXPECT_FALSE(List(ResultList::ZeroSize).Visible());
}

// The count is a mere text until the tag behind it was read.
TEST_F(LoadSessionTest, ATagIsTakenBeforeItsCountIsANumber) {
  std::vector<std::string> lines = Lines(With(kFirstCount, "x"));
  lines[kFirstCount + 1] = kVersionTag;
  EXPECT_EQ(LoadFailure(Join(lines)), Errors::TypeMismatch);
  EXPECT_EQ(List(ResultList::ZeroSize).Tag(), kVersionTag);
  lines.resize(kFirstCount + 1);
  SessionWorld world;
  EXPECT_EQ(world.LoadFailure(Join(lines)), Errors::PastEnd);
}

TEST_F(LoadSessionTest, TheTimerRestsUntilItIsKnownWhetherResultsFollow) {
  progress.CancelSrch = true;
  EXPECT_EQ(LoadFailure(With(kResultsFollow, "?")), Errors::TypeMismatch);
  EXPECT_FALSE(tmrProgress.Enabled());
  EXPECT_TRUE(progress.CancelSrch);
  EXPECT_EQ(LoadFailure(With(kListCount, "?")), Errors::TypeMismatch);
  EXPECT_TRUE(tmrProgress.Enabled());
  EXPECT_FALSE(progress.CancelSrch);
}

TEST_F(LoadSessionTest, WordsOfBooleansMayBeWrittenOtherwise) {
  EXPECT_EQ(LoadFailure(With(kTypes, "false")), Errors::None);
  EXPECT_FALSE(lstSrchType.Ticked(0));
  EXPECT_EQ(LoadFailure(With(kTypes, "-1")), Errors::None);
  EXPECT_TRUE(lstSrchType.Ticked(0));
  EXPECT_EQ(LoadFailure(With(kTypes, " 0 ")), Errors::None);
  EXPECT_FALSE(lstSrchType.Ticked(0));
  for (const char* number : {"0.4", "2147483648", "-3"}) {
    EXPECT_EQ(LoadFailure(With(kTypes, number)), Errors::None);
    EXPECT_TRUE(lstSrchType.Ticked(0)) << number;
    EXPECT_EQ(LoadFailure(With(kTypes, "0.0")), Errors::None);
    EXPECT_FALSE(lstSrchType.Ticked(0));
  }
  EXPECT_EQ(LoadFailure(With(kTypes, "maybe")), Errors::TypeMismatch);
}

TEST_F(LoadSessionTest, NumbersMayStandWithoutBlanks) {
  EXPECT_EQ(LoadFailure(With(kSecondCount, "2")), Errors::None);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
}

TEST_F(LoadSessionTest, ARowWithTooManyCellsKeepsThoseThatFit) {
  EXPECT_EQ(LoadFailure(With(kFirstRow, "n|-1|-2|-3|-4|-5|-6|-|-True")), Errors::Subscript);
  ASSERT_EQ(List(ResultList::ZeroSize).Count(), 1);
  EXPECT_THAT(Cells(List(ResultList::ZeroSize), 1), ElementsAre("n", "1", "2", "3", "4", "5"));
  EXPECT_FALSE(List(ResultList::ZeroSize).Checked(1));
  SessionWorld world;
  EXPECT_EQ(world.LoadFailure(With(kScopeRows, "p|-1|-2|-3|-4|-5|-6|-True")), Errors::Subscript);
  EXPECT_THAT(Cells(world.lstPath, 1), ElementsAre("p", "1", "2", "3", "4", "5"));
}

TEST_F(LoadSessionTest, ARowMayHaveFewCells) {
  EXPECT_EQ(LoadFailure(With(kFirstRow, "True")), Errors::None);
  EXPECT_THAT(Cells(List(ResultList::ZeroSize), 1), ElementsAre("True"));
  EXPECT_TRUE(List(ResultList::ZeroSize).Checked(1));
}

TEST_F(LoadSessionTest, AFifthListIsThatOfTheReadErrors) {
  std::vector<std::string> lines = Lines(With(kListCount, " 5 "));
  lines.insert(lines.end(), {" 1 ", "", "n|-/e/|-|-True"});
  EXPECT_EQ(LoadFailure(Join(lines)), Errors::None);
  EXPECT_EQ(List(ResultList::ReadErrors).Cell(1, kNameItem), "n");
}

TEST_F(LoadSessionTest, NegativeCountsStandForNone) {
  EXPECT_EQ(LoadFailure(With(kListCount, "-1 ")), Errors::None);
  EXPECT_EQ(List(ResultList::ZeroSize).Count(), 0);
  std::vector<std::string> lines = Lines(With(kFirstCount, "-1 "));
  lines.erase(lines.begin() + kFirstRow);
  SessionWorld world;
  EXPECT_EQ(world.LoadFailure(Join(lines)), Errors::None);
  EXPECT_EQ(world.List(ResultList::ZeroSize).Count(), 0);
  EXPECT_EQ(world.List(ResultList::Duplicates).Count(), 2);
}

struct Damage {
  std::size_t line;
  const char* text;
  Errors failure;
};

class DamagedSessionTest : public testing::TestWithParam<Damage> {};

TEST_P(DamagedSessionTest, FailsWithItsNumber) {
  SessionWorld world;
  EXPECT_EQ(world.LoadFailure(With(GetParam().line, GetParam().text)), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(
    OneLine, DamagedSessionTest,
    testing::Values(
        Damage{kTypes, "yes", Errors::TypeMismatch}, Damage{kTypes, "", Errors::TypeMismatch},
        Damage{kOptions, "x", Errors::TypeMismatch}, Damage{kOptions, " 40000 ", Errors::Overflow},
        Damage{kOptions, "-1 ", Errors::Overflow}, Damage{kOptions + 2, " 3 ", Errors::Overflow},
        Damage{kScopeCount, "", Errors::TypeMismatch}, Damage{kScopeCount, "-1 ", Errors::TypeMismatch},
        Damage{kScopeCount, " 2147483647 ", Errors::Subscript}, Damage{kScopeCount, " 2147483648 ", Errors::Overflow},
        Damage{kScopeRows, "", Errors::Subscript}, Damage{kScopeRows, "/data/", Errors::TypeMismatch},
        Damage{kScopeRows, "/data/|-Yes|-", Errors::TypeMismatch}, Damage{kResultsFollow, "?", Errors::TypeMismatch},
        Damage{kListCount, "x", Errors::TypeMismatch}, Damage{kListCount, " 40000 ", Errors::Overflow},
        Damage{kListCount, " 2147483648 ", Errors::Overflow}, Damage{kListCount, " 5 ", Errors::PastEnd},
        Damage{kFirstCount, "x", Errors::TypeMismatch}, Damage{kFirstCount, " 2147483648 ", Errors::Overflow},
        Damage{kFirstCount, " 1000000000000000000000 ", Errors::Overflow}, Damage{kFirstRow, "", Errors::Subscript},
        Damage{kFirstRow, "n|-/x/|-|-maybe", Errors::TypeMismatch},
        Damage{kSecondRow, "n|-/x/|-1|-2|-3|-key|-True", Errors::Subscript},
        Damage{kSecondRow, "True", Errors::Subscript}));

TEST_F(LoadSessionTest, MoreListsThanThereAreFail) {
  std::vector<std::string> lines = Lines(With(kListCount, " 6 "));
  lines.insert(lines.end(), {" 0 ", "", " 0 ", ""});
  EXPECT_EQ(LoadFailure(Join(lines)), Errors::Subscript);
}

TEST_F(LoadSessionTest, ACountOfRowsThatAreNotThereEndsAtOnce) {
  std::vector<std::string> lines = Lines(Golden("results.Tresmor"));
  lines[lines.size() - 3] = " 2147483647 ";
  EXPECT_EQ(LoadFailure(Join(lines)), Errors::PastEnd);
  EXPECT_EQ(List(ResultList::Portions).Count(), 1);
}

TEST_F(LoadSessionTest, ACutAtAnyByteIsAMissingLine) {
  for (const char* name : {"results.Tresmor", "old.Tresmor"}) {
    const std::string whole = Golden(name);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      SessionWorld world;
      ASSERT_EQ(world.LoadFailure(whole.substr(0, length)), Errors::PastEnd) << name << " " << length;
    }
  }
}

TEST(NextLineTest, GoesFromOneCrToTheNext) {
  const std::string text = "ab\r\n\r\n\rc\nd\r\r\nend";
  std::int32_t pos = -1;
  EXPECT_EQ(NextLine(text, pos), "ab");
  EXPECT_EQ(pos, 3);
  EXPECT_EQ(NextLine(text, pos), "");
  EXPECT_EQ(pos, 5);
  EXPECT_EQ(NextLine(text, pos), "\rc\nd\r");
  EXPECT_EQ(pos, 12);
  EXPECT_THROW(NextLine(text, pos), Failure);
  EXPECT_EQ(pos, 12);
}

TEST(NextLineTest, AnEmptyFileHasNone) {
  std::int32_t pos = -1;
  EXPECT_THROW(NextLine("", pos), Failure);
  EXPECT_THROW(NextLine("\r", pos), Failure);
  EXPECT_EQ(NextLine("\r\n", pos), "");
  EXPECT_EQ(pos, 1);
  EXPECT_THROW(NextLine("\r\n", pos), Failure);
}

}  // namespace
}  // namespace tresmor
