// Searches through the controls, over a file system in memory.
#include "shell/search_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "results/counters.h"
#include "results/sort_list.h"
#include "shell/job_observer.h"
#include "shell/search_fixture.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using SearchControlTest = SearchFixture;

TEST_F(SearchControlTest, ControlsStartWithTheirDesignValues) {
  EXPECT_TRUE(frm.lstSrchType.Ticked(0) && frm.lstSrchType.Ticked(1) && frm.lstSrchType.Ticked(2));
  EXPECT_FALSE(frm.lstSrchType.Ticked(3));
  EXPECT_TRUE(frm.chkProtectWinDir.Value());
  EXPECT_FALSE(frm.chkTolerant.Value() || frm.chkHidden.Value() || frm.chkVer.Value());
  EXPECT_EQ(frm.tmrProgress.Interval(), 1000);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.lstPath.Columns(), 6);
}

TEST_F(SearchControlTest, FindsEveryKindAndShowsIt) {
  files.MakeFile("/data/a/one.txt", "same");
  files.MakeFile("/data/b/two.txt", "same");
  files.MakeFile("/data/b/one.txt", "else");
  files.MakeFile("/data/empty", "");
  files.MakeFile("/data/zebra", "longer");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), ElementsAre("empty"));
  EXPECT_THAT(Names(ResultList::Duplicates), UnorderedElementsAre("one.txt", "two.txt"));
  EXPECT_THAT(Names(ResultList::SameName), ElementsAre("one.txt", "one.txt"));
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(2/1)");
  EXPECT_EQ(frm.results.List(ResultList::Duplicates).ForeColor(1), GroupColors[0]);
  EXPECT_EQ(control.SrchFileCnt(), 4);
}

TEST_F(SearchControlTest, BringsUpAListWithFindings) {
  files.MakeFile("/data/a", "same");
  files.MakeFile("/data/b", "same");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(frm.results.mIntCurFrame, 1);
}

TEST_F(SearchControlTest, OneFileReportsNoneSearched) {
  MakeFiles(1);
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 0 files.");
}

TEST_F(SearchControlTest, HundredFilesReportNinetyNine) {
  MakeFiles(100);
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 99 files.");
}

TEST_F(SearchControlTest, TellsHowLongItTookAsATimeOfDay) {
  for (const auto& [seconds, told] : std::map<int, std::string>{{3723, "01:02:03"}, {24 * 3600 + 59, "00:00:59"}}) {
    reached = acted = false;
    AtFirst(MemoryFileSystem::Op::List, [this, more = seconds] { events.seconds += more; });
    frm.lstPath.Clear();
    AddRow("/data/*.*");
    files.MakeFolder("/data");
    control.RunSearch();
    EXPECT_TRUE(acted);
    EXPECT_EQ(frm.msgBar.Text(), "Completed in " + told + ", searched 0 files.");
  }
}

TEST_F(SearchControlTest, TellsItsPhasesInThePanel) {
  MakeFiles(3);
  AddRow("/data/*.*");
  frm.lstSrchType.SetTicked(3, true);
  control.RunSearch();
  EXPECT_THAT(messages, ElementsAre("Start ...", "Loading files ...", "Searching same file name  ...",
                                    "Searching duplicated files ...", "Searching file portions ...",
                                    "Showing search result - file portions... [value] of 3 files...",
                                    "Completed in 00:00:00, searched 2 files."));
}

TEST_F(SearchControlTest, TellsThatThereAreNoFiles) {
  files.MakeFolder("/data");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_THAT(messages, ElementsAre("Start ...", "Loading files ...", "No Files found.",
                                    "Completed in 00:00:00, searched 0 files."));
}

TEST_F(SearchControlTest, LeavesBarAndTimerAtRest) {
  MakeFiles(5);
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(frm.pbMain.Value(), 0);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.tmrProgress.Tag(), "");
  EXPECT_THAT(events.timers, IsEmpty());
}

