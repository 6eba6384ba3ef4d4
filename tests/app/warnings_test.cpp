// Messages that can be silenced, by keys alone and by mouse.
#include <gtest/gtest.h>

#include "app/dialog_world.h"
#include "desk/guarded_msg.h"

namespace tresmor::tests {
namespace {

constexpr char kProtect[] = "Protect System Folders";

class WarningsTest : public DialogTest {
 protected:
  WarningsTest() {
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
    AddFolder(At("data"));
  }
  static void OkByMouse(QWidget& window) { ClickButton(window, "OK"); }
  static void SilenceByMouse(QWidget& window) {
    ClickBox(window, kDontShowCaption);
    EXPECT_TRUE(Find<QCheckBox>(window, kDontShowCaption)->isChecked());
    ClickButton(window, "OK");
  }
  static void SilenceByKeys(QWidget& window) {
    EXPECT_TRUE(Find<QPushButton>(window, "OK")->hasFocus());
    TabTo(window, kDontShowCaption);
    Press(window, Qt::Key_Space);
    Press(window, Qt::Key_Return);
  }
  void ExpectReport() { ExpectBoxByMouse("Search completed", Report(1, 0, "2, 1 group(s)", "0, 0 group(s)")); }
  void SearchByMouse() {
    Activate();
    Click(Button("Search"));
    WaitForDialogs();
  }
  void SearchByKey() {
    Key(Qt::Key_F5);
    WaitForDialogs();
  }
};

TEST_F(WarningsTest, TextsAboutSearchingAreSilencedByTheMouse) {
  for (int round = 0; round < 2; ++round) {
    script_.Expect("Be patient", round == 0 ? OkByMouse : SilenceByMouse);
    ExpectReport();
    script_.Expect("Smart Marker", round == 0 ? OkByMouse : SilenceByMouse);
    SearchByMouse();
  }
  ExpectReport();
  SearchByMouse();
}

TEST_F(WarningsTest, AnUnprotectedSearchIsCancelledByTheMouse) {
  Activate();
  ClickBox(View(), "Protect system folders");
  ASSERT_FALSE(Frm().chkProtectWinDir.Ticked());
  script_.Expect(kProtect, [](QWidget& window) {
    ClickBox(window, kDontShowCaption);
    ClickButton(window, "Cancel");
  });
  SearchByMouse();
  EXPECT_EQ(Duplicates().Count(), 0);
  EXPECT_EQ(Frm().cmdSrch.Caption(), kSearchCaption);
  script_.Expect(kProtect, SilenceByMouse);  // a tick with Cancel is none
  script_.Expect("Be patient", OkByMouse);
  ExpectReport();
  script_.Expect("Smart Marker", OkByMouse);
  SearchByMouse();
  EXPECT_EQ(Duplicates().Count(), 2);
  script_.Expect("Be patient", OkByMouse);
  ExpectReport();
  script_.Expect("Smart Marker", OkByMouse);
  SearchByMouse();
}

TEST_F(WarningsTest, AnUnprotectedSearchIsCancelledByKeys) {
  GoTo(Find<QCheckBox>(View(), "Protect system folders"));
  Key(Qt::Key_Space);
  ASSERT_FALSE(Frm().chkProtectWinDir.Ticked());
  const std::vector<ModalScript::Answer> ways = {[](QWidget& window) {
                                                   TabTo(window, "Cancel");
                                                   Press(window, Qt::Key_Return);
                                                 },
                                                 [](QWidget& window) {
                                                   TabTo(window, "Cancel");
                                                   Press(window, Qt::Key_Space);
                                                 },
                                                 [](QWidget& window) { Press(window, Qt::Key_Escape); }};
  for (const ModalScript::Answer& cancel : ways) {
    script_.Expect(kProtect, cancel);
    SearchByKey();
    EXPECT_EQ(Duplicates().Count(), 0);
  }
  script_.Expect(kProtect, SilenceByKeys);
  script_.Expect("Be patient", SilenceByKeys);
  ExpectReport();
  script_.Expect("Smart Marker", SilenceByKeys);
  SearchByKey();
  EXPECT_EQ(Duplicates().Count(), 2);
  ExpectReport();
  SearchByKey();
}

TEST_F(WarningsTest, TheAdviceToKeepOneFileIsSilencedByKeysAndByTheMouse) {
  script_.Expect("Be patient", OkByMouse);
  ExpectReport();
  script_.Expect("Smart Marker", OkByMouse);
  SearchByMouse();
  Frm().results.tabMain.Select(2);
  const auto expectAdvice = [this](ModalScript::Answer answer) {
    script_.Expect("Tresmor", [answer](QWidget& window) {
      EXPECT_NE(Find<QLabel>(window, kGuardedMessages[kTipOrgNDup].Message), nullptr);
      for (const auto* const button : window.findChildren<QPushButton*>()) {
        EXPECT_TRUE(button->text() != "Cancel" || !button->isVisible()) << "there is nothing to cancel";
      }
      answer(window);
    });
  };
  expectAdvice([](QWidget& window) { window.close(); });
  ClickMenu("Result Files", "Mark all");
  WaitForDialogs();
  EXPECT_TRUE(Duplicates().Checked(1) && Duplicates().Checked(2));
  expectAdvice([](QWidget& window) { Press(window, Qt::Key_Escape); });
  Key(Qt::Key_G, Qt::ControlModifier);
  WaitForDialogs();
  expectAdvice(SilenceByKeys);
  Key(Qt::Key_G, Qt::ControlModifier);
  WaitForDialogs();
  Key(Qt::Key_G, Qt::ControlModifier);
}

}  // namespace
}  // namespace tresmor::tests
