#include "qt/binder.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <memory>
#include <stdexcept>

#include "qt/display_text.h"
#include "qt/stage.h"

namespace tresmor::tests {
namespace {

TEST(Binder, AControlsStateIsItsWidgets) {
  Button button("&Go");
  Stage stage;
  auto* const widget = stage.Add<QPushButton>(button);
  auto* const other = new QLineEdit;
  stage.room->addWidget(other);
  stage.Show();
  other->setFocus();
  button.SetFocus();
  EXPECT_TRUE(widget->hasFocus());
  button.Enabled = false;
  EXPECT_FALSE(widget->isEnabled());
  button.Visible = false;
  EXPECT_FALSE(widget->isVisible());
  button.Visible = true;
  button.Enabled = true;
  EXPECT_TRUE(widget->isVisible() && widget->isEnabled());
}

TEST(Binder, APlaceIsInPixels) {
  Button button("Go", {150, 300, 1500, 375});
  Stage stage;
  auto* const widget = new QPushButton(&stage.window);
  stage.binder.BindPlace(button, *widget);
  EXPECT_EQ(widget->geometry(), QRect(10, 20, 100, 25));
  button.Left = 0;
  button.Width = 75;
  EXPECT_EQ(widget->geometry(), QRect(0, 20, 5, 25));
}

TEST(Binder, AButtonIsClickedByMouseSpaceAndEnter) {
  Button button("&Go");
  int clicks = 0;
  button.OnClick = [&] { ++clicks; };
  Stage stage;
  auto* const widget = stage.Add<QPushButton>(button);
  stage.Show();
  Click(widget);
  EXPECT_EQ(clicks, 1);
  widget->setFocus();
  QTest::keyClick(widget, Qt::Key_Space);
  EXPECT_EQ(clicks, 2);
  QTest::keyClick(widget, Qt::Key_Return);
  EXPECT_EQ(clicks, 3);
  button.Caption = "a\nb";
  EXPECT_EQ(widget->text(), QStringLiteral("a\u240Ab"));
  button.OnClick = nullptr;
  Click(widget);
}

TEST(Binder, WhatAHandlerThrowsStaysOutOfTheToolkit) {
  Button button("Go");
  button.OnClick = [] { throw std::runtime_error("no"); };
  Stage stage;
  int told = 0;
  stage.events.OnUncaught = [&](const std::exception_ptr&) { ++told; };
  auto* const widget = stage.Add<QPushButton>(button);
  stage.Show();
  Click(widget);
  EXPECT_EQ(told, 1);
}

TEST(Binder, AWidgetMayGoBeforeItsControl) {
  Button button("Go");
  TextBox text;
  text.OnLostFocus = [] { ADD_FAILURE() << "nobody left it"; };
  {
    Stage stage;
    stage.Add<QPushButton>(button);
    const auto field = std::make_unique<QLineEdit>(&stage.window);
    stage.binder.Bind(text, *field);
    stage.Show();
    field->setFocus();
  }
  button.Caption = "Gone";
  button.Enabled = false;
  text.Text = "gone";
  text.SetFocus();
}

TEST(Binder, AGrayedBoxIsGrayedOnlyByTheProgram) {
  CheckBox box(true, "&Box");
  int clicks = 0;
  Stage stage;
  auto* const widget = stage.Add<QCheckBox>(box);
  box.OnClick = [&] { ++clicks; };
  stage.Show();
  EXPECT_EQ(widget->checkState(), Qt::Checked);
  box.Value = kGrayed;
  EXPECT_EQ(widget->checkState(), Qt::PartiallyChecked);
  EXPECT_EQ(clicks, 0);
  widget->setFocus();
  QTest::keyClick(widget, Qt::Key_Space);
  EXPECT_EQ(box.Value(), kTicked);
  for (const std::int16_t expected : {kOff, kTicked, kOff}) {
    QTest::keyClick(widget, Qt::Key_Space);
    EXPECT_EQ(box.Value(), expected);
    EXPECT_EQ(widget->checkState(), expected == kTicked ? Qt::Checked : Qt::Unchecked);
  }
  EXPECT_EQ(clicks, 4);
  box.Value = kGrayed;
  box.Value = kOff;
  QTest::keyClick(widget, Qt::Key_Space);
  EXPECT_EQ(box.Value(), kTicked);
}

TEST(Binder, AClickOnTheChosenOptionLeavesItChosen) {
  OptionButton first("First", true);
  OptionButton second("Second");
  JoinOptions({&first, &second});
  Stage stage;
  auto* const one = stage.Add<QRadioButton>(first);
  auto* const apart = new QWidget(&stage.window);
  auto* const two = new QRadioButton(apart);
  stage.binder.Bind(second, *two);
  stage.room->addWidget(apart);
  stage.Show();
  const auto expectChosen = [&](bool isFirst) {
    EXPECT_EQ(first.Value(), isFirst);
    EXPECT_EQ(second.Value(), !isFirst);
    EXPECT_EQ(one->isChecked(), isFirst);
    EXPECT_EQ(two->isChecked(), !isFirst);
  };
  one->click();
  expectChosen(true);
  two->click();
  expectChosen(false);
  two->click();
  expectChosen(false);
  first.Value = true;
  expectChosen(true);
}

TEST(Binder, LabelsAndPanelsShowPlainText) {
  Label label;
  Panel panel;
  Frame frame("A & B");
  Stage stage;
  auto* const text = stage.Add<QLabel>(label);
  auto* const bar = stage.Add<QLabel>(panel);
  auto* const group = stage.Add<QGroupBox>(frame);
  label.Caption = "<b>a</b>\r\nb";
  EXPECT_EQ(text->textFormat(), Qt::PlainText);
  EXPECT_EQ(text->text(), "<b>a</b>\nb");
  panel.Text = "<i>x\ny";
  EXPECT_EQ(bar->textFormat(), Qt::PlainText);
  EXPECT_EQ(bar->text(), QStringLiteral("<i>x\u240Ay"));
  EXPECT_EQ(bar->toolTip(), "");
  panel.ToolTipText = "<i>x\ny";
  EXPECT_EQ(bar->toolTip(), PlainToolTip("<i>x\ny"));
  EXPECT_EQ(bar->toolTipDuration(), 20000);
  EXPECT_EQ(group->title(), "A & B");
}

TEST(Binder, ATextBoxGivesBackTheExactBytes) {
  const std::string odd = "a\xFF\n\xC3\xA4";
  TextBox text;
  Stage stage;
  auto* const widget = stage.Add<QLineEdit>(text);
  stage.Show();
  text.Text = odd;
  text.ToolTipText = "<b>";
  EXPECT_EQ(widget->toolTip(), PlainToolTip("<b>"));
  widget->setFocus();
  widget->setCursorPosition(0);
  QTest::keyClicks(widget, "xy");
  EXPECT_EQ(text.Text(), "xy" + odd);
  EXPECT_EQ(widget->cursorPosition(), 2);
  QTest::keyClick(widget, Qt::Key_Backspace);
  EXPECT_EQ(text.Text(), "x" + odd);
}

TEST(Binder, ATextBoxHasItsLimits) {
  TextBox shortText;
  shortText.MaxLength = 3;
  TextBox locked;
  locked.Locked = true;
  locked.Text = "name";
  Stage stage;
  auto* const typed = stage.Add<QLineEdit>(shortText);
  auto* const still = stage.Add<QLineEdit>(locked);
  stage.Show();
  QTest::keyClicks(typed, "12345");
  EXPECT_EQ(shortText.Text(), "123");
  QTest::keyClicks(still, "12345");
  EXPECT_EQ(locked.Text(), "name");
  locked.SelectAll();
  EXPECT_EQ(still->selectedText(), "name");
}

TEST(Binder, FocusIsGotAndLostWithinTheWindowAlone) {
  TextBox text;
  std::vector<std::string> told;
  text.OnGotFocus = [&] { told.push_back("got"); };
  text.OnLostFocus = [&] { told.push_back("lost " + text.Text()); };
  Stage stage;
  auto* const widget = stage.Add<QLineEdit>(text);
  auto* const other = new QLineEdit;
  stage.room->addWidget(other);
  stage.Show();
  other->setFocus();
  told.clear();
  text.SetFocus();
  EXPECT_EQ(told, std::vector<std::string>{"got"});

  // Another window, and a menu of the field's own.
  QWidget elsewhere;
  ShowActive(elsewhere);
  elsewhere.hide();
  ShowActive(stage.window);
  QMenu menu(widget);
  menu.addAction("Copy");
  menu.popup({0, 0});
  menu.hide();
  WaitUntil([&] { return widget->hasFocus(); });
  EXPECT_EQ(told, std::vector<std::string>{"got"});

  QTest::keyClicks(widget, "7");
  QTest::keyClick(widget, Qt::Key_Tab);
  EXPECT_TRUE(other->hasFocus());
  EXPECT_EQ(told, (std::vector<std::string>{"got", "lost 7"}));
}

TEST(Binder, AClickThatBringsTheFocusKeepsWhatIsSelectedUponIt) {
  TextBox text;
  text.OnGotFocus = [&] { text.SelectAll(); };
  text.Text = "2004/03/31";
  Stage stage;
  auto* const other = new QLineEdit;
  stage.room->addWidget(other);
  auto* const widget = stage.Add<QLineEdit>(text);
  stage.Show();
  other->setFocus();
  Click(widget);
  EXPECT_EQ(widget->selectedText(), "2004/03/31");
  Click(widget);
  EXPECT_EQ(widget->selectedText(), "") << "a further click is about the cursor";

  other->setFocus();
  const int middle = widget->height() / 2;
  QTest::mousePress(widget, Qt::LeftButton, {}, {2, middle});
  widget->setSelection(0, 4);  // by moving the mouse
  QTest::mouseRelease(widget, Qt::LeftButton, {}, {40, middle});
  EXPECT_EQ(widget->selectedText(), "2004");
}

TEST(Binder, TicksOfACheckListGoBothWays) {
  CheckList list({"Zero", "One", "Two"});
  Stage stage;
  auto* const widget = stage.Add<QListWidget>(list);
  stage.Show();
  list.SetTicked(1, true);
  EXPECT_EQ(widget->item(1)->checkState(), Qt::Checked);
  widget->setFocus();
  QTest::keyClick(widget, Qt::Key_Space);
  EXPECT_TRUE(list.Ticked(0));
  QTest::keyClick(widget, Qt::Key_Down);
  QTest::keyClick(widget, Qt::Key_Space);
  EXPECT_FALSE(list.Ticked(1));
  const QRect third = widget->visualItemRect(widget->item(2));
  QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, {third.left() + 10, third.center().y()});
  EXPECT_TRUE(list.Ticked(2));
  list.BackColor = kDesktopGround;
  EXPECT_EQ(widget->palette().color(QPalette::Base), QApplication::palette().color(QPalette::Highlight));
  list.BackColor = kWindowGround;
  EXPECT_EQ(widget->palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));
}

TEST(Binder, ABarShowsItsValue) {
  ProgressBar bar;
  Stage stage;
  auto* const widget = stage.Add<QProgressBar>(bar);
  bar.Value = 42.9F;
  EXPECT_EQ(widget->value(), 42);
}

TEST(Binder, ThePointerHasItsShape) {
  MousePointer pointer;
  Stage stage;
  stage.binder.Bind(pointer, stage.window);
  pointer.Shape = PointerShape::HourglassAndArrow;
  EXPECT_EQ(stage.window.cursor().shape(), Qt::BusyCursor);
  pointer.Shape = PointerShape::Hourglass;
  EXPECT_EQ(stage.window.cursor().shape(), Qt::WaitCursor);
  pointer.Shape = PointerShape::Default;
  EXPECT_EQ(stage.window.cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace tresmor::tests
