#pragma once

#include <string>

#include "controls/control.h"

namespace tresmor {

class Button : public Control {
 public:
  explicit Button(std::string caption) : Caption(*this, Notice::What::Caption, std::move(caption)) {}

  Property<std::string> Caption;  // "&" stands in front of the access key
};

}  // namespace tresmor
