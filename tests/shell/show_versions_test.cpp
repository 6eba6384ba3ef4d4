// The column of versions, filled during a search and afterwards.
#include "shell/show_versions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"
#include "results/pe_version.h"
#include "results/rows.h"
#include "results/sort_list.h"
#include "results/version_key.h"
#include "search/search_world.h"
#include "shell/search_control.h"
#include "support/memory_file_system.h"
#include "support/pe_image.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;
using tests::FourParts;
using tests::PeBytes;

// Reads on the caller's thread, after `before` had its turn there.
class HookedVersions final : public VersionReader {
 public:
  explicit HookedVersions(const VersionReader& versions) : versions_(versions) {}
  std::string GetFileVer(const std::string& path, const StopToken& stop) const override {
    if (before) before(path);
    return versions_.GetFileVer(path, stop);
  }
  std::function<void(const std::string& path)> before;

 private:
  const VersionReader& versions_;
};

class ShowVersionsTest : public testing::Test {
 protected:
  ShowVersionsTest() {
    BindTimer(frm.tmrProgress, events);
    frm.results.tabMain.Select(static_cast<std::int32_t>(ResultList::Duplicates) + 1);
  }

  // A row of the list on show and its file.
  void AddProgram(const std::string& name, FourParts version) {
    files.MakeFile("/d/" + name, PeBytes(version));
    AddRow(name);
  }
  void AddRow(const std::string& name) {
    Finding finding;
    finding.name = name;
    finding.folder = "/d/";
    finding.dupGrp = 0;
    AddResultItem(OnShow(), finding);
  }
  void AddPrograms(int count) {
    for (int i = 0; i < count; ++i) AddProgram(std::to_string(i), {1, 0, 0, static_cast<std::uint16_t>(i)});
  }
  ListView& OnShow() { return frm.results.lstResult[static_cast<std::size_t>(frm.results.mIntCurFrame)]; }

  void Show() { ShowVersions(frm, progress, {versions, events}); }
  // Of what AddPrograms added: the name is the last part of the version.
  void ExpectEachHasItsOwn() {
    const ListView& lst = OnShow();
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      const std::string d = lst.Cell(row, kNameItem);
      const std::string expected = d == "0" ? "1.00.0000" : "1.00.00." + std::string(d.size() < 2 ? "0" : "") + d;
      ASSERT_EQ(lst.Cell(row, kVersionItem), expected);
      ASSERT_EQ(lst.CellTag(row, kVersionItem), VerSortKey(expected));
    }
  }
  // The first file, or `file`, is only read once the interface thread has pumped its events, at which `atPump` runs.
  void ShowWith(std::function<void()> atPump, const std::string& file = "") {
    std::atomic<bool> reached{false};
    std::atomic<bool> pumped{false};
    versions.before = [&](const std::string& path) {
      if ((!file.empty() && path != file) || reached.exchange(true)) return;
      events.Wake();
      pumped.wait(false);
    };
    events.onPump = [&] {
      if (!reached || pumped) return;
      atPump();
      pumped = true;
      pumped.notify_all();
    };
    Show();
    EXPECT_TRUE(pumped);
    versions.before = nullptr;
    events.onPump = nullptr;
  }

  static std::vector<std::string> Cells(const ListView& lst, std::int16_t item = kVersionItem) {
    std::vector<std::string> cells;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) cells.push_back(lst.Cell(row, item));
    return cells;
  }
  static std::vector<std::string> Keys(const ListView& lst) {
    std::vector<std::string> keys;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) keys.push_back(lst.CellTag(row, kVersionItem));
    return keys;
  }

  MemoryFileSystem files;
  PeVersionReader reader{files};
  HookedVersions versions{reader};
  tests::ScriptedEventQueue events;
  FrmMain frm;
  Progress progress{events, frm.tmrProgress, frm.msgBar, frm.pbMain};
};

