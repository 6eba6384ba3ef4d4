#include "marker/smart_marker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <utility>

#include "base/failure.h"
#include "desk/history.h"
#include "desk/options.h"
#include "desk/scripted_event_queue.h"
#include "results/marks.h"
#include "results/rows.h"
#include "results/sort_list.h"
#include "support/fake_shell.h"
#include "support/memory_settings.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kContradiction[] = "You have select keep at least one file, please select either by date or version.";

class SmartMarkerTest : public testing::Test {
 protected:
  SmartMarkerTest() { results.tabMain.Select(2); }

  struct File {
    std::string path;
    std::int32_t dupGrp = 0;
    std::string date = "2001/01/01 00:00:00";
    std::int64_t size = 7;
    std::string version = "";  // none if empty
  };
  void Add(ResultList kind, const File& file) {
    Finding finding;
    const std::size_t name = file.path.rfind('/') + 1;
    finding.folder = file.path.substr(0, name);
    finding.name = file.path.substr(name);
    finding.dupGrp = file.dupGrp;
    finding.size = file.size;
    if (!file.version.empty()) finding.version = file.version;
    ListView& lst = results.List(kind);
    AddResultItem(lst, finding);
    lst.SetCell(lst.Count(), kDateItem, file.date);
  }
  void Add(const File& file) { Add(ResultList::Duplicates, file); }
  void AddFolder(const std::string& folder, bool selected = true) {
    const std::int32_t row = frm.lstFolder.AddRow(folder);
    frm.lstFolder.SetSelected(row, selected);
  }
  // Leaves the guard out, which would take a mark off again.
  void KeepNone() { frm.chkLeaveAtLeast1.Value = false; }

  // Lets events in after each group whose marks have changed.
  void PumpAtEachMark() {
    for (ListView& lst : results.lstResult) {
      lst.Listen([this](const Notice&) { events.seconds += 1; });
    }
  }

  bool Run() { return ClickMark(frm, results, ports); }
  bool RunPattern(const std::string& pattern) {
    frm.cmbPattern.SetText(pattern);
    return Run();
  }
  // What the settings have of the history, "-" for a key that isn't there.
  std::vector<std::string> Kept(int keys) const {
    std::vector<std::string> kept;
    for (int i = 0; i < keys; ++i) kept.push_back(settings.Get(kAppTitle, "PatternHistory", std::to_string(i), "-"));
    return kept;
  }
  std::vector<std::string> PatternList() const {
    std::vector<std::string> texts;
    for (std::int32_t i = 0; i < frm.cmbPattern.ListCount(); ++i) texts.push_back(frm.cmbPattern.List(i));
    return texts;
  }
  static std::string Marks(const ListView& lst) {
    std::string marks;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) marks += lst.Checked(row) ? 'x' : '-';
    return marks;
  }
  std::string Marks() const { return Marks(results.Shown()); }
  // The names of the marked files.
  std::string Marked() const {
    std::string names;
    for (std::int32_t row = 1; row <= results.Shown().Count(); ++row) {
      if (results.Shown().Checked(row)) names += results.Shown().Cell(row, kNameItem) + " ";
    }
    return names;
  }

  Panel panel;
  ResultLists results{panel};
  Timer tmrUpdate{1000};
  FrmSmartDel frm;
  tests::ScriptedEventQueue events;
  ScriptedDialogs dialogs;
  MemorySettings settings;
  const Presets presets = BuildPresets(FakeShell());
  std::vector<std::string> guarded;
  std::function<void()> duringWarning;
  bool goesOn = true;
  const ClickMarkPorts ports{
      {events, dialogs,
       [this](GuardedId id) {
         const GuardedMessage& message = kGuardedMessages[id];
         if (duringWarning) duringWarning();
         guarded.push_back(message.Title + ("|" + std::to_string(message.IconType)) + "|" + message.Message);
         return goesOn;
       }},
      tmrUpdate,
      settings,
      presets};
  ListView& duplicates = results.List(ResultList::Duplicates);
};

