#pragma once

#include <string>

#include "controls/placed_control.h"

namespace tresmor {

// A text that only shows.
class Label : public PlacedControl {
 public:
  explicit Label(Place place = {}) : PlacedControl(place) {}

  Property<std::string> Caption{*this, Notice::What::Text};
};

}  // namespace tresmor
