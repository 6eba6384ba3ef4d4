#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "base/failure.h"
#include "controls/placed_control.h"

namespace tresmor {

// Grayed is neither off nor ticked. Only the program makes a box grayed: a file may tell it of one.
enum : std::int16_t { kOff = 0, kTicked = 1, kGrayed = 2 };

// Fails with Overflow for what is none of the three.
struct CheckBoxValue {
  void operator()(std::int16_t value) const {
    if (value < kOff || value > kGrayed) throw Failure(Errors::Overflow);
  }
};

class CheckBox : public PlacedControl {
 public:
  explicit CheckBox(bool ticked = false, std::string caption = {}, Place place = {})
      : PlacedControl(place),
        Value(*this, Notice::What::Value, ticked ? kTicked : kOff),
        Caption(*this, Notice::What::Text, std::move(caption)) {}

  bool Ticked() const { return Value() == kTicked; }

  Property<std::int16_t, CheckBoxValue> Value;
  Property<std::string> Caption;
  std::function<void()> OnClick;  // by the user, after the change of Value; no change by the program calls it
};

}  // namespace tresmor
