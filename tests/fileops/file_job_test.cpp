#include "fileops/file_job.h"

#include <gmock/gmock.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "desk/scripted_event_queue.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

class FileJobTest : public testing::Test {
 protected:
  void ExpectQuestion(const std::string& text, BoxAnswer answer) {
    dialogs.boxes.push_back({.text = text,
                             .title = "Deleting files",
                             .icon = BoxIcon::Question,
                             .buttons = BoxButtons::YesNo,
                             .answer = answer});
  }
  bool Confirmed(std::uint16_t flags, std::int64_t count) {
    ShFileOpStruct operation;
    operation.wFunc = FO_DELETE;
    operation.fFlags = flags;
    bool confirmed = false;
    job.Run("Deleting files", [&](OperationWatch& watch) { confirmed = watch.Confirm(operation, count); });
    return confirmed;
  }

  ScriptedDialogs dialogs;
  tests::ScriptedEventQueue events;
  FrmFileProgress frm;
  FileJob job{frm, events, dialogs};
};

TEST_F(FileJobTest, WorksOnAnotherThreadWhileEventsArePumped) {
  std::promise<void> pumped;
  events.onPump = [&] {
    EXPECT_TRUE(frm.Visible());
    EXPECT_TRUE(frm.tmrProgress.Enabled());
    EXPECT_EQ(frm.Caption(), "Moving files");
    if (events.pumps == 1) pumped.set_value();
  };
  std::thread::id worker;
  job.Run("Moving files", [&](OperationWatch&) {
    pumped.get_future().wait();
    worker = std::this_thread::get_id();
  });
  EXPECT_NE(worker, std::this_thread::get_id());
  EXPECT_FALSE(frm.Visible());
  EXPECT_FALSE(frm.tmrProgress.Enabled());
}

TEST_F(FileJobTest, ATickShowsHowFarItIs) {
  std::promise<void> told;
  std::promise<void> shown;
  events.onPump = [&] {
    if (events.pumps > 1) return;
    EXPECT_EQ(frm.pbDone.Value(), 0);
    told.get_future().wait();
    frm.tmrProgress.OnTick();
    EXPECT_EQ(frm.lblMsg.Caption(), "1 of 4\r\n/a/f");
    EXPECT_EQ(frm.pbDone.Value(), 25);
    shown.set_value();
  };
  job.Run("Moving files", [&](OperationWatch& watch) {
    watch.Progress({1, 4, 0, 0, "/a/f"});
    told.set_value();
    shown.get_future().wait();
  });
  job.Run("Moving files", [](OperationWatch&) {});
  EXPECT_EQ(frm.lblMsg.Caption(), "0 of 0\r\n");
  frm.tmrProgress.OnTick();
  EXPECT_EQ(frm.lblMsg.Caption(), "0 of 0\r\n");
}

TEST_F(FileJobTest, TheButtonCancelsThisRunAlone) {
  events.onPump = [&] { frm.cmdCancel.OnClick(); };
  job.Run("Moving files", [](OperationWatch& watch) {
    while (!watch.Cancelled()) std::this_thread::yield();
  });
  events.onPump = nullptr;
  frm.cmdCancel.OnClick();  // a click that comes too late
  bool cancelled = true;
  job.Run("Moving files", [&](OperationWatch& watch) { cancelled = watch.Cancelled(); });
  EXPECT_FALSE(cancelled);
}

TEST_F(FileJobTest, AConfirmationIsAQuestionOnTheInterfaceThread) {
  const auto interface = std::this_thread::get_id();
  dialogs.onBox = [&] { EXPECT_EQ(std::this_thread::get_id(), interface); };
  ExpectQuestion("Move these 3 items to the recycle bin?", BoxAnswer::Yes);
  EXPECT_TRUE(Confirmed(FOF_ALLOWUNDO | FOF_RENAMEONCOLLISION, 3));
  ExpectQuestion("Delete this item permanently? This can't be undone.", BoxAnswer::No);
  EXPECT_FALSE(Confirmed(FOF_RENAMEONCOLLISION, 1));
  ExpectQuestion("Move this item to the recycle bin?", BoxAnswer::Cancel);
  EXPECT_FALSE(Confirmed(FOF_ALLOWUNDO, 1));
}

TEST_F(FileJobTest, TheFormIsGoneAfterAFailureToo) {
  EXPECT_THROW(job.Run("Moving files", [](OperationWatch&) { throw std::runtime_error("broken"); }),
               std::runtime_error);
  EXPECT_FALSE(frm.Visible());
  EXPECT_FALSE(frm.tmrProgress.Enabled());
}

TEST(FrmFileProgress, TheBarGoesByBytesAndFiles) {
  FrmFileProgress frm;
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.cmdCancel.Caption(), "Cancel");
  frm.Show({1, 2, 0, 0, ""});
  EXPECT_EQ(frm.pbDone.Value(), 50);
  frm.Show({1, 2, 65536 * 4, 65536 * 8, ""});
  EXPECT_EQ(frm.pbDone.Value(), 50);
  frm.Show({0, 2, 65536 * 4, 65536 * 8, ""});
  EXPECT_EQ(frm.pbDone.Value(), 40);
  frm.Show({1, 2, 0, 65536 * 8, ""});
  EXPECT_EQ(frm.pbDone.Value(), 10);
}

TEST(FrmFileProgress, TheBarTakesWhatFilesThatGrowMakeOfIt) {
  FrmFileProgress frm;
  frm.Show({1, 1, 99'000'000, 1, ""});
  EXPECT_EQ(frm.pbDone.Value(), 100);
  frm.Show({3, 0, 0, 0, ""});
  EXPECT_EQ(frm.pbDone.Value(), 0);
}

}  // namespace
}  // namespace tresmor
