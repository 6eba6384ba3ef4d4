#include "qt/colors.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace tresmor {
namespace {

constexpr float kBright = 0.7F;  // the least lightness of a hue, 0 to 1
constexpr float kStep = 0.02F;
constexpr double kReadable = 4.5;  // the contrast that texts are to have by the web's guidelines (WCAG 2)

double LightOf(float part) {
  return part <= 0.04045F ? part / 12.92 : std::pow((static_cast<double>(part) + 0.055) / 1.055, 2.4);
}
double LuminanceOf(const QColor& color) {
  return 0.2126 * LightOf(color.redF()) + 0.7152 * LightOf(color.greenF()) + 0.0722 * LightOf(color.blueF());
}

}  // namespace

bool IsDark() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor ReadableColor(std::uint32_t color) {
  const QColor told(static_cast<int>(color & 0xFFU), static_cast<int>(color >> 8 & 0xFFU),
                    static_cast<int>(color >> 16 & 0xFFU));
  if (!IsDark()) return told;
  const double wanted = kReadable * (LuminanceOf(QGuiApplication::palette().color(QPalette::Base)) + 0.05) - 0.05;
  float lightness = std::max(kBright, told.lightnessF());
  QColor shown;
  do {
    shown = QColor::fromHslF(std::max(0.0F, told.hslHueF()), told.hslSaturationF(), std::min(1.0F, lightness)).toRgb();
    lightness += kStep;
  } while (LuminanceOf(shown) < wanted && lightness < 1.0F + kStep);
  return shown;
}

}  // namespace tresmor
