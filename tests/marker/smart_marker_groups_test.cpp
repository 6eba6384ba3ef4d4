// The rules that mark groups: which file of each stays.
#include <gmock/gmock.h>

#include <map>

#include "marker/smart_marker_world.h"
#include "results/marks.h"

namespace tresmor {
namespace {

using tests::SmartMarkerTest;

// What each entry does to a group of three marked rows whose second one has the lowest value and whose third one has
// the highest.
TEST_F(SmartMarkerTest, EachEntryLeavesItsOwnSurvivor) {
  struct Case {
    ChoiceList& list;
    std::int32_t index;
    char survivor;
  };
  const std::vector<Case> cases = {
      {frm.lstLeaveDate, 2, 'l'}, {frm.lstLeaveDate, 1, 'h'}, {frm.lstLeaveVer, 1, 'l'}, {frm.lstLeaveVer, 2, 'h'},
      {frm.lstDate, 1, 'l'},      {frm.lstDate, 2, 'h'},      {frm.lstSize, 1, 'l'},     {frm.lstSize, 2, 'h'},
      {frm.lstVer, 1, 'l'},       {frm.lstVer, 2, 'h'},
  };
  results.tabMain.Select(4);
  Add(ResultList::Portions, {"/d/m", 1, "2002/01/01 00:00:00", 20, "1.9"});
  Add(ResultList::Portions, {"/d/l", 1, "2001/01/01 00:00:00", 10, "1.2"});
  Add(ResultList::Portions, {"/d/h", 1, "2003/01/01 00:00:00", 30, "1.10"});
  for (const Case& one : cases) {
    const bool isGuard = &one.list == &frm.lstLeaveDate || &one.list == &frm.lstLeaveVer;
    frm.chkLeaveAtLeast1.Value = isGuard;
    for (ChoiceList* list : {&frm.lstLeaveDate, &frm.lstLeaveVer, &frm.lstDate, &frm.lstSize, &frm.lstVer}) {
      list->Choose(0);
    }
    one.list.Choose(one.index);
    SetAllMarks(results, true);
    EXPECT_TRUE(Run());
    const std::map<char, std::string> marks = {{'l', "x-x"}, {'h', "xx-"}};
    EXPECT_EQ(Marks(), marks.at(one.survivor)) << one.list.List(one.index);

    // A group that is not marked wholly: a guard leaves it, a group rule does not.
    results.Shown().SetChecked(1, false);
    results.Shown().SetChecked(2, true);
    results.Shown().SetChecked(3, true);
    EXPECT_TRUE(Run());
    EXPECT_EQ(Marks(), isGuard ? "-xx" : marks.at(one.survivor)) << one.list.List(one.index);
  }
}

TEST_F(SmartMarkerTest, NothingIsKeptWithoutTheWishForIt) {
  Add({"/d/1"});
  Add({"/d/2"});
  SetAllMarks(results, true);
  frm.lstLeaveVer.Choose(1);
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx");
}

TEST_F(SmartMarkerTest, KeepsTheNewestOfAGroupThatLiesWhollyInAFolder) {
  Add({"/d/old", 1, "2001/01/01 00:00:00"});
  Add({"/d/new", 1, "2002/01/01 00:00:00"});
  AddFolder("/d/");
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-");
}

TEST_F(SmartMarkerTest, LeavesAGroupThatLiesPartlyInAFolder) {
  Add({"/d/old", 1, "2001/01/01 00:00:00"});
  Add({"/d/new", 1, "2003/01/01 00:00:00"});
  Add({"/e/other", 1, "2002/01/01 00:00:00"});
  AddFolder("/d/");
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx-");
}

TEST_F(SmartMarkerTest, TheDateRescuesFirstAndTheVersionFindsNothingLeft) {
  Add({"/d/1", 1, "2001/01/01 00:00:00", 7, "1.1"});
  Add({"/d/2", 1, "2002/01/01 00:00:00", 7, "1.2"});
  SetAllMarks(results, true);
  frm.lstLeaveVer.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-");
}

TEST_F(SmartMarkerTest, NewerFileUnmarksTheOldestWhateverItWas) {
  Add({"/d/2", 1, "2002/01/01 00:00:00"});
  Add({"/d/1", 1, "2001/01/01 00:00:00"});
  Add({"/d/3", 1, "2003/01/01 00:00:00"});
  duplicates.SetChecked(2, true);
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-x");
}

TEST_F(SmartMarkerTest, OfEqualValuesTheFirstSurvives) {
  Add({"/d/1", 1, "2001/01/01 00:00:00"});
  Add({"/d/2", 1, "2002/01/01 00:00:00"});
  Add({"/d/3", 1, "2002/01/01 00:00:00"});
  frm.lstDate.Choose(2);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-x");
}

TEST_F(SmartMarkerTest, DuplicatesHaveOneSizeSoTheFirstSurvives) {
  for (const char* name : {"1", "2", "3"}) Add({std::string("/d/") + name});
  frm.lstSize.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "-xx");
}

TEST_F(SmartMarkerTest, TheListOfEmptyFilesIsOneGroup) {
  results.tabMain.Select(1);
  Add(ResultList::ZeroSize, {"/d/1", -1, "2002/01/01 00:00:00", 0});
  Add(ResultList::ZeroSize, {"/e/2", -1, "2001/01/01 00:00:00", 0});
  Add(ResultList::ZeroSize, {"/f/3", -1, "2003/01/01 00:00:00", 0});
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-x");
}

TEST_F(SmartMarkerTest, AFileWithoutAVersionIsTheLowest) {
  Add({"/d/1", 1, "2001/01/01 00:00:00", 7, "0.0.0.1"});
  Add({"/d/2", 1});
  frm.lstVer.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-");
}

TEST_F(SmartMarkerTest, TheLastRowIsTakenIntoTheGroupBeforeIt) {
  Add({"/d/1", 1, "2002/01/01 00:00:00"});
  Add({"/d/2", 1, "2003/01/01 00:00:00"});
  Add({"/d/3", 2, "2001/01/01 00:00:00"});
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx-");
  frm.lstDate.Choose(2);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-x");
}

TEST_F(SmartMarkerTest, NamesOfTheSameNameListAreGroupsWithoutRegardToCase) {
  results.tabMain.Select(3);
  Add(ResultList::SameName, {"/d/b", -1, "2001/01/01 00:00:00"});
  Add(ResultList::SameName, {"/d/A", -1, "2001/01/01 00:00:00"});
  Add(ResultList::SameName, {"/e/B", -1, "2002/01/01 00:00:00"});
  Add(ResultList::SameName, {"/e/a", -1, "2002/01/01 00:00:00"});
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "a B ");
}

TEST_F(SmartMarkerTest, TheLastOfDateSizeAndVersionRemains) {
  results.tabMain.Select(4);
  Add(ResultList::Portions, {"/d/1", 1, "2001/01/01 00:00:00", 30, "1.2"});
  Add(ResultList::Portions, {"/d/2", 1, "2002/01/01 00:00:00", 10, "1.3"});
  Add(ResultList::Portions, {"/d/3", 1, "2003/01/01 00:00:00", 20, "1.1"});
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "-xx");
  frm.lstSize.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "x-x");
  frm.lstVer.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx-");
}

}  // namespace
}  // namespace tresmor
