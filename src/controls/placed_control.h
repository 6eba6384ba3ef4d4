#pragma once

#include "base/failure.h"
#include "controls/control.h"

namespace tresmor {

// Twips, within what it stands in.
struct Place {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

// Fails with Overflow for a size that nothing can have, also for what is no number.
struct SizeOnly {
  void operator()(float value) const {
    if (!(value >= 0)) throw Failure(Errors::Overflow);
  }
};

// A control whose place the program knows, because it moves it or puts others by it.
class PlacedControl : public Control {
 public:
  Property<float> Left;
  Property<float> Top;
  Property<float, SizeOnly> Width;
  Property<float, SizeOnly> Height;

  // Asks whoever shows it to put it in front of what stands there too.
  void BringToFront() { Tell(Notice::What::ToFront, Notice::When::After); }

 protected:
  explicit PlacedControl(Place place = {})
      : Left(*this, Notice::What::Place, place.left),
        Top(*this, Notice::What::Place, place.top),
        Width(*this, Notice::What::Place, place.width),
        Height(*this, Notice::What::Place, place.height) {}
  ~PlacedControl() = default;
};

}  // namespace tresmor
