#pragma once

#include <QProxyStyle>

namespace tresmor {

// The desktop's own style, mended in two places. Edges of check boxes and option buttons can be seen on a dark ground
// too: some styles make them darker than the ground whatever that is. Tabs leave less room beside their captions, so
// that those of the results, with their counts, all show in a window of the usual width.
class ProgramStyle : public QProxyStyle {
 public:
  using QProxyStyle::QProxyStyle;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace tresmor
