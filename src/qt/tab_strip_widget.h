#pragma once

#include <QTabBar>

#include "controls/tab_strip.h"
#include "qt/binder.h"

namespace tresmor {

// Tabs over a framed room. What the room shows are other widgets, which stand in front of it; here is only measured how
// large it is.
class TabStripWidget : public QWidget {
 public:
  TabStripWidget(TabStrip& control, const Binder& binder, QWidget* parent, const char* accessibleName);

  QTabBar& Bar() { return bar_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void LayOut();

  TabStrip& control_;
  const Binder& binder_;
  QTabBar bar_;
};

}  // namespace tresmor