TEST_F(ShowVersionsTest, FillsCellsAndKeysOfTheListOnShow) {
  AddProgram("a.exe", {5, 1, 2600, 1});
  AddProgram("b.dll", {1, 2, 0, 0});
  files.MakeFile("/d/c.txt", "no program");
  AddRow("c.txt");
  AddRow("gone.exe");
  Show();
  EXPECT_THAT(Cells(OnShow()), ElementsAre("5.01.2600.01", "1.02.0000", "", ""));
  EXPECT_THAT(Keys(OnShow()), ElementsAre("0005000126000001", "000100020000", "", ""));
  EXPECT_EQ(OnShow().SubItems(4), 5);
  EXPECT_EQ(OnShow().Tag(), "Ver");
}

TEST_F(ShowVersionsTest, LeavesTheOtherListsAlone) {
  AddPrograms(2);
  Finding finding;
  finding.name = "0";
  finding.folder = "/d/";
  AddResultItem(frm.results.List(ResultList::SameName), finding);
  Show();
  EXPECT_EQ(frm.results.List(ResultList::SameName).SubItems(1), 4);
  for (const ResultList other : {ResultList::ZeroSize, ResultList::SameName, ResultList::Portions}) {
    EXPECT_EQ(frm.results.List(other).Tag(), "");
  }
}

TEST_F(ShowVersionsTest, EveryRowOfALongListHasItsOwn) {
  AddPrograms(1000);
  Show();
  ExpectEachHasItsOwn();
}

TEST_F(ShowVersionsTest, EveryFileIsReadOnceAndNeverOnTheInterfaceThread) {
  AddPrograms(600);
  std::mutex mutex;
  std::multiset<std::string> read;
  bool onInterfaceThread = false;
  versions.before = [&, interfaceThread = std::this_thread::get_id()](const std::string& path) {
    const std::lock_guard lock(mutex);
    read.insert(path);
    onInterfaceThread |= std::this_thread::get_id() == interfaceThread;
  };
  Show();
  EXPECT_FALSE(onInterfaceThread);
  EXPECT_EQ(read.size(), 600U);
  EXPECT_EQ(std::set<std::string>(read.begin(), read.end()).size(), 600U);
}

TEST_F(ShowVersionsTest, EventsArePumpedWhileAFileIsRead) {
  AddPrograms(3);
  bool pumped = false;
  ShowWith([&] { pumped = true; });
  EXPECT_TRUE(pumped);
}

TEST_F(ShowVersionsTest, RowsThatRemainHaveTheirVersionsWhenOneIsRemoved) {
  AddPrograms(600);
  ShowWith([&] { OnShow().RemoveRow(1); });
  ASSERT_EQ(OnShow().Count(), 599);
  ExpectEachHasItsOwn();
  EXPECT_EQ(OnShow().Tag(), "Ver");
}

TEST_F(ShowVersionsTest, RowsThatAreSortedMeanwhileHaveTheirVersions) {
  AddPrograms(600);
  ShowWith([&] { SortList(OnShow(), kNameItem + 1, kDescending); });
  EXPECT_EQ(OnShow().Cell(1, kNameItem), "99");
  ExpectEachHasItsOwn();
}

TEST_F(ShowVersionsTest, RowsThatMoveBeforeThoseBeingReadHaveTheirVersions) {
  AddPrograms(768);
  for (std::int32_t row = 1; row <= 768; ++row) OnShow().SetCell(row, kSizeItem, PaddedNumber{3 - (row - 1) / 256});
  ShowWith(
      [&] {
        ASSERT_EQ(OnShow().SubItems(1), kVersionItem);
        SortList(OnShow(), kSizeItem + 1, kAscending);
        ASSERT_EQ(OnShow().Cell(257, kNameItem), "256");
        ASSERT_EQ(OnShow().Cell(1, kNameItem), "512");
      },
      "/d/256");
  ExpectEachHasItsOwn();
}

TEST_F(ShowVersionsTest, RowsThatMoveAgainAndAgainHaveTheirVersions) {
  AddPrograms(700);
  tests::SlowEventQueue slow;
  slow.onPump = [&] { SortList(OnShow(), kNameItem + 1, slow.pumps % 2 == 0 ? kAscending : kDescending); };
  ShowVersions(frm, progress, {versions, slow});
  ExpectEachHasItsOwn();
}

