#include "qt/list_widget.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include "qt/display_text.h"
#include "qt/list_stage.h"

namespace tresmor::tests {
namespace {

TEST(ListWidgetMouse, AClickSelectsOneRow) {
  ListStage lists(5);
  lists.ClickRow(2);
  EXPECT_EQ(lists.TakeLog(), (Log{"item 2", "click", "up 1"}));
  lists.ClickRow(4);
  EXPECT_EQ(lists.Selected(), Rows{4});
  EXPECT_EQ(lists.list.SelectedItem(), 4);
  EXPECT_EQ(lists.CurrentRow(), 4);
  EXPECT_FALSE(lists.widget->selectionModel()->hasSelection());
}

TEST(ListWidgetMouse, ControlAddsAndTakesAway) {
  ListStage lists(5);
  lists.ClickRow(2);
  lists.ClickRow(4, Qt::ControlModifier);
  EXPECT_EQ(lists.Selected(), (Rows{2, 4}));
  EXPECT_EQ(lists.list.SelectedItem(), 4);
  lists.ClickRow(2, Qt::ControlModifier);
  EXPECT_EQ(lists.Selected(), Rows{4});
  EXPECT_EQ(lists.TakeLog().at(6), "item 2") << "the click tells of the row that it hit";
  EXPECT_EQ(lists.list.SelectedItem(), 2);
}

TEST(ListWidgetMouse, ShiftSelectsFromWhereTheRangeBegan) {
  ListStage lists(7);
  lists.ClickRow(3);
  lists.ClickRow(6, Qt::ShiftModifier);
  EXPECT_EQ(lists.Selected(), (Rows{3, 4, 5, 6}));
  EXPECT_EQ(lists.list.SelectedItem(), 6);
  lists.ClickRow(1, Qt::ShiftModifier);
  EXPECT_EQ(lists.Selected(), (Rows{1, 2, 3}));
  lists.list.RemoveRow(7);
  lists.ClickRow(5, Qt::ShiftModifier);
  EXPECT_EQ(lists.Selected(), Rows{5}) << "a range begins anew once rows have gone";
}

TEST(ListWidgetMouse, OneRowIsAllThatASingleListSelects) {
  ListStage lists(5, ListLook());
  lists.ClickRow(2);
  lists.ClickRow(4, Qt::ControlModifier);
  EXPECT_EQ(lists.Selected(), Rows{4});
  lists.ClickRow(5, Qt::ShiftModifier);
  EXPECT_EQ(lists.Selected(), Rows{5});
  lists.Click(lists.BoxOf(1));
  EXPECT_EQ(lists.Selected(), Rows{1});
  EXPECT_EQ(lists.Marked(), Rows{});
}

TEST(ListWidgetMouse, DraggingSelectsNothingMore) {
  ListStage lists(5);
  QTest::mousePress(lists.widget->viewport(), Qt::LeftButton, {}, lists.PointOn(2));
  QTest::mouseMove(lists.widget->viewport(), lists.PointOn(4));
  QTest::mouseRelease(lists.widget->viewport(), Qt::LeftButton, {}, lists.PointOn(4));
  EXPECT_EQ(lists.Selected(), Rows{2});
}

TEST(ListWidgetMouse, TheEmptyPlaceBelowSelectsNone) {
  ListStage lists(3);
  lists.ClickRow(2);
  lists.TakeLog();
  lists.Click(lists.PointOn(3) + QPoint(0, 60));
  EXPECT_EQ(lists.Selected(), Rows{});
  EXPECT_EQ(lists.TakeLog(), (Log{"click", "up 1"}));
}

TEST(ListWidgetMouse, TheRightButtonKeepsARowsCompany) {
  ListStage lists(5);
  lists.ClickRow(2);
  lists.ClickRow(4, Qt::ControlModifier);
  lists.TakeLog();
  lists.Click(lists.PointOn(2), {}, Qt::RightButton);
  EXPECT_EQ(lists.Selected(), (Rows{2, 4}));
  EXPECT_EQ(lists.list.SelectedItem(), 2);
  EXPECT_EQ(lists.TakeLog(), (Log{"item 2", "up 2"})) << "what shows goes with what the menu is about";
  lists.Click(lists.PointOn(5), {}, Qt::RightButton);
  EXPECT_EQ(lists.Selected(), Rows{5});
  EXPECT_EQ(lists.TakeLog(), (Log{"item 5", "up 2"}));
}

TEST(ListWidgetMouse, ABoxMarksItsRowAlone) {
  ListStage lists(5);
  lists.ClickRow(2);
  lists.ClickRow(3, Qt::ShiftModifier);
  lists.TakeLog();
  lists.Click(lists.BoxOf(2));
  EXPECT_EQ(lists.Marked(), Rows{2});
  EXPECT_EQ(lists.Selected(), (Rows{2, 3}));
  EXPECT_EQ(lists.list.SelectedItem(), 2) << "the focus goes along";
  EXPECT_EQ(lists.TakeLog(), (Log{"check", "click", "up 1"}));
  QTest::mouseDClick(lists.widget->viewport(), Qt::LeftButton, {}, lists.BoxOf(2));
  EXPECT_EQ(lists.TakeLog(), Log{"check"}) << "the second click of two is one more";
  EXPECT_EQ(lists.Marked(), Rows{});
}

TEST(ListWidgetMouse, ADoubleClickOpensARow) {
  ListStage lists(3);
  QTest::mouseDClick(lists.widget->viewport(), Qt::LeftButton, {}, lists.PointOn(2));
  EXPECT_EQ(std::ranges::count(lists.log, "double"), 1);
  lists.TakeLog();
  QTest::mouseDClick(lists.widget->viewport(), Qt::LeftButton, {}, lists.PointOn(3) + QPoint(0, 60));
  EXPECT_EQ(std::ranges::count(lists.log, "double"), 0);
}

TEST(ListWidgetMouse, AHeaderSorts) {
  ListStage lists(3);
  QHeaderView* const header = lists.widget->header();
  EXPECT_TRUE(header->isSectionHidden(1));
  EXPECT_GT(header->sectionSize(0), 0);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {header->sectionPosition(2) + 10, 8});
  EXPECT_EQ(lists.TakeLog(), Log{"column 3"});
}

TEST(ListWidgetMouse, ThePointersRowAndItsText) {
  std::string text = "Name: <b>\r\nIn Folder: /x";
  ListLook look = ResultLook();
  look.hoverText = [&] { return text; };
  ListStage lists(3, look);
  lists.TakeLog();
  QTest::mouseMove(lists.widget->viewport(), lists.PointOn(2));
  WaitUntil([&] { return !lists.log.empty(); });
  EXPECT_EQ(lists.TakeLog().back(), "over 2");
  const auto hover = [&] {
    const QPoint point = lists.PointOn(2);
    QHelpEvent help(QEvent::ToolTip, point, lists.widget->viewport()->mapToGlobal(point));
    QCoreApplication::sendEvent(lists.widget->viewport(), &help);
  };
  hover();
  EXPECT_EQ(QToolTip::text(), PlainToolTip(text));
  text.clear();
  hover();
  WaitUntil([] { return !QToolTip::isVisible(); });
  lists.TakeLog();
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(lists.widget->viewport(), &leave);
  EXPECT_EQ(lists.TakeLog(), Log{}) << "the text stays for when the pointer comes back";
}

QWidget* ShownTip() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->inherits("QTipLabel")) return window;
  }
  return nullptr;
}

