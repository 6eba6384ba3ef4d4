// The commands that save and load sessions, over files in memory.
#include "shell/session_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"
#include "persist/whole_file.h"
#include "results/rows.h"
#include "results/sort_list.h"
#include "search/scope_row.h"
#include "search/search_world.h"
#include "shell/search_control.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr char kFile[] = "/home/s.Tresmor";

class SessionCommandsTest : public testing::Test {
 protected:
  SessionCommandsTest() {
    BindTimer(frm.tmrProgress, events);
    files.MakeFolder("/home");
  }

  ListView& List(ResultList kind) { return frm.results.List(kind); }
  void AddScope(const std::string& text) {
    const std::vector<CellValue> cells = {"Yes", "", "", "", "Yes"};
    frm.lstPath.SetSmallIcon(frm.lstPath.AddRow(text, cells), ScopeRow::kIncluded);
  }
  void AddFile(ResultList kind, const std::string& name, std::int32_t dupGrp) {
    Finding finding;
    finding.list = kind;
    finding.name = name;
    finding.folder = "/data/";
    finding.dupGrp = dupGrp;
    finding.size = 5;
    AddResultItem(List(kind), finding);
  }
  void ExpectIncludeQuestion(BoxAnswer answer) {
    dialogs.boxes.push_back({.text = "Do you want to include your search result in addition to search parameters?",
                             .title = "Include search result",
                             .icon = BoxIcon::Question,
                             .buttons = BoxButtons::YesNo,
                             .answer = answer});
  }
  void SaveAs(BoxAnswer includeResults, const std::string& file = kFile) {
    dialogs.files.push_back(file);
    ExpectIncludeQuestion(includeResults);
    commands.mnuSaveAsResultList();
  }
  void Load(const std::string& file = kFile) {
    dialogs.files.push_back(file);
    commands.mnuLoadResultList();
  }
  void ExpectLoadFailure(const std::string& failure) {
    dialogs.boxes.push_back({.text = "Loading search session failed. \r\nError : #" + failure, .title = "Failed"});
  }
  // A session with two duplicates, one of them marked, and a read error.
  void MakeSession(BoxAnswer includeResults) {
    AddScope("/data/*.*");
    frm.lstSrchType.SetTicked(0, false);
    frm.lstSrchType.SetTicked(3, true);
    frm.chkHidden.Value = true;
    frm.chkProtectWinDir.Value = false;
    AddFile(ResultList::Duplicates, "b", 3);
    AddFile(ResultList::Duplicates, "a", 1);
    AddFile(ResultList::Duplicates, "c", 1);
    List(ResultList::Duplicates).SetChecked(1, true);
    AddFile(ResultList::ReadErrors, "bad", -3);
    SaveAs(includeResults);
  }
  std::string Content(const std::string& file = kFile) { return ReadWholeFile(files, file); }
  // The state that a load leaves that came to no end.
  void ExpectMenusOff() {
    EXPECT_FALSE(frm.mnuSrchSession.Enabled());
    EXPECT_FALSE(frm.mnuFile.Enabled());
    EXPECT_EQ(frm.session.SessionFile, kFile);
    EXPECT_TRUE(frm.session.HasSrchResult);
    EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  }

  tests::ScriptedEventQueue events;
  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  FakeShell shell;
  FakeVersions versions;
  ScriptedDialogs dialogs;
  FrmMain frm;
  Progress progress{events, frm.tmrProgress, frm.msgBar, frm.pbMain};
  SessionCommands commands{frm, progress, {files, writer, events, dialogs}};
  SearchControl search{frm, progress, {files, shell, versions, events, dialogs}};
};