TEST_F(ShowVersionsTest, AFileThatIsRenamedMeanwhileHasItsVersion) {
  AddPrograms(2);
  AddProgram("new", {7, 0, 0, 1});
  OnShow().RemoveRow(3);
  ShowWith([&] { OnShow().SetCell(1, kNameItem, "new"); });
  EXPECT_THAT(Cells(OnShow()), ElementsAre("7.00.00.01", "1.00.00.01"));
  EXPECT_THAT(Keys(OnShow()), ElementsAre("0007000000000001", "0001000000000001"));
}

TEST_F(ShowVersionsTest, AListThatIsEmptiedMeanwhileEndsTheReading) {
  AddPrograms(600);
  ShowWith([&] { OnShow().Clear(); });
  EXPECT_EQ(OnShow().Count(), 0);
  EXPECT_EQ(OnShow().Tag(), "Ver");
}

TEST_F(ShowVersionsTest, TellsItsProgress) {
  AddPrograms(3);
  progress.CancelSrch = true;
  ShowWith([&] {
    EXPECT_EQ(progress.ProgressMsg(), "Showing version... [value] of 3");
    EXPECT_EQ(progress.pbItemsCnt, 3);
    EXPECT_FALSE(progress.CancelSrch);
    EXPECT_TRUE(frm.tmrProgress.Enabled());
    EXPECT_TRUE(OnShow().Frozen());
    events.Tick();
    EXPECT_THAT(frm.msgBar.Text(), StartsWith("Showing version... "));
  });
  // The figure of the last row stays behind.
  progress.Tick();
  EXPECT_EQ(frm.msgBar.Text(), "Showing version... 3 of 3 - 00:00:00 elapsed.");
  EXPECT_EQ(frm.pbMain.Value(), 100);
}

TEST_F(ShowVersionsTest, TheTimeElapsedIsThatSinceTheLastSearch) {
  AddPrograms(1);
  progress.SrchStartTime = 10;
  events.seconds = 75;
  Show();
  EXPECT_EQ(progress.SrchStartTime, 10);
  progress.Tick();
  EXPECT_EQ(frm.msgBar.Text(), "Showing version... 1 of 1 - 00:01:05 elapsed.");
}

TEST_F(ShowVersionsTest, LeavesTheWindowAtRest) {
  AddPrograms(3);
  std::vector<std::string> changes;
  ListView& lst = OnShow();
  const auto note = [&changes](Control& control, std::function<std::string()> what) {
    control.Listen([&changes, what](const Notice& notice) {
      if (notice.when == Notice::When::After && notice.what != Notice::What::RowsChanged) changes.push_back(what());
    });
  };
  frm.pbMain.Value = 40;
  frm.msgBar.Text = "Completed in some time.";
  note(lst, [&] { return "list " + lst.Tag() + (lst.Frozen() ? " frozen" : ""); });
  note(frm.tmrProgress, [&] { return std::string(frm.tmrProgress.Enabled() ? "timer on" : "timer off"); });
  note(frm.pbMain, [&] { return std::to_string(static_cast<int>(frm.pbMain.Value())); });
  note(frm.msgBar, [&] { return frm.msgBar.Text(); });
  Show();
  EXPECT_THAT(changes, ElementsAre("list  frozen", "timer on", "list Ver frozen", "timer off", "0", "Tresmor is ready.",
                                   "list Ver"));
  EXPECT_TRUE(lst.Visible());
}

TEST_F(ShowVersionsTest, ThereIsNoCancel) {
  AddPrograms(600);
  ShowWith([&] { progress.CancelSrch = true; });
  EXPECT_THAT(Cells(OnShow()), Each(StartsWith("1.00.0")));
  EXPECT_EQ(OnShow().Tag(), "Ver");
}

TEST_F(ShowVersionsTest, AnotherListMayComeOnShowMeanwhile) {
  AddPrograms(600);
  ListView& lst = OnShow();
  ShowWith([&] { frm.results.tabMain.Select(1); });
  EXPECT_THAT(Cells(lst), Each(StartsWith("1.00.0")));
  EXPECT_EQ(lst.Tag(), "Ver");
  EXPECT_FALSE(lst.Frozen());
  EXPECT_EQ(OnShow().Tag(), "");
}

