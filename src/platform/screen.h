// The port to the screen that the program's windows stand on.
#pragma once

#include <cstdint>

namespace tresmor {

// The part of the desktop that windows are to keep to, task bars and the like taken off.
struct WorkArea {
  std::int32_t right = 0;   // pixels, of the first one past it
  std::int32_t bottom = 0;  // the same
  // Of the screen, for who has twips to compare.
  float twipsPerPixelX = 15;
  float twipsPerPixelY = 15;
  float dotsPerPixel = 1;  // how many points of the screen lie side by side in a pixel of the program's
};

class Screen {
 public:
  virtual ~Screen() = default;
  // Interface thread.
  virtual WorkArea GetWorkArea() const = 0;
};

}  // namespace tresmor
