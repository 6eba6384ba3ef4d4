#pragma once

#include <cstdint>

#include "base/failure.h"
#include "controls/placed_control.h"

namespace tresmor {

// Fails with Overflow outside 0 to 100, also for what is no number.
struct PercentOnly {
  void operator()(float value) const {
    if (!(value >= 0 && value <= 100)) throw Failure(Errors::Overflow);
  }
};

class ProgressBar : public PlacedControl {
 public:
  explicit ProgressBar(Place place = {}) : PlacedControl(place) {}

  Property<float, PercentOnly> Value{*this, Notice::What::Value};
  // What it stands in, where that isn't the window that it belongs to; its place is then within that.
  Property<const Control*> Parent{*this, Notice::What::Parent, nullptr};
};

}  // namespace tresmor
