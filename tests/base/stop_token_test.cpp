#include "base/stop_token.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <thread>

namespace tresmor {
namespace {

TEST(StopToken, StopsAndResets) {
  StopToken token;
  EXPECT_FALSE(token.Stopped());
  token.Stop();
  EXPECT_TRUE(token.Stopped());
  token.Resume();
  EXPECT_TRUE(token.Stopped());
  token.Reset();
  EXPECT_FALSE(token.Stopped());
}

TEST(StopToken, AStopBeatsAPause) {
  StopToken token;
  token.Pause();
  token.Stop();
  EXPECT_TRUE(token.Stopped());
  token.Pause();
  EXPECT_TRUE(token.Stopped());
  token.Reset();
  EXPECT_FALSE(token.Stopped());
}

TEST(StopToken, APauseAndItsEndLeaveNothing) {
  StopToken token;
  token.Pause();
  token.Pause();
  token.Resume();
  EXPECT_FALSE(token.Stopped());
  token.Resume();
  EXPECT_FALSE(token.Stopped());
}

// Polls on a thread of its own while paused; `end` lets it go on. Gives what the poll said.
template <typename End>
bool PollPaused(End end) {
  StopToken token;
  token.Pause();
  std::latch polling(1);
  std::atomic<bool> ended{false};
  bool stopped = false;
  std::thread job([&] {
    polling.count_down();
    stopped = token.Stopped();
    EXPECT_TRUE(ended) << "the job did not stand still";
  });
  polling.wait();
  std::this_thread::yield();
  ended = true;
  end(token);
  job.join();
  return stopped;
}

TEST(StopToken, APausedJobStandsStill) {
  for (int i = 0; i < 200; ++i) {
    EXPECT_FALSE(PollPaused([](StopToken& token) { token.Resume(); }));
    EXPECT_TRUE(PollPaused([](StopToken& token) { token.Stop(); }));
  }
}

}  // namespace
}  // namespace tresmor
