#pragma once

#include <string>

#include "controls/control.h"

namespace tresmor {

// A panel of a status bar.
class Panel : public Control {
 public:
  Property<std::string> Text{*this, Notice::What::Text};
};

}  // namespace tresmor
