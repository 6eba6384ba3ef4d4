#include "qt/colors.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

namespace tresmor {
namespace {

constexpr float kBrightEnough = 0.7F;  // as the lightness of a hue, 0 to 1

}  // namespace

bool IsDark() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor ReadableColor(std::uint32_t color) {
  const QColor told(static_cast<int>(color & 0xFFU), static_cast<int>(color >> 8 & 0xFFU),
                    static_cast<int>(color >> 16 & 0xFFU));
  if (!IsDark()) return told;
  return QColor::fromHslF(std::max(0.0F, told.hslHueF()), told.hslSaturationF(),
                          std::max(kBrightEnough, told.lightnessF()));
}

}  // namespace tresmor
