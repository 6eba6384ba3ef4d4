#pragma once

#include "controls/placed_control.h"

namespace tresmor {

// A fixed picture, of which the program only says whether it shows and where.
class Image : public PlacedControl {
 public:
  explicit Image(Place place = {}) : PlacedControl(place) {}
};

}  // namespace tresmor
