// Moving and copying marked files by keys alone and by mouse, and the choice of where they go.
#include <gtest/gtest.h>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

class MoveCopyTest : public DialogTest {
 protected:
  MoveCopyTest() {
    MakeFolder("data/own");
    MakeFile("data/own/alone", "more words");
    MakeFile("data/same", "more words");
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    MakeFolder("home/there");
    MakeOpener();
    Start();
    AddFolder(At("data"));
    Search(Report(3, 0, "4, 2 group(s)", "0, 0 group(s)"));
    Frm().results.tabMain.Select(2);
  }
  static QLineEdit* Destination(const QWidget& window) {
    return static_cast<QLineEdit*>(ByName(window, "Destination"));
  }
  static void TypeDestination(QWidget& window, const std::string& folder) {
    TabTo(window, Destination(window));
    Press(window, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(window.focusWidget(), QString::fromStdString(folder));
  }
  void ExpectOnlyMoved(const std::string& from, const std::string& to) {
    EXPECT_FALSE(Exists(from));
    EXPECT_TRUE(Exists(to));
    EXPECT_EQ(Duplicates().Count(), 3) << "its row went with it";
  }
};

constexpr char kYesToAll[] = "Respond with Yes to All for any dialog box that is displayed. ";

TEST_F(MoveCopyTest, MovingByKeysAlone) {
  MarkByKeys("one");
  InDialog("Move files", Qt::Key_M, Qt::ControlModifier, [this](QWidget& window) {
    TypeDestination(window, At("home/there"));
    for (const char* const box : {"Open destination folder after moving", kYesToAll}) {
      TabTo(window, box);
      Press(window, Qt::Key_Space);
      EXPECT_TRUE(Find<QCheckBox>(window, box)->isChecked());
    }
    TabTo(window, "Yes");
    Press(window, Qt::Key_Return);
  });
  ExpectOnlyMoved("data/one", "home/there/one");
  EXPECT_EQ(Opened(), At("home/there"));
}

TEST_F(MoveCopyTest, MovingByTheMouseWithItsFolders) {
  MarkByMouse("alone");
  script_.Expect("Move files", [this](QWidget& window) {
    script_.Expect("Select destination folder", NameByMouse("there", "Choose"));
    ClickButton(window, "Browse...");
    EXPECT_EQ(Destination(window)->text().toStdString(), At("home/there"));
    GiveKeys(window);
    for (const char* const box : {"Move with directory structure", "Open destination folder after moving",
                                  "Remove empty directories after moving", kYesToAll}) {
      ClickBox(window, box);
      EXPECT_TRUE(Find<QCheckBox>(window, box)->isChecked());
    }
    ClickButton(window, "Yes");
  });
  ClickTask("Move marked files");
  WaitForDialogs();
  ExpectOnlyMoved("data/own/alone", "home/there" + At("data/own/alone"));
  EXPECT_FALSE(Exists("data/own")) << "nothing is left in it";
  EXPECT_EQ(Opened(), At("home/there"));
}

TEST_F(MoveCopyTest, CopyingByTheMouse) {
  MarkByMouse("one");
  script_.Expect("Copy files", [this](QWidget& window) {
    ExpectBoxByMouse("Tresmor", "Please select a destination folder by clicking Browse button.");
    ClickButton(window, "Yes");
    EXPECT_TRUE(window.isVisible());
    GiveKeys(window);
    EXPECT_TRUE(Destination(window)->hasFocus());
    script_.Expect("Select destination folder", NameByMouse("there", "Choose"));
    ClickButton(window, "Browse...");
    GiveKeys(window);
    ClickBox(window, "Open destination folder after copying");
    ClickButton(window, "Yes");
  });
  ClickMenu("Result Files", "Copy marked files");
  WaitForDialogs();
  EXPECT_TRUE(Exists("data/one") && Exists("home/there/one"));
  EXPECT_EQ(Duplicates().Count(), 4);
  EXPECT_EQ(Opened(), At("home/there"));
}

TEST_F(MoveCopyTest, TheDestinationIsChosenOrLeftByKeysAndByTheMouse) {
  MarkByMouse("one");
  const auto leave = [](QWidget& window) { ClickButton(window, "Cancel"); };
  InDialog("Move files", Qt::Key_M, Qt::ControlModifier, [&](QWidget& window) {
    script_.Expect("Select destination folder", NameByKeys(At("home/there")));
    PressLetter(window, Qt::Key_B);
    EXPECT_EQ(Destination(window)->text().toStdString(), At("home/there"));
    GiveKeys(window);
    script_.Expect("Select destination folder", leave);
    ClickButton(window, "Browse...");
    GiveKeys(window);
    script_.Expect("Select destination folder", [](QWidget& dialog) { Press(dialog, Qt::Key_Escape); });
    TabTo(window, "Browse...");
    Press(window, Qt::Key_Space);
    GiveKeys(window);
    EXPECT_EQ(Destination(window)->text().toStdString(), At("home/there"));
    window.close();
  });
  EXPECT_TRUE(Exists("data/one"));
  EXPECT_FALSE(Exists("home/there/one"));
}

TEST_F(MoveCopyTest, NothingHappensAfterANo) {
  MarkByKeys("one");
  const std::vector<ModalScript::Answer> ways = {[](QWidget& window) { ClickButton(window, "No"); },
                                                 [](QWidget& window) { Press(window, Qt::Key_Escape); },
                                                 [](QWidget& window) { PressLetter(window, Qt::Key_N); }};
  for (const ModalScript::Answer& leave : ways) {
    for (const QString title : {"Move files", "Copy files"}) {
      ByMenu("Result Files", title.section(' ', 0, 0) + " marked files", title, [&](QWidget& window) {
        TypeDestination(window, At("home/there"));
        leave(window);
      });
    }
  }
  EXPECT_TRUE(Exists("data/one"));
  EXPECT_FALSE(Exists("home/there/one"));
}

// --- The folder of a search, which the same kind of dialog asks for

TEST_F(MoveCopyTest, AFolderToSearchIsSelectedByTheMouse) {
  static_cast<QComboBox*>(Named("Folder"))->setFocus();
  Key(Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(View().focusWidget(), QString::fromStdString(At("home")));
  script_.Expect("Select a folder", NameByMouse("there", "Choose"));
  ClickButton(View(), "Browse...");
  WaitForDialogs();
  EXPECT_EQ(FolderField()->text().toStdString(), At("home/there"));
  script_.Expect("Select a folder", [](QWidget& window) { ClickButton(window, "Cancel"); });
  ClickButton(View(), "Browse...");
  EXPECT_EQ(FolderField()->text().toStdString(), At("home/there"));
}

TEST_F(MoveCopyTest, AFolderToSearchIsSelectedByKeys) {
  GoTo(Button("Browse..."));
  script_.Expect("Select a folder", NameByKeys(At("home/there")));
  Key(Qt::Key_Space);
  WaitForDialogs();
  EXPECT_EQ(FolderField()->text().toStdString(), At("home/there"));
  script_.Expect("Select a folder", [](QWidget& window) { Press(window, Qt::Key_Escape); });
  Key(Qt::Key_Return);
  EXPECT_EQ(FolderField()->text().toStdString(), At("home/there"));
}

}  // namespace
}  // namespace tresmor::tests
