#include "base/thread_pool.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <system_error>

namespace tresmor {

struct ThreadPool::Loop {
  using Body = std::function<void(std::size_t index, std::size_t thread)>;
  Loop(std::size_t count, std::size_t grain, const Body& body) : count(count), grain(grain), body(body) {}

  const std::size_t count;
  const std::size_t grain;
  const Body& body;
  std::atomic<std::size_t> next{0};
  // Both under the pool's mutex.
  std::size_t inside = 0;  // workers that entered the loop and have not left it
  std::exception_ptr failure;
};

ThreadPool::ThreadPool(std::size_t threads) {
  if (threads == 0) threads = std::max(std::thread::hardware_concurrency(), 1u);
  workers_.reserve(threads - 1);
  try {
    for (std::size_t thread = 1; thread < threads; ++thread) workers_.emplace_back([this, thread] { Work(thread); });
  } catch (const std::system_error&) {
    // The machine gives no more threads: those that started, and the caller, do all the work.
  }
}

ThreadPool::~ThreadPool() {
  {
    const std::lock_guard lock(mutex_);
    quit_ = true;
  }
  wake_.notify_all();
  for (std::thread& worker : workers_) worker.join();
}

void ThreadPool::ParallelFor(std::size_t count, std::size_t grain,
                             const std::function<void(std::size_t index, std::size_t thread)>& body) {
  grain = std::clamp<std::size_t>(grain, 1, std::max<std::size_t>(count, 1));
  const auto loop = std::make_shared<Loop>(count, grain, body);
  if (count > grain) {
    {
      const std::lock_guard lock(mutex_);
      loop_ = loop;
    }
    wake_.notify_all();
  }
  Run(*loop, 0);
  std::unique_lock lock(mutex_);
  loop_.reset();  // who has not entered by now stays outside
  done_.wait(lock, [&loop] { return loop->inside == 0; });
  if (loop->failure) std::rethrow_exception(loop->failure);
}

void ThreadPool::Work(std::size_t thread) {
  // Held so that no later loop can have its address: a worker enters each loop once.
  std::shared_ptr<Loop> entered;
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [&] { return quit_ || (loop_ && loop_ != entered); });
    if (quit_) return;
    entered = loop_;
    ++entered->inside;
    lock.unlock();
    Run(*entered, thread);
    lock.lock();
    if (--entered->inside == 0) done_.notify_one();
  }
}

void ThreadPool::Run(Loop& loop, std::size_t thread) {
  try {
    for (std::size_t from = loop.next.fetch_add(loop.grain); from < loop.count;
         from = loop.next.fetch_add(loop.grain)) {
      const std::size_t end = from + std::min(loop.grain, loop.count - from);
      for (std::size_t index = from; index < end; ++index) loop.body(index, thread);
    }
  } catch (...) {
    loop.next = loop.count;
    const std::lock_guard lock(mutex_);
    if (!loop.failure) loop.failure = std::current_exception();
  }
}

}  // namespace tresmor
