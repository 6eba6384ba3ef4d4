#pragma once

#include <string>

#include "controls/placed_control.h"

namespace tresmor {

// A panel of a status bar, and where it stands in it, as measured by whoever shows it.
class Panel : public PlacedControl {
 public:
  explicit Panel(Place place = {}) : PlacedControl(place) {}

  Property<std::string> Text{*this, Notice::What::Text};
};

}  // namespace tresmor
