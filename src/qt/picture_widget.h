#pragma once

#include "controls/picture.h"
#include "qt/binder.h"

namespace tresmor {

// Shows a picture in the middle of its room, scaled down where it is too large, and measures that room. A picture's
// pixels are the window's; one with more of them than fit uses all points of the screen.
class PictureWidget : public QWidget {
 public:
  PictureWidget(Picture& control, const Binder& binder, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  Picture& control_;
  const Binder& binder_;
};

}  // namespace tresmor
