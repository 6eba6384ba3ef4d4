#pragma once

#include <functional>
#include <string>
#include <utility>

#include "controls/control.h"

namespace tresmor {

// A button. Whoever shows it calls OnClick at a click of the user; the program may call it as well.
class Button : public Control {
 public:
  // Twips.
  struct Span {
    float left = 0;
    float width = 0;
  };
  explicit Button(std::string caption) : Button(std::move(caption), Span{}) {}
  Button(std::string caption, Span span)
      : Caption(*this, Notice::What::Text, std::move(caption)),
        Left(*this, Notice::What::Place, span.left),
        Width(*this, Notice::What::Place, span.width) {}

  Property<std::string> Caption;
  Property<float> Left;
  Property<float> Width;
  std::function<void()> OnClick;
};

}  // namespace tresmor
