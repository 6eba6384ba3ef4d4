// What there is to see, in several fonts and on light and dark grounds: all of it can be read and has a name.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QScrollBar>
#include <QToolButton>
#include <set>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

QPalette Colours(bool dark) {
  if (!dark) return QPalette(QColor(0xef, 0xef, 0xef));
  QPalette palette(QColor(0x30, 0x30, 0x30));
  palette.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
  return palette;
}

struct Look {
  int points;
  bool dark;
};

class LooksTest : public DialogTest, public testing::WithParamInterface<Look> {
 protected:
  LooksTest() {
    QApplication::setFont(PinnedFont(GetParam().points));
    QApplication::setPalette(Colours(GetParam().dark));
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
  }
  ~LooksTest() override {
    Stop();
    QApplication::setFont(PinnedFont(kFontPoints));
    QApplication::setPalette(usual_);
  }

  // Shows each page of the window in turn.
  void ForEachPage(const std::function<void()>& look) {
    for (int page = 1; page <= 4; ++page) {
      Frm().TabPath.Select(page);
      QCoreApplication::processEvents();
      look();
    }
  }

 private:
  const QPalette usual_ = QApplication::palette();
};

// What a field holds is no words about it.
std::string WordsOf(const QWidget& widget) {
  if (qobject_cast<const QLineEdit*>(&widget)) return "";
  for (const char* const property : {"text", "title"}) {
    const QString words = widget.property(property).toString();
    if (!words.isEmpty()) return words.toStdString();
  }
  return "";
}

bool FitsIn(const QWidget& widget, const QSize& room) {
  if (const auto* const box = qobject_cast<const QGroupBox*>(&widget)) {
    return box->fontMetrics().horizontalAdvance(box->title()) < room.width();
  }
  if (const auto* const label = qobject_cast<const QLabel*>(&widget); label != nullptr && label->wordWrap()) {
    return label->heightForWidth(room.width()) <= room.height();
  }
  if (const auto* const button = qobject_cast<const QPushButton*>(&widget)) {
    // Styles ask for more than a short word needs.
    const QSize words = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
    return words.width() + 6 <= room.width() && words.height() + 4 <= room.height();
  }
  return widget.sizeHint().width() <= room.width() && widget.sizeHint().height() <= room.height();
}

// What of a widget isn't covered by the edges of those that it stands in.
QSize RoomOf(const QWidget& widget) { return widget.visibleRegion().boundingRect().size(); }

void ExpectAllFits(QWidget& window) {
  for (const QWidget* const widget : window.findChildren<QWidget*>()) {
    const bool hasWords = qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget) ||
                          qobject_cast<const QGroupBox*>(widget);
    if (!hasWords || !widget->isVisible() || WordsOf(*widget).empty()) continue;
    if (widget->visibleRegion().isEmpty()) continue;  // all of it is out of sight yet
    const QSize room = qobject_cast<const QGroupBox*>(widget) ? widget->size() : RoomOf(*widget);
    EXPECT_TRUE(FitsIn(*widget, room)) << WordsOf(*widget) << ": " << widget->sizeHint().width() << " x "
                                       << widget->sizeHint().height() << " in " << room.width() << " x "
                                       << room.height();
  }
}

std::string NameOf(const QWidget& widget) {
  return widget.accessibleName().isEmpty() ? WordsOf(widget) : widget.accessibleName().toStdString();
}

bool HasName(const QWidget& widget) {
  if (!NameOf(widget).empty()) return true;
  for (const QLabel* const label : widget.window()->findChildren<QLabel*>()) {
    if (label->buddy() == &widget) return true;
  }
  return false;
}

void ExpectNames(QWidget& window) {
  for (const QWidget* const widget : window.findChildren<QWidget*>()) {
    const bool isToBeNamed = widget->focusPolicy() != Qt::NoFocus || widget->inherits("QProgressBar");
    if (!widget->isVisible() || !isToBeNamed || widget->focusProxy() != nullptr) continue;
    if (widget->parentWidget()->inherits("QComboBox")) continue;
    EXPECT_TRUE(HasName(*widget)) << widget->metaObject()->className() << " in " << window.windowTitle().toStdString();
  }
}

void ExpectOnScreen(const QWidget& window) {
  EXPECT_LE(window.frameGeometry().width(), kScreenWidth) << window.windowTitle().toStdString();
  EXPECT_LE(window.frameGeometry().height(), kScreenHeight) << window.windowTitle().toStdString();
}

void ExpectReadable(QWidget& window) {
  ExpectAllFits(window);
  ExpectNames(window);
  ExpectOnScreen(window);
}

TEST_P(LooksTest, TheWindowCanBeReadBeforeAndAfterASearch) {
  const auto look = [this] {
    ExpectAllFits(View());
    ExpectNames(View());
    for (const QToolButton* const arrow : Named("Results")->findChildren<QToolButton*>()) {
      EXPECT_FALSE(arrow->isVisibleTo(&View())) << "not all tabs show";
    }
    ExpectOnScreen(View());
    EXPECT_EQ(View().screen()->availableSize(), QSize(kScreenWidth, kScreenHeight));
  };
  ForEachPage(look);
  AddFolder(At("data"));
  for (const char* const title : {"Be patient", "Search completed", "Smart Marker"}) {
    script_.Expect(title, [](QWidget& window) {
      ExpectReadable(window);
      Find<QPushButton>(window, "OK")->click();
    });
  }
  Click(Button("Search"));
  EXPECT_TRUE(script_.IsDone());
  ForEachPage(look);
}