TEST_F(ShowVersionsTest, TheSecondTimeGivesTheSameCells) {
  AddPrograms(300);
  Show();
  const auto cells = Cells(OnShow());
  const auto keys = Keys(OnShow());
  Show();
  EXPECT_EQ(Cells(OnShow()), cells);
  EXPECT_EQ(Keys(OnShow()), keys);
}

TEST_F(ShowVersionsTest, TheSecondTimeReadsAllAnew) {
  AddProgram("a.exe", {1, 0, 0, 1});
  AddProgram("b.exe", {1, 0, 0, 1});
  Show();
  files.SetContent("/d/a.exe", PeBytes({2, 0, 0, 1}));
  files.Remove("/d/b.exe");
  Show();
  EXPECT_THAT(Cells(OnShow()), ElementsAre("2.00.00.01", ""));
  EXPECT_THAT(Keys(OnShow()), ElementsAre("0002000000000001", ""));
}

TEST_F(ShowVersionsTest, AListWithoutRowsIsTaggedToo) {
  Show();
  EXPECT_EQ(OnShow().Tag(), "Ver");
  EXPECT_EQ(progress.ProgressMsg(), "Showing version... [value] of 0");
  EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  EXPECT_FALSE(frm.tmrProgress.Enabled());
}

TEST_F(ShowVersionsTest, AFailureOfAnEventLeavesTheWindowAtRest) {
  AddPrograms(600);
  events.onPump = [] { throw Failure(Errors::Overflow); };
  EXPECT_THROW(Show(), Failure);
  EXPECT_FALSE(frm.tmrProgress.Enabled());
  EXPECT_FALSE(OnShow().Frozen());
  EXPECT_EQ(OnShow().Tag(), "");
}

TEST_F(ShowVersionsTest, VersionsSortByNumberAndShowAsTheyAre) {
  AddProgram("ten", {1, 10, 0, 1});
  AddProgram("none", {});
  files.SetContent("/d/none", "no program");
  AddProgram("nine", {1, 9, 0, 1});
  Show();
  SortList(OnShow(), kVersionItem + 1, kAscending);
  EXPECT_THAT(Cells(OnShow(), kNameItem), ElementsAre("none", "nine", "ten"));
  EXPECT_THAT(Cells(OnShow()), ElementsAre("", "1.09.00.01", "1.10.00.01"));
}

