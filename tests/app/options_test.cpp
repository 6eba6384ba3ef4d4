// The dialog Options by keys alone and by mouse, every control of it.
#include <gtest/gtest.h>

#include "app/dialog_world.h"
#include "desk/history.h"

namespace tresmor::tests {
namespace {

class OptionsTest : public DialogTest {
 protected:
  OptionsTest() {
    MakeFile("home/editor", "#!/bin/sh\n");
    EXPECT_EQ(chmod(At("home/editor").c_str(), 0755), 0);
    Start();
  }
  void ByMouse(ModalScript::Answer answer) { ByMenu("Menu", "Options", "Options", std::move(answer)); }
  void ByKeys(ModalScript::Answer answer) {
    script_.Expect("Options", std::move(answer));
    QTest::keyClick(OpenMenu(Qt::Key_M), Qt::Key_O);
    WaitUntil([this] { return script_.IsDone() && QApplication::activeModalWidget() == nullptr; });
  }
  static QLineEdit* Editor(const QWidget& window) { return static_cast<QLineEdit*>(ByName(window, "Default Editor")); }

  // What the next start will read.
  std::string Stored(const char* section, const char* key) {
    return IniSettings(files_, writers_->settings, FindSettingsFile(FindUserFolders()))
        .Get(kAppTitle, section, key, "none");
  }
  // A text in each of the three histories, in the settings too.
  void FillHistories() {
    IniSettings settings(files_, writers_->settings, FindSettingsFile(FindUserFolders()));
    for (const char* const section : kHistories) settings.Save(kAppTitle, section, "0", "x");
    AddFolder(At("data"));
    EXPECT_EQ(Frm().txtPath.List(0), At("data"));
    EXPECT_EQ(Frm().txtExt.List(0), "*.*");
  }
  void ExpectHistoriesGone() {
    for (const char* const section : kHistories) EXPECT_EQ(Stored(section, "0"), "none") << section;
    EXPECT_EQ(Frm().txtPath.List(0), kSeparator);
    EXPECT_EQ(Frm().txtExt.List(0), kSeparator);
    EXPECT_EQ(Frm().txtPath.Text() + Frm().txtExt.Text(), "");
  }

  static constexpr std::array kHistories = {kPathHistory, kExtHistory, kPatternHistory};
};

TEST_F(OptionsTest, EverythingIsSetByKeysAlone) {
  ByKeys([this](QWidget& window) {
    EXPECT_TRUE(Find<QCheckBox>(window, "Show Tips at Startup")->hasFocus());
    ExpectHelpByKey(window, "options.htm");
    PressLetter(window, Qt::Key_S);
    PressLetter(window, Qt::Key_D);
    TabTo(window, Editor(window));
    Press(window, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(window.focusWidget(), "/usr/bin/mine");
    TabTo(window, "OK");
    Press(window, Qt::Key_Return);
  });
  EXPECT_EQ(Button("Search")->toolTip(), "");
  View().close();
  EXPECT_EQ(Stored("Options", "Show Tips at Startup"), "0");
  EXPECT_EQ(Stored("Options", "NoTooltips"), "1");
  EXPECT_EQ(Stored("Options", "DefaultEditor"), "/usr/bin/mine");
}

TEST_F(OptionsTest, EverythingIsSetByTheMouse) {
  ByMouse([](QWidget& window) {
    ClickBox(window, "Show Tips at Startup");
    ClickBox(window, "Disable Tool tips");
    QTest::mouseDClick(Editor(window), Qt::LeftButton, {}, {5, 5});
    Editor(window)->selectAll();
    QTest::keyClicks(Editor(window), "/usr/bin/mine");
    Click(Find<QPushButton>(window, "OK"));
  });
  EXPECT_EQ(Button("Search")->toolTip(), "");
  ByMouse([](QWidget& window) {
    EXPECT_FALSE(Find<QCheckBox>(window, "Show Tips at Startup")->isChecked());
    EXPECT_EQ(Editor(window)->text(), "/usr/bin/mine");
    ClickBox(window, "Disable Tool tips");
    Click(Find<QPushButton>(window, "OK"));
  });
  EXPECT_NE(Button("Search")->toolTip(), "");
  View().close();
  EXPECT_EQ(Stored("Options", "Show Tips at Startup"), "0");
  EXPECT_EQ(Stored("Options", "NoTooltips"), "0");
  EXPECT_EQ(Stored("Options", "DefaultEditor"), "/usr/bin/mine");
}

TEST_F(OptionsTest, CancelEscapeAndTheFrameChangeNothing) {
  const std::vector<std::function<void(QWidget&)>> ways = {
      [](QWidget& window) { Click(Find<QPushButton>(window, "Cancel")); },
      [](QWidget& window) {
        TabTo(window, "Cancel");
        Press(window, Qt::Key_Space);
      },
      [](QWidget& window) { Press(window, Qt::Key_Escape); }, [](QWidget& window) { window.close(); }};
  for (const auto& leave : ways) {
    ByMouse([&](QWidget& window) {
      EXPECT_TRUE(Find<QCheckBox>(window, "Show Tips at Startup")->isChecked());
      EXPECT_NE(Editor(window)->text(), "other");
      ClickBox(window, "Show Tips at Startup");
      ClickBox(window, "Disable Tool tips");
      Editor(window)->selectAll();
      QTest::keyClicks(Editor(window), "other");
      leave(window);
    });
    EXPECT_NE(Button("Search")->toolTip(), "");
  }
}

TEST_F(OptionsTest, BrowseByKeysAndByTheMouse) {
  ByMouse([this](QWidget& window) {
    ExpectFile("Default editor", At("home/editor"));
    Click(Find<QPushButton>(window, "Browse"));
    EXPECT_EQ(Editor(window)->text().toStdString(), At("home/editor"));
    GiveKeys(window);
    Editor(window)->selectAll();
    QTest::keyClick(Editor(window), Qt::Key_Delete);
    ExpectFile("Default editor", At("home/editor"));
    PressLetter(window, Qt::Key_B);
    EXPECT_EQ(Editor(window)->text().toStdString(), At("home/editor"));
    GiveKeys(window);
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(OptionsTest, WarningsAreResetByKeysAndByTheMouse) {
  const auto expectBox = [this](auto leave) {
    script_.Expect("Reset warnings and tips", [this, leave](QWidget& box) {
      EXPECT_EQ(static_cast<QMessageBox&>(box).text(), "Warnings and tips will be shown again.");
      ExpectHelpByKey(box, "options.htm");
      leave(box);
    });
  };
  ByKeys([&](QWidget& window) {
    expectBox([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    TabTo(window, "Reset Warnings and Tips");
    Press(window, Qt::Key_Space);
    expectBox([](QWidget& box) { Click(Find<QPushButton>(box, "OK")); });
    Click(Find<QPushButton>(window, "Reset Warnings and Tips"));
    GiveKeys(window);
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(OptionsTest, HistoriesAreClearedByTheMouseAtOnce) {
  FillHistories();
  ByMouse([](QWidget& window) {
    Click(Find<QPushButton>(window, "Clear History"));
    Click(Find<QPushButton>(window, "Cancel"));
  });
  ExpectHistoriesGone();
}

TEST_F(OptionsTest, HistoriesAreClearedByKeysAtOnce) {
  FillHistories();
  ByKeys([](QWidget& window) {
    PressLetter(window, Qt::Key_H);
    Press(window, Qt::Key_Escape);
  });
  ExpectHistoriesGone();
}

}  // namespace
}  // namespace tresmor::tests