TEST_P(LooksTest, TheDialogsOfFilesCanBeRead) {
  Finding finding;
  finding.folder = At(std::string(200, 'f') + "/");
  finding.name = "one";
  ListView& list = List(ResultList::ZeroSize);
  AddResultItem(list, finding);
  list.SetChecked(1, true);
  list.SetSelected(1, true);
  const auto expect = [this](const QString& title) {
    script_.Expect(title, [](QWidget& window) {
      ExpectReadable(window);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  for (const auto& [key, title] : std::map<Qt::Key, QString>{{Qt::Key_D, "Delete files"}, {Qt::Key_M, "Move files"}}) {
    expect(title);
    Key(key, Qt::ControlModifier);
  }
  expect("Copy files");
  Frm().mnuCopy.OnClick();
  expect("Rename");
  Key(Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
}

TEST_P(LooksTest, OptionsAndTheBoxesOfTheMenuCanBeRead) {
  ByMenu("Menu", "Options", "Options", [this](QWidget& window) {
    ExpectReadable(window);
    script_.Expect("Reset warnings and tips", [](QWidget& box) {
      ExpectReadable(box);
      QTest::keyClick(&box, Qt::Key_Escape);
    });
    Click(Find<QPushButton>(window, "Reset Warnings and Tips"));
    GiveKeys(window);
    Press(window, Qt::Key_Escape);
  });
  ByMenu("Help", "About Tresmor", "About Tresmor", [](QWidget& window) {
    ExpectReadable(window);
    QTest::keyClick(&window, Qt::Key_Escape);
  });
}

TEST_P(LooksTest, BothTabsOfSmartMarkingCanBeRead) {
  for (const std::string& folder : {std::string("/short/"), At(std::string(200, 'f') + "/")}) {
    Finding finding;
    finding.folder = folder;
    finding.name = "one";
    AddResultItem(Duplicates(), finding);
  }
  Frm().results.tabMain.Select(2);
  ByMenu("Result Files", "Smart Marker...", "Smart Marking", [](QWidget& window) {
    ExpectReadable(window);
    Press(window, Qt::Key_M, Qt::AltModifier);
    ExpectReadable(window);
    const auto* const folders = window.findChild<QTreeView*>();
    EXPECT_TRUE(folders->isVisible());
    QCoreApplication::processEvents();
    EXPECT_FALSE(folders->horizontalScrollBar()->isVisible()) << "there is nothing beside the folders";
    Press(window, Qt::Key_Escape);
  });
}

// Each that comes with the program.
TEST_P(LooksTest, TipsCanBeRead) {
  FrmTip& form = program_->Window().frmTip;
  QWidget* const window = WindowNamed("Tip of the Day");
  ASSERT_NE(window, nullptr);
  EXPECT_GE(form.Tips.size(), 40U);
  for (std::size_t tip = 1; tip <= form.Tips.size(); ++tip) {
    form.CurrentTip = static_cast<std::int32_t>(tip);
    form.DisplayCurrentTip();
    QCoreApplication::processEvents();
    ExpectReadable(*window);
  }
}

TEST_P(LooksTest, TheHelpCanBeRead) {
  ClickMenu("Help", "Content and Index");
  QWidget* const window = WindowNamed("Tresmor Help");
  ASSERT_NE(window, nullptr);
  WaitUntil([&] { return window->isActiveWindow(); });
  ExpectReadable(*window);
}

using HugeLooksTest = LooksTest;

// There is no room for all of it on the screen: it scrolls, and the keys have all of it come into sight.
TEST_P(HugeLooksTest, TheWindowStaysOnTheScreenAndWhatHasTheKeysIsInSight) {
  ExpectOnScreen(View());
  Frm().Height = 8000;
  ExpectOnScreen(View());
  EXPECT_GE(Frm().Width(), 10000);
  const auto expectInside = [this] {
    const QRect place = View().frameGeometry();
    EXPECT_TRUE(QRect(0, 0, kScreenWidth, kScreenHeight).contains(place))
        << place.x() << ", " << place.y() << ": " << place.width() << " x " << place.height();
  };
  Frm().Top = 300;
  Frm().Left = 3000;
  expectInside();
  std::set<const QWidget*> seen;
  while (seen.insert(View().focusWidget()).second) {
    Key(Qt::Key_Tab);
    const QWidget& widget = *View().focusWidget();
    const QSize shown = RoomOf(widget);
    EXPECT_GE(shown.width(), std::min(widget.width(), 500)) << NameOf(widget);
    EXPECT_GE(shown.height(), std::min(widget.height(), 200)) << NameOf(widget);
  }
  EXPECT_GT(seen.size(), 12U);
  ExpectNames(View());
}

INSTANTIATE_TEST_SUITE_P(Huge, HugeLooksTest, testing::Values(Look{20, false}, Look{28, true}),
                         [](const auto& info) { return std::to_string(info.param.points) + "Points"; });

INSTANTIATE_TEST_SUITE_P(Fonts, LooksTest,
                         testing::Values(Look{9, false}, Look{9, true}, Look{10, false}, Look{12, false},
                                         Look{12, true}),
                         [](const auto& info) {
                           return std::to_string(info.param.points) + (info.param.dark ? "PointsDark" : "PointsLight");
                         });

}  // namespace
}  // namespace tresmor::tests
