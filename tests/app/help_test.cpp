// F1 wherever the user is, and the dialogs by keys alone and by mouse.
#include <gtest/gtest.h>

#include <QTextBrowser>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

class HelpTest : public AppTest {
 protected:
  HelpTest() {
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
    AddFolder(At("data"));
    Search(Report(1, 0, "2, 1 group(s)", "0, 0 group(s)"));
  }

  const FrmHelp& Help() { return program_->Window().frmHelp; }
  // Opens a menu by its letter.
  QWidget* OpenMenu(Qt::Key letter) {
    Key(letter, Qt::AltModifier);
    WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
    return QApplication::activePopupWidget();
  }
  // Opens a modal window, which meets `answer`.
  void InDialog(const QString& title, Qt::Key key, Qt::KeyboardModifiers keys, ModalScript::Answer answer) {
    script_.Expect(title, std::move(answer));
    Key(key, keys);
    EXPECT_TRUE(script_.IsDone());
  }
  void ExpectHelp(const std::string& address) {
    EXPECT_TRUE(Help().Visible());
    EXPECT_EQ(Help().Address(), address);
    program_->Window().frmHelp.Close();
  }
  static QWidget* ByName(const QWidget& window, const QString& name) {
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (widget->accessibleName() == name) return widget;
    }
    ADD_FAILURE() << "nothing has the name " << name.toStdString();
    return nullptr;
  }
  static void TabTo(QWidget& window, const QString& caption) {
    QWidget* const target = Find<QAbstractButton>(window, caption);
    for (int presses = 0; !target->hasFocus() && presses < 40; ++presses) {
      QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_TRUE(target->hasFocus()) << caption.toStdString();
  }
};

TEST_F(HelpTest, F1IsAboutTheControl) {
  const std::vector<std::pair<QWidget*, const char*>> places = {{Named("Folder"), "scope.htm"},
                                                                {Named("Paths"), "scope.htm"},
                                                                {Named("Search types"), "search.htm#options"},
                                                                {Button("Search"), "search.htm"},
                                                                {Button("New Search"), "search.htm"},
                                                                {Named("Duplicates"), "overview.htm"},
                                                                {Button("Task"), "overview.htm"}};
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
}

TEST_F(HelpTest, F1InAMenuAtThePointer) {
  Frm().mnuFile.PopUp();
  WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_F1);
  ExpectHelp("overview.htm");
}

TEST_F(HelpTest, ContentAndIndexOpensTheQuickStart) {
  QWidget* const open = OpenMenu(Qt::Key_H);
  QTest::keyClick(open, Qt::Key_Return);
  ExpectHelp("quickstart.htm");
}

// --- Options

TEST_F(HelpTest, OptionsByKeysAlone) {
  script_.Expect("Options", [this](QWidget& window) {
    QTest::keyClick(window.focusWidget(), Qt::Key_F1);
    ExpectHelp("options.htm");
    window.activateWindow();
    WaitUntil([&] { return window.isActiveWindow(); });
    TabTo(window, "Disable Tool tips");
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    TabTo(window, "OK");
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  });
  QTest::keyClick(OpenMenu(Qt::Key_M), Qt::Key_O);
  WaitUntil([this] { return script_.IsDone(); });
  WaitUntil([] { return QApplication::activeModalWidget() == nullptr; });
  EXPECT_EQ(Button("Search")->toolTip(), "");
}

TEST_F(HelpTest, OptionsByMouse) {
  script_.Expect("Options", [](QWidget& window) {
    QTest::mouseClick(Find<QCheckBox>(window, "Disable Tool tips"), Qt::LeftButton, {}, {8, 8});
    Click(Find<QPushButton>(window, "OK"));
  });
  QWidget* const menu = OpenMenu(Qt::Key_M);
  auto* const item = static_cast<QMenu*>(menu)->actions().front();
  QTest::mouseClick(menu, Qt::LeftButton, {}, static_cast<QMenu*>(menu)->actionGeometry(item).center());
  WaitUntil([] { return QApplication::activeModalWidget() == nullptr; });
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Button("Search")->toolTip(), "");
}

// --- Smart Marker

TEST_F(HelpTest, SmartMarkerByKeysAlone) {
  Frm().results.tabMain.Select(2);
  InDialog("Smart Marking", Qt::Key_K, Qt::ControlModifier, [this](QWidget& window) {
    QTest::keyClick(window.focusWidget(), Qt::Key_F1);
    ExpectHelp("mark.htm");
    window.activateWindow();
    WaitUntil([&] { return window.isActiveWindow(); });
    TabTo(window, "Help (F1)");
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    ExpectHelp("mark.htm");
    window.activateWindow();
    WaitUntil([&] { return window.isActiveWindow(); });
    auto* const date = static_cast<QComboBox*>(ByName(window, "By Date"));
    for (int presses = 0; !date->hasFocus() && presses < 40; ++presses) {
      QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(date, Qt::Key_Down);
    TabTo(window, "Mark");
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  });
  EXPECT_NE(List(ResultList::Duplicates).Checked(1), List(ResultList::Duplicates).Checked(2));
  InDialog("Smart Marking", Qt::Key_K, Qt::ControlModifier,
           [](QWidget& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Escape); });
}

TEST_F(HelpTest, SmartMarkerByMouse) {
  Frm().results.tabMain.Select(2);
  InDialog("Smart Marking", Qt::Key_K, Qt::ControlModifier, [](QWidget& window) {
    auto* const tabs = window.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    Click(Find<QPushButton>(window, "Select All"));
    Click(Find<QPushButton>(window, "Mark"));
  });
  EXPECT_NE(List(ResultList::Duplicates).Checked(1), List(ResultList::Duplicates).Checked(2)) << "one is kept";
  InDialog("Smart Marking", Qt::Key_K, Qt::ControlModifier, [](QWidget& window) {
    Click(Find<QPushButton>(window, "Clear Marks"));
    Click(Find<QPushButton>(window, "Close"));
  });
  EXPECT_FALSE(List(ResultList::Duplicates).Checked(1) || List(ResultList::Duplicates).Checked(2));
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
