// Steps of the user's that change many rows of a list.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <string>

#include "qt/list_stage.h"

namespace tresmor {
namespace {

class ListWidgetRowsTest : public testing::Test {
 protected:
  ListWidgetRowsTest() {
    list.AddColumn({"Name", 2540});
    for (const char* const name : {"Zebra", "apple", "Ärger", "ähre", "banana", "a\x80"}) list.AddRow(name);
    widget.show();
    Press(Qt::Key_Home);
    list.Listen([this](const Notice& notice) { notices += notice.what == Notice::What::RowsChanged ? 1 : 0; });
  }

  void Press(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &press);
  }
  void Type(const QString& text) { Press(0, {}, text); }
  std::string Rows(bool (ListView::*has)(std::int32_t) const) const {
    std::string rows;
    for (std::int32_t row = 1; row <= list.Count(); ++row) rows += (list.*has)(row) ? 'x' : '-';
    return rows;
  }
  std::string Selected() const { return Rows(&ListView::Selected); }
  std::string Marked() const { return Rows(&ListView::Checked); }

  ListView list;
  QtEventQueue events;
  const Twips twips = Twips::OfApplication();
  const Binder binder{events, twips};
  ListWidget widget{list, binder, {.checkBoxes = true, .multiSelect = true, .icons = {}, .hoverText = {}}, nullptr};
  int notices = 0;
};

// One before and one after, however many rows it is.
constexpr int kOneChange = 2;

TEST_F(ListWidgetRowsTest, ManyRowsAreSelectedInOneChange) {
  Press(Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(Selected(), "xxxxxx");
  EXPECT_EQ(notices, kOneChange);
  EXPECT_EQ(list.SelectedItem(), 6) << "where the range ended";
  notices = 0;
  Press(Qt::Key_Home);
  EXPECT_EQ(Selected(), "x-----");
  EXPECT_EQ(notices, kOneChange);
}

TEST_F(ListWidgetRowsTest, ManyRowsAreMarkedInOneChange) {
  Press(Qt::Key_Down);
  Press(Qt::Key_End, Qt::ShiftModifier);
  list.SetChecked(4, true);
  notices = 0;
  int told = 0;
  list.OnItemCheck = [&] { ++told; };
  Press(Qt::Key_Space);
  EXPECT_EQ(Marked(), "-xxxxx");
  Press(Qt::Key_Space);
  EXPECT_EQ(Marked(), "------");
  EXPECT_EQ(notices, 2 * kOneChange);
  EXPECT_EQ(told, 2);
}

TEST_F(ListWidgetRowsTest, LettersGoToTheNextNameInAnyCase) {
  const tests::Typing slowly(tests::kOneByOne);
  Type("A");
  EXPECT_EQ(list.SelectedItem(), 2);
  Type("a");
  EXPECT_EQ(list.SelectedItem(), 6) << "a name that is no text all through";
  Type("Z");
  EXPECT_EQ(list.SelectedItem(), 1) << "around the end";
  Type(QString::fromUtf8("ä"));
  EXPECT_EQ(list.SelectedItem(), 3);
  Type(QString::fromUtf8("Ä"));
  EXPECT_EQ(list.SelectedItem(), 4);
  Type("q");
  EXPECT_EQ(list.SelectedItem(), 4) << "no name begins so";
}

}  // namespace
}  // namespace tresmor