TEST_F(SearchControlTest, TicksShowTheWalkAndThenTheFigure) {
  MakeFiles(4);
  AddRow("/data/*.*");
  std::map<MemoryFileSystem::Op, std::string> seen;
  std::atomic<int> waiting{-1};
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op != MemoryFileSystem::Op::List && call.op != MemoryFileSystem::Op::Read) return;
    int none = -1;
    if (!waiting.compare_exchange_strong(none, static_cast<int>(call.op))) return;
    events.Wake();
    waiting.wait(static_cast<int>(call.op));
  });
  events.onPump = [&] {
    const int op = waiting;
    if (op < 0) return;
    events.seconds += 1;
    events.Tick();
    seen.emplace(static_cast<MemoryFileSystem::Op>(op), frm.msgBar.Text());
    waiting = -1;
    waiting.notify_all();
  };
  control.RunSearch();
  EXPECT_EQ(seen[MemoryFileSystem::Op::List], "Searching /data/*.* - 00:00:01 elapsed.");
  EXPECT_THAT(seen[MemoryFileSystem::Op::Read],
              testing::MatchesRegex("Search duplicate files in [0-9]* of 4 files... - "
                                    "00:00:0[0-9] elapsed."));
  EXPECT_EQ(progress.pbItemsCnt, 4);
}

TEST_F(SearchControlTest, EmptiesTheListsFirst) {
  files.MakeFile("/data/a", "");
  AddRow("/data/*.*");
  control.RunSearch();
  files.Remove("/data/a");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), IsEmpty());
  EXPECT_EQ(frm.results.tabMain.Caption(1), "Zero Size(0)");
}

TEST_F(SearchControlTest, TabsTellOfNoRowsWhileItWalks) {
  files.MakeFile("/data/1/empty", "");
  files.MakeFile("/data/1/a", "same");
  files.MakeFile("/data/2/a", "same");
  files.MakeFile("/data/2/b", "else");
  files.FailOpen("/data/2/b", Errors::PermissionDenied);
  AddRow("/data/*.*");
  const auto captions = [&] {
    std::vector<std::string> texts;
    for (std::int32_t tab = 1; tab <= frm.results.tabMain.Count(); ++tab) {
      texts.push_back(frm.results.tabMain.Caption(tab));
    }
    return texts;
  };
  const auto full =
      ElementsAre("Zero Size(1)", "Duplicates(2/1)", "Same Name(2/1)", "Portions(0/0)", "Report - read errors(1)");
  control.RunSearch();
  EXPECT_THAT(captions(), full);
  std::vector<std::string> walking;
  AtFirst(MemoryFileSystem::Op::List, [&] { walking = captions(); });
  control.RunSearch();
  EXPECT_THAT(walking, ElementsAre("Zero Size(0)", "Duplicates(0/0)", "Same Name(0/0)", "Portions(0/0)",
                                   "Report - read errors(0)"));
  EXPECT_THAT(captions(), full);
}

// The zero-size files are sorted when the search has ended, the read errors never.
TEST_F(SearchControlTest, MarksOfHeadersStayUntilTheirListIsSorted) {
  files.MakeFile("/data/b", "");
  files.MakeFile("/data/a", "");
  for (const char* path : {"/data/w", "/data/y", "/data/x"}) {
    files.MakeFile(path, "same");
    files.FailOpen(path, Errors::PermissionDenied);
  }
  AddRow("/data/*.*");
  frm.lstSrchType.SetTicked(2, false);  // or the table would be in the order of the names
  control.RunSearch();
  ListView& zero = frm.results.List(ResultList::ZeroSize);
  ListView& errors = frm.results.List(ResultList::ReadErrors);
  const auto unsorted = ElementsAre("x", "y", "w");
  EXPECT_THAT(Names(ResultList::ReadErrors), unsorted);
  ClickColumn(zero, kFolderItem + 1);
  ClickColumn(errors, kNameItem + 1);
  std::string ofZero;
  std::string ofErrors;
  AtFirst(MemoryFileSystem::Op::List, [&] {
    ofZero = zero.Column(kFolderItem + 1).text;
    ofErrors = errors.Column(kNameItem + 1).text;
  });
  control.RunSearch();
  EXPECT_EQ(ofZero, "v In Folder");
  EXPECT_EQ(ofErrors, "v Name");
  EXPECT_EQ(zero.Column(kFolderItem + 1).text, "In Folder");
  EXPECT_EQ(zero.Column(kNameItem + 1).text, "^ Name");
  EXPECT_THAT(Names(ResultList::ZeroSize), ElementsAre("a", "b"));
  EXPECT_EQ(errors.Column(kNameItem + 1).text, "v Name");
  EXPECT_THAT(Names(ResultList::ReadErrors), unsorted);
}

