#pragma once

#include <string>

#include "controls/placed_control.h"

namespace tresmor {

// A line of text to type in.
class TextBox : public PlacedControl {
 public:
  explicit TextBox(Place place = {}) : PlacedControl(place) {}

  Property<std::string> Text{*this, Notice::What::Text};
  Property<std::string> ToolTipText{*this, Notice::What::Text};  // shown while the mouse rests on it

  // Asks whoever shows it to give it the keyboard.
  void SetFocus() { Tell(Notice::What::Focus, Notice::When::After); }
};

}  // namespace tresmor