TEST_F(SessionCommandsTest, AsksForAFileToSaveTo) {
  SaveAs(BoxAnswer::No);
  ASSERT_EQ(dialogs.asked.size(), 1U);
  const FileQuestion& first = dialogs.asked[0];
  EXPECT_EQ(first.mode, FileDialogMode::Save);
  EXPECT_EQ(first.title, "Tresmor - Save search session as");
  ASSERT_EQ(first.filters.size(), 2U);
  EXPECT_EQ(first.filters[0].label, "Tresmor Search Session (*.Tresmor)");
  EXPECT_EQ(first.filters[0].pattern, "*.Tresmor");
  EXPECT_EQ(first.filters[1].label, "All Files");
  EXPECT_EQ(first.filters[1].pattern, "*.*");
  EXPECT_EQ(first.defaultExtension, "Tresmor");
  EXPECT_EQ(first.startName, "");
  SaveAs(BoxAnswer::No, "/home/other.Tresmor");
  EXPECT_EQ(dialogs.asked[1].startName, kFile);
  EXPECT_EQ(dialogs.asked[1].startFolder, kFile);
  EXPECT_EQ(frm.session.SessionFile, "/home/other.Tresmor");
}

TEST_F(SessionCommandsTest, ACancelSavesNothing) {
  frm.session.SaveSrchResult = true;
  dialogs.files = {std::nullopt};
  commands.mnuSaveAsResultList();
  EXPECT_EQ(frm.session.SessionFile, "");
  EXPECT_TRUE(frm.session.SaveSrchResult);
}

TEST_F(SessionCommandsTest, ASessionWithANameIsSavedWithoutAQuestion) {
  SaveAs(BoxAnswer::Yes);
  EXPECT_TRUE(frm.session.SaveSrchResult);
  AddScope("/later/*.*");
  commands.mnuSaveResultList();
  EXPECT_THAT(Content(), testing::HasSubstr("/later/*.*"));
}

TEST_F(SessionCommandsTest, ASessionWithoutANameIsAskedForOne) {
  dialogs.files = {kFile};
  ExpectIncludeQuestion(BoxAnswer::No);
  commands.mnuSaveResultList();
  EXPECT_EQ(frm.session.SessionFile, kFile);
}

TEST_F(SessionCommandsTest, AfterASaveElsewhereThatFailedTheOldFileKeepsItsResult) {
  SaveAs(BoxAnswer::Yes);
  writer.Fail(Errors::DiskFull);
  EXPECT_THROW(SaveAs(BoxAnswer::No, "/home/other.Tresmor"), Failure);
  EXPECT_EQ(frm.session.SessionFile, kFile);
  EXPECT_TRUE(frm.session.SaveSrchResult);
}

TEST_F(SessionCommandsTest, ASaveThatFailsGivesTheSessionNoName) {
  writer.Fail(Errors::DiskFull);
  EXPECT_THROW(SaveAs(BoxAnswer::Yes), Failure);
  EXPECT_EQ(frm.session.SessionFile, "");
  writer.Fail(Errors::None);
  AddScope("/a|-b/");
  dialogs.files = {kFile};
  ExpectIncludeQuestion(BoxAnswer::No);
  dialogs.boxes.push_back({.text = "Search session can't be saved, since a name with \"|-\" or a line end in it has no "
                                   "place in a search session:\r\n/a|-b/",
                           .title = "Search session not saved"});
  commands.mnuSaveAsResultList();
  EXPECT_EQ(frm.session.SessionFile, "");
}

TEST_F(SessionCommandsTest, AsksForAFileToLoadUnderTheHourglass) {
  dialogs.files = {std::nullopt};
  dialogs.onFile = [&] { EXPECT_EQ(frm.pointer.Shape(), PointerShape::Hourglass); };
  AddScope("/data/*.*");
  commands.mnuLoadResultList();
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].mode, FileDialogMode::Open);
  EXPECT_EQ(dialogs.asked[0].title, "Tresmor - load search session");
  const std::vector<FileFilter>& filters = dialogs.asked[0].filters;
  ASSERT_EQ(filters.size(), 2U);
  EXPECT_EQ(filters[0].label, "Tresmor Search Session (*.Tresmor)");
  EXPECT_EQ(filters[0].pattern, "*.Tresmor");
  EXPECT_EQ(filters[1].label, "All Files");
  EXPECT_EQ(filters[1].pattern, "*.*");
  EXPECT_EQ(dialogs.asked[0].defaultExtension, "Tresmor");
  EXPECT_EQ(dialogs.asked[0].startName, "Untitled.Tresmor");
  EXPECT_EQ(dialogs.asked[0].startFolder, "");
  EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_EQ(frm.session.SessionFile, "");
  EXPECT_FALSE(frm.session.HasSrchResult);
}

