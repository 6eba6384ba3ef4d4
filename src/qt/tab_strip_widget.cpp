#include "qt/tab_strip_widget.h"

#include <QSignalBlocker>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>

namespace tresmor {
TabStripWidget::TabStripWidget(TabStrip& control, const Binder& binder, QWidget* parent, const char* accessibleName)
    : QWidget(parent), control_(control), binder_(binder), bar_(this) {
  bar_.setAccessibleName(accessibleName);
  bar_.setExpanding(false);
  bar_.setUsesScrollButtons(true);
  bar_.setElideMode(Qt::ElideNone);
  for (std::int32_t tab = 1; tab <= control_.Count(); ++tab) bar_.addTab(Caption(control_.Caption(tab)));
  bar_.setCurrentIndex(control_.SelectedTab() - 1);
  setFocusProxy(&bar_);
  QObject::connect(&bar_, &QTabBar::currentChanged, this,
                   [this](int index) { binder_.Deliver([&] { control_.Select(index + 1); }); });
  binder_.BindState(control_, *this);
  binder_.BindPlace(control_, *this);
  Follow(control_, *this, [this](const Notice& notice) {
    if (notice.what == Notice::What::Item) bar_.setTabText(notice.first - 1, Caption(control_.Caption(notice.first)));
    if (notice.what == Notice::What::Place) LayOut();
    if (notice.what == Notice::What::SelectedTab) {
      const QSignalBlocker quiet(bar_);
      bar_.setCurrentIndex(control_.SelectedTab() - 1);
    }
  });
  LayOut();
}

void TabStripWidget::LayOut() {
  const int tabs = bar_.sizeHint().height();
  const int frame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
  bar_.setGeometry(0, 0, width(), tabs);
  const QRect room = rect().adjusted(frame, tabs + frame, -frame, -frame).translated(pos());
  control_.Client = binder_.Scale().FromPixels(room);
}

void TabStripWidget::resizeEvent(QResizeEvent*) {
  binder_.Deliver([this] { LayOut(); });
}

void TabStripWidget::paintEvent(QPaintEvent*) {
  QStyleOptionTabWidgetFrame option;
  option.initFrom(this);
  option.rect =
      rect().adjusted(0, bar_.height() - style()->pixelMetric(QStyle::PM_TabBarBaseOverlap, nullptr, this), 0, 0);
  option.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
  option.tabBarSize = bar_.size();
  option.selectedTabRect = bar_.tabRect(bar_.currentIndex());
  QStylePainter(this).drawPrimitive(QStyle::PE_FrameTabWidget, option);
}

}  // namespace tresmor