TEST_F(SmartMarkerTest, ControlsStartWithTheirDesignValues) {
  EXPECT_TRUE(frm.chkLeaveAtLeast1.Value());
  EXPECT_TRUE(frm.chkSubFolder.Value());
  EXPECT_EQ(frm.chkLeaveAtLeast1.Caption(), "Keep at least one:");
  EXPECT_EQ(frm.chkSubFolder.Caption(), "Sub-folder");
  EXPECT_EQ(frm.lstLeaveDate.ListIndex(), 1);
  for (const ChoiceList* list : {&frm.lstLeaveVer, &frm.lstDate, &frm.lstSize, &frm.lstVer}) {
    EXPECT_EQ(list->ListIndex(), 0);
  }
  EXPECT_EQ(frm.cmbPattern.Text(), "");
  EXPECT_EQ(frm.cmbPattern.ListCount(), 0);
  EXPECT_EQ(frm.lstFolder.Column(1).text, "Folders");
  EXPECT_EQ(frm.lstFolder.Count(), 0);
}

TEST_F(SmartMarkerTest, ListsHaveTheirEntries) {
  const auto entries = [](const ChoiceList& list) {
    std::vector<std::string> texts;
    for (std::int32_t i = 0; i < list.ListCount(); ++i) texts.push_back(list.List(i));
    return texts;
  };
  EXPECT_THAT(entries(frm.lstLeaveDate), ElementsAre("(Unspecified)", "Keep Newest Files", "Keep Oldest Files!"));
  EXPECT_THAT(entries(frm.lstLeaveVer), ElementsAre("(Unspecified)", "Keep Newest Version", "Keep Oldest Version!"));
  EXPECT_THAT(entries(frm.lstDate), ElementsAre("(Unspecified)", "Newer File", "Older File!"));
  EXPECT_THAT(entries(frm.lstSize), ElementsAre("(Unspecified)", "Largest File", "Smallest File!"));
  EXPECT_THAT(entries(frm.lstVer), ElementsAre("(Unspecified)", "Newer Version", "Older Version!"));
}

TEST_F(SmartMarkerTest, AContradictionMarksNothingAndKeepsTheDialogOpen) {
  Add({"/d/a"});
  Add({"/d/b"});
  AddFolder("/d/");
  frm.lstLeaveDate.Choose(0);
  frm.lstDate.Choose(1);
  dialogs.boxes = {{.text = kContradiction, .title = "", .icon = BoxIcon::Information}};
  events.onPump = [this] {
    events.seconds += 1;
    events.Wake();
  };
  std::vector<std::uint32_t> grounds;
  frm.lstLeaveDate.Listen([&](const Notice& notice) {
    EXPECT_TRUE(dialogs.boxes.empty()) << "flashed before the box";
    if (notice.when == Notice::When::After) grounds.push_back(frm.lstLeaveDate.BackColor());
  });
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "--");
  EXPECT_THAT(grounds, ElementsAre(kDesktopGround, kWindowGround, kDesktopGround, kWindowGround));
  EXPECT_THAT(settings.saved, IsEmpty());
  EXPECT_THAT(PatternList(), IsEmpty());
  EXPECT_FALSE(tmrUpdate.Enabled());
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
}

TEST_F(SmartMarkerTest, EitherListOrNoWishForOneFileIsNoContradiction) {
  frm.lstLeaveDate.Choose(0);
  frm.lstLeaveVer.Choose(2);
  EXPECT_TRUE(Run());
  EXPECT_THAT(guarded, IsEmpty());
  frm.lstLeaveVer.Choose(0);
  KeepNone();
  EXPECT_TRUE(Run());
}

TEST_F(SmartMarkerTest, WarnsWhereNoFileIsKeptAndGoesOnWhateverTheAnswer) {
  Add({"/d/a"});
  frm.cmbPattern.SetText("a");
  KeepNone();
  goesOn = false;
  EXPECT_TRUE(Run());
  EXPECT_THAT(guarded,
              ElementsAre("Smart Marker|2|Both original and duplicate files are included in the result list, it is "
                          "recommended to keep at least one duplicate file. To do this automatically, select 'Keep at "
                          "least one'."));
  EXPECT_EQ(Marks(), "x");
}

TEST_F(SmartMarkerTest, MarksTheFilesOfSelectedFoldersAndBelow) {
  for (const char* path : {"/a/1", "/a/b/2", "/ab/3", "/A/4", "/c/5"}) Add({path});
  AddFolder("/a/");
  AddFolder("/c/", false);
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "1 2 ");
}

TEST_F(SmartMarkerTest, MarksTheFilesOfSelectedFoldersAlone) {
  for (const char* path : {"/a/1", "/a/b/2", "/c/d/3", "/c/4"}) Add({path});
  AddFolder("/a/");
  AddFolder("/c/d/");
  frm.chkSubFolder.Value = false;
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "1 3 ");
}

