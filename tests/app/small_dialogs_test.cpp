// The tip of the day, the box about the program and the reminder of new versions, by keys alone and by mouse.
#include <gtest/gtest.h>

#include "app/dialog_world.h"
#include "desk/options.h"

namespace tresmor::tests {
namespace {

class SmallDialogsTest : public DialogTest {
 protected:
  // A program whose own folder has these tips, of which one comes at the start, and the help.
  void StartWithTips(const char* tips) {
    MakeFolder("program");
    MakeFile("program/TIPOFDAY.TXT", tips);
    MakeLink("program/help", BuildFolder() + "/help");
    StartIn(At("program"));
    tip_ = WindowNamed("Tip of the Day");
    ASSERT_NE(tip_, nullptr);
    GiveKeys(*tip_);
  }
  std::string Stored(const char* key) {
    return IniSettings(files_, writers_->settings, FindSettingsFile(FindUserFolders()))
        .Get(kAppTitle, kOptionsSection, key, "none");
  }
  // As if the last question about new versions had been long ago.
  void MakeSettings(const std::string& lines) {
    for (const char* const folder : {"home/.config", "home/.config/tresmor"}) MakeFolder(folder);
    MakeFile("home/.config/tresmor/tresmor.ini", "[Tresmor/Options]\n" + lines);
  }
  QWidget* tip_ = nullptr;
};

// --- The tip of the day. It comes at the start alone.

TEST_F(SmallDialogsTest, TheTipByKeysAlone) {
  StartWithTips("only one\n");
  EXPECT_EQ(Find<QLabel>(*tip_, "only one")->text(), "only one");
  EXPECT_TRUE(Find<QPushButton>(*tip_, "OK")->hasFocus());
  ExpectHelpByKey(*tip_, "options.htm");
  PressLetter(*tip_, Qt::Key_S);
  EXPECT_EQ(Stored("Show Tips at Startup"), "0");
  TabTo(*tip_, "Show Tips at Startup");
  Press(*tip_, Qt::Key_Space);
  EXPECT_EQ(Stored("Show Tips at Startup"), "1");
  PressLetter(*tip_, Qt::Key_N);
  EXPECT_NE(Find<QLabel>(*tip_, "only one"), nullptr);
  TabTo(*tip_, "OK");
  Press(*tip_, Qt::Key_Return);
  EXPECT_EQ(WindowNamed("Tip of the Day"), nullptr);
}

TEST_F(SmallDialogsTest, NextTipShowsAnotherOneByKeyAndByTheMouse) {
  StartWithTips("the first\nthe second\n");
  const auto shown = [this] {
    for (const QLabel* const label : tip_->findChildren<QLabel*>()) {
      if (label->text().startsWith("the ")) return label->text();
    }
    return QString();
  };
  for (const QString tip : {"the first", "the second", "the first"}) {
    while (shown() != tip) Click(Find<QPushButton>(*tip_, "Next Tip"));
  }
  TabTo(*tip_, "Next Tip");
  while (shown() != "the second") Press(*tip_, Qt::Key_Space);
  Press(*tip_, Qt::Key_Escape);
  EXPECT_EQ(WindowNamed("Tip of the Day"), nullptr);
}

TEST_F(SmallDialogsTest, TheTipByTheMouseBesideTheWindow) {
  StartWithTips("only one\n");
  ClickBox(*tip_, "Show Tips at Startup");
  EXPECT_EQ(Stored("Show Tips at Startup"), "0");
  Click(Button("Add>"));
  EXPECT_EQ(Frm().lstPath.Count(), 1) << "the window can be used meanwhile";
  Click(Find<QPushButton>(*tip_, "OK"));
  EXPECT_EQ(WindowNamed("Tip of the Day"), nullptr);
  View().close();
  EXPECT_EQ(Stored("Show Tips at Startup"), "1") << "the options know nothing of the box";
}

TEST_F(SmallDialogsTest, WhoWantsNoTipsGetsNone) {
  MakeSettings("Show Tips at Startup=0\n");
  Start();
  EXPECT_EQ(WindowNamed("Tip of the Day"), nullptr);
}

// --- About

TEST_F(SmallDialogsTest, AboutByKeysAndByTheMouse) {
  Start();
  const auto expectAbout = [](QWidget& window) {
    const QString text = static_cast<QMessageBox&>(window).text();
    EXPECT_TRUE(text.startsWith("Tresmor Ver. ")) << text.toStdString();
    EXPECT_TRUE(text.contains("\nWeb site: https://tresmor.example\nEmail: support@tresmor.example"));
  };
  ByMenu("Help", "About Tresmor", "About Tresmor", [&](QWidget& window) {
    expectAbout(window);
    Click(Find<QPushButton>(window, "OK"));
  });
  script_.Expect("About Tresmor", [&](QWidget& window) {
    expectAbout(window);
    ExpectHelpByKey(window, "overview.htm");
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  QWidget* const menu = OpenMenu(Qt::Key_H);
  QTest::keyClick(menu, Qt::Key_Up);  // the last item
  QTest::keyClick(menu, Qt::Key_Return);
  WaitUntil([this] { return script_.IsDone() && QApplication::activeModalWidget() == nullptr; });
}

// --- The reminder

TEST_F(SmallDialogsTest, TheReminderIsAnsweredByTheMouse) {
  MakeSettings("LastUpdateCheck=01 Jan 2001\nShow Tips at Startup=0\n");
  script_.Expect("Check new version", [](QWidget& window) { Click(Find<QPushButton>(window, "No")); });
  Start();
  EXPECT_TRUE(script_.IsDone());
  View().close();
  EXPECT_NE(Stored("LastUpdateCheck"), "01 Jan 2001");
}

TEST_F(SmallDialogsTest, TheReminderIsAnsweredByKey) {
  MakeOpener();
  MakeSettings("LastUpdateCheck=01 Jan 2001\nShow Tips at Startup=0\n");
  script_.Expect("Check new version", [this](QWidget& window) {
    ExpectHelpByKey(window, "overview.htm");
    QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier);
  });
  Start();
  EXPECT_TRUE(script_.IsDone());
  EXPECT_TRUE(Opened().starts_with("https://tresmor.example/ChkUpdate.asp?Major="));
}

}  // namespace
}  // namespace tresmor::tests
