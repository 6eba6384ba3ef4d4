#include "qt/qt_forms.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "fileops/frm_file_progress.h"
#include "qt/modal_script.h"

namespace tresmor::tests {
namespace {

struct FormsStage {
  FormsStage() { ShowActive(main); }

  QtEventQueue events;
  const Twips twips = Twips::OfApplication();
  Binder binder{events, twips};
  QWidget main;
  QtForms forms{binder};
  ModalScript script;
};

QString ShownWords(const QWidget& window) {
  QStringList words;
  for (const QLabel* const label : window.findChildren<QLabel*>()) {
    if (label->isVisible() && !label->text().isEmpty()) words += label->text();
  }
  return words.join("|");
}

struct MessageStage : FormsStage {
  std::int32_t Ask(std::int32_t icon, ModalScript::Answer answer) {
    script.Expect("Be <b>patient</b>", std::move(answer));
    return messages.MyMsgBox("It may\r\ntake <i>long</i>.", "Be <b>patient</b>", icon);
  }

  GuardedMessages messages{forms};
};

TEST(MessageForm, IsReadWordForWordAndAnsweredByMouse) {
  MessageStage stage;
  EXPECT_EQ(stage.Ask(kWarningIcon,
                      [](QWidget& window) {
                        EXPECT_EQ(ShownWords(window), "It may\ntake <i>long</i>.");
                        EXPECT_FALSE(Find<QCheckBox>(window, "Don't show this dialog again.")->isChecked());
                        Click(Find<QPushButton>(window, "Cancel"));
                      }),
            FrmMyMsgBox::kCancel);
  EXPECT_EQ(stage.Ask(kTipsIcon,
                      [](QWidget& window) {
                        for (const auto* const button : window.findChildren<QPushButton*>()) {
                          EXPECT_EQ(button->isVisible(), button->text() == "OK");
                        }
                        Find<QCheckBox>(window, "Don't show this dialog again.")->click();
                        Click(Find<QPushButton>(window, "OK"));
                      }),
            FrmMyMsgBox::kOkDontShow);
}

TEST(MessageForm, IsAnsweredByKeysAlone) {
  MessageStage stage;
  EXPECT_EQ(stage.Ask(kWarningIcon,
                      [](QWidget& window) {
                        EXPECT_EQ(window.focusWidget(), Find<QPushButton>(window, "OK"));
                        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
                      }),
            FrmMyMsgBox::kOk);
  EXPECT_EQ(stage.Ask(kWarningIcon,
                      [](QWidget& window) {
                        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
                        EXPECT_EQ(window.focusWidget(), Find<QPushButton>(window, "Cancel"));
                        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
                      }),
            FrmMyMsgBox::kCancel)
      << "Enter is the button that has the keys, not the default";
  EXPECT_EQ(stage.Ask(kWarningIcon,
                      [](QWidget& window) {
                        QTest::keyClick(window.focusWidget(), Qt::Key_Backtab);
                        EXPECT_EQ(window.focusWidget(), Find<QCheckBox>(window, "Don't show this dialog again."));
                        QTest::keyClick(window.focusWidget(), Qt::Key_Space);
                        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
                      }),
            FrmMyMsgBox::kOkDontShow);
}

TEST(MessageForm, EscapeCancelsWhereCancelShowsAndTheFrameAnswersNothing) {
  MessageStage stage;
  const auto escape = [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); };
  const auto frame = [](QWidget& window) { window.close(); };
  EXPECT_EQ(stage.Ask(kWarningIcon, escape), FrmMyMsgBox::kCancel);
  EXPECT_EQ(stage.Ask(kTipsIcon, [](QWidget& window) { Find<QPushButton>(window, "OK")->click(); }), FrmMyMsgBox::kOk);
  EXPECT_EQ(stage.Ask(kWarningIcon, frame), FrmMyMsgBox::kOk) << "the answer before";
  EXPECT_EQ(stage.Ask(kTipsIcon, escape), FrmMyMsgBox::kOk);
}

struct FileOperStage : FormsStage {
  FileOperStage() {
    form.OKButton.OnClick = [this] {
      ++yes;
      form.Visible = false;
    };
    form.CancelButton.OnClick = [this] {
      ++no;
      form.Visible = false;
    };
    form.cmdBrowse.OnClick = [this] { ++browse; };
  }
  void Ask(std::int32_t mode, const QString& title, ModalScript::Answer answer) {
    form.SetOperMode(mode, "/a/<b>\r\n/b\xFF\r\n");
    form.Visible = true;
    script.Expect(title, std::move(answer));
    forms.ShowModal(form);
  }

