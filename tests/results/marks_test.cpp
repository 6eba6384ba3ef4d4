#include "results/marks.h"

#include <gmock/gmock.h>

#include "base/failure.h"
#include "desk/scripted_event_queue.h"
#include "results/counters.h"
#include "results/result_fixture.h"
#include "results/sort_list.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

class MarksTest : public tests::ResultFixture {
 protected:
  void Show(ResultList kind) { results.tabMain.Select(static_cast<std::int32_t>(kind) + 1); }
  void AddDated(ResultList kind, const std::string& name, std::int32_t dupGrp, const char* date) {
    Add(kind, name, dupGrp);
    ListView& lst = results.List(kind);
    lst.SetCell(lst.Count(), kDateItem, date);
  }
  static void MarkRows(ListView& lst, const std::vector<std::int32_t>& rows) {
    for (const std::int32_t row : rows) lst.SetChecked(row, true);
  }
  // A sign for each row: x for a marked one, - for another.
  static std::string Marks(const ListView& lst) {
    std::string marks;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) marks += lst.Checked(row) ? 'x' : '-';
    return marks;
  }

  // On the list on show.
  void MarkGroups(const GroupRule& rule) { tresmor::MarkGroups(results.Shown(), results.ShownKind(), events, rule); }

  // Lets events in after each group whose marks have changed.
  void PumpAtEachMark() {
    duplicates.Listen([this](const Notice&) { events.seconds += 1; });
  }

  tests::ScriptedEventQueue events;
};

TEST_F(MarksTest, SetsAndClearsAllMarksOfTheListOnShowAlone) {
  for (const char* name : {"a", "b"}) {
    Add(ResultList::ZeroSize, name);
    Add(ResultList::SameName, name);
  }
  Show(ResultList::SameName);
  SetAllMarks(results, true);
  EXPECT_EQ(Marks(sameName), "xx");
  EXPECT_EQ(Marks(zero), "--");
  SetAllMarks(results, false);
  EXPECT_EQ(Marks(sameName), "--");
}

TEST_F(MarksTest, ManyRowsAreMarkedInOneChange) {
  for (const char* name : {"a", "b", "c"}) Add(ResultList::Duplicates, name);
  Show(ResultList::Duplicates);
  int changes = 0;
  duplicates.Listen([&](const Notice& notice) { changes += notice.when == Notice::When::After ? 1 : 0; });
  SetAllMarks(results, true);
  EXPECT_EQ(changes, 1);
  SetAllMarks(results, false);
  EXPECT_EQ(changes, 2);
  for (const std::int32_t row : {1, 3}) duplicates.SetSelected(row, true);
  changes = 0;
  MarkSelected(results);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Marks(duplicates), "x-x");
}

TEST_F(MarksTest, ClearingTheMarksOfAnEmptyListDoesNothing) {
  int notices = 0;
  zero.Listen([&](const Notice&) { ++notices; });
  SetAllMarks(results, false);
  EXPECT_EQ(notices, 0);
  EXPECT_EQ(panel.Text(), "");
}

TEST_F(MarksTest, MarksTheSelectedRowsAndClearsNone) {
  for (const char* name : {"a", "b", "c"}) Add(ResultList::ZeroSize, name);
  MarkSelected(results);
  EXPECT_EQ(Marks(zero), "---");
  zero.SetChecked(1, true);
  zero.SetSelected(3, true);
  MarkSelected(results);
  EXPECT_EQ(Marks(zero), "x-x");
  EXPECT_TRUE(zero.Selected(3));
}

TEST_F(MarksTest, TheFirstOfTheHighestIsTheBest) {
  for (const std::int64_t size : {10, 20, 20}) Add(ResultList::Portions, "f", 0, size);
  Show(ResultList::Portions);
  MarkGroups({.SubItem = kSizeItem, .bLow = false});
  EXPECT_EQ(Marks(portions), "x-x");
}

