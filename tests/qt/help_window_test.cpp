// The help's window over the pages that come with the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeView>
#include <QWindow>

#include "platform/posix/posix_file_system.h"
#include "qt/form_windows.h"
#include "qt/qt_forms.h"
#include "qt/qt_test.h"
#include "shell/frm_help.h"
#include "support/fake_shell.h"
#include "support/scripted_dialogs.h"

namespace tresmor::tests {
namespace {

using testing::ElementsAre;

std::string HelpFolder() {
  std::string folder = TRESMOR_HELP;
  folder.pop_back();
  return folder;
}

class HelpWindowTest : public testing::Test {
 protected:
  HelpWindowTest() {
    events.OnUncaught = [](const std::exception_ptr&) { ADD_FAILURE() << "a handler failed"; };
    forms.ShowWhileVisible(form);
  }

  void Show(const HelpTopic& topic) {
    form.Show(topic);
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      if (widget->windowTitle() == "Tresmor Help" && widget->isVisible()) window = widget;
    }
    ASSERT_NE(window, nullptr);
    WaitUntil([&] { return window->isActiveWindow(); });
    page = window->findChild<QTextBrowser*>();
    list = window->findChild<QTreeView*>();
    find = window->findChild<QLineEdit*>();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(window->focusWidget(), key, keys); }
  // As the desktop hands keys over: a window that is locked gets none.
  void Type(const char* words) {
    for (const char* word = words; *word != '\0'; ++word) QTest::keyClick(window->windowHandle(), *word);
  }
  QString PageOnShow() const { return page->source().fileName(); }
  QPushButton* Button(const QString& text) const {
    for (auto* const button : window->findChildren<QPushButton*>()) {
      if (button->text().remove('&') == text) return button;
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
  }
  QPoint PointOfRow(int row) const { return list->visualRect(list->model()->index(row - 1, 0)).center(); }
  // Brings the first link to that address into sight and clicks it.
  void ClickLink(const QString& address) {
    for (QTextBlock block = page->document()->begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        if (part.fragment().charFormat().anchorHref() != address) continue;
        QTextCursor cursor(page->document());
        cursor.setPosition(part.fragment().position() + 1);
        page->setTextCursor(cursor);
        page->ensureCursorVisible();
        const QPoint at = page->cursorRect(cursor).center();
        return QTest::mouseClick(page->viewport(), Qt::LeftButton, {}, at);
      }
    }
    ADD_FAILURE() << "no link to " << address.toStdString();
  }

