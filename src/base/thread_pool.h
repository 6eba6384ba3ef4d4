// A fixed set of threads for loops over many independent pieces of work.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tresmor {

// Loops run on the calling thread too, so a pool of one thread starts none. One loop at a time: ParallelFor is called
// by the thread that owns the pool, and not from inside a loop.
class ThreadPool {
 public:
  // 0 = one for each core of this machine.
  explicit ThreadPool(std::size_t threads = 0);
  ~ThreadPool();
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  std::size_t Threads() const { return workers_.size() + 1; }

  // Calls body(index, thread) once for each index below `count`; indexes are handed out in ascending order, `grain` at
  // a time, thread is below Threads() and tells which scratch space is the caller's. Returns when all are done. The
  // first exception of a body ends the loop early and is thrown here.
  void ParallelFor(std::size_t count, std::size_t grain,
                   const std::function<void(std::size_t index, std::size_t thread)>& body);

 private:
  struct Loop;
  void Work(std::size_t thread);
  void Run(Loop& loop, std::size_t thread);

  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  std::shared_ptr<Loop> loop_;
  bool quit_ = false;
  std::vector<std::thread> workers_;
};

}  // namespace tresmor