  FrmFileOper form;
  int yes = 0;
  int no = 0;
  int browse = 0;
};

QStringList ShownBoxes(const QWidget& window) {
  QStringList captions;
  for (const QCheckBox* const box : window.findChildren<QCheckBox*>()) {
    if (box->isVisible()) captions += box->text();
  }
  return captions;
}

const QString kYesToAll = "Respond with Yes to All for any dialog box that is displayed. ";

TEST(FileOperForm, TheDeletingOneIsReadWordForWord) {
  FileOperStage stage;
  stage.Ask(kDeleteMode, "Delete files", [](QWidget& window) {
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(),
              QStringLiteral("WARNING: Delete files at your own risk. You should make sure those files can be deleted "
                             "safely, if you are not sure, just leave it here by clicking 'No'.\n\nAre you sure to "
                             "delete the marked files?\n/a/<b>\n/b\uFFFD\n"));
    EXPECT_EQ(ShownWords(window),
              "RECOMMENDATION: It is recommended you move files to a temporary folder for keeping some time before "
              "deletion.|Move to recycle bin (*If the property of recycle bin is set to 'do not move file to recycle "
              "bin', files will be deleted permanently at any rate.)|Delete permanently");
    EXPECT_EQ(ShownBoxes(window), (QStringList{"Remove &empty directories after deleting", kYesToAll}));
    EXPECT_FALSE(window.findChild<QLineEdit*>()->isVisible());
    Click(Find<QPushButton>(window, "No"));
  });
  EXPECT_EQ(stage.no, 1);
}