TEST_F(MarksTest, TheFirstOfTheLowestIsTheBest) {
  for (const std::int64_t size : {20, 10, 10}) Add(ResultList::Portions, "f", 0, size);
  Show(ResultList::Portions);
  MarkGroups({.SubItem = kSizeItem, .bLow = true});
  EXPECT_EQ(Marks(portions), "x-x");
}

TEST_F(MarksTest, MarksThatWereThereAreOverwritten) {
  for (const char* date : {"2001/01/01 00:00:00", "2002/01/01 00:00:00"})
    AddDated(ResultList::Duplicates, "f", 0, date);
  Show(ResultList::Duplicates);
  MarkRows(duplicates, {1});
  MarkGroups({.SubItem = kDateItem, .bLow = true});
  EXPECT_EQ(Marks(duplicates), "-x");
  MarkGroups({.SubItem = kDateItem, .bLow = false});
  EXPECT_EQ(Marks(duplicates), "x-");
}

TEST_F(MarksTest, ALongerSizeIsTheGreater) {
  for (const std::int64_t size : {99'999'999'999L, 123'456'789'012L, 2'147'483'647L}) {
    Add(ResultList::Portions, "f", 0, size);
  }
  Show(ResultList::Portions);
  MarkGroups({.SubItem = kSizeItem, .bLow = false});
  EXPECT_EQ(Marks(portions), "x-x");
  MarkGroups({.SubItem = kSizeItem, .bLow = true});
  EXPECT_EQ(Marks(portions), "xx-");
}

TEST_F(MarksTest, CellsCompareByTheirBytes) {
  for (const char* date : {"b", "B", "a"}) AddDated(ResultList::Duplicates, "f", 0, date);
  Show(ResultList::Duplicates);
  MarkGroups({.SubItem = kDateItem, .bLow = true});
  EXPECT_EQ(Marks(duplicates), "x-x");
}

TEST_F(MarksTest, VersionsCompareByTheirSortKeys) {
  for (const char* version : {"1.9", "1.10", "1.2"}) AddVersion(ResultList::SameName, "f", version);
  Show(ResultList::SameName);
  MarkGroups({.SubItem = kVersionItem, .bLow = false});
  EXPECT_EQ(Marks(sameName), "x-x");
  MarkGroups({.SubItem = kVersionItem, .bLow = true});
  EXPECT_EQ(Marks(sameName), "xx-");
  Add(ResultList::SameName, "f");  // has no version, which is the lowest
  MarkGroups({.SubItem = kVersionItem, .bLow = true});
  EXPECT_EQ(Marks(sameName), "xxx-");
}

TEST_F(MarksTest, GroupsAreBroughtTogetherFirstAndTheListStaysSoSorted) {
  const char* dates[] = {"2004/01/01 00:00:00", "2003/01/01 00:00:00", "2002/01/01 00:00:00", "2001/01/01 00:00:00"};
  const std::int32_t groups[] = {9, 4, 9, 4};
  for (int i = 0; i < 4; ++i) AddDated(ResultList::Duplicates, std::to_string(i), groups[i], dates[i]);
  Show(ResultList::Duplicates);
  MarkGroups({.SubItem = kDateItem, .bLow = true});
  EXPECT_THAT(Texts(duplicates), ElementsAre("1", "3", "0", "2"));
  EXPECT_EQ(Marks(duplicates), "x-x-");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
}

TEST_F(MarksTest, NamesAreGroupsWithoutRegardToCase) {
  for (const char* name : {"b", "\u00C4", "B", "\u00E4", "c", "C"}) Add(ResultList::SameName, name);
  Show(ResultList::SameName);
  MarkGroups({.SubItem = kSizeItem, .bLow = true});
  EXPECT_THAT(Texts(sameName), ElementsAre("b", "B", "c", "C", "\u00C4", "\u00E4"));
  EXPECT_EQ(Marks(sameName), "-x-x-x");
  EXPECT_EQ(sameName.Column(1).text, "^ Name");
}

TEST_F(MarksTest, ListsWithoutGroupNumbersAreOneGroup) {
  for (const char* name : {"b", "a", "c"}) Add(ResultList::ZeroSize, name);
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_THAT(Texts(zero), ElementsAre("b", "a", "c"));
  EXPECT_EQ(Marks(zero), "-xx");
}

TEST_F(MarksTest, ARowOnItsOwnIsLeftAsItIs) {
  const std::int32_t groups[] = {1, 2, 2, 3, 4, 4};
  for (const std::int32_t group : groups) Add(ResultList::Duplicates, "f", group);
  Show(ResultList::Duplicates);
  MarkRows(duplicates, {1});
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_EQ(Marks(duplicates), "x-x--x");
}

TEST_F(MarksTest, TheLastRowIsTakenIntoTheRunBeforeIt) {
  for (const std::int32_t group : {1, 1, 2}) Add(ResultList::Portions, "f", group, 10 * group);
  Show(ResultList::Portions);
  MarkGroups({.SubItem = kSizeItem, .bLow = true});
  EXPECT_EQ(Marks(portions), "-xx");
  MarkGroups({.SubItem = kSizeItem, .bLow = false});
  EXPECT_EQ(Marks(portions), "xx-");
}

TEST_F(MarksTest, TheLastRowBehindAnotherLoneOneStaysAlone) {
  for (const std::int32_t group : {1, 1, 2, 3}) Add(ResultList::Duplicates, "f", group);
  Show(ResultList::Duplicates);
  MarkRows(duplicates, {3, 4});
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_EQ(Marks(duplicates), "-xxx");
}

TEST_F(MarksTest, AListOfOneRowHasNoGroupAndAnEmptyOneIsNotEvenSorted) {
  Show(ResultList::Duplicates);
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
  Add(ResultList::Duplicates, "f", 1);
  MarkRows(duplicates, {1});
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_EQ(Marks(duplicates), "x");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
}

TEST_F(MarksTest, TheGuardUnmarksTheBestOfAGroupThatIsMarkedWholly) {
  const std::int32_t groups[] = {1, 1, 1, 2, 2, 2};
  for (const std::int32_t group : groups) Add(ResultList::Portions, "f", group, 7);
  portions.SetCell(2, kSizeItem, PaddedNumber{8});
  Show(ResultList::Portions);
  MarkRows(portions, {1, 2, 3, 4, 6});
  MarkGroups({.SubItem = kSizeItem, .bLow = false, .bGuardOnly = true});
  EXPECT_EQ(Marks(portions), "x-xx-x");
}

TEST_F(MarksTest, TheGuardLeavesAGroupWithAnUnmarkedFile) {
  for (int i = 0; i < 3; ++i) Add(ResultList::Duplicates, "f", 1);
  Show(ResultList::Duplicates);
  MarkRows(duplicates, {1, 2});
  MarkGroups({.SubItem = kDateItem, .bLow = true, .bGuardOnly = true});
  EXPECT_EQ(Marks(duplicates), "xx-");
}

TEST_F(MarksTest, TheGuardCountsInSixteenBits) {
  constexpr std::int32_t most = 32'767;
  for (std::int32_t i = 0; i < most; ++i) Add(ResultList::ZeroSize, "f");
  const GroupRule guard{.SubItem = kDateItem, .bLow = false, .bGuardOnly = true};
  SetAllMarks(results, true);
  MarkGroups(guard);
  EXPECT_FALSE(zero.Checked(1));
  Add(ResultList::ZeroSize, "f");
  SetAllMarks(results, true);
  EXPECT_EQ(tests::FailureOf([&] { MarkGroups(guard); }), Errors::Overflow);
  zero.SetChecked(1, false);
  MarkGroups(guard);
  EXPECT_FALSE(zero.Checked(1));
}

TEST_F(MarksTest, WhatEventsFindBetweenGroupsIsWhole) {
  for (const std::int32_t group : {1, 1, 2, 2}) Add(ResultList::Duplicates, "f", group);
  Show(ResultList::Duplicates);
  PumpAtEachMark();
  std::vector<std::string> seen;
  events.onPump = [&] {
    seen.push_back(Marks(duplicates));
    UpdateStatus(results, true, true);
    Show(ResultList::ZeroSize);  // the walk goes on in its own list
  };
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_THAT(seen, ElementsAre("-x--", "-x-x"));
}

TEST_F(MarksTest, RowsThatGoBetweenGroupsEndTheWalkEarly) {
  for (const std::int32_t group : {1, 1, 2, 2}) Add(ResultList::Duplicates, "f", group);
  Show(ResultList::Duplicates);
  PumpAtEachMark();
  events.onPump = [&] { duplicates.Clear(); };
  MarkGroups({.SubItem = kSizeItem});
  EXPECT_EQ(events.pumps, 1);
}

TEST_F(MarksTest, NamesAllMarkedFiles) {
  EXPECT_THAT(MarkedPaths(zero), ElementsAre());
  for (int i = 0; i < 12; ++i) Add(ResultList::ZeroSize, std::to_string(i));
  MarkRows(zero, {12, 3});
  EXPECT_THAT(MarkedPaths(zero), ElementsAre("/data/2", "/data/11"));
}

TEST_F(MarksTest, ListsTheFirstTenMarkedFiles) {
  EXPECT_EQ(GetPrevList(results), "");
  for (int i = 0; i < 12; ++i) Add(ResultList::ZeroSize, std::to_string(i));
  EXPECT_EQ(GetPrevList(results), "");
  MarkRows(zero, {2, 5});
  EXPECT_EQ(GetPrevList(results), "/data/1\r\n/data/4\r\n");
}

TEST_F(MarksTest, AFileWithALineEndInItsNameIsListedOnOneLine) {
  Add(ResultList::ZeroSize, "a\r\n/home/me/x\r\r\ny");
  zero.SetChecked(1, true);
  EXPECT_EQ(GetPrevList(results), "/data/a\n\n/home/me/x\n\n\ny\r\n");
}

TEST_F(MarksTest, ListsTenPathsOfTenAndOneLineMoreFromElevenOn) {
  std::string ten;
  for (int i = 0; i < 12; ++i) Add(ResultList::ZeroSize, std::to_string(i));
  for (int i = 0; i < 10; ++i) {
    zero.SetChecked(i + 1, true);
    ten += "/data/" + std::to_string(i) + "\r\n";
  }
  EXPECT_EQ(GetPrevList(results), ten);
  zero.SetChecked(11, true);
  EXPECT_EQ(GetPrevList(results), ten + "and more ...\r\n");
  zero.SetChecked(12, true);
  EXPECT_EQ(GetPrevList(results), ten + "and more ...\r\n");
}

class PruneTest : public MarksTest {
 protected:
  // A row for each letter; of a capital one the file exists.
  void AddRows(const std::string& letters) {
    for (const char letter : letters) {
      Add(ResultList::ZeroSize, std::string(1, letter));
      if (letter >= 'A' && letter <= 'Z') files.MakeFile("/data/" + std::string(1, letter), "");
    }
  }
  std::string Rows() const {
    std::string rows;
    for (const std::string& text : Texts(zero)) rows += text;
    return rows;
  }
  // Lets events in after each file that was looked up.
  void PumpAtEachFile() {
    files.SetHook([this](const MemoryFileSystem::Call&) { events.seconds += 1; });
  }

  MemoryFileSystem files;
};

TEST_F(PruneTest, DropsMarkedRowsWhoseFilesHaveGone) {
  AddRows("aBcDef");
  MarkRows(zero, {1, 2, 3, 4, 6});
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "BDe");
  EXPECT_EQ(Marks(zero), "xx-");
  EXPECT_TRUE(zero.Visible());
}

