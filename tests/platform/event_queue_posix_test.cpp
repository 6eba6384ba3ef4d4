#include "platform/posix/event_queue_posix.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tresmor {

namespace {

using namespace std::chrono_literals;

// A queue whose time stands until the test moves it.
class EventQueueTest : public testing::Test {
 protected:
  PosixEventQueue::Clock::time_point now_{1000s};
  PosixEventQueue queue_{[this] { return now_; }};
};

TEST_F(EventQueueTest, ATimerTicksWhenItIsDue) {
  int ticks = 0;
  queue_.StartTimer(100ms, [&] { ++ticks; });
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 0);
  now_ += 99ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 0);
  now_ += 1ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 1);
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 1);
  now_ += 100ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 2);
}

TEST_F(EventQueueTest, ALateTimerTicksOnce) {
  int ticks = 0;
  queue_.StartTimer(100ms, [&] { ++ticks; });
  now_ += 1050ms;
  queue_.Pump(0ms);
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 1);
  now_ += 99ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 1);
  now_ += 1ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 2);
}

TEST_F(EventQueueTest, ALittleLatenessDoesNotAddUp) {
  int ticks = 0;
  queue_.StartTimer(100ms, [&] { ++ticks; });
  now_ += 130ms;
  queue_.Pump(0ms);
  now_ += 70ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 2);
}

TEST_F(EventQueueTest, AStoppedTimerNeverTicks) {
  int ticks = 0;
  const auto id = queue_.StartTimer(100ms, [&] { ++ticks; });
  queue_.StopTimer(id);
  queue_.StopTimer(id);
  now_ += 1s;
  queue_.Pump(0ms);
  EXPECT_EQ(ticks, 0);
}

TEST_F(EventQueueTest, ATickMayStopTimersAndStartThem) {
  int first = 0, second = 0, third = 0;
  EventQueue::TimerId firstId = 0, secondId = 0;
  firstId = queue_.StartTimer(100ms, [&] {
    ++first;
    queue_.StopTimer(firstId);
    queue_.StopTimer(secondId);
    for (int i = 0; i < 100; ++i) queue_.StartTimer(100ms, [&] { ++third; });
  });
  secondId = queue_.StartTimer(100ms, [&] { ++second; });
  now_ += 100ms;
  queue_.Pump(0ms);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(third, 0);
  now_ += 100ms;
  queue_.Pump(0ms);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(third, 100);
}

TEST_F(EventQueueTest, ATickMayPump) {
  int outer = 0, inner = 0;
  queue_.StartTimer(100ms, [&] {
    ++outer;
    queue_.Pump(0ms);
  });
  queue_.StartTimer(100ms, [&] { ++inner; });
  now_ += 100ms;
  queue_.Pump(0ms);
  EXPECT_EQ(outer, 1);
  EXPECT_EQ(inner, 1);
}

TEST_F(EventQueueTest, TicksRunOnThePumpingThread) {
  std::thread::id ticked;
  queue_.StartTimer(100ms, [&] { ticked = std::this_thread::get_id(); });
  now_ += 100ms;
  queue_.Pump(0ms);
  EXPECT_EQ(ticked, std::this_thread::get_id());
}

TEST_F(EventQueueTest, TellsItsClockInSeconds) {
  EXPECT_DOUBLE_EQ(queue_.Seconds(), 1000.0);
  now_ += 1500ms;
  EXPECT_DOUBLE_EQ(queue_.Seconds(), 1001.5);
}

// Hangs where the rule is broken.
TEST(EventQueueWaiting, WakeEndsAWait) {
  PosixEventQueue queue;
  std::atomic<bool> done = false;
  std::thread other([&] {
    done = true;
    queue.Wake();
  });
  while (!done) queue.Pump(1h);
  other.join();
}

TEST(EventQueueWaiting, AWakeBeforeTheWaitIsNotLost) {
  PosixEventQueue queue;
  queue.Wake();
  queue.Pump(1h);
}

TEST(EventQueueWaiting, ATimerEndsAWaitAndTicks) {
  PosixEventQueue queue;
  int ticks = 0;
  queue.StartTimer(1ms, [&] { ++ticks; });
  while (ticks < 3) queue.Pump(1h);
  EXPECT_EQ(ticks, 3);
}

TEST(EventQueueWaiting, AWaitEndsByItself) {
  PosixEventQueue queue;
  queue.Pump(1ms);
}

}  // namespace

}  // namespace tresmor
