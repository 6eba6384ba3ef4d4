// What events of the result lists set off, and the commands over their rows.
#include "shell/result_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "desk/bind_timer.h"
#include "desk/scripted_event_queue.h"
#include "results/pe_version.h"
#include "results/rows.h"
#include "search/scope_row.h"
#include "support/fake_picture_loader.h"
#include "support/fake_shell.h"
#include "support/memory_file_system.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The commands of the page by their captions in the menu.
const std::map<std::string, void (ResultPage::*)()> kCommands = {
    {"Open &Folder", &ResultPage::mnuOpenFolder},           {"File &Properties", &ResultPage::mnuPropPage},
    {"Show file &version", &ResultPage::mnuShowVer},        {"Mark &all", &ResultPage::mnuMarkAll},
    {"Mark Selec&ted files", &ResultPage::mnuMarkSelected}, {"&Clear all marks", &ResultPage::mnuClearMarks}};

class ResultPageTest : public testing::Test {
 protected:
  ResultPageTest() { BindTimer(frm.tmrUpdate, events); }

  void Add(ResultList kind, const std::string& name) {
    Finding finding;
    finding.name = name;
    finding.folder = "/data/";
    AddResultItem(frm.results.List(kind), finding);
  }
  void Add(const std::string& name) { Add(ResultList::ZeroSize, name); }
  std::string Marks() const {
    std::string marks;
    for (std::int32_t row = 1; row <= zero.Count(); ++row) marks += zero.Checked(row) ? 'x' : '-';
    return marks;
  }
  void Choose(const std::string& caption) { (page.*kCommands.at(caption))(); }
  void Log(const std::string& what) {
    log.push_back(what + " " + Marks() + (frm.tmrUpdate.Enabled() ? " counting" : ""));
  }

  tests::ScriptedEventQueue events;
  FrmMain frm;
  ListView& zero = frm.results.List(ResultList::ZeroSize);
  Progress progress{events, frm.tmrProgress, frm.msgBar, frm.pbMain};
  MemoryFileSystem files;
  PeVersionReader versions{files};
  FakeShell shell;
  bool goesOn = true;
  // What went out, with the marks of the first list and whether a count was due by then.
  std::vector<std::string> log;
  ResultPage page{frm,
                  progress,
                  {.shell = shell,
                   .versions = {versions, events},
                   .GuardedMsg =
                       [this](GuardedId id) {
                         Log(kGuardedMessages[id].Key);
                         return goesOn;
                       },
                   .Preview = [this] { Log("preview"); },
                   .OpenFile = [this] { Log("open"); },
                   .OwnFileProp = [this](const std::string& file) { Log("own sheet of " + file); },
                   .PopUp = [this](Menu& menu) { Log(&menu == &frm.mnuFile ? "mnuFile" : "other menu"); }}};
};

TEST_F(ResultPageTest, ClicksAndTicksAskForACountOnce) {
  for (ListView& lst : frm.results.lstResult) {
    for (const auto& event : {lst.OnClick, lst.OnItemClick, lst.OnItemCheck}) {
      frm.tmrUpdate.Enabled = false;
      event();
      EXPECT_TRUE(frm.tmrUpdate.Enabled());
    }
  }
}

TEST_F(ResultPageTest, ATimerThatRunsIsNotStartedAnew) {
  zero.OnClick();
  ASSERT_EQ(events.timers.size(), 1U);
  const auto timer = events.timers.begin()->first;
  zero.OnItemCheck();
  zero.OnItemClick();
  page.mnuClearMarks();
  ASSERT_EQ(events.timers.size(), 1U);
  EXPECT_EQ(events.timers.begin()->first, timer);
  events.Tick();
  EXPECT_TRUE(events.timers.empty());
  EXPECT_EQ(frm.msgBar.Text(), "0 files (0 Bytes) marked, 0 files (0 Bytes) selected, out of 0 files.");
}

