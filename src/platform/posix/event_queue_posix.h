// The event queue of a program without a window: timers, and waking from other threads.
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/event_queue.h"

namespace tresmor {

class PosixEventQueue final : public EventQueue {
 public:
  using Clock = std::chrono::steady_clock;

  // `now` tells the time; it must never go back. Tests give their own.
  explicit PosixEventQueue(std::function<Clock::time_point()> now = Clock::now) : now_(std::move(now)) {}

  // A timer that is late by several intervals ticks once. A tick may start and stop timers, its own too, and may pump.
  void Pump(std::chrono::milliseconds wait) override;
  // Holds until a Pump has returned for it, so a Wake before that Pump is not lost.
  void Wake() override;

  TimerId StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
  void StopTimer(TimerId id) override;
  double Seconds() const override;

 private:
  struct Timer {
    TimerId id = 0;
    std::chrono::milliseconds interval{};
    Clock::time_point due;
    std::function<void()> tick;
  };

  bool TickDue();
  void WaitUntil(Clock::time_point end);
  Timer* Find(TimerId id);

  const std::function<Clock::time_point()> now_;
  std::vector<Timer> timers_;  // of the interface thread
  TimerId lastId_ = 0;

  std::mutex mutex_;
  std::condition_variable wake_;
  bool woken_ = false;
};

}  // namespace tresmor