TEST_F(SearchControlTest, InputsAreLockedWhileItRuns) {
  const std::vector<Control*> inputs = {&frm.frmSelPath,  &frm.cmdNewSrch,     &frm.lstSrchType,
                                        &frm.chkTolerant, &frm.chkHidden,      &frm.chkProtectWinDir,
                                        &frm.chkVer,      &frm.mnuSrchSession, &frm.mnuFile};
  const auto enabled = [&] {
    return std::count_if(inputs.begin(), inputs.end(), [](const Control* input) { return input->Enabled(); });
  };
  MakeFiles(1);
  AddRow("/data/*.*");
  frm.preview.imgPreview.File = "/data/old.jpg";
  frm.preview.txtFilename.Text = "old.jpg";
  AtFirst(MemoryFileSystem::Op::List, [&] {
    EXPECT_EQ(frm.cmdSrch.Caption(), "&Cancel");
    EXPECT_EQ(enabled(), 0);
    EXPECT_TRUE(frm.cmdSrch.Enabled());
    EXPECT_EQ(frm.preview.imgPreview.File(), "");
    EXPECT_EQ(frm.preview.txtFilename.Text(), "");
  });
  control.RunSearch();
  EXPECT_TRUE(acted);
  EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
  EXPECT_EQ(enabled(), 9);
}

TEST_F(SearchControlTest, InputsAreFreeAgainAfterAFailure) {
  AddIncludedRow(frm.lstPath, {"/data/*.*", "Yes", "many", "", "", "Yes"});
  EXPECT_THROW(control.RunSearch(), Failure);
  EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
  EXPECT_TRUE(frm.frmSelPath.Enabled() && frm.mnuFile.Enabled());
  frm.lstPath.Clear();
  for (int i = 0; i < 32'768; ++i) frm.lstPath.AddRow("/data/*.*");
  EXPECT_THROW(control.RunSearch(), Failure);
  EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
  EXPECT_TRUE(frm.frmSelPath.Enabled() && frm.mnuFile.Enabled());
}

TEST_F(SearchControlTest, HighlightsTheRowsItWalks) {
  MakeFiles(1);
  AddExcluded("/data/out/");
  AddRow("/data/out/*.*");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_FALSE(frm.lstPath.Selected(1) || frm.lstPath.Selected(2));
  EXPECT_TRUE(frm.lstPath.Selected(3));
}

TEST_F(SearchControlTest, GroupsWithoutATargetAreLeftOut) {
  files.MakeFile("/area/a", "same");
  files.MakeFile("/area/b", "same");
  files.MakeFile("/data/c", "else");
  AddRow("/data/*.*");
  AddRow("/area/*.*", "No");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::Duplicates), IsEmpty());
}

// With all rows as targets a read error is reported; with an excluded row among them the range may be dissolved.
TEST_F(SearchControlTest, AnExcludedRowMeansThatNotAllAreTargets) {
  files.MakeFile("/data/a", "same");
  files.MakeFile("/data/b", "else");
  files.FailOpen("/data/a", Errors::PermissionDenied);
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ReadErrors), ElementsAre("a"));
  AddExcluded("/data/out/");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ReadErrors), IsEmpty());
}

TEST_F(SearchControlTest, ReadsTheTicksOfItsCheckBoxes) {
  files.MakeFile("/data/.hidden", "");
  files.MakeFile("/usr/a", "");
  AddRow("/data/*.*");
  AddRow("/usr/*.*");
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), IsEmpty());
  frm.chkHidden.Value = true;
  frm.chkProtectWinDir.Value = false;
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), ElementsAre(".hidden", "a"));
  frm.lstSrchType.SetTicked(0, false);
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), IsEmpty());
}

