#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <exception>
#include <functional>
#include <memory>
#include <unordered_map>

#include "platform/event_queue.h"

namespace tresmor {

// The toolkit's own queue. Exceptions can't pass through the toolkit, so whatever an event sets off is to run through
// Deliver.
class QtEventQueue : public EventQueue {
 public:
  QtEventQueue();
  QtEventQueue(const QtEventQueue&) = delete;
  QtEventQueue& operator=(const QtEventQueue&) = delete;

  void Pump(std::chrono::milliseconds wait) override;
  void Wake() override;
  TimerId StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
  void StopTimer(TimerId id) override;
  double Seconds() const override;

  // Interface thread. Runs `handler`. What it throws is thrown by the Pump that let the event in; if none did, it goes
  // to OnUncaught.
  void Deliver(const std::function<void()>& handler);

  // Tells a failure that no action took. Throws nothing.
  std::function<void(std::exception_ptr failure)> OnUncaught;

 private:
  QElapsedTimer clock_;
  std::unordered_map<TimerId, std::unique_ptr<QTimer>> timers_;
  TimerId lastTimer_ = 0;
  int pumps_ = 0;
  std::exception_ptr thrown_;  // by an event of the innermost pump
};

}  // namespace tresmor
