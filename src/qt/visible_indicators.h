#pragma once

#include <QProxyStyle>

namespace tresmor {

// The desktop's own style, with edges of check boxes and option buttons that can be seen on a dark ground too: some
// styles make them darker than the ground whatever that is.
class VisibleIndicators : public QProxyStyle {
 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace tresmor