// A session may bring such boxes: they aren't ticked, but of hidden files it counts whether theirs is off.
TEST_F(SearchControlTest, AGrayedBoxIsNotTicked) {
  files.MakeFile("/data/.hidden", "");
  files.MakeFile("/usr/a", "");
  files.MakeFile("/data/b", std::string(200, 'b'));
  files.MakeFile("/data/c", std::string(199, 'b') + "c");
  AddRow("/data/*.*");
  AddRow("/usr/*.*");
  for (CheckBox* box : {&frm.chkHidden, &frm.chkProtectWinDir, &frm.chkTolerant}) box->Value = kGrayed;
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), ElementsAre(".hidden", "a"));
  EXPECT_THAT(Names(ResultList::Duplicates), IsEmpty());
  frm.chkTolerant.Value = true;
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::Duplicates), UnorderedElementsAre("b", "c"));
}

TEST_F(SearchControlTest, ReadsVersionsIfTicked) {
  files.MakeFile("/data/a", "");
  AddRow("/data/*.*");
  ListView& zero = frm.results.List(ResultList::ZeroSize);
  control.RunSearch();
  EXPECT_LT(zero.SubItems(1), kVersionItem);
  frm.chkVer.Value = true;
  control.RunSearch();
  EXPECT_EQ(zero.Cell(1, kVersionItem), "a");
  EXPECT_EQ(zero.Tag(), kVersionTag);
}

TEST_F(SearchControlTest, ManyRowsAllArrive) {
  for (int i = 0; i < 10'000; ++i) files.MakeFile("/data/" + std::to_string(i), "");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(frm.results.List(ResultList::ZeroSize).Count(), 10'000);
}

TEST_F(SearchControlTest, TheSearchStandsStillWhileABoxIsOpen) {
  MakeFiles(2);
  shell.programFilesDir.clear();
  dialogs.boxes = {{.text = "Error getting program files folder location.", .title = "", .icon = BoxIcon::None}};
  dialogs.onBox = [&] {
    events.Pump(std::chrono::milliseconds(0));
    EXPECT_THAT(files.Calls(), IsEmpty());
  };
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_EQ(control.SrchFileCnt(), 1);
}

TEST_F(SearchControlTest, CancelDuringTheWalkGivesTheFigureNought) {
  MakeFiles(100);
  AddRow("/data/*.*");
  CancelAtFirst(MemoryFileSystem::Op::List);
  control.RunSearch();
  EXPECT_EQ(control.SrchFileCnt(), 0);
  EXPECT_THAT(messages, testing::Contains("Stopping ..."));
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 0 files.");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_THAT(Names(ResultList::Duplicates), IsEmpty());
}

TEST_F(SearchControlTest, CancelDuringTheComparisonKeepsWhatTheListsHold) {
  MakeFiles(4);
  files.MakeFile("/data/empty", "");
  AddRow("/data/*.*");
  CancelAtFirst(MemoryFileSystem::Op::Open);
  control.RunSearch();
  EXPECT_THAT(Names(ResultList::ZeroSize), ElementsAre("empty"));
  EXPECT_EQ(frm.results.tabMain.Caption(1), "Zero Size(1)");
  EXPECT_EQ(control.SrchFileCnt(), 4);
}

TEST_F(SearchControlTest, ASearchAfterACancelledOneRunsThrough) {
  MakeFiles(4);
  AddRow("/data/*.*");
  CancelAtFirst(MemoryFileSystem::Op::List);
  control.RunSearch();
  control.RunSearch();
  EXPECT_EQ(control.SrchFileCnt(), 3);
  EXPECT_EQ(frm.results.List(ResultList::Duplicates).Count(), 4);
}

TEST_F(SearchControlTest, ACancelWithoutASearchDoesNothing) {
  frm.msgBar.Text = "Completed";
  control.CancelSearch();
  EXPECT_EQ(frm.msgBar.Text(), "Completed");
  EXPECT_FALSE(progress.CancelSrch);
}