TEST_F(SessionCommandsTest, LoadsSortsColoursAndCounts) {
  MakeSession(BoxAnswer::Yes);
  Init(frm);
  frm.chkHidden.Value = false;
  frm.chkProtectWinDir.Value = true;
  Load();
  EXPECT_EQ(frm.lstPath.Cell(1, 0), "/data/*.*");
  EXPECT_FALSE(frm.lstSrchType.Ticked(0));
  EXPECT_TRUE(frm.lstSrchType.Ticked(3));
  EXPECT_TRUE(frm.chkHidden.Value());
  EXPECT_FALSE(frm.chkProtectWinDir.Value());
  ListView& duplicates = List(ResultList::Duplicates);
  ASSERT_EQ(duplicates.Count(), 3);
  EXPECT_EQ(duplicates.Cell(3, kNameItem), "b");
  EXPECT_TRUE(duplicates.Checked(3));
  EXPECT_FALSE(duplicates.Checked(1));
  EXPECT_EQ(duplicates.ForeColor(1), GroupColors[0]);
  EXPECT_EQ(duplicates.ForeColor(3), GroupColors[1]);
  EXPECT_EQ(List(ResultList::ReadErrors).Count(), 0);  // never stored
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(3/2)");
  EXPECT_EQ(frm.results.mIntCurFrame, 1);
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_EQ(frm.pbMain.Value(), 0);
  EXPECT_TRUE(frm.mnuSrchSession.Enabled() && frm.mnuFile.Enabled());
  EXPECT_EQ(frm.session.SessionFile, kFile);
  EXPECT_TRUE(frm.session.HasSrchResult && frm.session.SaveSrchResult);
}

TEST_F(SessionCommandsTest, ThePointerIsAgainWhatItWas) {
  frm.pointer.Shape = PointerShape::Hourglass;
  dialogs.files = {std::nullopt};
  commands.mnuLoadResultList();
  EXPECT_EQ(frm.pointer.Shape(), PointerShape::Hourglass);
}

TEST_F(SessionCommandsTest, NothingIsLeftOfATickThatCameWhileItLoaded) {
  MakeSession(BoxAnswer::Yes);
  bool ticked = false;
  // Every look at a clock that stands still would find that no time has passed; this one gives the load its events.
  frm.tmrProgress.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::Enabled || notice.when != Notice::When::After || !frm.tmrProgress.Enabled())
      return;
    events.seconds += 1;
  });
  events.onPump = [&] {
    events.Tick();
    ticked = ticked || (frm.pbMain.Value() > 0 && frm.msgBar.Text().starts_with("Loading search session "));
  };
  Load();
  EXPECT_TRUE(ticked);
  EXPECT_EQ(frm.pbMain.Value(), 0);
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
}

TEST_F(SessionCommandsTest, EventsComeWhileASlowDiskGivesTheFile) {
  MakeSession(BoxAnswer::Yes);
  std::atomic<bool> pumped = false;
  events.onPump = [&] { pumped = true; };
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op != MemoryFileSystem::Op::Read || call.path != kFile) return;
    for (int patience = 0; !pumped && patience < 10'000; ++patience)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(pumped);
  });
  Load();
  EXPECT_TRUE(pumped);
}

