#include "qt/colors.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "qt/qt_test.h"
#include "results/rows.h"

namespace tresmor::tests {
namespace {

double Luminance(const QColor& color) {
  const auto light = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
  return 0.2126 * light(color.red() / 255.0) + 0.7152 * light(color.green() / 255.0) +
         0.0722 * light(color.blue() / 255.0);
}
double Contrast(const QColor& text, const QColor& ground) {
  const double a = Luminance(text) + 0.05;
  const double b = Luminance(ground) + 0.05;
  return std::max(a, b) / std::min(a, b);
}
int Difference(const QColor& a, const QColor& b) {
  return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

class ColorsTest : public testing::Test {
 protected:
  ~ColorsTest() override { QApplication::setPalette(usual_); }
  static void SetGround(const QColor& ground, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, text);
    QApplication::setPalette(palette);
  }

 private:
  const QPalette usual_ = QApplication::palette();
};

TEST_F(ColorsTest, OnADarkGroundEachGroupColourCanBeReadAndToldFromTheOthers) {
  for (const QColor ground : {QColor(0x20, 0x20, 0x20), QColor(0x31, 0x36, 0x3B)}) {
    SetGround(ground, Qt::white);
    for (const std::uint32_t color : GroupColors) {
      EXPECT_GE(Contrast(ReadableColor(color), ground), 4.5) << color << " on " << ground.name().toStdString();
      for (const std::uint32_t other : GroupColors) {
        if (other == color) continue;
        EXPECT_GT(Difference(ReadableColor(color), ReadableColor(other)), 60) << color << " and " << other;
      }
    }
  }
}

TEST_F(ColorsTest, OnABrightGroundColoursStayWhatTheyAre) {
  SetGround(Qt::white, Qt::black);
  EXPECT_EQ(ReadableColor(0x0033CC), QColor(0xCC, 0x33, 0x00));
}

}  // namespace
}  // namespace tresmor::tests