TEST_F(PruneTest, LooksNoUnmarkedFileUp) {
  AddRows("aBc");
  MarkRows(zero, {2});
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "aBc");
  EXPECT_EQ(files.Calls().size(), 1U);
}

TEST_F(PruneTest, AFolderInTheFilesPlaceIsNoFileAndHiddenOnesAre) {
  AddRows("ab");
  files.MakeFolder("/data/a");
  files.MakeFile("/data/b", "");
  files.SetUnreadable("/data/b");
  Add(ResultList::ZeroSize, ".hidden");
  files.MakeFile("/data/.hidden", "");
  SetAllMarks(results, true);
  PruneMissing(results.Shown(), files, events);
  EXPECT_THAT(Texts(zero), ElementsAre("b", ".hidden"));
}

TEST_F(PruneTest, KeepsWhatCannotBeAskedFor) {
  AddRows("ABC");
  SetAllMarks(results, true);
  files.FailStat("/data/A", Errors::PermissionDenied);
  files.FailStat("/data/B", Errors::Device);
  files.Remove("/data/C");
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "AB");
}

TEST_F(PruneTest, DropsAllAndNone) {
  AddRows("abc");
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "abc");
  SetAllMarks(results, true);
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "");
  PruneMissing(results.Shown(), files, events);
  EXPECT_TRUE(zero.Visible());
}