TEST(FileOperForm, MovingAndCopyingHaveADestination) {
  FileOperStage stage;
  stage.Ask(kMoveMode, "Move files", [&](QWidget& window) {
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(),
              QStringLiteral("Are you sure to move the marked files to destination folder?\n/a/<b>\n/b\uFFFD\n"));
    EXPECT_EQ(ShownBoxes(window), (QStringList{"Move with directory &structure", "Open destination folder after moving",
                                               "Remove &empty directories after moving", kYesToAll}));
    auto* const destination = window.findChild<QLineEdit*>();
    QTest::keyClicks(destination, "/to");
    Click(Find<QPushButton>(window, "Browse..."));
    EXPECT_EQ(stage.browse, 1);
    Click(Find<QPushButton>(window, "Yes"));
  });
  EXPECT_EQ(stage.form.txtDestination.Text(), "/to");
  EXPECT_EQ(stage.yes, 1);
  stage.Ask(kCopyMode, "Copy files", [](QWidget& window) {
    EXPECT_EQ(ShownBoxes(window),
              (QStringList{"Copy with directory &structure", "Open destination folder after copying", kYesToAll}));
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  EXPECT_EQ(stage.no, 1);
}

TEST(FileOperForm, AClickOnTheWordsOfAChoiceChoosesIt) {
  FileOperStage stage;
  stage.Ask(kDeleteMode, "Delete files", [&](QWidget& window) {
    for (QLabel* const words : window.findChildren<QLabel*>()) {
      if (words->text() == "Delete permanently") QTest::mouseClick(words, Qt::LeftButton);
    }
    EXPECT_TRUE(stage.form.optDelPermanently.Value());
    QTest::keyClick(&window, Qt::Key_Escape);
  });
}

TEST(FileOperForm, IsUsedByKeysAlone) {
  FileOperStage stage;
  stage.Ask(kDeleteMode, "Delete files", [&](QWidget& window) {
    EXPECT_EQ(window.focusWidget(), Find<QPushButton>(window, "No"));
    QSet<QWidget*> reached;
    while (!reached.contains(window.focusWidget())) {
      QWidget* const widget = window.focusWidget();
      reached += widget;
      if (widget->accessibleName() == "Delete permanently") QTest::keyClick(widget, Qt::Key_Space);
      if (const auto* const box = qobject_cast<QCheckBox*>(widget); box != nullptr && box->text() == kYesToAll) {
        QTest::keyClick(widget, Qt::Key_Space);
      }
      QTest::keyClick(widget, Qt::Key_Tab);
    }
    EXPECT_TRUE(stage.form.optDelPermanently.Value());
    EXPECT_FALSE(stage.form.optRecycleBin.Value());
    EXPECT_TRUE(stage.form.chkYesToAll.Ticked());
    EXPECT_FALSE(stage.form.chkRemoveEmptyDir.Ticked());
    QTest::keyClick(window.focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(window.focusWidget(), Find<QPushButton>(window, "Yes"));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  });
  EXPECT_EQ(stage.yes, 1);
  EXPECT_EQ(stage.no, 0);
}

TEST(FileOperForm, EnterInTheDestinationAnswersNothing) {
  FileOperStage stage;
  stage.Ask(kMoveMode, "Move files", [&](QWidget& window) {
    QTest::keyClick(window.findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(stage.yes + stage.no + stage.browse, 0);
    window.close();
  });
  EXPECT_EQ(stage.no, 1);
}

TEST(FileProgressForm, ShowsWhileItIsVisible) {
  FormsStage stage;
  FrmFileProgress form;
  int cancelled = 0;
  form.cmdCancel.OnClick = [&] { ++cancelled; };
  stage.forms.ShowWhileVisible(form);
  form.Caption = "Deleting";
  form.Show({});
  form.Visible = true;
  QWidget* const window = QApplication::activeModalWidget();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->windowTitle(), "Deleting");
  OperationProgress progress;
  progress.files = 1;
  progress.allFiles = 2;
  progress.path = "/a<b>";
  form.Show(progress);
  EXPECT_EQ(window->findChild<QPlainTextEdit*>()->toPlainText(), "1 of 2\n/a<b>");
  EXPECT_EQ(window->findChild<QProgressBar*>()->value(), 50);
  Click(Find<QPushButton>(*window, "Cancel"));
  QTest::keyClick(window, Qt::Key_Escape);
  window->close();
  EXPECT_EQ(cancelled, 3);
  EXPECT_TRUE(window->isVisible()) << "only its work ends it";
  form.Visible = false;
  EXPECT_FALSE(window->isVisible());
}

struct ProgressStage : FormsStage {
  ProgressStage() { forms.ShowWhileVisible(form); }
  QWidget* Come() {
    form.Visible = true;
    QWidget* const window = QApplication::activeModalWidget();
    WaitUntil([&] { return window->isActiveWindow(); });
    return window;
  }

  FrmFileProgress form;
};

TEST(FileProgressForm, GivesTheKeysBackWhenItGoes) {
  ProgressStage stage;
  stage.Come();
  stage.form.Visible = false;
  WaitUntil([&] { return stage.main.isActiveWindow(); });
}

TEST(FileProgressForm, GivesTheKeysBackThatItGetsWhenItHasGone) {
  ProgressStage stage;
  QWidget* const window = stage.Come();
  stage.form.Visible = false;
  QWidget other;
  ShowActive(other);
  QEvent late(QEvent::WindowActivate);
  QCoreApplication::sendEvent(window, &late);
  WaitUntil([&] { return stage.main.isActiveWindow(); });
}

TEST(FileProgressForm, CallsNobodyBackFromAnotherProgram) {
  ProgressStage stage;
  QWidget* const window = stage.Come();
  auto last = std::make_unique<QDialog>(window);
  last->setModal(true);
  ShowActive(*last);
  last.reset();
  ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
  stage.form.Visible = false;
  QCoreApplication::processEvents();
  EXPECT_EQ(QGuiApplication::focusWindow(), nullptr);
}

TEST(FileProgressForm, F1AsksForItsTopicAndCancelsNothing) {
  FormsStage stage;
  std::vector<std::int32_t> topics;
  stage.binder.OnHelp = [&](std::int32_t topic) { topics.push_back(topic); };
  FrmFileProgress form;
  form.cmdCancel.OnClick = [] { ADD_FAILURE(); };
  form.HelpContextID = 7;
  stage.forms.ShowWhileVisible(form);
  form.Visible = true;
  QWidget* const window = QApplication::activeModalWidget();
  ASSERT_NE(window, nullptr);
  WaitUntil([&] { return window->isActiveWindow(); });
  QTest::keyClick(window, Qt::Key_F1);
  EXPECT_EQ(topics, std::vector<std::int32_t>{7});
  form.Visible = false;
}

}  // namespace
}  // namespace tresmor::tests
