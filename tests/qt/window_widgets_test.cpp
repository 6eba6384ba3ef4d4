#include <gtest/gtest.h>

#include "qt/picture_widget.h"
#include "qt/qt_screen.h"
#include "qt/stage.h"
#include "qt/tab_strip_widget.h"

namespace tresmor::tests {
namespace {

struct TabStage {
  TabStage() {
    control.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::SelectedTab && notice.when == Notice::When::After) {
        selected.push_back(control.SelectedTab());
      }
    });
    stage.window.resize(500, 300);
    stage.Show();
    selected.clear();
  }
  void ClickTab(int tab) {
    QTabBar& bar = widget->Bar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(tab - 1).center());
  }

  TabStrip control{{"One & two", "Three"}, {150, 150, 6000, 1500}};
  std::vector<std::int32_t> selected;
  Stage stage;
  TabStripWidget* const widget = new TabStripWidget(control, stage.binder, &stage.window, "Tabs");
};

TEST(TabStripWidget, ATabIsChosenByMouseKeysAndProgram) {
  TabStage tabs;
  tabs.ClickTab(2);
  EXPECT_EQ(tabs.selected, std::vector<std::int32_t>{2});
  tabs.widget->setFocus();
  QTest::keyClick(&tabs.widget->Bar(), Qt::Key_Left);
  EXPECT_EQ(tabs.selected, (std::vector<std::int32_t>{2, 1}));
  tabs.control.Select(2);
  EXPECT_EQ(tabs.widget->Bar().currentIndex(), 1);
}

TEST(TabStripWidget, AClickOnTheTabOnShowIsNone) {
  TabStage tabs;
  tabs.ClickTab(1);
  tabs.ClickTab(1);
  EXPECT_TRUE(tabs.selected.empty());
}

TEST(TabStripWidget, CaptionsAreTheControls) {
  TabStage tabs;
  EXPECT_EQ(tabs.widget->Bar().tabText(0), "One & two");  // with a mnemonic
  tabs.control.SetCaption(2, "Three (2)\n");
  EXPECT_EQ(tabs.widget->Bar().tabText(1), QStringLiteral("Three (2)\u240A"));
}

TEST(TabStripWidget, MeasuresTheRoomBelowItsTabs) {
  TabStage tabs;
  EXPECT_EQ(tabs.widget->geometry(), QRect(10, 10, 400, 100));
  const QRect room = tabs.stage.twips.ToPixels(tabs.control.Client());
  EXPECT_GE(room.top(), 10 + tabs.widget->Bar().height());
  EXPECT_LT(room.bottom(), 110);
  EXPECT_GE(room.left(), 10);
  EXPECT_LT(room.right(), 410);
  tabs.control.Height = 3000;
  EXPECT_EQ(tabs.stage.twips.ToPixels(tabs.control.Client()).height(), room.height() + 100);
}

struct PictureStage {
  PictureStage() {
    stage.room->setContentsMargins(0, 0, 0, 0);
    stage.room->addWidget(widget);
    stage.window.resize(40, 30);
    stage.Show();
  }
  void Show(int width, int height) {
    PixelImage image;
    image.width = width;
    image.height = height;
    image.pixels.assign(static_cast<std::size_t>(width * height), 0xFFFF0000);
    control.Image = std::make_shared<const PixelImage>(std::move(image));
  }
  // The part of the widget that is red, in points of the screen.
  QRect Red() const {
    const QImage shown = widget->grab().toImage();
    QRect red;
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        if (shown.pixelColor(x, y) == QColor(255, 0, 0)) red |= QRect(x, y, 1, 1);
      }
    }
    return red;
  }

  QRect OnScreen(const QRect& pixels) const {
    const int dots = qRound(widget->devicePixelRatioF());
    return {pixels.topLeft() * dots, pixels.size() * dots};
  }

  Picture control;
  Stage stage;
  PictureWidget* const widget = new PictureWidget(control, stage.binder, &stage.window);
};

TEST(PictureWidget, MeasuresItsRoom) {
  PictureStage picture;
  EXPECT_EQ(picture.control.Width(), 40 * kDesignTwips);
  EXPECT_EQ(picture.control.Height(), 30 * kDesignTwips);
}

TEST(PictureWidget, ShowsASmallPictureAsItIsAndALargeOneScaled) {
  PictureStage picture;
  EXPECT_TRUE(picture.Red().isEmpty());
  picture.Show(10, 6);
  EXPECT_EQ(picture.Red(), picture.OnScreen({15, 12, 10, 6}));
  picture.Show(80, 20);
  EXPECT_EQ(picture.Red(), picture.OnScreen({0, 10, 40, 10}));
  picture.control.Image = nullptr;
  EXPECT_TRUE(picture.Red().isEmpty());
}

TEST(PictureWidget, UsesAllPointsOfTheScreen) {
  PictureStage picture;
  const auto [width, height] = picture.OnScreen({0, 0, 40, 30}).size();
  picture.Show(width, height);
  EXPECT_EQ(picture.Red(), QRect(0, 0, width, height));
}

TEST(QtScreen, KnowsHowFineItIs) {
  const WorkArea area = QtScreen(Twips(kDesignTwips)).GetWorkArea();
  const QString factor = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
  EXPECT_EQ(area.dotsPerPixel, factor.toFloat());
  EXPECT_EQ(area.right, kScreenWidth);
  EXPECT_EQ(area.twipsPerPixelX, kDesignTwips);
}

}  // namespace
}  // namespace tresmor::tests
