// The program with two equal files in its list of duplicates, what takes a test through its menus and dialogs, and the
// desktop's programs that the test's own stand in for.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QListView>
#include <QMenuBar>
#include <fstream>
#include <utility>

#include "app/app_world.h"

namespace tresmor::tests {

class DialogTest : public AppTest {
 protected:
  ~DialogTest() override { setenv("PATH", path_.c_str(), 1); }

  void StartWithDuplicates() {
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
    AddFolder(At("data"));
    Search(Report(1, 0, "2, 1 group(s)", "0, 0 group(s)"));
    Frm().results.tabMain.Select(2);
  }
  ListView& Duplicates() { return List(ResultList::Duplicates); }

  // --- Rows of that list, by the names of their files

  int RowOf(const std::string& name) {
    int row = Duplicates().Count();
    while (row > 0 && Duplicates().Cell(row, kNameItem) != name) --row;
    return row;
  }
  void GoToRow(const std::string& name) {
    ASSERT_GT(RowOf(name), 0) << name;
    GoTo(Named("Duplicates"));
    Key(Qt::Key_Home);
    while (Duplicates().SelectedItem() != RowOf(name)) Key(Qt::Key_Down);
  }
  void MarkByKeys(const std::string& name) {
    GoToRow(name);
    Key(Qt::Key_Space);
    EXPECT_TRUE(Duplicates().Checked(RowOf(name)));
  }
  void ClickRow(const std::string& name) { ClickCell(name, &QRect::center); }
  void MarkByMouse(const std::string& name) {
    ClickCell(name, [](const QRect& cell) { return QPoint(cell.left() + 10, cell.center().y()); });
    EXPECT_TRUE(Duplicates().Checked(RowOf(name)));
  }

  // --- The desktop

  // A program that is found before the machine's own of that name.
  void MakeProgram(const std::string& name, const std::string& script) {
    if (!Exists("bin")) MakeFolder("bin");
    MakeFile("bin/" + name, "#!/bin/sh\n" + script + "\n");
    ASSERT_EQ(chmod(At("bin/" + name).c_str(), 0755), 0);
    setenv("PATH", (At("bin") + ":" + path_).c_str(), 1);
  }
  // A desktop's opener of files and links, which notes what it is to open.
  void MakeOpener() {
    MakeProgram("xdg-open", "echo \"$1\" >'" + At("new") + "' && mv '" + At("new") + "' '" + At("opened") + "'");
  }
  std::string Opened() {
    WaitUntil([this] { return Exists("opened"); });
    std::string line;
    std::ifstream file(At("opened"));
    std::getline(file, line);
    return line;
  }

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
    ClickItem(item);
  }
  // The same in the menu of the button "Task".
  void ClickTask(const QString& item) {
    Click(Button("Task"));
    ClickItem(item);
  }
  // Opens a modal window by a menu and the mouse, which meets `answer` and goes.
  void ByMenu(const QString& menu, const QString& item, const QString& title, ModalScript::Answer answer) {
    script_.Expect(title, std::move(answer));
    ClickMenu(menu, item);
    WaitForDialogs();
  }
  // The same by a key of the main window.
  void InDialog(const QString& title, Qt::Key key, Qt::KeyboardModifiers keys, ModalScript::Answer answer) {
    script_.Expect(title, std::move(answer));
    Key(key, keys);
    WaitForDialogs();
  }
  // Until all that are expected have come and gone; one in place of another has failed the test.
  void WaitForDialogs() {
    WaitUntil([this] { return (script_.IsDone() || HasFailure()) && QApplication::activeModalWidget() == nullptr; });
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
  static void ClickButton(const QWidget& window, const QString& caption) { Click(Find<QPushButton>(window, caption)); }
  // A box, as ModalScript's own, whose button is clicked by the mouse.
  void ExpectBoxByMouse(const QString& title, const QString& text, const QString& button = "OK") {
    script_.Expect(title, [text, button](QWidget& window) {
      const auto* const box = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->text(), text);
      ClickButton(window, button);
    });
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

  // --- Dialogs of files and folders

  // By keys, over what stands there. What the toolkit proposes below the field is sent away: it would take the next
  // click for itself.
  static void TypeName(QWidget& window, const std::string& name) {
    auto* const field = window.findChild<QLineEdit*>("fileNameEdit");
    TabTo(window, field);
    Press(window, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, QString::fromStdString(name));
    if (QWidget* const proposals = QApplication::activePopupWidget()) QTest::keyClick(proposals, Qt::Key_Escape);
  }
  // The names that a thread lists.
  static void ClickName(const QWidget& window, const QString& name) {
    auto* const names = window.findChild<QListView*>("listView");
    QModelIndex index;
    WaitUntil([&] {
      const QModelIndexList found =
          names->model()->match(names->model()->index(0, 0, names->rootIndex()), Qt::DisplayRole, name, 1,
                                Qt::MatchExactly | Qt::MatchCaseSensitive);
      index = found.value(0);
      return index.isValid();
    });
    names->scrollTo(index);
    QTest::mouseClick(names->viewport(), Qt::LeftButton, {}, names->visualRect(index).center());
  }
  static ModalScript::Answer NameByKeys(const std::string& name) {
    return [name](QWidget& window) {
      TypeName(window, name);
      Press(window, Qt::Key_Return);
    };
  }
  static ModalScript::Answer NameByMouse(const QString& name, const QString& button) {
    return [name, button](QWidget& window) {
      ClickName(window, name);
      ClickButton(window, button);
    };
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
    QCoreApplication::processEvents();  // the help hears yet that it had the keys
    GiveKeys(window);
  }

 private:
  void ClickCell(const std::string& name, const std::function<QPoint(const QRect&)>& place) {
    ASSERT_GT(RowOf(name), 0) << name;
    auto* const list = static_cast<QTreeView*>(Named("Duplicates"));
    const QRect cell = list->visualRect(list->model()->index(RowOf(name) - 1, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place(cell));
  }
  static void ClickItem(const QString& item) {
    WaitUntil([] { return QApplication::activePopupWidget() != nullptr; });
    auto* const open = static_cast<QMenu*>(QApplication::activePopupWidget());
    QAction* const action = ActionOf(open->actions(), item);
    ASSERT_NE(action, nullptr);
    QTest::mouseClick(open, Qt::LeftButton, {}, open->actionGeometry(action).center());
  }
  static QAction* ActionOf(const QList<QAction*>& actions, const QString& words) {
    for (QAction* const action : actions) {
      if (action->text().remove('&').section('\t', 0, 0) == words) return action;
    }
    ADD_FAILURE() << "no item " << words.toStdString();
    return nullptr;
  }

  const std::string path_ = getenv("PATH");
};

}  // namespace tresmor::tests
