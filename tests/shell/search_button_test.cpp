// The click on cmdSrch, from its checks to what it says at the end.
#include "shell/search_button.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "shell/search_fixture.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

// Versions of which some come at once, and the others when the test has done something.
class WaitingVersions final : public VersionReader {
 public:
  WaitingVersions(EventQueue& events, std::int64_t atOnce) : events_(events), atOnce_(atOnce) {}

  std::string GetFileVer(const std::string&, const StopToken& stop) const override {
    if (++asked_ <= atOnce_) return "";
    reached = true;
    events_.Wake();
    wait(stop);
    return "";
  }

  mutable std::atomic<bool> reached{false};
  std::function<void(const StopToken& stop)> wait;  // any thread

 private:
  EventQueue& events_;
  const std::int64_t atOnce_;
  mutable std::atomic<std::int64_t> asked_{0};
};

class SearchButtonTest : public SearchFixture {
 protected:
  SearchButtonTest() {
    frm.txtPath.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::Focus) seen.push_back("focus");
    });
    frm.cmdAdd.Listen([this](const Notice& notice) {
      if (notice.when == Notice::When::After) seen.push_back("cmdAdd '" + frm.cmdAdd.Caption() + "'");
    });
    frm.lstSrchType.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::BackColor && notice.when == Notice::When::After) seen.push_back("lstSrchType");
    });
    dialogs.onBox = [this] { seen.push_back("box"); };
  }

  void OnlyDuplicates() {
    for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) frm.lstSrchType.SetTicked(i, i == 1);
  }
  void ExpectMissing(const std::string& title, const std::string& text) {
    dialogs.boxes.push_back({.text = text, .title = title, .icon = BoxIcon::Exclamation});
  }
  void ExpectNoTarget() {
    ExpectMissing("At least one search target path required",
                  "Please select at least one search target path before search.\r\n\r\nYou can select 'Search Target' "
                  "in tab 'Scope' and then click button [Add]. ");
  }
  // The clock goes on with each look at the events, so that what flashes comes to an end.
  void ClickWithoutSearch() {
    events.onPump = [this] {
      events.seconds += 1;
      events.Wake();
    };
    button.Click();
    EXPECT_THAT(files.Calls(), IsEmpty());
    EXPECT_THAT(messages, IsEmpty());
    EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  }
  void ExpectQuestion(BoxAnswer answer) {
    dialogs.boxes.push_back({.text = "Are you sure to cancel searching?",
                             .title = "Cancel Search",
                             .icon = BoxIcon::Question,
                             .buttons = BoxButtons::YesNo,
                             .answer = answer});
  }
  void ExpectCompleted(int compared, const std::string& duplicates) {
    dialogs.boxes.push_back(
        {.text = "Search is completed. " + std::to_string(compared) +
                 " file(s) compared.\r\n\r\nNo. of zero-size files: 0\r\nNo. of duplicate(same-content) files: " +
                 duplicates +
                 " group(s)\r\nNo. of same-name files: 0, 0 group(s)\r\nNo. of truncated files(file portions): 0, 0 "
                 "group(s)\r\nNo. of files with reading error: 0\r\n\r\nINFO: Duplicate files are grouped by unquie "
                 "'Duplicate #' and different colours (not unqiue).",
         .title = "Search completed",
         .icon = BoxIcon::Information});
  }
  std::function<bool(GuardedId)> Messages() {
    return [this](GuardedId id) {
      seen.push_back(kGuardedMessages[id].Key);
      if (id == kTipSmartMark) {
        EXPECT_EQ(frm.pointer.Shape(), pointerAtEnd);
      }
      return goesOn;
    };
  }

  bool goesOn = true;
  PointerShape pointerAtEnd = PointerShape::Default;
  std::vector<std::string> seen;
  SearchButton button{frm, control, {events, dialogs, Messages()}};
};

TEST_F(SearchButtonTest, WithoutRowsItPointsOutHowToAddThem) {
  ExpectMissing("Select Path", "Please select path before search. Remember to click [Add>] to add path.");
  frm.TabPath.Select(2);
  ClickWithoutSearch();
  EXPECT_THAT(seen, ElementsAre("box", "cmdAdd ''", "cmdAdd 'Add&>'", "cmdAdd ''", "cmdAdd 'Add&>'", "focus"));
  EXPECT_EQ(frm.TabPath.SelectedTab(), kPathTab);
}

TEST_F(SearchButtonTest, WithoutATypeItPointsOutTheTypes) {
  AddRow("/data/*.*");
  for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) frm.lstSrchType.SetTicked(i, false);
  ExpectMissing("Select Search Type", "Please select at least one search type.");
  ClickWithoutSearch();
  EXPECT_THAT(seen, ElementsAre("box", "lstSrchType", "lstSrchType", "lstSrchType", "lstSrchType"));
}

