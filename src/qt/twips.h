// Places of the program's forms on a screen.
#pragma once

#include <QFont>
#include <QRect>

#include "controls/placed_control.h"

namespace tresmor {

// The forms were drawn for a font of 13 pixels at 96 dots an inch, where 15 twips are a pixel. A larger font, or a
// style that leaves more room around it, makes all of them larger alike, so that no caption is cut.
class Twips {
 public:
  // Measures the application's font and style.
  static Twips OfApplication();
  // `textGrowth` is how much wider texts are than in the design's font.
  explicit Twips(double perPixel, double textGrowth = 1) : perPixel_(perPixel), textGrowth_(textGrowth) {}

  double PerPixel() const { return perPixel_; }
  int ToPixels(float twips) const;
  float FromPixels(int pixels) const;
  // Widths of columns are told in hundredths of a millimetre, 2540 to the inch. What stands in a column is text, so
  // that its width follows that of the font.
  int ColumnPixels(int width) const;
  QRect ToPixels(const Place& place) const;
  Place FromPixels(const QRect& rect) const;

 private:
  double perPixel_;
  double textGrowth_;
};

}  // namespace tresmor
