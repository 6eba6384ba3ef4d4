// F1 wherever the user is, the help by menu, and the dialogs of files by keys alone and by mouse.
#include <gtest/gtest.h>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

class HelpTest : public DialogTest {
 protected:
  HelpTest() {
    StartWithDuplicates();
    Frm().results.tabMain.Select(1);
  }
};

TEST_F(HelpTest, F1IsAboutTheControl) {
  const std::vector<std::pair<QWidget*, const char*>> places = {{Named("Folder"), "scope.htm"},
                                                                {Named("Paths"), "scope.htm"},
                                                                {Named("Search types"), "search.htm#options"},
                                                                {Button("Search"), "search.htm"},
                                                                {Button("New Search"), "search.htm"},
                                                                {Named("Duplicates"), "results.htm"},
                                                                {Named("Results"), "results.htm"},
                                                                {Button("Task"), "files.htm"},
                                                                {Named("File on show"), "preview.htm"}};
  static_cast<QTabBar*>(Named("Results"))->setCurrentIndex(1);
  Frm().results.tabMain.Select(2);
  for (const auto& [widget, page] : places) {
    Activate();
    widget->setFocus();
    Key(Qt::Key_F1);
    ExpectHelp(page);
  }
}

TEST_F(HelpTest, F1InAMenuIsAboutTheItemAndClosesTheMenu) {
  const auto ask = [this](Qt::Key menu, int downs) {
    QWidget* const open = OpenMenu(menu);
    for (int i = 0; i < downs; ++i) QTest::keyClick(open, Qt::Key_Down);
    QTest::keyClick(open, Qt::Key_F1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  };
  ask(Qt::Key_M, 0);
  ExpectHelp("options.htm");
  ask(Qt::Key_M, 1);  // Quit has no topic of its own
  ExpectHelp("overview.htm");
  EXPECT_TRUE(View().isVisible());
  ask(Qt::Key_I, 2);
  ExpectHelp("sessions.htm");
  Frm().results.tabMain.Select(2);
  ask(Qt::Key_R, 6);
  ExpectHelp("files.htm#rename");
  ask(Qt::Key_R, 1);  // the editor has no topic of its own, but the menu has
  ExpectHelp("files.htm");
  ask(Qt::Key_H, 4);
  ExpectHelp("about.htm#links");
}

TEST_F(HelpTest, F1InAnOpenedListClosesItAndIsAboutTheField) {
  auto* const field = static_cast<QComboBox*>(Named("Folder"));
  Activate();
  field->setFocus();
  Key(Qt::Key_Down, Qt::AltModifier);
  WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_F1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  ExpectHelp("scope.htm");
}

TEST_F(HelpTest, F1InAMenuAtThePointer) {
  Frm().mnuFile.PopUp();
  WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_F1);
  ExpectHelp("files.htm");
}

TEST_F(HelpTest, ContentAndIndexOpensTheQuickStart) {
  QWidget* const open = OpenMenu(Qt::Key_H);
  QTest::keyClick(open, Qt::Key_Return);
  ExpectHelp("quickstart.htm");
}

TEST_F(HelpTest, ContentAndIndexByTheMouse) {
  ClickMenu("Help", "Content and Index");
  QWidget* const window = WindowNamed("Tresmor Help");
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(Help().Address(), "quickstart.htm");
  Click(Find<QPushButton>(*window, "Home"));
  EXPECT_EQ(Help().Address(), "overview.htm");
  window->close();
  EXPECT_FALSE(Help().Visible());
}

TEST_F(HelpTest, F1InTheHelpIsAboutTheHelp) {
  ClickMenu("Help", "Content and Index");
  QWidget* const window = WindowNamed("Tresmor Help");
  ASSERT_NE(window, nullptr);
  GiveKeys(*window);
  Press(*window, Qt::Key_F1);
  ExpectHelp("overview.htm");
}

// --- Boxes

TEST_F(HelpTest, F1InABoxIsAboutTheWindowBehindIt) {
  const auto askAndLeave = [this](QWidget& window) {
    ExpectHelpByKey(window, "overview.htm");
    QTest::keyClick(&window, Qt::Key_Escape);
  };
  for (const auto& [key, title] : std::map<Qt::Key, QString>{{Qt::Key_S, "Tresmor - Save search session as"},
                                                             {Qt::Key_L, "Tresmor - load search session"}}) {
    InDialog(title, key, Qt::ControlModifier, askAndLeave);
  }
  Frm().results.tabMain.Select(2);
  InDialog("Select file", Qt::Key_R, Qt::ControlModifier, askAndLeave);
  Duplicates().SetSelected(1, true);
  InDialog("Rename", Qt::Key_R, Qt::ControlModifier, askAndLeave);
}

TEST_F(HelpTest, F1InAQuestionAboutFilesIsAboutThem) {
  Frm().results.tabMain.Select(2);
  Duplicates().SetChecked(1, true);
  script_.Expect("Delete files", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier); });
  script_.Expect("Deleting files", [this](QWidget& window) {
    ExpectHelpByKey(window, "fileops.htm");
    QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier);
  });
  script_.ExpectBox("Tresmor", "File operations failed. Error Code: 1223\n\nCancelled: nothing was deleted.");
  Key(Qt::Key_D, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_TRUE(Exists("data/one") && Exists("data/two"));
}

// --- The dialog of files

TEST_F(HelpTest, CopyingByKeysAlone) {
  MakeFolder("there");
  Frm().results.tabMain.Select(2);
  List(ResultList::Duplicates).SetChecked(1, true);
  script_.Expect("Copy files", [this](QWidget& window) {
    QTest::keyClick(window.focusWidget(), Qt::Key_F1);
    ExpectHelp("fileops.htm");
    window.activateWindow();
    WaitUntil([&] { return window.isActiveWindow(); });
    auto* const field = window.findChild<QLineEdit*>();
    for (int presses = 0; !field->hasFocus() && presses < 40; ++presses) {
      QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClicks(field, QString::fromStdString(At("there")));
    QTest::keyClick(window.focusWidget(), Qt::Key_Y, Qt::AltModifier);
  });
  QTest::keyClick(OpenMenu(Qt::Key_R), Qt::Key_C);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
  WaitUntil([this] { return script_.IsDone() && (Exists("there/one") || Exists("there/two")); });
  WaitUntil([] { return QApplication::activeModalWidget() == nullptr; });
}

TEST_F(HelpTest, DeletingIsLeftByTheMouse) {
  Frm().results.tabMain.Select(2);
  List(ResultList::Duplicates).SetChecked(1, true);
  InDialog("Delete files", Qt::Key_D, Qt::ControlModifier,
           [](QWidget& window) { Click(Find<QPushButton>(window, "No")); });
  EXPECT_TRUE(Exists("data/one") && Exists("data/two"));
}

}  // namespace
}  // namespace tresmor::tests