TEST_F(SearchButtonTest, ExcludedRowsAloneAreNotEnough) {
  AddExcluded("/data/");
  ExpectMissing("At least one included path required",
                "Please include at least one path before search.\r\n\r\nYou can select included path by unchecking "
                "'Exclude' in tab 'Scope' and then click button [Add]. ");
  ClickWithoutSearch();
  EXPECT_THAT(seen, ElementsAre("box"));
}

TEST_F(SearchButtonTest, RowsWithoutATargetAreNotEnough) {
  AddRow("/data/*.*", "No");
  ExpectNoTarget();
  ClickWithoutSearch();
  EXPECT_THAT(seen, ElementsAre("box"));
}

TEST_F(SearchButtonTest, ACancelledWarningLeavesAllAsItWas) {
  AddRow("/data/*.*");
  ListView& zero = frm.results.List(ResultList::ZeroSize);
  zero.AddRow("old");
  frm.chkProtectWinDir.Value = kOff;
  goesOn = false;
  ClickWithoutSearch();
  EXPECT_THAT(seen, ElementsAre("DontShowWarmProtWin"));
  EXPECT_EQ(zero.Count(), 1);
  EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
}

TEST_F(SearchButtonTest, AWarningThatWasTakenLetsItSearch) {
  MakeFiles(2);
  OnlyDuplicates();
  AddRow("/data/*.*");
  frm.chkProtectWinDir.Value = kOff;
  ExpectCompleted(1, "2, 1");
  button.Click();
  EXPECT_THAT(seen, ElementsAre("DontShowWarmProtWin", "DontShowTipLongSrch", "box", "DontShowTipSmartMark"));
}

TEST_F(SearchButtonTest, TheTipBeforeItStopsNothing) {
  MakeFiles(2);
  OnlyDuplicates();
  AddRow("/data/*.*");
  goesOn = false;
  ExpectCompleted(1, "2, 1");
  button.Click();
  EXPECT_THAT(seen, ElementsAre("DontShowTipLongSrch", "box", "DontShowTipSmartMark"));
  EXPECT_EQ(frm.results.List(ResultList::Duplicates).Count(), 2);
}

TEST_F(SearchButtonTest, OneFileComparesNone) {
  MakeFiles(1);
  OnlyDuplicates();
  AddRow("/data/*.*");
  ExpectCompleted(0, "0, 0");
  button.Click();
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 0 files.");
}

TEST_F(SearchButtonTest, AHundredFilesCompareNinetyNine) {
  MakeFiles(100);
  OnlyDuplicates();
  AddRow("/data/*.*");
  ExpectCompleted(99, "100, 1");
  button.Click();
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 99 files.");
}

TEST_F(SearchButtonTest, ThePointerTellsOfTheSearchUntilItWasTold) {
  MakeFiles(2);
  OnlyDuplicates();
  AddRow("/data/*.*");
  frm.pointer.Shape = pointerAtEnd = PointerShape::Hourglass;
  std::vector<PointerShape> shapes;
  AtFirst(MemoryFileSystem::Op::List, [&] { shapes.push_back(frm.pointer.Shape()); });
  dialogs.onBox = [&] {
    shapes.push_back(frm.pointer.Shape());
    EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
  };
  ExpectCompleted(1, "2, 1");
  button.Click();
  EXPECT_THAT(shapes, ElementsAre(PointerShape::HourglassAndArrow, PointerShape::HourglassAndArrow));
  EXPECT_THAT(seen, Contains("DontShowTipSmartMark"));
}

TEST_F(SearchButtonTest, ANoToTheQuestionLetsItGoOn) {
  MakeFiles(3);
  OnlyDuplicates();
  AddRow("/data/*.*");
  ExpectQuestion(BoxAnswer::No);
  ExpectCompleted(2, "3, 1");
  AtFirst(MemoryFileSystem::Op::List, [&] {
    button.Click();
    EXPECT_TRUE(frm.tmrProgress.Enabled());
    EXPECT_FALSE(progress.CancelSrch);
    EXPECT_EQ(frm.cmdSrch.Caption(), "&Cancel");
    EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  });
  button.Click();
  EXPECT_THAT(messages, Not(Contains("Stopping ...")));
  EXPECT_THAT(seen, ElementsAre("DontShowTipLongSrch", "box", "box", "DontShowTipSmartMark"));
}