class SearchWithVersionsTest : public ShowVersionsTest {
 protected:
  SearchWithVersionsTest() {
    const std::string tool = PeBytes({1, 2, 0, 3});
    files.MakeFile("/d/a/tool.exe", tool);
    files.MakeFile("/d/b/tool.exe", tool);
    files.MakeFile("/d/setup.exe", Setup(200'000));
    files.MakeFile("/d/setup.part", Setup(150'000));
    files.MakeFile("/d/empty", "");
    files.MakeFile("/d/z1", "unread");
    files.MakeFile("/d/z2", "either");
    files.FailOpen("/d/z1", Errors::PermissionDenied);
    frm.lstSrchType.SetTicked(static_cast<std::int32_t>(SrchType::Portions), true);
    const std::vector<CellValue> cells = {"Yes", "", "", "", "Yes"};
    frm.lstPath.SetSmallIcon(frm.lstPath.AddRow("/d/*.*", cells), ScopeRow::kIncluded);
  }
  // A program with so much behind it that a copy cut off there is still a portion.
  static std::string Setup(std::size_t size) {
    std::string bytes = PeBytes({5, 1, 2600, 1});
    bytes.resize(size, 'x');
    return bytes;
  }
  void Search(EventQueue& queue) {
    SearchControl control(frm, progress, {files, shell, versions, queue, dialogs});
    control.RunSearch();
  }
  void Search() { Search(events); }
  const ListView& List(ResultList kind) const { return frm.results.List(kind); }

  FakeShell shell;
  ScriptedDialogs dialogs;
};

TEST_F(SearchWithVersionsTest, WithTheBoxTickedAllListsThatHaveRowsHaveVersions) {
  frm.chkVer.Value = true;
  Search();
  EXPECT_THAT(Cells(List(ResultList::Duplicates)), ElementsAre("1.02.00.03", "1.02.00.03"));
  EXPECT_THAT(Keys(List(ResultList::Duplicates)), Each("0001000200000003"));
  EXPECT_THAT(Cells(List(ResultList::SameName)), Contains("1.02.00.03").Times(2));
  EXPECT_THAT(Cells(List(ResultList::Portions)), ElementsAre("5.01.2600.01", "5.01.2600.01"));
  EXPECT_THAT(Keys(List(ResultList::Portions)), Each("0005000126000001"));
  EXPECT_THAT(Cells(List(ResultList::ZeroSize)), ElementsAre(""));
  EXPECT_THAT(Cells(List(ResultList::ReadErrors)), Each(""));
  for (const ListView& lst : frm.results.lstResult) {
    ASSERT_GT(lst.Count(), 0);
    for (std::int32_t row = 1; row <= lst.Count(); ++row) EXPECT_EQ(lst.SubItems(row), 5);
    EXPECT_EQ(lst.Tag(), "Ver");
  }
}

// Each list shows its rows while later ones are still searched for. A row must have its version from the start.
TEST_F(SearchWithVersionsTest, VersionsComeWithTheRowsWhileTheSearchRuns) {
  frm.chkVer.Value = true;
  tests::SlowEventQueue slow;
  std::set<std::size_t> listsSeen;
  slow.onPump = [&] {
    for (std::size_t list = 0; list < frm.results.lstResult.size(); ++list) {
      const ListView& lst = frm.results.lstResult[list];
      for (std::int32_t row = 1; row <= lst.Count(); ++row) {
        if (frm.tmrProgress.Enabled()) listsSeen.insert(list);
        const std::string path = PathOf(lst, row);
        ASSERT_EQ(lst.SubItems(row), 5) << path;
        EXPECT_EQ(lst.Cell(row, kVersionItem), reader.GetFileVer(path, StopToken())) << path;
        EXPECT_EQ(lst.Tag(), "Ver") << path;
      }
    }
  };
  Search(slow);
  EXPECT_THAT(listsSeen, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(SearchWithVersionsTest, TheFirstListHidesItsColumnButFillsIt) {
  frm.chkVer.Value = true;
  Search();
  ASSERT_EQ(List(ResultList::ZeroSize).Count(), 1);
  EXPECT_EQ(List(ResultList::ZeroSize).Column(kVersionItem + 1).width, 0);
  EXPECT_EQ(List(ResultList::ZeroSize).SubItems(1), 5);
  EXPECT_EQ(List(ResultList::ZeroSize).Cell(1, kVersionItem), "");
}

TEST_F(SearchWithVersionsTest, WithTheBoxClearTheColumnIsEmptyAndNothingIsReadForIt) {
  bool read = false;
  versions.before = [&](const std::string&) { read = true; };
  Search();
  for (const ResultList kind : {ResultList::ZeroSize, ResultList::Duplicates, ResultList::SameName}) {
    ASSERT_GT(List(kind).Count(), 0);
    for (std::int32_t row = 1; row <= List(kind).Count(); ++row) EXPECT_EQ(List(kind).SubItems(row), 4);
    EXPECT_EQ(List(kind).Tag(), "");
  }
  EXPECT_FALSE(read);
}

// What asks whether a list has versions has always been told so by its tag.
TEST_F(SearchWithVersionsTest, ANewSearchKeepsTheTagButNotTheVersions) {
  Search();
  frm.results.tabMain.Select(static_cast<std::int32_t>(ResultList::Duplicates) + 1);
  Show();
  EXPECT_THAT(Cells(OnShow()), Each("1.02.00.03"));
  Search();
  EXPECT_EQ(OnShow().Tag(), "Ver");
  EXPECT_EQ(OnShow().SubItems(1), 4);
}

}  // namespace
}  // namespace tresmor
