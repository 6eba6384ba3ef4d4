// The windows of the dialogs, and what all windows share: hover texts and the help's key.
#include "qt/form_windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>
#include <QToolTip>
#include <QTreeView>
#include <fstream>

#include "qt/display_text.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_forms.h"
#include "support/memory_file_system.h"
#include "support/memory_settings.h"
#include "support/scripted_dialogs.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

// The widget that shows a text.
template <class Widget>
Widget* Find(const QWidget& window, const char* text) {
  for (Widget* const widget : window.findChildren<Widget*>()) {
    if (widget->text() == text) return widget;
  }
  ADD_FAILURE() << "not there: " << text;
  return nullptr;
}

void Press(QWidget& window, int key) {
  window.activateWindow();
  QApplication::setActiveWindow(&window);
  QWidget* const target = window.focusWidget() != nullptr ? window.focusWidget() : &window;
  for (const QEvent::Type type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
    QApplication::postEvent(target, new QKeyEvent(type, key, Qt::NoModifier));
  }
  QApplication::processEvents();
}

class FormWindowsTest : public testing::Test {
 protected:
  FormWindowsTest() {
    binder.OnHelp = [this](std::int32_t topic) { topics.push_back(topic); };
  }

  QtEventQueue events;
  const Twips twips = Twips::OfApplication();
  Binder binder{events, twips};
  HoveredRow hovered;
  ListTip tips{hovered, {}};
  std::vector<std::int32_t> topics;
};

// Calls `deed` from the event loop that a modal window runs.
void Soon(std::function<void()> deed) { QTimer::singleShot(0, qApp, std::move(deed)); }

TEST_F(FormWindowsTest, OptionsAreOfTheDesignsSizeAndTheirFramesCloseBoxCancels) {
  FrmOptions form;
  form.chkNoTooltips.Value = kTicked;
  form.txtEditor.Text = "editor";
  int cancelled = 0;
  form.CancelButton.OnClick = [&] {
    ++cancelled;
    form.Visible = false;
  };
  const auto window = Build(form, binder);
  EXPECT_EQ(window->windowTitle(), "Options");
  EXPECT_TRUE(window->isModal());
  EXPECT_EQ(window->minimumSize(), window->maximumSize());
  EXPECT_GE(window->width(), twips.ToPixels(FrmOptions::kWidth));
  EXPECT_TRUE(Find<QCheckBox>(*window, "&Disable Tool tips")->isChecked());
  EXPECT_EQ(window->findChild<QLineEdit*>()->text(), "editor");
  window->reject();
  window->close();
  EXPECT_EQ(cancelled, 2);
}

TEST_F(FormWindowsTest, AFormForOneUseMayGoWhenItIsClosed) {
  QtForms forms(binder);
  for (int i = 0; i < 2; ++i) {
    const auto form = std::make_unique<FrmOptions>();
    form->OKButton.OnClick = [&] { form->Visible = false; };
    form->Visible = true;
    Soon([] {
      QWidget* const window = QApplication::activeModalWidget();
      ASSERT_NE(window, nullptr);
      Find<QPushButton>(*window, "OK")->click();
    });
    forms.ShowModal(*form);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
}

TEST_F(FormWindowsTest, TheTipIsNotModalAndIsThereWhileItsFormIs) {
  const MemoryFileSystem files;
  MemorySettings settings;
  ScriptedDialogs dialogs;
  FrmTip form({files, settings, dialogs, [] { return 0.0; }});
  form.lblTipText.Caption = "A < B & C";
  QWidget owner;
  QtForms forms(binder);
  forms.ShowWhileVisible(form, owner);
  const auto windowOf = [] {
    const QWidget* tip = nullptr;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->windowTitle() == "Tip of the Day") tip = window;
    }
    return tip;
  };
  form.Visible = true;
  EXPECT_EQ(windowOf(), nullptr) << "a desktop puts what comes before its owner behind it";
  owner.show();
  EXPECT_EQ(windowOf(), nullptr) << "the desktop hasn't heard of the owner yet";
  tests::WaitUntil([&] { return windowOf() != nullptr; });
  const QWidget* const window = windowOf();
  EXPECT_FALSE(window->isModal());
  EXPECT_NE(Find<QLabel>(*window, "A < B & C"), nullptr);
  Find<QPushButton>(*window, "OK")->click();
  EXPECT_EQ(windowOf(), nullptr);
  owner.hide();
  owner.show();
  QCoreApplication::processEvents();
  EXPECT_EQ(windowOf(), nullptr) << "it was closed";
}