TEST_F(SearchButtonTest, ACancelDuringTheWalkComparesNone) {
  MakeFiles(100);
  OnlyDuplicates();
  AddRow("/data/*.*");
  ExpectQuestion(BoxAnswer::Yes);
  ExpectCompleted(0, "0, 0");
  AtFirst(MemoryFileSystem::Op::List, [&] {
    button.Click();
    EXPECT_FALSE(frm.tmrProgress.Enabled());
    EXPECT_EQ(frm.msgBar.Text(), "Stopping ...");
    EXPECT_EQ(frm.cmdSrch.Caption(), "&Cancel");
    EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  });
  button.Click();
  EXPECT_EQ(frm.msgBar.Text(), "Completed in 00:00:00, searched 0 files.");
  EXPECT_THAT(seen, ElementsAre("DontShowTipLongSrch", "box", "box", "DontShowTipSmartMark"));
}

// Rows are shown by the thousand, and their versions are read before.
TEST_F(SearchButtonTest, ACancelWhileRowsAreShownKeepsThoseThatCame) {
  for (std::size_t i = 0; i < 3 * 1024; ++i) files.MakeFile("/data/f" + std::to_string(i), std::string(1 + i / 2, 'x'));
  OnlyDuplicates();
  AddRow("/data/*.*");
  frm.chkVer.Value = kTicked;
  WaitingVersions slow(events, 1025);
  slow.wait = [&](const StopToken&) { acted.wait(false); };
  SearchControl showing{frm, progress, {files, shell, slow, events, dialogs}};
  SearchButton cancelled{frm, showing, {events, dialogs, Messages()}};
  events.onPump = [&] {
    if (!slow.reached || acted) return;
    cancelled.Click();
    acted = true;
    acted.notify_all();
  };
  ExpectQuestion(BoxAnswer::Yes);
  ExpectCompleted(3071, "2048, 1024");
  cancelled.Click();
  ListView& duplicates = frm.results.List(ResultList::Duplicates);
  EXPECT_EQ(duplicates.Count(), 2048);
  EXPECT_EQ(duplicates.ForeColor(2), GroupColors[0]);
  EXPECT_EQ(duplicates.ForeColor(3), GroupColors[1]);
  EXPECT_EQ(duplicates.Column(3).text.substr(0, 2), "^ ");
  EXPECT_EQ(frm.results.tabMain.Caption(2), "Duplicates(2048/1024)");
}

TEST_F(SearchButtonTest, TheSearchStandsStillWhileTheQuestionIsOpen) {
  MakeFiles(2);
  OnlyDuplicates();
  AddRow("/data/*.*");
  frm.chkVer.Value = kTicked;
  std::atomic<bool> open{false};
  std::atomic<bool> asking{false};
  std::atomic<bool> wentOn{false};
  WaitingVersions polling(events, 0);
  polling.wait = [&](const StopToken& stop) {
    if (acted) return;
    open.wait(false);
    asking = true;
    asking.notify_all();
    EXPECT_FALSE(stop.Stopped());
    if (!acted) wentOn = true;
  };
  SearchControl control2{frm, progress, {files, shell, polling, events, dialogs}};
  SearchButton asked{frm, control2, {events, dialogs, Messages()}};
  events.onPump = [&] {
    if (polling.reached && !acted && !open) asked.Click();
  };
  dialogs.onBox = [&] {
    if (open) return;
    open = true;
    open.notify_all();
    asking.wait(false);
    // Time for one that doesn't stand still; one that does may have any.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    acted = true;
  };
  ExpectQuestion(BoxAnswer::No);
  ExpectCompleted(1, "2, 1");
  asked.Click();
  EXPECT_TRUE(acted);
  EXPECT_FALSE(wentOn);
}

TEST_F(SearchButtonTest, ItsChecksComeBeforeTheQuestionToo) {
  MakeFiles(2);
  OnlyDuplicates();
  AddRow("/data/*.*");
  ExpectNoTarget();
  ExpectCompleted(1, "2, 1");
  AtFirst(MemoryFileSystem::Op::List, [&] {
    frm.lstPath.SetCell(1, kSearchTargetItem, "No");
    button.Click();
  });
  button.Click();
  EXPECT_TRUE(acted);
}

TEST_F(SearchButtonTest, AFailureRestoresThePointerAndTellsNoEnd) {
  AddIncludedRow(frm.lstPath, {"/data/*.*", "Yes", "many", "", "", "Yes"});
  EXPECT_THROW(button.Click(), Failure);
  EXPECT_EQ(frm.pointer.Shape(), PointerShape::Default);
  EXPECT_EQ(frm.cmdSrch.Caption(), "&Search");
  EXPECT_THAT(seen, ElementsAre("DontShowTipLongSrch"));
}

}  // namespace
}  // namespace tresmor
