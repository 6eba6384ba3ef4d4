// Where things stand in the dialog in front of deleting, moving and copying.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>

#include "qt/form_windows.h"

namespace tresmor {
namespace {

class FileOperWindowTest : public testing::Test {
 protected:
  void Show(std::int32_t mode) {
    form.SetOperMode(mode, "/a\r\n/b\r\n");
    window->show();
    window->layout()->activate();
    for (QLayout* const layout : window->findChildren<QLayout*>()) layout->activate();
  }
  template <class Widget>
  QRect PlaceOf(int number) const {
    return PlaceOf(window->findChildren<Widget*>().at(number));
  }
  QRect PlaceOf(const QWidget* widget) const { return {widget->mapTo(window.get(), QPoint(0, 0)), widget->size()}; }
  QRect Icon() const { return PlaceOf<QLabel>(1); }
  QRect Notes() const { return PlaceOf<QLabel>(0); }
  QRect Message() const { return PlaceOf<QPlainTextEdit>(0); }
  QRect Destination() const { return PlaceOf<QGroupBox>(0); }
  QRect DirStruct() const { return PlaceOf<QCheckBox>(0); }
  QRect OpenDestDir() const { return PlaceOf<QCheckBox>(1); }
  QRect RemoveEmptyDir() const { return PlaceOf<QCheckBox>(2); }
  QRect Delete() const { return PlaceOf<QGroupBox>(1); }
  QRect YesToAll() const { return PlaceOf<QCheckBox>(3); }
  static int Gap(const QRect& upper, const QRect& lower) { return lower.top() - upper.bottom() - 1; }

  QtEventQueue events;
  const Twips twips{2};  // twips to a pixel: few, so that short distances can be told apart
  const Binder binder{events, twips};
  FrmFileOper form;
  const std::unique_ptr<FormDialog> window = Build(form, binder);
};

TEST_F(FileOperWindowTest, TheMessageStandsBesideTheWarningOrInItsPlace) {
  Show(kDeleteMode);
  const int left = Icon().left();
  EXPECT_EQ(Message().left() - Icon().right() - 1, 10);
  EXPECT_EQ(Message().top(), Icon().top());
  for (const std::int32_t mode : {kMoveMode, kCopyMode}) {
    Show(mode);
    EXPECT_EQ(Message().left(), left);
  }
}

TEST_F(FileOperWindowTest, AMoveHasItsBoxesInOneColumn) {
  Show(kMoveMode);
  EXPECT_GE(Gap(Message(), Destination()), 0);
  EXPECT_GE(Gap(Destination(), DirStruct()), 0);
  EXPECT_GT(Gap(DirStruct(), OpenDestDir()), 0);
  EXPECT_EQ(Gap(OpenDestDir(), RemoveEmptyDir()), 5);
  EXPECT_GT(Gap(RemoveEmptyDir(), YesToAll()), 0);
  EXPECT_EQ(DirStruct().left(), OpenDestDir().left());
  EXPECT_EQ(OpenDestDir().left(), RemoveEmptyDir().left());
}

TEST_F(FileOperWindowTest, ADeleteHasItsOwnInPlaceOfWhatIsHidden) {
  Show(kMoveMode);
  const int toFirst = Gap(Destination(), DirStruct());
  const int toSecond = OpenDestDir().top() - DirStruct().top();
  const int left = DirStruct().left();
  Show(kDeleteMode);
  EXPECT_EQ(Gap(Notes(), RemoveEmptyDir()), toFirst);
  EXPECT_EQ(Delete().top() - RemoveEmptyDir().top(), toSecond);
  EXPECT_EQ(RemoveEmptyDir().left(), left);
  EXPECT_EQ(Gap(Delete(), YesToAll()), toFirst);
}

TEST_F(FileOperWindowTest, ACopyHasNoRoomForWhatItHides) {
  Show(kMoveMode);
  const int toYes = Gap(RemoveEmptyDir(), YesToAll());
  Show(kCopyMode);
  EXPECT_EQ(Gap(OpenDestDir(), YesToAll()), toYes);
}

}  // namespace
}  // namespace tresmor
