#pragma once

#include <string>

#include "base/pixel_image.h"
#include "controls/placed_control.h"

namespace tresmor {

// Shows a picture, scaled down to its own size where that has fewer pixels. On a screen with several points to a pixel
// a picture may have as many, and is then shown all the finer.
class Picture : public PlacedControl {
 public:
  explicit Picture(Place place = {}) : PlacedControl(place) {}

  Property<std::string> File{*this, Notice::What::Value};   // that the picture is of or will be; empty for none
  Property<SharedImage> Image{*this, Notice::What::Value};  // none for no picture, or none yet
};

}  // namespace tresmor