TEST_F(ResultPageTest, AClickOnARowPreviewsItAndADoubleClickOpensIt) {
  zero.OnClick();
  EXPECT_THAT(log, IsEmpty());
  frm.tmrUpdate.Enabled = false;
  zero.OnItemClick();
  EXPECT_THAT(log, ElementsAre("preview "));
  frm.tmrUpdate.Enabled = false;
  zero.OnDblClick();
  EXPECT_THAT(log, ElementsAre("preview ", "open "));
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, WithoutPreviewAClickIsCountedAllTheSame) {
  FakePictureLoader loader;
  Preview preview(frm.results, frm.preview, {loader, "/program/err_read.bmp", [] { return 15.0F; }});
  ResultPage previewing(frm, progress,
                        {.shell = shell,
                         .versions = {versions, events},
                         .GuardedMsg = {},
                         .Preview = [&] { preview.Show(); },
                         .OpenFile = {},
                         .OwnFileProp = {},
                         .PopUp = {}});
  Add("a.jpg");
  Add("b.jpg");
  zero.SetSelected(1, true);
  zero.OnItemClick();
  EXPECT_EQ(frm.preview.txtFilename.Text(), "a.jpg");
  frm.tmrUpdate.Enabled = false;
  frm.preview.chkPreview.Value = kOff;
  zero.SetSelected(2, true);
  zero.OnItemClick();
  EXPECT_EQ(frm.preview.txtFilename.Text(), "a.jpg");
  EXPECT_TRUE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, AClickOnAHeaderSortsAndTurnsTheDirectionOver) {
  for (const char* name : {"b", "c", "a"}) Add(name);
  zero.OnColumnClick(1);
  EXPECT_EQ(zero.Cell(1, kNameItem), "c");
  EXPECT_EQ(zero.Column(1).text, "v Name");
  zero.OnColumnClick(1);
  EXPECT_EQ(zero.Cell(1, kNameItem), "a");
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, SortingVersionsShowsTheHourglassMeanwhile) {
  Add("a");
  std::vector<PointerShape> shapes;
  zero.Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::SortKey && notice.when == Notice::When::After) {
      shapes.push_back(frm.pointer.Shape());
    }
  });
  zero.OnColumnClick(kVersionItem + 1);
  zero.OnColumnClick(kDateItem + 1);
  EXPECT_THAT(shapes, ElementsAre(PointerShape::Hourglass, PointerShape::Default));
  EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
}

TEST_F(ResultPageTest, ARightClickOpensTheMenuWithAndWithoutARow) {
  zero.OnMouseUp(MouseButton::Right);
  Add("a");
  zero.OnMouseUp(MouseButton::Right);
  zero.OnMouseUp(MouseButton::Left);
  zero.OnMouseUp(MouseButton::Middle);
  EXPECT_THAT(log, ElementsAre("mnuFile ", "mnuFile -"));
}

TEST_F(ResultPageTest, EveryListOpensMenuAndFileAndSorts) {
  for (const ResultList kind :
       {ResultList::Duplicates, ResultList::SameName, ResultList::Portions, ResultList::ReadErrors}) {
    ListView& lst = frm.results.List(kind);
    for (const char* name : {"b", "c", "a"}) Add(kind, name);
    log.clear();
    lst.OnMouseUp(MouseButton::Right);
    lst.OnDblClick();
    EXPECT_THAT(log, ElementsAre("mnuFile ", "open "));
    lst.OnColumnClick(1);
    EXPECT_EQ(lst.Cell(1, kNameItem), "c");
  }
}

TEST_F(ResultPageTest, MarkingAllComesBeforeTheReminderAndStaysWhateverItsAnswer) {
  for (const char* name : {"a", "b"}) Add(name);
  Add(ResultList::Duplicates, "c");
  goesOn = false;
  page.mnuMarkAll();
  EXPECT_THAT(log, ElementsAre("DontShowTipOrgNDup xx counting"));
  EXPECT_EQ(Marks(), "xx");
  EXPECT_FALSE(frm.results.List(ResultList::Duplicates).Checked(1));
}

TEST_F(ResultPageTest, MarksTheSelectedRows) {
  for (const char* name : {"a", "b"}) Add(name);
  zero.SetChecked(1, true);
  zero.SetSelected(2, true);
  page.mnuMarkSelected();
  EXPECT_EQ(Marks(), "xx");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ResultPageTest, MarkingNoSelectionChangesNothingAndStillAsksForACount) {
  for (const char* name : {"a", "b"}) Add(name);
  page.mnuMarkSelected();
  EXPECT_EQ(Marks(), "--");
  EXPECT_TRUE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, ClearsAllMarksWithoutAWord) {
  for (const char* name : {"a", "b"}) Add(name);
  zero.SetChecked(2, true);
  page.mnuClearMarks();
  EXPECT_EQ(Marks(), "--");
  EXPECT_TRUE(frm.tmrUpdate.Enabled());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ResultPageTest, ClearingTheMarksOfAnEmptyListShowsNothing) {
  int notices = 0;
  zero.Listen([&](const Notice&) { ++notices; });
  page.mnuClearMarks();
  EXPECT_EQ(notices, 0);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(frm.msgBar.Text(), kReadyText);
}

