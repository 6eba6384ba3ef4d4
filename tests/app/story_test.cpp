// From the first start to the second, as a user goes through it.
#include <gtest/gtest.h>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

class StoryTest : public AppTest {
 protected:
  StoryTest() {
    MakeFolder("data/a");
    MakeFolder("data/b");
    MakeFile("data/a/one.txt", "the same words");
    MakeFile("data/b/two.txt", "the same words");
    MakeFile("data/empty");
    MakeFile("data/a/blue.bmp", BlueBitmap());
    MakeFile("data/b/blue.bmp", BlueBitmap());
  }
  int RowOf(ResultList kind, const std::string& path) {
    const ListView& list = List(kind);
    for (int row = 1; row <= list.Count(); ++row) {
      if (PathOf(list, row) == At(path)) return row;
    }
    return 0;
  }
  const QString report_ = Report(4, 1, "4, 2 group(s)", "2, 1 group(s)");
};

TEST_F(StoryTest, TheWholeJobWithoutAMouse) {
  Start();
  EXPECT_EQ(View().windowTitle(), "Tresmor - No Duplicate Files");
  EXPECT_EQ(Frm().msgBar.Text(), "Tresmor is ready.");
  EXPECT_EQ(FolderField()->text().toStdString(), At("home"));

  // The folder.
  GoTo(Named("Folder"));
  Key(Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(View().focusWidget(), QString::fromStdString(At("data")));
  GoTo(Button("Add>"));
  Key(Qt::Key_Space);
  ASSERT_EQ(Frm().lstPath.Count(), 1);
  EXPECT_EQ(Frm().lstPath.Cell(1, 0), At("data/*.*"));

  // The search.
  script_.Expect("Be patient", [](QWidget& window) {
    QTest::keyClick(window.focusWidget(), Qt::Key_Backtab);
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  });
  script_.Expect("Search completed", [this](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text(), report_);
    QTest::keyClick(&window, Qt::Key_Return);
  });
  script_.Expect("Smart Marker", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Return); });
  Key(Qt::Key_F5);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(List(ResultList::ZeroSize).Count(), 1);

  // The list of duplicates, a picture and a mark.
  auto* const tabs = static_cast<QTabBar*>(Named("Results"));
  GoTo(tabs);
  Key(Qt::Key_Right);
  EXPECT_EQ(tabs->tabText(1), "Duplicates(4/2)");
  ListView& list = List(ResultList::Duplicates);
  GoTo(Named("Duplicates"));
  const int blue = RowOf(ResultList::Duplicates, "data/b/blue.bmp");
  Key(Qt::Key_Home);
  while (list.SelectedItem() != blue) Key(Qt::Key_Down);
  WaitUntil([this] { return Frm().preview.imgPreview.Image() != nullptr; });
  EXPECT_EQ(Frm().preview.imgPreview.Image()->pixels.front(), 0xFF0000FFU);
  EXPECT_EQ(Frm().preview.txtFilename.Text(), "blue.bmp");
  Key(Qt::Key_Space);
  EXPECT_TRUE(list.Checked(blue));

  // To the trash with it.
  script_.Expect("Delete files", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier); });
  script_.Expect("Deleting files", [](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text(), "Move this item to the recycle bin?");
    QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier);
  });
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_FALSE(Exists("data/b/blue.bmp"));
  EXPECT_TRUE(Exists("home/.local/share/Trash/files/blue.bmp"));
  EXPECT_TRUE(Exists("home/.local/share/Trash/info/blue.bmp.trashinfo"));
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(RowOf(ResultList::Duplicates, "data/b/blue.bmp"), 0);
  EXPECT_EQ(tabs->tabText(1), "Duplicates(3/2)");
  EXPECT_EQ(Frm().preview.imgPreview.Image(), nullptr);

  // A session, and all anew from it.
  ExpectFile("Tresmor - Save search session as", At("home/mine"));
  script_.Expect("Include search result", [](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text(),
              "Do you want to include your search result in addition to search parameters?");
    QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier);
  });
  Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(Exists("home/mine.Tresmor"));
  Key(Qt::Key_N, Qt::AltModifier);
  WaitUntil([this] { return Frm().lstPath.Count() == 0; });
  EXPECT_EQ(list.Count(), 0);
  ExpectFile("Tresmor - load search session", At("home/mine.Tresmor"));
  Key(Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(Frm().lstPath.Cell(1, 0), At("data/*.*"));

  // The end, by the menu.
  Key(Qt::Key_M, Qt::AltModifier);
  WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Q);
  EXPECT_EQ(closed_, 1);
  EXPECT_FALSE(View().isVisible());
  Stop();

  // And the next time.
  Start();
  EXPECT_EQ(FolderField()->text().toStdString(), At("data"));
  EXPECT_EQ(Frm().txtPath.List(0), At("data"));
  EXPECT_EQ(Frm().lstPath.Count(), 0);
  GoTo(Button("Add>"));
  Key(Qt::Key_Space);
  script_.ExpectBox("Search completed", Report(3, 1, "2, 1 group(s)", "0, 0 group(s)"));
  ExpectMessage("Smart Marker");
  GoTo(Button("Search"));
  Key(Qt::Key_Return);
  EXPECT_TRUE(script_.IsDone());
}

TEST_F(StoryTest, AMouseDoesAsWell) {
  Start();
  AddFolder(At("data"));
  Search(report_);
  QTabBar* const tabs = static_cast<QTabBar*>(Named("Results"));
  Click(tabs);
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
  auto* const list = static_cast<QTreeView*>(Named("Duplicates"));
  const int row = RowOf(ResultList::Duplicates, "data/a/one.txt");
  const QRect cell = list->visualRect(list->model()->index(row - 1, 0));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {cell.left() + 10, cell.center().y()});
  EXPECT_TRUE(List(ResultList::Duplicates).Checked(row));

  // The menu at the pointer.
  QTest::mouseClick(list->viewport(), Qt::RightButton, {}, cell.center());
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  QAction* remove = nullptr;
  for (QAction* const action : menu->actions()) {
    if (action->text().startsWith("&Delete marked files")) remove = action;
  }
  ASSERT_NE(remove, nullptr);
  EXPECT_TRUE(remove->isEnabled());
  ExpectDelete(true);
  QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(remove).center());
  WaitUntil([&] { return !Exists("data/a/one.txt"); });
  WaitUntil([&] { return List(ResultList::Duplicates).Count() == 3; });
  EXPECT_FALSE(Exists("home/.local/share/Trash"));
  View().close();
  EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace tresmor::tests
