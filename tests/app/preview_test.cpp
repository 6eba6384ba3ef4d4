// Pictures beside the lists, at whatever scale the screen has.
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

class PreviewInWindow : public AppTest {
 protected:
  PreviewInWindow() { Start(); }
  // As a click on the row of such a file does. Gives in how many columns of the screen's points the picture then shows.
  int Show(const std::string& name) {
    ListView& list = List(ResultList::ZeroSize);
    Finding finding;
    finding.folder = At("data/");
    finding.name = name;
    AddResultItem(list, finding);
    ShowResult(Frm());
    WaitUntil([this] { return Room().height() > 100; });
    list.SetSelected(1, true);
    const QImage before = Seen();
    list.OnItemClick();
    WaitUntil([this] { return Image() != nullptr; });
    const QImage after = Seen();
    int columns = 0;
    for (int x = 0; x < after.width(); ++x) columns += Column(before, x) == Column(after, x) ? 0 : 1;
    return columns;
  }
  static QImage Column(const QImage& image, int x) { return image.copy(x, 0, 1, image.height()); }
  QImage Seen() { return Named("Preview")->grab().toImage(); }
  SharedImage Image() { return Frm().preview.imgPreview.Image(); }
  QSize Room() { return Named("Preview")->size(); }
  double Dots() { return View().devicePixelRatioF(); }
};

TEST_F(PreviewInWindow, ALargePictureFillsItsRoomWithAllPointsOfTheScreen) {
  QImage picture(1600, 1600, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(QString::fromStdString(At("data/large.bmp"))));
  const int columns = Show("large.bmp");
  const double side = std::min(Room().width(), Room().height()) * Dots();
  EXPECT_NEAR(Image()->width, side, Dots());
  EXPECT_NEAR(columns, side, Dots());
}

TEST_F(PreviewInWindow, ThePictureThatSaysThatNoneCanBeReadIsAsLargeOnEveryScreen) {
  MakeFile("data/broken.bmp", "words");
  const int columns = Show("broken.bmp");
  constexpr int kOwnWidth = 176;
  EXPECT_GE(columns, 0.9 * std::min(Room().width(), kOwnWidth) * Dots());
}

}  // namespace
}  // namespace tresmor::tests
