#include "qt/picture_widget.h"

#include <QImage>
#include <QPainter>
#include <algorithm>

namespace tresmor {

PictureWidget::PictureWidget(Picture& control, const Binder& binder, QWidget* parent)
    : QWidget(parent), control_(control), binder_(binder) {
  binder_.BindState(control_, *this);
  Follow(control_, *this, [this](const Notice& notice) {
    if (notice.what == Notice::What::Value) update();
  });
}

void PictureWidget::resizeEvent(QResizeEvent*) {
  binder_.Deliver([this] {
    // A layout without enough room leaves less than none to some.
    control_.Width = binder_.Scale().FromPixels(std::max(0, width()));
    control_.Height = binder_.Scale().FromPixels(std::max(0, height()));
  });
}

void PictureWidget::paintEvent(QPaintEvent*) {
  const SharedImage picture = control_.Image();
  if (!picture || picture->width <= 0 || picture->height <= 0) return;
  const QImage image(reinterpret_cast<const uchar*>(picture->pixels.data()), picture->width, picture->height,
                     QImage::Format_ARGB32_Premultiplied);
  const QSizeF own = image.size();
  const QSizeF shown = own.width() > width() || own.height() > height() ? own.scaled(size(), Qt::KeepAspectRatio) : own;
  const QRectF place(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), shown);
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, image);
}

}  // namespace tresmor