TEST(ListWidgetMouse, ARowsTextStaysTwentySecondsAndWrapsAt360Pixels) {
  std::string text;
  for (int i = 0; i < 50; ++i) text += "words ";
  ListLook look = ResultLook();
  look.hoverText = [&] { return text; };
  ListStage lists(1, look);
  const QPoint point = lists.PointOn(1);
  QHelpEvent help(QEvent::ToolTip, point, lists.widget->viewport()->mapToGlobal(point));
  QCoreApplication::sendEvent(lists.widget->viewport(), &help);
  ASSERT_NE(ShownTip(), nullptr);
  EXPECT_NEAR(ShownTip()->width(), 360, 20);
  std::vector<int> timers;
  // The toolkit's tip has no other clock than that of its end.
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(ShownTip())) {
    timers.push_back(timer.interval);
  }
  EXPECT_EQ(timers, std::vector{20000});
  QToolTip::hideText();
}

TEST(ListWidgetKeys, ArrowsAndPagesMoveTheSelection) {
  ListStage lists(100);
  lists.Key(Qt::Key_Down);
  EXPECT_EQ(lists.Selected(), Rows{2}) << "the first row had the keys";
  lists.Key(Qt::Key_Up);
  lists.Key(Qt::Key_Up);
  EXPECT_EQ(lists.Selected(), Rows{1});
  lists.Key(Qt::Key_End);
  EXPECT_EQ(lists.Selected(), Rows{100});
  EXPECT_TRUE(lists.widget->viewport()->rect().contains(lists.PointOn(100)));
  lists.Key(Qt::Key_PageUp);
  const int page = 100 - lists.CurrentRow();
  EXPECT_GT(page, 3);
  EXPECT_EQ(lists.Selected(), Rows{100 - page});
  lists.Key(Qt::Key_Home);
  lists.Key(Qt::Key_PageDown);
  EXPECT_EQ(lists.Selected(), Rows{1 + page});
  EXPECT_EQ(lists.TakeLog().back(), "item " + std::to_string(1 + page));
}

