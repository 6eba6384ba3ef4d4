#pragma once

#include "controls/control.h"

namespace tresmor {

class CheckBox : public Control {
 public:
  explicit CheckBox(bool ticked = false) : Value(*this, Notice::What::Value, ticked) {}

  Property<bool> Value;
};

}  // namespace tresmor