TEST_F(ResultPageTest, ShowsThePropertiesAndTheFolderOfTheSelectedItem) {
  for (const char* name : {"a", "b"}) Add(name);
  Add(ResultList::Duplicates, "c");
  frm.results.List(ResultList::Duplicates).SetSelected(1, true);
  zero.SetSelected(1, true);
  zero.SetSelected(2, true);
  page.mnuPropPage();
  EXPECT_THAT(shell.shown, ElementsAre("/data/b"));
  page.mnuOpenFolder();
  EXPECT_THAT(shell.opened, ElementsAre("/data/"));
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, WhereTheDesktopHasNoSheetOneOfItsOwnIsShown) {
  Add("a");
  zero.SetSelected(1, true);
  page.mnuPropPage();
  EXPECT_THAT(log, IsEmpty());
  shell.answers = false;
  page.mnuPropPage();
  EXPECT_THAT(log, ElementsAre("own sheet of /data/a -"));
}

TEST_F(ResultPageTest, WithoutASelectedItemNothingIsShownOrOpened) {
  page.mnuPropPage();
  page.mnuOpenFolder();
  Add("a");
  zero.SetChecked(1, true);
  page.mnuPropPage();
  page.mnuOpenFolder();
  EXPECT_THAT(shell.shown, IsEmpty());
  EXPECT_THAT(shell.opened, IsEmpty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ResultPageTest, ShowsTheVersionsOfTheListOnShow) {
  files.MakeFile("/data/a", tests::PeBytes({1, 2, 3, 4}));
  Add("a");
  Add(ResultList::Duplicates, "a");
  page.mnuShowVer();
  EXPECT_EQ(zero.Cell(1, kVersionItem), "1.02.03.04");
  EXPECT_EQ(zero.Tag(), "Ver");
  EXPECT_EQ(frm.results.List(ResultList::Duplicates).Tag(), "");
  EXPECT_EQ(progress.ProgressMsg(), "Showing version... [value] of 1");
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

TEST_F(ResultPageTest, CommandsAreChosenByTheirCaptions) {
  files.MakeFile("/data/a", tests::PeBytes({1, 2, 3, 4}));
  for (const char* name : {"a", "b"}) Add(name);
  zero.SetSelected(1, true);
  Choose("Mark &all");
  EXPECT_EQ(Marks(), "xx");
  Choose("&Clear all marks");
  EXPECT_EQ(Marks(), "--");
  Choose("Mark Selec&ted files");
  EXPECT_EQ(Marks(), "x-");
  Choose("File &Properties");
  EXPECT_THAT(shell.shown, ElementsAre("/data/a"));
  EXPECT_THAT(shell.opened, IsEmpty());
  Choose("Open &Folder");
  EXPECT_THAT(shell.opened, ElementsAre("/data/"));
  Choose("Show file &version");
  EXPECT_EQ(zero.Tag(), "Ver");
}

TEST(ListTips, TellOfScopeRowsAndOfResultsByOneRememberedRow) {
  FrmMain frm;
  const Options options;
  HoveredRow hovered;
  ListTip tip{hovered, {}};
  BindListTips(frm, options, tip);
  frm.lstPath.SetSmallIcon(frm.lstPath.AddRow("/out/"), ScopeRow::kExcluded);
  for (ListView& lst : frm.results.lstResult) {
    lst.AddRow("file");
    frm.lstPath.OnMouseMove(1);
    EXPECT_EQ(tip.texts[&frm.lstPath], "Path: /out/\r\nExclude: Yes");
    lst.OnMouseMove(1);
    EXPECT_EQ(tip.texts[&lst], "Name: file");
    frm.lstPath.OnMouseMove(0);
    EXPECT_EQ(tip.texts[&frm.lstPath], "");
  }
}

}  // namespace
}  // namespace tresmor
