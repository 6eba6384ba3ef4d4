#pragma once

#include <functional>
#include <string>

#include "controls/control.h"

namespace tresmor {

// A timer at rest, until it is enabled. Whoever owns an event queue calls OnTick every `Interval` milliseconds while it
// is; an interval written meanwhile holds from the next start.
class Timer : public Control {
 public:
  explicit Timer(int interval) : Interval(*this, Notice::What::Interval, interval) { Enabled = false; }

  Property<int> Interval;
  Property<std::string> Tag{*this, Notice::What::Tag};
  std::function<void()> OnTick;
};

}  // namespace tresmor
