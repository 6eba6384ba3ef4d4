#include "desk/run_job.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <random>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <vector>

#include "desk/scripted_event_queue.h"
#include "platform/posix/event_queue_posix.h"

namespace tresmor {
namespace {

using tests::ScriptedEventQueue;
using Line = JobLine<int>;

class RunJobTest : public testing::Test {
 protected:
  template <class Job, class Deliver>
  void Run(Job job, Deliver deliver, std::size_t capacity = kJobLineCapacity) {
    RunJob<int>(events, stop, job, deliver, capacity);
  }
  ScriptedEventQueue events;
  StopToken stop;
};

std::vector<int> UpTo(int count) {
  std::vector<int> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(i);
  return numbers;
}

TEST_F(RunJobTest, RunsTheJobElsewhereAndDeliversHere) {
  std::thread::id ofJob;
  std::thread::id ofDelivery;
  Run(
      [&](Line& line) {
        ofJob = std::this_thread::get_id();
        line.Post(1);
      },
      [&](int) { ofDelivery = std::this_thread::get_id(); });
  EXPECT_NE(ofJob, std::this_thread::get_id());
  EXPECT_EQ(ofDelivery, std::this_thread::get_id());
}

TEST_F(RunJobTest, AJobWithoutNoticesReturns) {
  bool ran = false;
  Run([&](Line&) { ran = true; }, [](int) { FAIL(); });
  EXPECT_TRUE(ran);
}

void Dawdle(std::mt19937& random) {
  for (auto n = random() % 4; n > 0; --n) std::this_thread::yield();
}

TEST_F(RunJobTest, DeliversAllInOrderUnderShuffledTimings) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    std::mt19937 random(seed);
    const std::size_t capacity = 1 + random() % 5;
    std::vector<int> delivered;
    Run(
        [&](Line& line) {
          std::mt19937 ofJob(seed + 1000);
          for (int i = 0; i < 100; ++i) {
            Dawdle(ofJob);
            line.Post(i);
          }
        },
        [&](int i) {
          Dawdle(random);
          events.seconds += 0.001 * static_cast<double>(random() % 40);
          delivered.push_back(i);
        },
        capacity);
    ASSERT_EQ(delivered, UpTo(100)) << "seed " << seed;
  }
  // Nobody is woken who didn't wait.
  EXPECT_LE(events.Wakes(), events.waits);
}

TEST_F(RunJobTest, AFullLineMakesTheJobWait) {
  constexpr int kCapacity = 3;
  std::atomic<int> posted = 0;
  int delivered = 0;
  Run(
      [&](Line& line) {
        for (int i = 0; i < 1000; ++i) {
          line.Post(i);
          posted.store(i + 1);
        }
      },
      [&](int i) {
        // The job is given every chance to run ahead.
        while (i == 0 && posted.load() < kCapacity) std::this_thread::yield();
        for (int n = 0; i == 0 && n < 1000; ++n) std::this_thread::yield();
        // What stands in the line, and the one in hand.
        EXPECT_LE(posted.load(), ++delivered + kCapacity);
      },
      kCapacity);
  EXPECT_EQ(delivered, 1000);
}

TEST_F(RunJobTest, WakesOnlyWhoWaits) {
  std::binary_semaphore delivering(0);
  std::binary_semaphore posted(0);
  Run(
      [&](Line& line) {
        line.Post(0);
        delivering.acquire();  // from here on the interface thread doesn't wait
        const int before = events.Wakes();
        for (int i = 1; i < 100; ++i) line.Post(i);
        EXPECT_EQ(events.Wakes(), before);
        posted.release();
      },
      [&](int i) {
        if (i != 0) return;
        delivering.release();
        posted.acquire();
      });
}

TEST_F(RunJobTest, PumpsBetweenDeliveriesThatTakeLong) {
  int pumpsAtLast = 0;
  Run(
      [&](Line& line) {
        for (int i = 0; i < 10; ++i) line.Post(i);
      },
      [&](int) {
        pumpsAtLast = events.pumps;
        events.seconds += 0.05;
      });
  EXPECT_GE(pumpsAtLast, 9);
}