  PosixFileSystem files;
  FakeShell shell;
  ScriptedDialogs dialogs;
  FrmHelp form{{files, shell, dialogs}, HelpFolder()};
  QtEventQueue events;
  const Twips twips = Twips::OfApplication();
  Binder binder{events, twips};
  QtForms forms{binder};
  QWidget* window = nullptr;
  QTextBrowser* page = nullptr;
  QTreeView* list = nullptr;
  QLineEdit* find = nullptr;
};

TEST_F(HelpWindowTest, ShowsThePageOfATopicAndItsPlaceInTheContents) {
  Show(104);
  EXPECT_EQ(PageOnShow(), "files.htm");
  EXPECT_EQ(page->source().fragment(), "rename");
  EXPECT_EQ(list->model()->rowCount(), std::ssize(HelpPages()));
  EXPECT_EQ(form.lstPages.Cell(form.lstPages.SelectedItem(), 0), "Opening and renaming files");
  EXPECT_TRUE(page->hasFocus());
  EXPECT_EQ(window->windowModality(), Qt::NonModal);
}

TEST_F(HelpWindowTest, APlaceOnAPageIsBroughtIntoSight) {
  Show("mark.htm");
  EXPECT_EQ(page->verticalScrollBar()->value(), 0);
  form.Show("mark.htm#recipes");
  EXPECT_GT(page->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindowTest, GivesTheKeysBackThatItGetsWhenItHasGone) {
  QWidget main;
  ShowActive(main);
  Show("quickstart.htm");
  Key(Qt::Key_Escape);
  QDialog other;
  ShowActive(other);
  QEvent late(QEvent::WindowActivate);
  QCoreApplication::sendEvent(window, &late);
  EXPECT_TRUE(other.isActiveWindow()) << "the user is there by now";
  other.hide();
  QCoreApplication::sendEvent(window, &late);
  WaitUntil([&] { return main.isActiveWindow(); });
}

TEST_F(HelpWindowTest, AllOfItWorksByKeys) {
  Show("quickstart.htm");
  Key(Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(find->hasFocus());
  QTest::keyClicks(find, "spreadsheet");
  EXPECT_EQ(form.lstPages.Cell(1, 0), "Lists for a spreadsheet (CSV)");
  Key(Qt::Key_Return);
  EXPECT_EQ(PageOnShow(), "export.htm");
  EXPECT_TRUE(window->isVisible());
  Key(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(PageOnShow(), "quickstart.htm");
  Key(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(PageOnShow(), "export.htm");
  Key(Qt::Key_Home, Qt::AltModifier);
  EXPECT_EQ(PageOnShow(), "overview.htm");
  Key(Qt::Key_F, Qt::ControlModifier);
  Key(Qt::Key_Delete);
  EXPECT_EQ(form.lstPages.Count(), std::ssize(HelpPages()));
  EXPECT_EQ(form.lstPages.SelectedItem(), 1);
  Key(Qt::Key_Tab);
  EXPECT_TRUE(list->hasFocus());
  Key(Qt::Key_Down);
  EXPECT_EQ(PageOnShow(), "quickstart.htm");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(page->hasFocus());
  Key(Qt::Key_Escape);
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(HelpWindowTest, LinksAreFollowedByKeys) {
  Show("overview.htm");
  Key(Qt::Key_Tab);
  Key(Qt::Key_Return);
  EXPECT_EQ(PageOnShow(), "search.htm");
  EXPECT_EQ(page->source().fragment(), "tolerant");
  EXPECT_EQ(form.lstPages.Cell(form.lstPages.SelectedItem(), 0), "Searching");
}

TEST_F(HelpWindowTest, AllOfItWorksByMouse) {
  Show("overview.htm");
  EXPECT_FALSE(Button("Back")->isEnabled());
  EXPECT_FALSE(Button("Forward")->isEnabled());
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, PointOfRow(2));
  EXPECT_EQ(PageOnShow(), "quickstart.htm");
  ClickLink("mark.htm#smartmarker");
  EXPECT_EQ(PageOnShow(), "mark.htm");
  EXPECT_EQ(form.lstPages.Cell(form.lstPages.SelectedItem(), 0), "Marks and Smart Marker");
  Click(Button("Back"));
  EXPECT_EQ(PageOnShow(), "quickstart.htm");
  EXPECT_EQ(form.lstPages.SelectedItem(), 2);
  Click(Button("Forward"));
  EXPECT_EQ(PageOnShow(), "mark.htm");
  Click(Button("Home"));
  EXPECT_EQ(PageOnShow(), "overview.htm");
  window->close();
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(HelpWindowTest, LinksToTheNetGoToTheDesktop) {
  Show("about.htm");
  ClickLink("https://tresmor.example/?from=exe");
  ClickLink("mailto:support@tresmor.example");
  EXPECT_THAT(shell.opened, ElementsAre("https://tresmor.example/?from=exe", "mailto:support@tresmor.example"));
  EXPECT_EQ(PageOnShow(), "about.htm");
}

TEST_F(HelpWindowTest, OpeningItAgainBringsTheSameWindowUp) {
  Show(112);
  QWidget* const first = window;
  first->setWindowState(Qt::WindowMinimized);
  Show(100);
  EXPECT_EQ(window, first);
  EXPECT_FALSE(window->isMinimized());
  EXPECT_EQ(PageOnShow(), "mark.htm");
}

TEST_F(HelpWindowTest, CanBeUsedBesideModalWindowsOneOverTheOther) {
  Show(100);
  QDialog dialog;
  dialog.setModal(true);
  QDialog box(&dialog);
  box.setModal(true);
  const auto expectUsable = [&](const char* words) {
    find->clear();
    window->activateWindow();
    WaitUntil([&] { return window->isActiveWindow(); });
    find->setFocus();
    Type(words);
    EXPECT_EQ(form.txtFind.Text(), words);
  };
  dialog.show();
  expectUsable("beside one");
  box.show();
  expectUsable("beside two");
  box.hide();
  expectUsable("beside one again");
  dialog.hide();
  expectUsable("alone");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(HelpWindowTest, OneThatComesOverItLocksIt) {
  Show(100);
  QDialog box(window);
  box.setModal(true);
  box.show();
  Type("x");
  EXPECT_EQ(form.txtFind.Text(), "");
  EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
}

TEST_F(HelpWindowTest, EveryPageHasItsWordsAndPictures) {
  Show(102);
  for (const HelpPage& each : HelpPages()) {
    form.Show(each.file);
    EXPECT_EQ(PageOnShow(), each.file);
    EXPECT_TRUE(page->toPlainText().startsWith(each.title)) << each.file;
    for (const auto& format : page->document()->allFormats()) {
      if (!format.isImageFormat()) continue;
      const QString picture = format.toImageFormat().name();
      const auto image = page->document()->resource(QTextDocument::ImageResource, QUrl(picture)).value<QImage>();
      EXPECT_LE(image.width(), 740) << picture.toStdString();
      EXPECT_GT(image.width(), 100) << picture.toStdString();
    }
  }
}

// Those of the program can be switched off, and this window has none of them.
TEST_F(HelpWindowTest, HasNoHoverTexts) {
  Show(102);
  for (const QWidget* const widget : window->findChildren<QWidget*>()) EXPECT_EQ(widget->toolTip(), "");
}

TEST_F(HelpWindowTest, AllThatTakesKeysHasAName) {
  Show(102);
  for (const QWidget* const widget :
       {static_cast<QWidget*>(page), static_cast<QWidget*>(list), window->focusWidget()}) {
    EXPECT_FALSE(widget->accessibleName().isEmpty());
  }
  EXPECT_EQ(find->accessibleName(), "Find");
}

}  // namespace
}  // namespace tresmor::tests
