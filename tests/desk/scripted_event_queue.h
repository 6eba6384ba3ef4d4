// An event queue whose clock and timers go by the test's word.
#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

#include "platform/event_queue.h"

namespace tresmor::tests {

// Pump with a wait returns only when it was woken, so that a lost wake shows as a hang; one that came before it counts.
class ScriptedEventQueue : public EventQueue {
 public:
  void Pump(std::chrono::milliseconds wait) override {
    ++pumps;
    if (onPump) onPump();
    if (wait.count() == 0) return;
    ++waits;
    std::unique_lock lock(mutex_);
    woken_.wait(lock, [&] { return awake_; });
    awake_ = false;
  }
  void Wake() override {
    const std::lock_guard lock(mutex_);
    ++wakes_;
    awake_ = true;
    woken_.notify_one();
  }
  TimerId StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
    timers[++lastTimer_] = {interval, std::move(tick)};
    return lastTimer_;
  }
  void StopTimer(TimerId id) override { timers.erase(id); }
  double Seconds() const override { return seconds; }

  // Every timer once. What runs is a copy, since a tick may stop its own timer.
  void Tick() {
    for (const auto& [id, timer] : std::map(timers)) {
      if (timers.contains(id)) timer.tick();
    }
  }

  int Wakes() const {
    const std::lock_guard lock(mutex_);
    return wakes_;
  }

  struct RunningTimer {
    std::chrono::milliseconds interval;
    std::function<void()> tick;
  };
  std::map<TimerId, RunningTimer> timers;
  double seconds = 0;
  int pumps = 0;
  int waits = 0;
  std::function<void()> onPump;

 private:
  mutable std::mutex mutex_;
  std::condition_variable woken_;
  bool awake_ = false;
  int wakes_ = 0;
  TimerId lastTimer_ = 0;
};

// A queue by whose clock all takes long, so that events get their turn after every row and notice.
class SlowEventQueue final : public ScriptedEventQueue {
 public:
  double Seconds() const override { return seconds_ += 1; }

 private:
  mutable double seconds_ = 0;
};

}  // namespace tresmor::tests
