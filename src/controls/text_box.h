#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "controls/placed_control.h"

namespace tresmor {

// A line of text to type in.
class TextBox : public PlacedControl {
 public:
  explicit TextBox(Place place = {}) : PlacedControl(place) {}

  Property<std::string> Text{*this, Notice::What::Text};
  std::int32_t MaxLength = 0;  // characters that can be typed; 0 for any number
  bool Locked = false;         // takes no typing

  // What the user does, called by whoever shows the box after the change that comes with it.
  std::function<void()> OnGotFocus;
  std::function<void()> OnLostFocus;

  // Asks whoever shows it to select the whole text.
  void SelectAll() { Tell(Notice::What::Selection, Notice::When::After); }
};

}  // namespace tresmor
