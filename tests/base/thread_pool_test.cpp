#include "base/thread_pool.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <latch>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tresmor {
namespace {

class ThreadPoolOf : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Sizes, ThreadPoolOf, testing::Values(1, 2, 3, 8));

TEST_P(ThreadPoolOf, CallsEachIndexOnce) {
  ThreadPool pool(GetParam());
  ASSERT_EQ(pool.Threads(), GetParam());
  for (const std::size_t count : {0, 1, 2, 7, 100, 1000}) {
    for (const std::size_t grain :
         {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{1000}, std::numeric_limits<std::size_t>::max()}) {
      std::vector<int> calls(count);
      pool.ParallelFor(count, grain, [&](std::size_t index, std::size_t) { ++calls[index]; });
      EXPECT_EQ(calls, std::vector<int>(count, 1)) << count << " by " << grain;
    }
  }
}

TEST_P(ThreadPoolOf, GivesEachThreadItsOwnNumberAndAscendingIndexes) {
  ThreadPool pool(GetParam());
  // Plain data: two threads with one number would race here.
  std::vector<std::vector<std::size_t>> taken(pool.Threads());
  pool.ParallelFor(5000, 4, [&](std::size_t index, std::size_t thread) { taken.at(thread).push_back(index); });
  std::size_t total = 0;
  for (const std::vector<std::size_t>& indexes : taken) {
    total += indexes.size();
    for (std::size_t i = 1; i < indexes.size(); ++i) ASSERT_LT(indexes[i - 1], indexes[i]);
  }
  EXPECT_EQ(total, 5000u);
}

TEST_P(ThreadPoolOf, RunsOnAllItsThreads) {
  ThreadPool pool(GetParam());
  std::latch all(static_cast<std::ptrdiff_t>(GetParam()));  // opens only once every thread stands here
  pool.ParallelFor(GetParam(), 1, [&](std::size_t, std::size_t) { all.arrive_and_wait(); });
  EXPECT_TRUE(all.try_wait());
}

TEST_P(ThreadPoolOf, ThrowsTheExceptionAndEndsEarly) {
  ThreadPool pool(GetParam());
  constexpr std::size_t kForever = std::size_t{1} << 60;
  for (int round = 0; round < 20; ++round) {
    std::string caught;
    try {
      pool.ParallelFor(kForever, 2, [](std::size_t index, std::size_t) {
        if (index == 100) throw std::runtime_error("broken at " + std::to_string(index));
      });
    } catch (const std::runtime_error& error) {
      caught = error.what();
    }
    EXPECT_EQ(caught, "broken at 100");
  }
  std::atomic<int> calls{0};
  pool.ParallelFor(10, 1, [&](std::size_t, std::size_t) { ++calls; });
  EXPECT_EQ(calls, 10);
}

TEST_P(ThreadPoolOf, ThrowsOneOfManyExceptions) {
  ThreadPool pool(GetParam());
  for (int round = 0; round < 50; ++round) {
    EXPECT_THROW(pool.ParallelFor(100, 1, [](std::size_t, std::size_t) -> void { throw std::logic_error("each"); }),
                 std::logic_error);
  }
}

TEST_P(ThreadPoolOf, LeavesNoThreadInALoopThatReturned) {
  ThreadPool pool(GetParam());
  for (std::size_t round = 0; round < 3000; ++round) {
    const auto sums = std::make_unique<std::vector<std::size_t>>(pool.Threads());
    pool.ParallelFor(4, 1, [&sums, round](std::size_t, std::size_t thread) { (*sums)[thread] += round; });
    std::size_t sum = 0;
    for (const std::size_t part : *sums) sum += part;
    ASSERT_EQ(sum, 4 * round);
  }
}

TEST_P(ThreadPoolOf, MayEndUnused) {
  for (int round = 0; round < 50; ++round) ThreadPool pool(GetParam());
}

TEST(ThreadPool, OneThreadIsTheCaller) {
  ThreadPool pool(1);
  const auto caller = std::this_thread::get_id();
  std::vector<std::size_t> order;
  pool.ParallelFor(5, 2, [&](std::size_t index, std::size_t thread) {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    EXPECT_EQ(thread, 0u);
    order.push_back(index);
  });
  EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

TEST(ThreadPool, HasAThreadForEachCore) {
  EXPECT_EQ(ThreadPool().Threads(), std::max(1u, std::thread::hardware_concurrency()));
}

// In a process of its own, which may start no further thread.
[[noreturn]] void RunWithoutThreads() {
  constexpr uid_t kNobody = 65534;
  constexpr rlimit kNone{0, 0};
  if ((geteuid() == 0 && setuid(kNobody) != 0) || setrlimit(RLIMIT_NPROC, &kNone) != 0) std::_Exit(2);
  ThreadPool pool(4);
  std::size_t sum = 0;
  pool.ParallelFor(100, 1, [&](std::size_t index, std::size_t) { sum += index; });
  std::_Exit(pool.Threads() == 1 && sum == 4950 ? 0 : 1);
}

TEST(ThreadPoolDeathTest, GoesOnWithTheThreadsThatStarted) {
  EXPECT_EXIT(RunWithoutThreads(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tresmor