// The search alone reads the cells of a scope row as numbers.
TEST_F(SessionCommandsTest, AnOddScopeCellLoadsQuietlyAndFailsAtTheSearch) {
  files.MakeFile(kFile,
                 "3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n"
                 "/data/*.*|-Yes|-some|-|-|-Yes|-True\r\nFalse\r\n 0 \r\n");
  files.MakeFile("/data/a", "");
  Load();
  EXPECT_EQ(frm.lstPath.Cell(1, kMinSizeItem), "some");
  EXPECT_TRUE(frm.mnuSrchSession.Enabled());
  EXPECT_EQ(tests::FailureOf([&] { search.RunSearch(); }), Errors::TypeMismatch);
}

TEST_F(SessionCommandsTest, ASessionWithoutResultsLoadsEmptyLists) {
  List(ResultList::Duplicates).Tag = kVersionTag;
  MakeSession(BoxAnswer::No);
  List(ResultList::Duplicates).Tag = "";
  Load();
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_TRUE(frm.lstSrchType.Ticked(3) && frm.chkHidden.Value());
  for (const ListView& lst : frm.results.lstResult) EXPECT_EQ(lst.Count(), 0);
  EXPECT_EQ(List(ResultList::Duplicates).Tag(), kVersionTag);
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(0/0)");
  EXPECT_EQ(List(ResultList::Duplicates).Column(3).text, "^ Duplicate #");  // put in order all the same
  EXPECT_TRUE(frm.mnuSrchSession.Enabled());
  EXPECT_FALSE(frm.session.SaveSrchResult);
}

TEST_F(SessionCommandsTest, TheMenusAreOutOfReachWhileItLoads) {
  MakeSession(BoxAnswer::Yes);
  bool seen = false;
  frm.tmrProgress.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::Enabled || seen) return;
    seen = true;
    EXPECT_FALSE(frm.mnuSrchSession.Enabled() || frm.mnuFile.Enabled());
    EXPECT_EQ(frm.pointer.Shape(), PointerShape::Hourglass);
  });
  Load();
  EXPECT_TRUE(seen);
}

TEST_F(SessionCommandsTest, AfterALoadItIsSavedToTheSameFileAsItWas) {
  for (const BoxAnswer include : {BoxAnswer::Yes, BoxAnswer::No}) {
    Init(frm);
    MakeSession(include);
    Init(frm);
    Load();
    commands.mnuSaveResultList();  // in order this time
    const std::string saved = Content();
    EXPECT_THAT(saved, StartsWith("3.0.0\r\n"));
    EXPECT_EQ(saved.find("c|-/data/|-") != std::string::npos, include == BoxAnswer::Yes);
    Load();
    commands.mnuSaveResultList();
    EXPECT_EQ(Content(), saved);
  }
}

TEST_F(SessionCommandsTest, AFileOfTheOldVersionIsReplacedByOneOfTheNew) {
  files.MakeFile(kFile,
                 "1.2.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n/data/*.*|-Yes\r\n"
                 " 4 \r\n 1 \r\n\r\nempty|-/data/|- |-         0|-2004/01/02 10:20:30|-|-True\r\n"
                 " 0 \r\n\r\n 0 \r\n\r\n 0 \r\n\r\n");
  Load();
  commands.mnuSaveResultList();
  EXPECT_EQ(Content(),
            "3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n/data/*.*|-Yes|-True\r\nTrue\r\n"
            " 4 \r\n 1 \r\n\r\nempty|-/data/|- |-         0|-2004/01/02 10:20:30|-|-True\r\n"
            " 0 \r\n\r\n 0 \r\n\r\n 0 \r\n\r\n");
}

