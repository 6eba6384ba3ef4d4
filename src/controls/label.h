#pragma once

#include <string>

#include "controls/control.h"

namespace tresmor {

// A text that only shows.
class Label : public Control {
 public:
  Property<std::string> Caption{*this, Notice::What::Text};
};

}  // namespace tresmor
