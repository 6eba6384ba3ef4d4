#pragma once

#include <functional>
#include <string>
#include <utility>

#include "controls/placed_control.h"

namespace tresmor {

// A button. Whoever shows it calls OnClick at a click of the user; the program may call it as well.
class Button : public PlacedControl {
 public:
  explicit Button(std::string caption, Place place = {})
      : PlacedControl(place), Caption(*this, Notice::What::Text, std::move(caption)) {}

  Property<std::string> Caption;
  std::function<void()> OnClick;
};

}  // namespace tresmor
