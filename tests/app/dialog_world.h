// The program with two equal files in its list of duplicates, and what takes a test through its menus and dialogs.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QMenuBar>
#include <utility>

#include "app/app_world.h"

namespace tresmor::tests {

class DialogTest : public AppTest {
 protected:
  void StartWithDuplicates() {
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
    AddFolder(At("data"));
    Search(Report(1, 0, "2, 1 group(s)", "0, 0 group(s)"));
    Frm().results.tabMain.Select(2);
  }
  ListView& Duplicates() { return List(ResultList::Duplicates); }

  // --- Menus

  // Opens a menu by its letter.
  QWidget* OpenMenu(Qt::Key letter) {
    Key(letter, Qt::AltModifier);
    WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
    return QApplication::activePopupWidget();
  }
  // Opens a menu by the mouse and clicks an item in it.
  void ClickMenu(const QString& menu, const QString& item) {
    Activate();
    auto* const bar = View().findChild<QMenuBar*>();
    QAction* const title = ActionOf(bar->actions(), menu);
    ASSERT_NE(title, nullptr);
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
    WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
    auto* const open = static_cast<QMenu*>(QApplication::activePopupWidget());
    QAction* const action = ActionOf(open->actions(), item);
    ASSERT_NE(action, nullptr);
    QTest::mouseClick(open, Qt::LeftButton, {}, open->actionGeometry(action).center());
  }
  // Opens a modal window by a menu and the mouse, which meets `answer` and goes.
  void ByMenu(const QString& menu, const QString& item, const QString& title, ModalScript::Answer answer) {
    script_.Expect(title, std::move(answer));
    ClickMenu(menu, item);
    WaitUntil([this] { return script_.IsDone() && QApplication::activeModalWidget() == nullptr; });
  }
  // The same by a key of the main window.
  void InDialog(const QString& title, Qt::Key key, Qt::KeyboardModifiers keys, ModalScript::Answer answer) {
    script_.Expect(title, std::move(answer));
    Key(key, keys);
    WaitUntil([this] { return script_.IsDone() && QApplication::activeModalWidget() == nullptr; });
  }

  // --- Windows

  // One that isn't modal.
  static QWidget* WindowNamed(const QString& title) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->windowTitle() == title) return window;
    }
    return nullptr;
  }
  static void GiveKeys(QWidget& window) {
    window.activateWindow();
    WaitUntil([&] { return window.isActiveWindow(); });
  }
  static void Press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(window.focusWidget(), key, keys);
  }
  // Presses the button with that letter, which takes a moment.
  static void PressLetter(const QWidget& window, Qt::Key letter) {
    bool clicked = false;
    QObject listener;
    for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
      QObject::connect(button, &QAbstractButton::clicked, &listener, [&] { clicked = true; });
    }
    Press(window, letter, Qt::AltModifier);
    WaitUntil([&] { return clicked; });
  }
  static QWidget* ByName(const QWidget& window, const QString& name) {
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (widget->accessibleName() == name) return widget;
    }
    ADD_FAILURE() << "nothing has the name " << name.toStdString();
    return nullptr;
  }
  // By the Tab key.
  static void TabTo(QWidget& window, const QWidget* target) {
    ASSERT_NE(target, nullptr);
    for (int presses = 0; !target->hasFocus() && presses < 40; ++presses) Press(window, Qt::Key_Tab);
    EXPECT_TRUE(target->hasFocus()) << target->accessibleName().toStdString();
  }
  static void TabTo(QWidget& window, const QString& caption) { TabTo(window, Find<QAbstractButton>(window, caption)); }
  // On the box itself: beside it a box without a frame around its words takes no click.
  static void ClickBox(const QWidget& window, const QString& caption) {
    QTest::mouseClick(Find<QCheckBox>(window, caption), Qt::LeftButton, {}, {8, 8});
  }
  // Opens a list by the mouse and clicks an entry.
  static void ChooseByMouse(QComboBox& box, const QString& entry) {
    QTest::mouseClick(&box, Qt::LeftButton, {}, {box.width() - 8, box.height() / 2});
    WaitUntil([&] { return box.view()->isVisible(); });
    const QModelIndex index = box.model()->index(box.findText(entry), 0);
    box.view()->scrollTo(index);
    QTest::mouseMove(box.view()->viewport(), box.view()->visualRect(index).center());
    QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, box.view()->visualRect(index).center());
    WaitUntil([&] { return !box.view()->isVisible(); });
  }

  // --- The help

  const FrmHelp& Help() { return program_->Window().frmHelp; }
  void ExpectHelp(const std::string& address) {
    EXPECT_TRUE(Help().Visible());
    EXPECT_EQ(Help().Address(), address);
    program_->Window().frmHelp.Close();
  }
  // F1 in a window, which then has the keys again.
  void ExpectHelpByKey(QWidget& window, const std::string& address) {
    QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key_F1);
    ExpectHelp(address);
    GiveKeys(window);
  }

 private:
  static QAction* ActionOf(const QList<QAction*>& actions, const QString& words) {
    for (QAction* const action : actions) {
      if (action->text().remove('&').section('\t', 0, 0) == words) return action;
    }
    ADD_FAILURE() << "no item " << words.toStdString();
    return nullptr;
  }
};

}  // namespace tresmor::tests