TEST_F(FormWindowsTest, SmartMarkingShowsOneFrameBelowItsTabs) {
  FrmSmartDel form;
  form.lstFolder.AddRow("/data/");
  const auto window = Build(form, binder, tips);
  window->show();
  auto* const list = window->findChild<QTreeView*>();
  auto* const tabs = window->findChild<QTabBar*>();
  EXPECT_EQ(list->model()->rowCount(), 1);
  EXPECT_FALSE(list->isVisible());
  tabs->setCurrentIndex(1);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(form.CurFrame, 1);
  EXPECT_EQ(tabs->tabText(0), "&Basic");
  EXPECT_GT(form.frmOptions[1].Height(), 3000);
  EXPECT_TRUE(Find<QPushButton>(*window, "Mark")->font().bold());
}

TEST_F(FormWindowsTest, HoverTextsFollowTheirControlsAndStayTwentySeconds) {
  FrmSmartDel form;
  const auto window = Build(form, binder, tips);
  auto* const mark = Find<QPushButton>(*window, "Mark");
  EXPECT_EQ(mark->toolTip(), "");
  form.cmdMark.ToolTipText = "<b> & more";
  EXPECT_EQ(mark->toolTip(), PlainToolTip("<b> & more"));
  EXPECT_EQ(mark->toolTipDuration(), 20000);
  form.cmdMark.ToolTipText = "";
  EXPECT_EQ(mark->toolTip(), "");
}

TEST_F(FormWindowsTest, LongHoverTextsWrapAt360Pixels) {
  const auto sizeOf = [](const std::string& text) {
    QLabel label(PlainToolTip(text));
    label.setFont(QToolTip::font());
    label.setWordWrap(true);  // as the toolkit does with it
    return label.sizeHint();
  };
  const QFontMetrics font(QToolTip::font());
  std::string text = "words";
  EXPECT_LT(sizeOf(text).height(), 2 * font.height());
  while (font.horizontalAdvance(QString::fromStdString(text + " words")) <= 360) text += " words";
  EXPECT_LT(sizeOf(text).height(), 2 * font.height());
  for (int i = 0; i < 3; ++i) text += " " + text;
  EXPECT_NEAR(sizeOf(text).width(), 360, 20);
  EXPECT_GT(sizeOf(text).height(), 5 * font.height());
  EXPECT_NEAR(sizeOf(std::string(250, 'w')).width(), 360, 20) << "a name without a place to break";
}

TEST_F(FormWindowsTest, F1AsksForTheTopicOfTheControlOrOfWhatItStandsIn) {
  FrmSmartDel form;
  form.cmdClearMarks.HelpContextID = 7;
  const auto window = Build(form, binder, tips);
  window->show();
  Find<QPushButton>(*window, "Mark")->setFocus();
  Press(*window, Qt::Key_F1);
  Find<QPushButton>(*window, "&Clear Marks")->setFocus();
  Press(*window, Qt::Key_F1);
  EXPECT_THAT(topics, ElementsAre(100, 7));
}

TEST_F(FormWindowsTest, F1InAnOpenedListClosesItAndAsksForTheTopicOfItsField) {
  FrmSmartDel form;
  form.lstDate.HelpContextID = 7;
  const auto window = Build(form, binder, tips);
  window->show();
  form.lstDate.SetFocus();
  static_cast<QComboBox*>(window->focusWidget())->showPopup();
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_F1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_THAT(topics, ElementsAre(7));
}

// Names in the list of the file dialog on show.
QStringList ShownFiles(const QFileDialog& dialog) {
  QStringList names;
  const auto* const view = dialog.findChild<QAbstractItemView*>("listView");
  const QModelIndex root = view->rootIndex();
  for (int row = 0; row < view->model()->rowCount(root); ++row) {
    names += view->model()->index(row, 0, root).data().toString();
  }
  return names;
}

class ProgramDialogTest : public TempTree {};

TEST_F(ProgramDialogTest, ThePatternOfProgramsShowsFilesThatCanBeRunAndAddsNoExtension) {
  MakeFile("editor", "");
  MakeFile("text", "");
  ASSERT_EQ(chmod(At("editor").c_str(), 0755), 0);
  std::function<void()> look = [&] {
    auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || ShownFiles(*dialog).isEmpty()) return Soon(look);
    EXPECT_EQ(ShownFiles(*dialog), QStringList{"editor"});
    dialog->selectNameFilter(dialog->nameFilters().at(1));
    emit dialog->filterSelected(dialog->nameFilters().at(1));
    EXPECT_EQ(ShownFiles(*dialog).size(), 2);
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText("editor");
    static_cast<QDialog*>(dialog)->accept();
  };
  Soon(look);
  QtEventQueue events;
  const Twips twips = Twips::OfApplication();
  const Binder binder(events, twips);
  QtDialogs dialogs(binder);
  FileQuestion question;
  question.filters = {{"Executables (*.exe)", "*.exe"}, {"All Files", "*.*"}};
  question.defaultExtension = "EXE";
  question.startFolder = root_;
  EXPECT_EQ(dialogs.OpenFileDlg(question), At("editor"));
}

}  // namespace
}  // namespace tresmor
