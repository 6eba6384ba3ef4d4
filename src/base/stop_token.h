// How a long job is told to end or to stand still. Written by the interface thread, polled by the job's threads.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace tresmor {

class StopToken {
 public:
  // Any thread. A stopped job ends at its next poll; a paused one stands still there until Resume or Stop.
  void Stop();
  void Pause();
  void Resume();
  // Back to neither stopped nor paused. Only between jobs.
  void Reset();

  // Polled by the job: cheap when nothing was asked. Waits while paused. True once stopped.
  bool Stopped() const {
    if (state_.load(std::memory_order_relaxed) == 0) return false;
    return WaitWhilePaused();
  }

 private:
  enum : int { kPaused = 1, kStopped = 2 };
  bool WaitWhilePaused() const;
  void Change(int set, int clear);

  std::atomic<int> state_{0};
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
};

}  // namespace tresmor
