// The port to the queue of the interface thread: events, timers and the clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace tresmor {

class EventQueue {
 public:
  using TimerId = std::uint64_t;
  virtual ~EventQueue() = default;

  // Interface thread. Delivers what is due: timers and events of the platform. Waits up to `wait` if nothing is.
  virtual void Pump(std::chrono::milliseconds wait) = 0;
  // Any thread: makes a waiting Pump return soon.
  virtual void Wake() = 0;

  // Interface thread. `tick` is called from within Pump every `interval` until StopTimer.
  virtual TimerId StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) = 0;
  virtual void StopTimer(TimerId id) = 0;

  // Seconds of a clock that never goes back.
  virtual double Seconds() const = 0;
};

}  // namespace tresmor