TEST_F(SmartMarkerTest, FoldersAloneAreToldApartByCaseToo) {
  for (const char* path : {"/a/1", "/A/2"}) Add({path});
  AddFolder("/A/");
  frm.chkSubFolder.Value = false;
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "2 ");
}

TEST_F(SmartMarkerTest, ARootTakesEverythingBelowIt) {
  for (const char* path : {"/1", "/a/b/2"}) Add({path});
  AddFolder("/");
  AddFolder("/zzz/zzz/");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx");
}

TEST_F(SmartMarkerTest, MarksNamesByPatterns) {
  for (const char* name : {"photo.jpg", "Apple.txt", "photo.jpg.bak", "b.txt"}) Add({std::string("/a.d/") + name});
  frm.cmbPattern.SetText("*.JPG; a*");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "photo.jpg Apple.txt ");
}

TEST_F(SmartMarkerTest, EmptyPatternsMarkNothing) {
  Add({"/d/b"});
  Add({"/d/"});  // a name that is empty
  KeepNone();
  for (const char* pattern : {"", ";", "  ", "a; ;"}) {
    frm.cmbPattern.SetText(pattern);
    EXPECT_TRUE(Run());
    EXPECT_EQ(Marks(), "--") << pattern;
  }
}

TEST_F(SmartMarkerTest, AdditiveRulesLeaveOtherMarks) {
  for (const char* path : {"/a/1", "/b/2", "/c/3"}) Add({path});
  duplicates.SetChecked(3, true);
  AddFolder("/a/");
  frm.cmbPattern.SetText("2");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xxx");
}

TEST_F(SmartMarkerTest, AnIllFormedPatternStopsTheRun) {
  for (const char* name : {"1", "2", "3"}) Add({std::string("/d/") + name});
  frm.cmbPattern.SetText("1;[2;3");
  frm.lstDate.Choose(1);
  dialogs.boxes = {{.text = "Run-time error '93':\r\n\r\nInvalid pattern string", .title = ""}};
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "x--");
  EXPECT_EQ(duplicates.Count(), 3);
  EXPECT_THAT(settings.saved, IsEmpty());
  EXPECT_THAT(PatternList(), IsEmpty());
  EXPECT_TRUE(tmrUpdate.Enabled());
}

TEST_F(SmartMarkerTest, FoldersAreMarkedBeforeAnIllFormedPatternStopsTheRun) {
  for (const char* path : {"/a/1", "/b/2"}) Add({path});
  AddFolder("/b/");
  frm.cmbPattern.SetText("[");
  dialogs.boxes = {{.text = "Run-time error '93':\r\n\r\nInvalid pattern string", .title = ""}};
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "-x");
}

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

// A group rule leaves no group marked wholly and rewrites every one, so the order shows only on the way.
TEST_F(SmartMarkerTest, OneOfEachGroupIsKeptBeforeTheGroupRulesMarkAnew) {
  Add({"/d/old", 1, "2001/01/01 00:00:00"});
  Add({"/d/new", 1, "2002/01/01 00:00:00"});
  SetAllMarks(results, true);
  frm.lstDate.Choose(1);
  PumpAtEachMark();
  std::vector<std::string> seen;
  events.onPump = [&] { seen.push_back(Marks()); };
  EXPECT_TRUE(Run());
  EXPECT_THAT(seen, ElementsAre("x-", "-x"));
}

TEST_F(SmartMarkerTest, ARunWithNothingChosenKeepsOneOfEachGroupAndSorts) {
  Add({"/d/1", 2, "2001/01/01 00:00:00"});
  Add({"/d/2", 1, "2001/01/01 00:00:00"});
  Add({"/d/3", 2, "2002/01/01 00:00:00"});
  Add({"/d/4", 1, "2002/01/01 00:00:00"});
  duplicates.SetChecked(1, true);
  duplicates.SetChecked(3, true);
  duplicates.SetChecked(4, true);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "4 1 ");
  EXPECT_EQ(duplicates.Cell(1, kNameItem), "2");
  EXPECT_EQ(duplicates.Column(3).text, "^ Duplicate #");
  EXPECT_EQ(duplicates.Count(), 4);
}

TEST_F(SmartMarkerTest, WorksOnTheListOnShowAlone) {
  Add(ResultList::ZeroSize, {"/d/a", -1});
  Add({"/d/a"});
  frm.cmbPattern.SetText("*");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_TRUE(duplicates.Checked(1));
  EXPECT_FALSE(results.List(ResultList::ZeroSize).Checked(1));
}

