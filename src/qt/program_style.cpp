#include "qt/program_style.h"

#include <QScopedValueRollback>
#include <QStyleOption>
#include <algorithm>

#include "qt/colors.h"

namespace tresmor {
namespace {

bool IsIndicator(QStyle::PrimitiveElement element) {
  return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorItemViewItemCheck ||
         element == QStyle::PE_IndicatorRadioButton;
}

// Edges are made from the colour of windows, darker by a third.
QPalette WithBrightEdges(QPalette palette) {
  constexpr QColor kEdge(170, 170, 170);
  palette.setColor(QPalette::Window, kEdge);
  return palette;
}

}  // namespace

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  if (!IsIndicator(element) || !IsDark()) return QProxyStyle::drawPrimitive(element, option, painter, widget);
  // What an option holds besides its palette hangs on its kind, so that it can't be copied here.
  QPalette& palette = const_cast<QStyleOption*>(option)->palette;
  const QScopedValueRollback<QPalette> restored(palette, WithBrightEdges(palette));
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  constexpr int kBesideCaptions = 8;  // on both sides together
  const int wanted = QProxyStyle::pixelMetric(metric, option, widget);
  return metric == PM_TabBarTabHSpace ? std::min(wanted, kBesideCaptions) : wanted;
}

}  // namespace tresmor