TEST_F(SearchControlTest, CancelStopsTheTimerAtOnce) {
  frm.cmdSrch.Caption = kCancelCaption;
  frm.tmrProgress.Enabled = true;
  frm.tmrProgress.Tag = "7";
  control.CancelSearch();
  EXPECT_EQ(frm.msgBar.Text(), "Stopping ...");
  EXPECT_TRUE(progress.CancelSrch);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.tmrProgress.Tag(), "");
}

TEST_F(SearchControlTest, WhatWaitsInTheLineAtACancelTakesNothingBack) {
  frm.cmdSrch.Caption = kCancelCaption;
  JobLine<DeskChange> line(events, 8);
  JobObserver observer(line, progress);
  observer.EnableTimer(true);
  observer.ShowMessage("Searching duplicated files ...");
  observer.ShowList(ResultList::Duplicates, false);
  control.CancelSearch();
  const SearchDesk desk{frm, progress, dialogs};
  std::optional<DeskChange> change;
  while (line.Take(change) == JobLine<DeskChange>::Next::Notice) (*change)(desk);
  EXPECT_EQ(frm.msgBar.Text(), "Stopping ...");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_FALSE(frm.results.List(ResultList::Duplicates).Visible()) << "what isn't about the progress comes as ever";
}

TEST_F(SearchControlTest, AFailureComesThroughAndLeavesTheWindowUsable) {
  const std::vector<CellValue> cells = {"Yes", "many", "", "", "Yes"};
  frm.lstPath.SetSmallIcon(frm.lstPath.AddRow("/data/*.*", cells), ScopeRow::kIncluded);
  EXPECT_EQ(tests::FailureOf([&] { control.RunSearch(); }), Errors::TypeMismatch);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  for (const ListView& lst : frm.results.lstResult) EXPECT_TRUE(lst.Visible());
}

TEST_F(SearchControlTest, AFailureWhileAListFillsShowsIt) {
  MakeFiles(2);
  AddRow("/data/*.*");
  ListView& duplicates = frm.results.List(ResultList::Duplicates);
  duplicates.Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::Visible && notice.when == Notice::When::After && !duplicates.Visible()) {
      throw Failure(Errors::Device);
    }
  });
  EXPECT_THROW(control.RunSearch(), Failure);
  EXPECT_TRUE(duplicates.Visible());
}

TEST_F(SearchControlTest, AFailureLeavesCountedListsAndNothingOfTheProgress) {
  files.MakeFile("/data/empty", "");
  MakeFiles(2);
  AddRow("/data/*.*");
  ListView& duplicates = frm.results.List(ResultList::Duplicates);
  duplicates.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::Visible || notice.when != Notice::When::After || !duplicates.Visible()) return;
    if (duplicates.Count() == 0) return;
    frm.pbMain.Value = 70;
    frm.tmrProgress.Tag = "7";
    throw Failure(Errors::Device);
  });
  EXPECT_EQ(tests::FailureOf([&] { control.RunSearch(); }), Errors::Device);
  EXPECT_EQ(duplicates.Count(), 2);
  EXPECT_EQ(frm.results.tabMain.Caption(1), "Zero Size(1)");
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(2/1)");
  EXPECT_EQ(frm.results.GroupCnt[static_cast<std::size_t>(ResultList::Duplicates)], 1);
  EXPECT_EQ(frm.pbMain.Value(), 0);
  EXPECT_EQ(frm.tmrProgress.Tag(), "");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.msgBar.Text(), kReadyText);
}

TEST_F(SearchControlTest, TooManyRowsForTheCounterFail) {
  for (int i = 0; i < 32'768; ++i) frm.lstPath.AddRow("/data/*.*");
  EXPECT_EQ(tests::FailureOf([&] { control.RunSearch(); }), Errors::Overflow);
}

TEST_F(SearchControlTest, TheClosingReportCountsTheLists) {
  files.MakeFile("/data/a", "same");
  files.MakeFile("/data/b", "same");
  AddRow("/data/*.*");
  control.RunSearch();
  EXPECT_THAT(GetReportCountStr(frm.results), HasSubstr("No. of duplicate(same-content) files: 2, 1 group(s)\r\n"));
}

}  // namespace
}  // namespace tresmor