TEST(ListWidgetKeys, ShiftExtendsAndControlOnlyMoves) {
  ListStage lists(9);
  lists.ClickRow(3);
  lists.Key(Qt::Key_Down, Qt::ShiftModifier);
  lists.Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(lists.Selected(), (Rows{3, 4, 5}));
  lists.Key(Qt::Key_Down, Qt::ControlModifier);
  lists.Key(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(lists.Selected(), (Rows{3, 4, 5}));
  EXPECT_EQ(lists.CurrentRow(), 7);
  EXPECT_EQ(lists.list.SelectedItem(), 7);
  lists.Key(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(lists.Selected(), (Rows{3, 4, 5, 7}));
}

TEST(ListWidgetKeys, SpaceMarksAllSelectedRowsLikeTheCurrentOne) {
  ListStage lists(6);
  lists.list.SetChecked(3, true);
  lists.ClickRow(2);
  lists.Key(Qt::Key_Down, Qt::ShiftModifier);
  lists.Key(Qt::Key_Down, Qt::ShiftModifier);
  lists.TakeLog();
  lists.Key(Qt::Key_Space);
  EXPECT_EQ(lists.Marked(), (Rows{2, 3, 4}));
  EXPECT_EQ(lists.TakeLog(), Log{"check"});
  lists.Key(Qt::Key_Space);
  EXPECT_EQ(lists.Marked(), Rows{});
  lists.Key(Qt::Key_Down, Qt::ControlModifier);
  lists.Key(Qt::Key_Space);
  EXPECT_EQ(lists.Marked(), Rows{5}) << "it isn't among the selected ones";
}

TEST(ListWidgetKeys, EnterOpensAndMenuAsksForTheMenu) {
  ListStage lists(3);
  lists.Key(Qt::Key_Return);
  lists.Key(Qt::Key_Enter);
  EXPECT_EQ(lists.TakeLog(), (Log{"double", "double"}));
  const QPoint point = lists.PointOn(1);
  const QPoint onScreen = lists.widget->viewport()->mapToGlobal(point);
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, point, onScreen);
  QCoreApplication::sendEvent(lists.widget->viewport(), &menu);
  EXPECT_EQ(lists.TakeLog(), Log{"up 2"});
  QContextMenuEvent byMouse(QContextMenuEvent::Mouse, point, onScreen);
  QCoreApplication::sendEvent(lists.widget->viewport(), &byMouse);
  EXPECT_EQ(lists.TakeLog(), Log{}) << "it comes with the release of the button";
}

TEST(ListWidgetKeys, ALookNamesTheKeysThatOpen) {
  ListLook look;
  look.openingKeys = {Qt::Key_Delete};
  ListStage lists(3, look);
  lists.Key(Qt::Key_Return);
  lists.Key(Qt::Key_Enter);
  EXPECT_EQ(lists.TakeLog(), Log{});
  lists.Key(Qt::Key_Delete);
  EXPECT_EQ(lists.TakeLog(), Log{"double"});
}

TEST(ListWidgetKeys, ControlAndADigitSort) {
  ListStage lists(0);
  lists.Key(Qt::Key_1, Qt::ControlModifier);
  lists.Key(Qt::Key_2, Qt::ControlModifier);
  lists.Key(Qt::Key_3, Qt::ControlModifier);
  lists.Key(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(lists.TakeLog(), (Log{"column 1", "column 3"})) << "the second column is hidden and doesn't count";
}

struct NamesStage : ListStage {
  NamesStage() : ListStage(0) {
    for (const char* const name : {"apple", "Pear", "plum", "peach\xFF", "A%A"}) AddRow(name);
    ClickRow(1);
  }
  void ExpectRowsOf(const std::string& letters, const Rows& rows) {
    Rows reached;
    for (const char letter : letters) {
      QTest::keyClick(widget, letter);
      reached.push_back(Selected().front());
    }
    EXPECT_EQ(reached, rows) << letters;
  }
};

TEST(ListWidgetKeys, LettersGoToTheNextNameThatBeginsSo) {
  const Typing slowly(kOneByOne);
  NamesStage().ExpectRowsOf("pppx", {2, 3, 4, 4});
  NamesStage().ExpectRowsOf("pl", {2, 2});
}

TEST(ListWidgetKeys, LettersTypedQuicklyAreTheBeginningOfAName) {
  const Typing quickly(kTogether);
  NamesStage().ExpectRowsOf("peac", {2, 2, 2, 4});
  NamesStage().ExpectRowsOf("plx", {2, 3, 3});
  NamesStage().ExpectRowsOf("pPpp", {2, 3, 4, 2});
  NamesStage().ExpectRowsOf("a%a", {5, 5, 5});
}

TEST(ListWidgetRows, SortingKeepsWhereTheListIsScrolledTo) {
  ListStage lists(200);
  lists.ClickRow(1);
  lists.widget->verticalScrollBar()->setValue(50);
  lists.list.SortOrder = kDescending;
  lists.list.SetSorted(true);
  EXPECT_EQ(lists.widget->verticalScrollBar()->value(), 50);
  EXPECT_EQ(lists.list.Cell(lists.list.SelectedItem(), 0), "file0");
}

TEST(ListWidgetRows, TheKeysGoWithTheSelectedRow) {
  ListStage lists(9);
  lists.ClickRow(2);
  lists.list.SortOrder = kDescending;
  lists.list.SetSorted(true);
  EXPECT_EQ(lists.list.SelectedItem(), 8);
  EXPECT_EQ(lists.CurrentRow(), 8);
  lists.list.SetSelected(3, true);
  EXPECT_EQ(lists.CurrentRow(), 3);
  lists.list.Visible = false;
  lists.list.SetSelected(5, true);
  lists.list.Visible = true;
  EXPECT_EQ(lists.CurrentRow(), 5);
}

TEST(ListWidgetRows, AFrozenListIsNotPainted) {
  ListStage lists(3);
  lists.list.Frozen = true;
  EXPECT_FALSE(lists.widget->updatesEnabled());
  lists.list.Frozen = false;
  EXPECT_TRUE(lists.widget->updatesEnabled());
}

TEST(ListWidgetRows, SelectedRowsLookSelected) {
  ListStage lists(4);
  lists.list.SetSelected(2, true);
  lists.list.GiveFocus(4);  // which is framed
  const QImage shown = lists.widget->viewport()->grab().toImage();
  const auto groundOf = [&](int row) { return shown.pixelColor(lists.PointOn(row).x() + 40, lists.PointOn(row).y()); };
  EXPECT_EQ(groundOf(2), QApplication::palette().color(QPalette::Highlight));
  EXPECT_NE(groundOf(3), groundOf(2));
}

}  // namespace
}  // namespace tresmor::tests