TEST_F(SessionCommandsTest, AnUnknownVersionLeavesAnEmptyWindow) {
  AddScope("/data/*.*");
  AddFile(ResultList::Duplicates, "a", 1);
  files.MakeFile(kFile, "2.0.0\r\nTrue\r\n");
  dialogs.boxes = {
      {.text = "File version 2.0.0 not supported. Search session can't be read.", .title = "Incorrect version"}};
  Load();
  EXPECT_EQ(frm.lstPath.Count(), 0);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 0);
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(0/0)");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, AFileCutAmongRowsLeavesThemInAHiddenList) {
  MakeSession(BoxAnswer::Yes);
  const std::string whole = Content();
  files.SetContent(kFile, whole.substr(0, whole.find("c|-/data/")));
  ExpectLoadFailure("62 Input past end of file");
  Load();
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
  EXPECT_FALSE(List(ResultList::Duplicates).Visible());
  EXPECT_TRUE(List(ResultList::ZeroSize).Visible());
  EXPECT_TRUE(frm.tmrProgress.Enabled());
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, TheNextFinishedSearchGivesTheMenusBack) {
  files.MakeFile(kFile, "");
  ExpectLoadFailure("62 Input past end of file");
  Load();
  ExpectMenusOff();
  files.MakeFile("/data/a", "same");
  files.MakeFile("/data/b", "same");
  AddScope("/data/*.*");
  search.RunSearch();
  EXPECT_TRUE(frm.mnuSrchSession.Enabled() && frm.mnuFile.Enabled());
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
}

TEST_F(SessionCommandsTest, AnUnreadableFileIsAFailedLoad) {
  ExpectLoadFailure("53 File not found");
  Load();
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, AFileThatMemoryHasNoRoomForIsAFailedLoad) {
  MakeSession(BoxAnswer::Yes);
  files.SetHook([](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Read) throw std::bad_alloc();
  });
  ExpectLoadFailure("7 Out of memory");
  Load();
  EXPECT_EQ(frm.lstPath.Count(), 0);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 0);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, RowsThatMemoryHadRoomForStayInAHiddenList) {
  MakeSession(BoxAnswer::Yes);
  tests::SlowEventQueue slow;
  slow.onPump = [&] {
    if (List(ResultList::Duplicates).Count() == 2) throw std::bad_alloc();
  };
  SessionCommands loading(frm, progress, {files, writer, slow, dialogs});
  dialogs.files.push_back(kFile);
  ExpectLoadFailure("7 Out of memory");
  loading.mnuLoadResultList();
  EXPECT_EQ(frm.lstPath.Count(), 1);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
  EXPECT_FALSE(List(ResultList::Duplicates).Visible());
  EXPECT_TRUE(frm.tmrProgress.Enabled());
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, AValueThatIsNoneIsAFailedLoad) {
  files.MakeFile(kFile, "3.0.0\r\nTrue\r\nperhaps\r\n");
  frm.lstSrchType.SetTicked(0, false);
  ExpectLoadFailure("13 Type mismatch");
  Load();
  EXPECT_TRUE(frm.lstSrchType.Ticked(0));
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  ExpectMenusOff();
}

TEST_F(SessionCommandsTest, ASearchBeginsResultsAndANewOneEndsThem) {
  AddScope("/home/*.*");
  search.RunSearch();
  EXPECT_TRUE(frm.session.HasSrchResult);
  SaveAs(BoxAnswer::No);
  frm.lstSrchType.SetTicked(3, true);
  frm.lstSrchType.SetTicked(0, false);
  AddFile(ResultList::ReadErrors, "bad", -3);
  frm.chkTolerant.Value = true;
  Init(frm);
  EXPECT_FALSE(frm.session.HasSrchResult);
  EXPECT_EQ(frm.session.SessionFile, "");
  EXPECT_TRUE(frm.lstSrchType.Ticked(0));
  EXPECT_FALSE(frm.lstSrchType.Ticked(3));
  EXPECT_EQ(frm.lstPath.Count(), 0);
  EXPECT_EQ(List(ResultList::ReadErrors).Count(), 0);
  EXPECT_EQ(frm.results.tabMain.Caption(5), "Report - read errors(0)");
  EXPECT_TRUE(frm.chkTolerant.Value());
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
}

}  // namespace
}  // namespace tresmor