TEST_F(PruneTest, EventsFindAHiddenListWithoutTheRowsThatWent) {
  AddRows("aBcdE");
  MarkRows(zero, {1, 2, 3, 5});
  PumpAtEachFile();
  std::vector<std::string> seen;
  events.onPump = [&] {
    EXPECT_FALSE(zero.Visible());
    seen.push_back(Rows());
    UpdateStatus(results, true, true);
  };
  PruneMissing(results.Shown(), files, events);
  EXPECT_THAT(seen, ElementsAre("BcdE", "BcdE", "BdE", "BdE"));
  EXPECT_EQ(panel.Text(), "2 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 3 files.");
}

TEST_F(PruneTest, RowsAreCountedAfresh) {
  AddRows("ab");
  SetAllMarks(results, true);
  PumpAtEachFile();
  events.onPump = [&] {
    if (events.pumps > 1) return;
    AddRows("cD");
    SetAllMarks(results, true);
  };
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "D");
}

TEST_F(PruneTest, KeepsToItsListWhenAnotherComesUp) {
  AddRows("abc");
  SetAllMarks(results, true);
  PumpAtEachFile();
  events.onPump = [&] { Show(ResultList::Duplicates); };
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(Rows(), "");
  EXPECT_TRUE(zero.Visible());
  EXPECT_TRUE(duplicates.Visible());
}

TEST_F(PruneTest, ManyRowsGoInOneStep) {
  for (int i = 0; i < 3000; ++i) {
    Add(ResultList::ZeroSize, std::to_string(i));
    if (i % 3 == 0) files.MakeFile("/data/" + std::to_string(i), "");
  }
  SetAllMarks(results, true);
  const std::uint64_t before = ListView().Arrangement();
  PruneMissing(results.Shown(), files, events);
  EXPECT_EQ(zero.Count(), 1000);
  EXPECT_EQ(zero.Cell(1000, kNameItem), "2997");
  EXPECT_EQ(ListView().Arrangement(), before + 2);  // one is the new list's own
}

TEST_F(PruneTest, AFailureShowsTheListAgain) {
  AddRows("a");
  SetAllMarks(results, true);
  PumpAtEachFile();
  events.onPump = [] { throw Failure(Errors::Device); };
  EXPECT_THROW(PruneMissing(results.Shown(), files, events), Failure);
  EXPECT_TRUE(zero.Visible());
  EXPECT_EQ(Rows(), "");
}

}  // namespace
}  // namespace tresmor
