#pragma once

#include <chrono>

#include "platform/event_queue.h"

namespace tresmor {

// Lets events in between the steps of a long routine on the interface thread: often enough for a window to answer, and
// no oftener, since each time may have the window painted. Before it does, all controls must be fit to be seen, and
// afterwards what the routine knew of them may have changed.
class EventSlice {
 public:
  explicit EventSlice(EventQueue& events) : events_(events) { Begin(); }

  // Whether events have waited long enough.
  bool IsOver() const { return events_.Seconds() >= end_; }
  void LetEventsIn() {
    events_.Pump(std::chrono::milliseconds(0));
    Begin();
  }

 private:
  void Begin() { end_ = events_.Seconds() + kSeconds; }

  static constexpr double kSeconds = 0.05;
  EventQueue& events_;
  double end_ = 0;
};

}  // namespace tresmor
