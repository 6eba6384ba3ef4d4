#pragma once

#include <cstdint>

#include "base/failure.h"
#include "controls/align.h"
#include "controls/placed_control.h"

namespace tresmor {

// Fails with Overflow outside 0 to 100, also for what is no number.
struct PercentOnly {
  void operator()(float value) const {
    if (!(value >= 0 && value <= 100)) throw Failure(Errors::Overflow);
  }
};

enum class Appearance : std::int16_t { Flat = 0, Raised = 1 };
enum class BorderStyle : std::int16_t { None = 0, Single = 1 };

class ProgressBar : public PlacedControl {
 public:
  explicit ProgressBar(Place place = {}) : PlacedControl(place) {}

  Property<float, PercentOnly> Value{*this, Notice::What::Value};
  // What it stands in, and its place within; null for one that never leaves the window that it belongs to.
  Property<const Control*> Parent{*this, Notice::What::Parent, nullptr};
  Property<tresmor::Align> Align{*this, Notice::What::Place, tresmor::Align::None};
  Property<tresmor::Appearance> Appearance{*this, Notice::What::Look, tresmor::Appearance::Raised};
  Property<tresmor::BorderStyle> BorderStyle{*this, Notice::What::Look, tresmor::BorderStyle::Single};
};

}  // namespace tresmor
