// Folders from a file manager, dropped on the window.
#include <gtest/gtest.h>

#include <QUrl>

#include "app/app_world.h"
#include "qt/drops.h"

namespace tresmor::tests {
namespace {

class DropsTest : public AppTest {
 protected:
  DropsTest() {
    MakeFolder("data/new");
    Start();
    data_.setUrls({QUrl::fromLocalFile(QString::fromStdString(At("data/new")))});
    data_.setText("as file managers tell editors");
  }
  Qt::DropAction DropOn(const QWidget& widget) { return Drop(View(), CenterOf(widget, View()), {data_}); }
  // How often the folder was added.
  int Rows() {
    for (std::int32_t row = 1; row <= Frm().lstPath.Count(); ++row) {
      EXPECT_EQ(Frm().lstPath.Cell(row, kScopeTextItem), At("data/new/*.*"));
    }
    return Frm().lstPath.Count();
  }

  QMimeData data_;
};

TEST_F(DropsTest, AFolderIsAddedWhereverItFallsOnThePage) {
  for (const char* const name : {"Paths", "Folder", "Criteria"}) {
    Frm().lstPath.Clear();
    Frm().txtPath.SetText("typed");
    EXPECT_EQ(DropOn(*Named(name)), Qt::CopyAction) << name;
    EXPECT_EQ(Rows(), 0) << name << ": the drop hasn't ended";
    WaitUntil([this] { return Rows() > 0; });
    EXPECT_EQ(Rows(), 1) << name;
    EXPECT_EQ(Frm().txtPath.Text(), At("data/new")) << name;
  }
}

TEST_F(DropsTest, TheOtherPartsOfTheWindowTakeNone) {
  EXPECT_EQ(DropOn(*Named("Zero Size")), Qt::IgnoreAction);
  EXPECT_EQ(DropOn(*Named("Search types")), Qt::IgnoreAction);
}

TEST_F(DropsTest, APageThatIsLockedByASearchTakesNone) {
  Frm().frmSelPath.Enabled = false;
  for (const char* const name : {"Paths", "Folder", "Criteria"}) {
    EXPECT_EQ(DropOn(*Named(name)), Qt::IgnoreAction) << name;
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(Rows(), 0);
  Frm().frmSelPath.Enabled = true;
  EXPECT_EQ(DropOn(*Named("Folder")), Qt::CopyAction);
  WaitUntil([this] { return Rows() > 0; });
}

}  // namespace
}  // namespace tresmor::tests