TEST_F(RunJobTest, AnEventMayStopTheJob) {
  events.onPump = [&] { stop.Stop(); };
  Run(
      [&](Line& line) {
        while (!stop.Stopped()) line.Post(1);
      },
      [&](int) { events.seconds += 1; });
  EXPECT_TRUE(stop.Stopped());
}

TEST_F(RunJobTest, AskReturnsWhenItsNoticeWasDealtWith) {
  int dealtWith = 0;  // no atomic: Ask orders it
  Run(
      [&](Line& line) {
        for (int i = 1; i <= 50; ++i) {
          line.Post(0);
          line.Ask(1);
          EXPECT_EQ(dealtWith, 2 * i);
        }
      },
      [&](int) { ++dealtWith; }, 2);
}

TEST_F(RunJobTest, ThrowsTheJobsFailureAfterAllItPosted) {
  std::vector<int> delivered;
  EXPECT_THROW(Run(
                   [&](Line& line) {
                     for (int i = 0; i < 20; ++i) line.Post(i);
                     throw std::runtime_error("job");
                   },
                   [&](int i) { delivered.push_back(i); }),
               std::runtime_error);
  EXPECT_EQ(delivered, UpTo(20));
  EXPECT_FALSE(stop.Stopped());
}

TEST_F(RunJobTest, AFailingDeliveryStopsTheJobAndDropsTheRest) {
  int delivered = 0;
  bool ended = false;
  EXPECT_THROW(Run(
                   [&](Line& line) {
                     while (!stop.Stopped()) line.Post(1);
                     line.Ask(2);
                     ended = true;
                     throw std::runtime_error("also failing");
                   },
                   [&](int) {
                     if (++delivered == 5) throw std::logic_error("delivery");
                   },
                   2),
               std::logic_error);
  EXPECT_EQ(delivered, 5);
  EXPECT_TRUE(ended);
}

TEST_F(RunJobTest, AFailingDeliveryFreesAJobThatAsks) {
  EXPECT_THROW(Run([&](Line& line) { line.Ask(1); }, [](int) { throw std::logic_error("delivery"); }),
               std::logic_error);
  EXPECT_TRUE(stop.Stopped());
}

TEST_F(RunJobTest, AFailingDeliveryFreesAPausedJob) {
  stop.Pause();
  EXPECT_THROW(Run(
                   [&](Line& line) {
                     line.Post(1);
                     while (!stop.Stopped()) line.Post(1);
                   },
                   [](int) { throw std::logic_error("delivery"); }),
               std::logic_error);
}

TEST_F(RunJobTest, AFailingEventCountsAsAFailingDelivery) {
  events.onPump = [] { throw std::logic_error("event"); };
  EXPECT_THROW(Run(
                   [&](Line& line) {
                     while (!stop.Stopped()) line.Post(1);
                   },
                   [&](int) { events.seconds += 1; }),
               std::logic_error);
}

TEST_F(RunJobTest, PumpsTheRealQueueWhileTheJobRuns) {
  PosixEventQueue queue;
  std::atomic<bool> ticked = false;
  std::vector<int> delivered;
  const auto timer = queue.StartTimer(std::chrono::milliseconds(1), [&] { ticked = true; });
  RunJob<int>(
      queue, stop,
      [&](Line& line) {
        while (!ticked) std::this_thread::yield();
        for (int i = 0; i < 5000; ++i) line.Post(i);
      },
      [&](int i) { delivered.push_back(i); }, 3);
  queue.StopTimer(timer);
  EXPECT_EQ(delivered, UpTo(5000));
}

TEST_F(RunJobTest, CarriesNoticesThatOnlyMove) {
  std::string all;
  RunJob<std::unique_ptr<std::string>>(
      events, stop,
      [](JobLine<std::unique_ptr<std::string>>& line) { line.Post(std::make_unique<std::string>("text")); },
      [&](std::unique_ptr<std::string>&& text) { all += *text; });
  EXPECT_EQ(all, "text");
}

}  // namespace
}  // namespace tresmor
