#include "qt/visible_indicators.h"

#include <QScopedValueRollback>
#include <QStyleOption>

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

void VisibleIndicators::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                      const QWidget* widget) const {
  if (!IsIndicator(element) || !IsDark()) return QProxyStyle::drawPrimitive(element, option, painter, widget);
  // What an option holds besides its palette hangs on its kind, so that it can't be copied here.
  QPalette& palette = const_cast<QStyleOption*>(option)->palette;
  const QScopedValueRollback<QPalette> restored(palette, WithBrightEdges(palette));
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

}  // namespace tresmor
