#include "desk/job_file_writer.h"

#include <gtest/gtest.h>

#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>

#include "desk/scripted_event_queue.h"

namespace tresmor {
namespace {

using tests::ScriptedEventQueue;

// A disk that goes on only when it is told.
class SlowWriter final : public FileWriter {
 public:
  Errors Replace(const std::string& path, std::string_view bytes) const override {
    goOn.acquire();
    if (path == "/broken") throw std::runtime_error("broken");
    written = path + ": " + std::string(bytes);
    thread = std::this_thread::get_id();
    return path == "/full" ? Errors::DiskFull : Errors::None;
  }
  Errors MakeFolder(const std::string& folder) const override {
    written = folder;
    return Errors::PathAccess;
  }
  std::unique_ptr<FileLock> Lock(const std::string&) const override { return std::make_unique<FileLock>(); }

  mutable std::counting_semaphore<> goOn{0};
  mutable std::string written;
  mutable std::thread::id thread;
};

class JobFileWriterTest : public testing::Test {
 protected:
  // The disk goes on from within an event, so a writer that lets none in never returns.
  JobFileWriterTest() {
    events.onPump = [this] {
      if (events.pumps == 1) slow.goOn.release();
    };
  }
  SlowWriter slow;
  ScriptedEventQueue events;
  const JobFileWriter writer{slow, events};
};

TEST_F(JobFileWriterTest, LetsEventsInWhileTheDiskIsBusy) {
  EXPECT_EQ(writer.Replace("/list.csv", "bytes"), Errors::None);
  EXPECT_EQ(slow.written, "/list.csv: bytes");
  EXPECT_NE(slow.thread, std::this_thread::get_id());
}

TEST_F(JobFileWriterTest, TellsWhyAFileWasNotWritten) { EXPECT_EQ(writer.Replace("/full", "bytes"), Errors::DiskFull); }

TEST_F(JobFileWriterTest, HandsOnWhatTheWriterThrows) {
  EXPECT_THROW(writer.Replace("/broken", "bytes"), std::runtime_error);
}

TEST_F(JobFileWriterTest, FoldersAndLocksAreTheOtherWriters) {
  EXPECT_EQ(writer.MakeFolder("/folder"), Errors::PathAccess);
  EXPECT_EQ(slow.written, "/folder");
  EXPECT_NE(writer.Lock("/folder/file"), nullptr);
}

}  // namespace
}  // namespace tresmor
