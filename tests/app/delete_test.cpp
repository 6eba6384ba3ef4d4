// Deleting marked files by keys alone and by mouse, every choice of the dialog.
#include <gtest/gtest.h>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

constexpr char kNothingDeleted[] = "File operations failed. Error Code: 1223\n\nCancelled: nothing was deleted.";

class DeleteTest : public DialogTest {
 protected:
  DeleteTest() { StartWithDuplicates(); }

  static QRadioButton* Choice(const QWidget& window, const QString& beginning) {
    for (auto* const option : window.findChildren<QRadioButton*>()) {
      if (option->accessibleName().startsWith(beginning)) return option;
    }
    ADD_FAILURE() << "no choice " << beginning.toStdString();
    return nullptr;
  }
  static QRadioButton* ForGood(const QWidget& window) { return Choice(window, "Delete permanently"); }
  static QRadioButton* ToTrash(const QWidget& window) { return Choice(window, "Move to recycle bin"); }
  static void ClickWords(const QWidget& window, const QRadioButton* choice) {
    for (QLabel* const words : window.findChildren<QLabel*>()) {
      if (words->buddy() == choice) QTest::mouseClick(words, Qt::LeftButton, {}, {20, 8});
    }
  }
  bool IsInTrash(const std::string& name) const { return Exists("home/.local/share/Trash/files/" + name); }
};

TEST_F(DeleteTest, ForGoodByTheMouseAfterANo) {
  MarkByMouse("one");
  const auto choose = [](QWidget& window) {
    EXPECT_TRUE(ToTrash(window)->isChecked() != ForGood(window)->isChecked());
    Click(ForGood(window));
    EXPECT_TRUE(ForGood(window)->isChecked() && !ToTrash(window)->isChecked());
    ClickButton(window, "Yes");
  };
  const QString question = "Delete this item permanently? This can't be undone.";
  script_.Expect("Delete files", choose);
  ExpectBoxByMouse("Deleting files", question, "No");
  ExpectBoxByMouse("Tresmor", kNothingDeleted);
  ClickTask("Delete marked files");
  WaitForDialogs();
  EXPECT_TRUE(Exists("data/one") && Exists("data/two"));
  script_.Expect("Delete files", choose);
  ExpectBoxByMouse("Deleting files", question, "Yes");
  ClickMenu("Result Files", "Delete marked files");
  WaitForDialogs();
  EXPECT_FALSE(Exists("data/one"));
  EXPECT_FALSE(Exists("home/.local/share/Trash"));
  EXPECT_TRUE(Exists("data/two"));
  EXPECT_EQ(RowOf("one"), 0);
}

TEST_F(DeleteTest, ToTheTrashByTheMouseOnTheWords) {
  MarkByMouse("two");
  ByMenu("Result Files", "Delete marked files", "Delete files", [](QWidget& window) {
    ClickWords(window, ForGood(window));
    EXPECT_TRUE(ForGood(window)->isChecked());
    ClickWords(window, ToTrash(window));
    EXPECT_TRUE(ToTrash(window)->isChecked() && !ForGood(window)->isChecked());
    ClickBox(window, "Respond with Yes to All for any dialog box that is displayed. ");
    ClickButton(window, "Yes");
  });
  EXPECT_FALSE(Exists("data/two"));
  EXPECT_TRUE(IsInTrash("two"));
  EXPECT_EQ(RowOf("two"), 0);
}

TEST_F(DeleteTest, ForGoodByKeysAlone) {
  MarkByKeys("one");
  script_.Expect("Delete files", [](QWidget& window) {
    EXPECT_TRUE(Find<QPushButton>(window, "No")->hasFocus()) << "what a hasty Enter presses";
    TabTo(window, ForGood(window));
    Press(window, Qt::Key_Space);
    EXPECT_TRUE(ForGood(window)->isChecked() && !ToTrash(window)->isChecked());
    TabTo(window, "Yes");
    Press(window, Qt::Key_Return);
  });
  script_.Expect("Deleting files", [](QWidget& window) { Press(window, Qt::Key_Y, Qt::AltModifier); });
  Key(Qt::Key_D, Qt::ControlModifier);
  WaitForDialogs();
  EXPECT_FALSE(Exists("data/one"));
  EXPECT_FALSE(Exists("home/.local/share/Trash"));
}

TEST_F(DeleteTest, ToTheTrashByKeysAloneWithTheEmptiedFolder) {
  MarkByKeys("one");
  MarkByKeys("two");
  InDialog("Delete files", Qt::Key_D, Qt::ControlModifier, [](QWidget& window) {
    TabTo(window, ForGood(window));
    Press(window, Qt::Key_Space);
    TabTo(window, ToTrash(window));
    Press(window, Qt::Key_Space);
    EXPECT_TRUE(ToTrash(window)->isChecked() && !ForGood(window)->isChecked());
    PressLetter(window, Qt::Key_E);
    EXPECT_TRUE(Find<QCheckBox>(window, "Remove empty directories after deleting")->isChecked());
    TabTo(window, "Respond with Yes to All for any dialog box that is displayed. ");
    Press(window, Qt::Key_Space);
    QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier);
  });
  EXPECT_TRUE(IsInTrash("one") && IsInTrash("two"));
  EXPECT_FALSE(Exists("data"));
  EXPECT_EQ(Duplicates().Count(), 0);
}

TEST_F(DeleteTest, WithoutMarksNothingIsAsked) {
  const QString text = "Please mark files before deletion.";
  ExpectBoxByMouse("Tresmor", text);
  ClickMenu("Result Files", "Delete marked files");
  WaitForDialogs();
  InDialog("Tresmor", Qt::Key_D, Qt::ControlModifier, [&](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text(), text);
    QTest::keyClick(&window, Qt::Key_Return);
  });
}

}  // namespace
}  // namespace tresmor::tests
