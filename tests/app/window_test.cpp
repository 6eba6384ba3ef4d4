// The window under the user's hands: its edges, tabs, keys and the frame that closes it.
#include <gtest/gtest.h>

#include <QClipboard>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

class WindowTest : public AppTest {
 protected:
  WindowTest() {
    Start();
    layouts_ = 0;
    Frm().OnResize = [this, layOut = Frm().OnResize] {
      ++layouts_;
      layOut();
    };
  }
  void AddResult(ResultList kind, const std::string& name) {
    Finding finding;
    finding.folder = At("data/");
    finding.name = name;
    AddResultItem(List(kind), finding);
  }
  void ClickTab(int tab) {
    auto* const tabs = static_cast<QTabBar*>(Named("Results"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
  }

  int layouts_ = 0;
};

TEST_F(WindowTest, TheTabOnShowLaysOutNothing) {
  ClickTab(0);
  EXPECT_EQ(layouts_, 0);
  ClickTab(2);
  EXPECT_EQ(layouts_, 1);
  EXPECT_TRUE(Named("Same Name")->isVisible());
  EXPECT_FALSE(Named("Zero Size")->isVisible());
}

TEST_F(WindowTest, EdgesSnapBackToTheLeastSize) {
  const QSize least = View().size();
  const float list = List(ResultList::ZeroSize).Height();
  View().resize(least.width(), 60);
  WaitUntil([&] { return View().height() >= least.height(); });
  EXPECT_EQ(View().height(), least.height());
  EXPECT_EQ(List(ResultList::ZeroSize).Height(), list) << "there is no room to lay it out";
  View().resize(300, least.height());
  WaitUntil([&] { return View().width() > 300; });
  EXPECT_GE(Frm().Width(), 10000);
  View().resize(least.width() + 100, least.height() + 300);
  EXPECT_GT(List(ResultList::ZeroSize).Height(), list);
  EXPECT_EQ(Frm().frmFileOp.Left(), Frm().Width() - Frm().frmFileOp.Width() - 160);
}

TEST_F(WindowTest, AShortcutGoesByTheRuleOfItsMenu) {
  ASSERT_TRUE(Frm().mnuRen.Enabled());
  Button("Add>")->setFocus();
  Key(Qt::Key_R, Qt::ControlModifier);  // which would ask for a file first
  EXPECT_FALSE(Frm().mnuRen.Enabled());
  AddResult(ResultList::ZeroSize, "some");
  script_.ExpectBox("Select file", "Please select a file.");
  Key(Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  Frm().mnuFile.Enabled = false;
  Key(Qt::Key_R, Qt::ControlModifier);
}

TEST_F(WindowTest, TheKeysOfAFieldStayItsOwn) {
  AddResult(ResultList::ZeroSize, "some");
  List(ResultList::ZeroSize).SetChecked(1, true);
  Frm().txtPath.SetText("typed");
  GoTo(Named("Folder"));
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(FolderField()->selectedText(), "typed");
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "typed");
  Key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Frm().txtPath.Text(), "");
  Key(Qt::Key_V, Qt::ControlModifier);
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Frm().txtPath.Text(), "typedtyped");
  EXPECT_TRUE(List(ResultList::ZeroSize).Checked(1));
  Button("Add>")->setFocus();
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(List(ResultList::ZeroSize).Checked(1)) << "elsewhere they are the menu's";
}

TEST_F(WindowTest, AFieldThatTakesNoTypingKeepsItsKeysToo) {
  AddResult(ResultList::ZeroSize, "some");
  List(ResultList::ZeroSize).SetChecked(1, true);
  Frm().preview.txtFilename.Text = "some";
  QWidget* const field = Named("File on show");
  field->setFocus();
  Activate();
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
    QTest::keyClick(field, key, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "some");
  EXPECT_EQ(Frm().preview.txtFilename.Text(), "some");
  EXPECT_TRUE(List(ResultList::ZeroSize).Checked(1));
}

TEST_F(WindowTest, ASizeThatIsNoNumberIsToldWhenItsFieldIsLeft) {
  Frm().TabPath.Select(kFileSizeTab);
  QWidget* const field = Named("Min File Size");
  field->setFocus();
  QTest::keyClicks(field, "abc");
  script_.ExpectBox("Tresmor", "Invalid file size.");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(script_.IsDone());
  Activate();
  EXPECT_TRUE(field->hasFocus());
  script_.ExpectBox("Tresmor", "Invalid file size.");
  Click(Button("Add>"));
  EXPECT_TRUE(script_.IsDone());
  Activate();
  EXPECT_TRUE(field->hasFocus());
  EXPECT_FALSE(Button("Add>")->isDown());
  script_.ExpectBox("Tresmor", "Invalid file size.");
  auto* const tabs = static_cast<QTabBar*>(Named("Criteria"));
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Frm().TabPath.SelectedTab(), kFileSizeTab);
  EXPECT_TRUE(field->isVisible());
  EXPECT_EQ(Frm().CurPathTab, kFileSizeTab - 1);
  EXPECT_FALSE(Frm().frmPath[0].Visible());
}

TEST_F(WindowTest, ASearchIsCancelledBeforeTheWindowCloses) {
  for (const char* const name : {"data/1", "data/2"}) MakeSparse(name, 64LL << 30, 'x');
  AddFolder(At("data"));
  ExpectMessage("Be patient");
  Frm().cmdSrch.Listen([this](const Notice& notice) {
    if (notice.what != Notice::What::Text || notice.when != Notice::When::After) return;
    if (Frm().cmdSrch.Caption() != kCancelCaption) return;
    QTimer::singleShot(0, &View(), [this] {
      EXPECT_FALSE(Named("Paths")->isEnabled());
      EXPECT_FALSE(View().close());
      Click(Button("Cancel"));
      EXPECT_EQ(Frm().cmdSrch.Caption(), kCancelCaption) << "it goes on after a No";
      Click(Button("Cancel"));
    });
  });
  script_.ExpectBox("Quit", "Please cancel your search before quitting.");
  script_.ExpectBox("Cancel Search", "Are you sure to cancel searching?", "No");
  script_.Expect("Cancel Search", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier); });
  script_.Expect("Search completed", [](QWidget& window) { Find<QPushButton>(window, "OK")->click(); });
  ExpectMessage("Smart Marker");
  Click(Button("Search"));
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(closed_, 0);
  EXPECT_TRUE(Named("Paths")->isEnabled());
  View().close();
  EXPECT_EQ(closed_, 1);
}

}  // namespace
}  // namespace tresmor::tests
