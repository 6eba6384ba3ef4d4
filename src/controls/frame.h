#pragma once

#include <string>
#include <utility>

#include "controls/placed_control.h"

namespace tresmor {

// A border with a caption around other controls, which show only while it does.
class Frame : public PlacedControl {
 public:
  explicit Frame(std::string caption = "", Place place = {})
      : PlacedControl(place), Caption(*this, Notice::What::Text, std::move(caption)) {}

  Property<std::string> Caption;
};

}  // namespace tresmor
