#pragma once

#include "controls/control.h"

namespace tresmor {

enum class PointerShape { Default = 0, Hourglass = 11, HourglassAndArrow = 13 };

// What the mouse pointer looks like over a window.
class MousePointer : public Control {
 public:
  Property<PointerShape> Shape{*this, Notice::What::Value, PointerShape::Default};
};

// Shows another shape for as long as it lives, then again what was there before.
class PointerWhile {
 public:
  PointerWhile(MousePointer& pointer, PointerShape shape) : pointer_(pointer), before_(pointer.Shape()) {
    pointer_.Shape = shape;
  }
  ~PointerWhile() { pointer_.Shape = before_; }
  PointerWhile(const PointerWhile&) = delete;
  PointerWhile& operator=(const PointerWhile&) = delete;

 private:
  MousePointer& pointer_;
  const PointerShape before_;
};

}  // namespace tresmor
