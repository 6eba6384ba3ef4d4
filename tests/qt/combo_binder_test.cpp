#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

#include "qt/display_text.h"
#include "qt/stage.h"

namespace tresmor::tests {
namespace {

struct ComboStage {
  ComboStage() {
    control.AddItem("/home/me/old");
    control.AddItem("Preset");
    control.OnClick = [this] {
      ++clicks;
      if (control.ListIndex() == 1) control.SetText("*.a;*.b");  // as presets do
    };
  }

  ComboBox control{"*.*"};
  int clicks = 0;
  Stage stage;
  QComboBox* const widget = stage.Add<QComboBox>(control);
};

void Pick(QComboBox& box, int entry) {
  box.showPopup();
  WaitUntil([&] { return box.view()->isVisible(); });
  box.view()->setCurrentIndex(box.model()->index(entry, 0));
  QTest::keyClick(box.view(), Qt::Key_Return);
}

TEST(ComboBinder, ShowsItsTextAndNothingElse) {
  ComboStage combo;
  EXPECT_EQ(combo.widget->currentText(), "*.*");
  EXPECT_EQ(combo.widget->count(), 2);
  EXPECT_EQ(combo.widget->currentIndex(), -1);
  EXPECT_EQ(combo.widget->completer(), nullptr);
}

TEST(ComboBinder, TypingIsNotCompletedAndClicksNothing) {
  ComboStage combo;
  combo.stage.Show();
  combo.widget->lineEdit()->selectAll();
  QTest::keyClicks(combo.widget->lineEdit(), "/hom");
  EXPECT_EQ(combo.control.Text(), "/hom");
  EXPECT_EQ(combo.widget->currentText(), "/hom");
  EXPECT_EQ(combo.clicks, 0);
  QTest::keyClick(combo.widget->lineEdit(), Qt::Key_Return);
  EXPECT_EQ(combo.widget->count(), 2);
}

TEST(ComboBinder, ATypedEntryIsNoClickOnIt) {
  ComboStage combo;
  combo.stage.Show();
  combo.widget->lineEdit()->selectAll();
  QTest::keyClicks(combo.widget->lineEdit(), combo.widget->itemText(0));
  QTest::keyClick(combo.widget->lineEdit(), Qt::Key_Return);
  EXPECT_EQ(combo.clicks, 0);
  EXPECT_EQ(combo.control.ListIndex(), -1);
  EXPECT_EQ(EditText(combo.control.Text()), combo.widget->itemText(0));
}

TEST(ComboBinder, AnEntryIsPickedAndPickedAgain) {
  ComboStage combo;
  combo.stage.Show();
  Pick(*combo.widget, 0);
  EXPECT_EQ(combo.control.Text(), "/home/me/old");
  EXPECT_EQ(combo.control.ListIndex(), 0);
  EXPECT_EQ(combo.clicks, 1);
  Pick(*combo.widget, 0);
  EXPECT_EQ(combo.clicks, 2);
}

TEST(ComboBinder, APresetsValueTakesThePlaceOfItsLabel) {
  ComboStage combo;
  combo.stage.Show();
  for (int round = 1; round <= 2; ++round) {
    Pick(*combo.widget, 1);
    EXPECT_EQ(combo.control.Text(), "*.a;*.b");
    EXPECT_EQ(combo.widget->currentText(), "*.a;*.b");
    EXPECT_EQ(combo.clicks, round);
  }
}

TEST(ComboBinder, TypingInTheMiddleOfAnEntryStaysThere) {
  ComboStage combo;
  combo.stage.Show();
  Pick(*combo.widget, 0);
  combo.widget->lineEdit()->setCursorPosition(6);
  QTest::keyClicks(combo.widget->lineEdit(), "xy");
  EXPECT_EQ(combo.control.Text(), "/home/xyme/old");
  EXPECT_EQ(combo.control.ListIndex(), -1);
  EXPECT_EQ(combo.widget->lineEdit()->cursorPosition(), 8);
}

TEST(ComboBinder, TheListFollowsTheProgram) {
  ComboStage combo;
  combo.control.OnClick = nullptr;
  combo.stage.Show();
  combo.control.SetText("mine");
  combo.control.AddItem("new\xFF");
  combo.control.RemoveItem(0);
  EXPECT_EQ(combo.widget->count(), 2);
  combo.control.SetList(0, "first");
  EXPECT_EQ(combo.widget->itemText(0), "first");
  EXPECT_EQ(combo.widget->currentText(), "mine");
  combo.control.SetListIndex(1);
  EXPECT_EQ(combo.control.Text(), "new\xFF");
  EXPECT_EQ(combo.widget->currentIndex(), 1);
  combo.widget->lineEdit()->setCursorPosition(0);
  QTest::keyClicks(combo.widget->lineEdit(), "a");
  EXPECT_EQ(combo.control.Text(), "anew\xFF");
}

TEST(ComboBinder, FlashesInAnotherGround) {
  ComboStage combo;
  combo.control.BackColor = kDesktopGround;
  EXPECT_EQ(combo.widget->palette().color(QPalette::Base), QApplication::palette().color(QPalette::Highlight));
  combo.control.BackColor = kWindowGround;
  EXPECT_EQ(combo.widget->palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));
}

TEST(ChoiceListBinder, ChoicesGoBothWays) {
  ChoiceList control({"Any", "Day", "Specified"});
  std::vector<std::int32_t> clicked;
  control.OnClick = [&] { clicked.push_back(control.ListIndex()); };
  Stage stage;
  auto* const widget = stage.Add<QComboBox>(control);
  stage.Show();
  EXPECT_FALSE(widget->isEditable());
  widget->setFocus();
  QTest::keyClick(widget, Qt::Key_Down);
  EXPECT_EQ(control.ListIndex(), 1);
  Pick(*widget, 2);
  Pick(*widget, 2);
  EXPECT_EQ(clicked, (std::vector<std::int32_t>{1, 2, 2}));
  control.Choose(0);
  EXPECT_EQ(widget->currentIndex(), 0);
}

}  // namespace
}  // namespace tresmor::tests
