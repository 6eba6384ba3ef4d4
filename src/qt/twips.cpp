#include "qt/twips.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLineEdit>
#include <algorithm>
#include <cmath>

namespace tresmor {
namespace {

constexpr double kPerPixel = 15;     // at the design's size
constexpr double kFontHeight = 13;   // of the design's font, in pixels
constexpr double kFieldHeight = 21;  // of a field to type in
constexpr double kPixelsPerInch = 96;
// What a column of an inch has to hold.
constexpr char kDate[] = "0000/00/00 00:00:00";
constexpr double kCellMargins = 14;
constexpr double kColumnUnitsPerInch = 2540;

}  // namespace

Twips Twips::OfApplication() {
  const QFontMetrics font(QApplication::font());
  const QLineEdit field;
  const double growth = std::max({1.0, font.height() / kFontHeight, field.sizeHint().height() / kFieldHeight});
  return Twips(kPerPixel / growth, std::max(growth, (font.horizontalAdvance(kDate) + kCellMargins) / kPixelsPerInch));
}

int Twips::ToPixels(float twips) const { return static_cast<int>(std::lround(static_cast<double>(twips) / perPixel_)); }

float Twips::FromPixels(int pixels) const { return static_cast<float>(pixels * perPixel_); }

int Twips::ColumnPixels(int width) const {
  return static_cast<int>(std::lround(width * kPixelsPerInch / kColumnUnitsPerInch * textGrowth_));
}

QRect Twips::ToPixels(const Place& place) const {
  return {ToPixels(place.left), ToPixels(place.top), ToPixels(place.width), ToPixels(place.height)};
}

Place Twips::FromPixels(const QRect& rect) const {
  return {FromPixels(rect.left()), FromPixels(rect.top()), FromPixels(rect.width()), FromPixels(rect.height())};
}

}  // namespace tresmor
