#pragma once

#include "base/failure.h"
#include "controls/control.h"

namespace tresmor {

// Fails with Overflow outside 0 to 100, also for what is no number.
struct PercentOnly {
  void operator()(float value) const {
    if (!(value >= 0 && value <= 100)) throw Failure(Errors::Overflow);
  }
};

class ProgressBar : public Control {
 public:
  Property<float, PercentOnly> Value{*this, Notice::What::Value};
};

}  // namespace tresmor
