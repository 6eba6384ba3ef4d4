#pragma once

#include <string>

#include "controls/control.h"

namespace tresmor {

// Shows the picture of a file.
class Picture : public Control {
 public:
  Property<std::string> File{*this, Notice::What::Value};  // empty for no picture
};

}  // namespace tresmor