TEST_F(SmartMarkerTest, KeepsToItsListWhenAnotherComesUpBetweenRules) {
  results.tabMain.Select(3);
  ListView& sameName = results.List(ResultList::SameName);
  const std::vector<std::pair<std::string, std::int64_t>> files = {
      {"2001/01/01 00:00:00", 30}, {"2002/01/01 00:00:00", 10}, {"2003/01/01 00:00:00", 20}};
  for (const auto& [date, size] : files) {
    Add(ResultList::SameName, {"/d/a", -1, date, size});
    Add({"/d/a", 1, date, size});
  }
  SetAllMarks(results, true);
  frm.lstDate.Choose(1);
  frm.lstSize.Choose(1);
  PumpAtEachMark();
  std::vector<std::string> seen;
  events.onPump = [&] {
    results.tabMain.Select(2);
    seen.push_back(Marks(sameName));
  };
  EXPECT_TRUE(Run());
  EXPECT_THAT(seen, ElementsAre("xx-", "-xx", "x-x"));
  EXPECT_EQ(Marks(duplicates), "---");
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
  EXPECT_EQ(sameName.Column(1).text, "^ Name");
}

TEST_F(SmartMarkerTest, KeepsToItsListWhenAnotherComesUpDuringTheWarning) {
  Add(ResultList::ZeroSize, {"/d/a", -1});
  Add({"/d/a"});
  AddFolder("/d/");
  frm.cmbPattern.SetText("*");
  KeepNone();
  duringWarning = [this] {
    EXPECT_EQ(Marks(duplicates), "-");  // it comes before anything is marked
    results.tabMain.Select(1);
  };
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(duplicates), "x");
  EXPECT_EQ(Marks(results.List(ResultList::ZeroSize)), "-");
}

TEST_F(SmartMarkerTest, KeepsThePatternAndAsksForARecountAtTheEnd) {
  Add({"/d/a"});
  EXPECT_TRUE(RunPattern("*.x; y"));
  EXPECT_THAT(Kept(2), ElementsAre("*.x; y", "-"));
  EXPECT_TRUE(tmrUpdate.Enabled());
  EXPECT_TRUE(RunPattern(""));
  EXPECT_THAT(Kept(3), ElementsAre("", "*.x; y", "-"));
  EXPECT_THAT(PatternList(), ElementsAre("", "*.x; y"));
}

TEST_F(SmartMarkerTest, TheHistoryEndsAtTheSeparatorAndHoldsFourPatterns) {
  AddPresets(frm.cmbPattern, presets.FileTypeDizArr);
  for (const char* pattern : {"1", "2", "3", "4", "5"}) EXPECT_TRUE(RunPattern(pattern));
  EXPECT_THAT(Kept(6), ElementsAre("5", "4", "3", "2", "-", "-"));
  EXPECT_THAT(PatternList(), ElementsAre("5", "4", "3", "2", kSeparator, "Photos / Images", "Music / Songs",
                                         "Movie Clips", "Downloads", "All Files"));
  EXPECT_TRUE(RunPattern("3"));
  EXPECT_THAT(Kept(5), ElementsAre("3", "5", "4", "2", "-"));
}

TEST_F(SmartMarkerTest, AHistoryThatCannotBeKeptFailsTheRunButLeavesTheMarks) {
  Add({"/d/a"});
  KeepNone();
  settings.Fail(Errors::PermissionDenied, "PatternHistory");
  EXPECT_THROW(RunPattern("a"), Failure);
  EXPECT_EQ(Marks(), "x");
  EXPECT_FALSE(tmrUpdate.Enabled());
}

TEST_F(SmartMarkerTest, AnEmptyListMarksNothingAndClosesTheDialog) {
  AddFolder("/d/");
  frm.cmbPattern.SetText("*");
  frm.lstDate.Choose(1);
  EXPECT_TRUE(Run());
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
}

TEST_F(SmartMarkerTest, TooManyMarksOfOneGroupFail) {
  results.tabMain.Select(1);
  for (int i = 0; i < 32'768; ++i) Add(ResultList::ZeroSize, {"/d/a", -1});
  frm.cmbPattern.SetText("a");
  try {
    Run();
    FAIL() << "row 32768 was counted";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), Errors::Overflow);
  }
  EXPECT_THAT(settings.saved, IsEmpty());
}

}  // namespace
}  // namespace tresmor
