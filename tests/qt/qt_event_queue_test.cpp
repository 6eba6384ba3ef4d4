#include "qt/qt_event_queue.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tresmor {
namespace {

using namespace std::chrono_literals;

std::string WordsOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& exception) {
    return exception.what();
  }
}

class QtEventQueueTest : public testing::Test {
 protected:
  // As an event of the toolkit comes, which lets nothing through.
  void Post(std::function<void()> handler) {
    QTimer::singleShot(0, [this, handler = std::move(handler)] { events_.Deliver(handler); });
  }

  QtEventQueue events_;
};

TEST_F(QtEventQueueTest, APumpThatWaitsForNothingDeliversWhatIsDue) {
  int delivered = 0;
  Post([&] { ++delivered; });
  Post([&] { ++delivered; });
  while (delivered < 2) events_.Pump(0ms);
  events_.Pump(0ms);
  EXPECT_EQ(delivered, 2);
}

TEST_F(QtEventQueueTest, AnotherThreadWakesAPumpThatWaits) {
  std::atomic<bool> returned = false;
  std::thread waker([&] {
    while (!returned) {
      events_.Wake();
      std::this_thread::yield();
    }
  });
  events_.Pump(1h);
  returned = true;
  waker.join();
}

TEST_F(QtEventQueueTest, AWaitEnds) {
  const double before = events_.Seconds();
  while (events_.Seconds() < before + 0.02) events_.Pump(5ms);
  EXPECT_GT(events_.Seconds(), before);
}

TEST_F(QtEventQueueTest, ATimerTicksUntilItIsStopped) {
  std::vector<int> ticks;
  EventQueue::TimerId stopsItself = 0;
  const EventQueue::TimerId first = events_.StartTimer(1ms, [&] { ticks.push_back(1); });
  stopsItself = events_.StartTimer(1ms, [&] {
    ticks.push_back(2);
    events_.StopTimer(stopsItself);
  });
  EXPECT_NE(first, stopsItself);
  while (std::count(ticks.begin(), ticks.end(), 1) < 3) events_.Pump(1h);
  EXPECT_EQ(std::count(ticks.begin(), ticks.end(), 2), 1);
  events_.StopTimer(first);
  events_.StopTimer(first);  // again
  ticks.clear();
  Post([] {});
  events_.Pump(0ms);
  events_.Pump(3ms);
  EXPECT_TRUE(ticks.empty());
}

TEST_F(QtEventQueueTest, WhatAHandlerThrowsGoesToThePumpThatLetItIn) {
  events_.OnUncaught = [](const std::exception_ptr&) { ADD_FAILURE() << "it was caught"; };
  std::string inner;
  bool outerWentOn = false;
  Post([&] {
    Post([] { throw std::runtime_error("inner"); });
    try {
      for (;;) events_.Pump(1h);
    } catch (const std::runtime_error& failure) {
      inner = failure.what();
    }
    outerWentOn = true;
  });
  while (!outerWentOn) events_.Pump(1h);
  EXPECT_EQ(inner, "inner");

  Post([] { throw std::runtime_error("outer"); });
  EXPECT_THROW(for (;;) events_.Pump(1h), std::runtime_error);
  events_.Pump(0ms);  // and is told once
}

TEST_F(QtEventQueueTest, OfSeveralFailuresOfAPumpTheFirstIsThrown) {
  bool second = false;
  Post([] { throw std::runtime_error("first"); });
  Post([&] {
    second = true;
    throw std::runtime_error("second");
  });
  try {
    for (;;) events_.Pump(1h);
  } catch (const std::runtime_error& failure) {
    EXPECT_STREQ(failure.what(), "first");
  }
  try {
    while (!second) events_.Pump(1h);
  } catch (const std::runtime_error&) {
  }
}

TEST_F(QtEventQueueTest, WhatNoPumpLetInGoesToOnUncaught) {
  QEventLoop loop;
  std::string told;
  events_.OnUncaught = [&](const std::exception_ptr& failure) {
    told = WordsOf(failure);
    loop.quit();
  };
  Post([] { throw std::runtime_error("nobody's"); });
  loop.exec();
  EXPECT_EQ(told, "nobody's");
}

TEST_F(QtEventQueueTest, ATimersFailureIsLikeAnyOther) {
  const EventQueue::TimerId timer = events_.StartTimer(1ms, [] { throw std::runtime_error("tick"); });
  EXPECT_THROW(for (;;) events_.Pump(1h), std::runtime_error);
  events_.StopTimer(timer);
}

}  // namespace
}  // namespace tresmor
