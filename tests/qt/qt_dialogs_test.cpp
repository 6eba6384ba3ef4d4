#include "qt/qt_dialogs.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QWindow>
#include <filesystem>

#include "qt/display_text.h"
#include "qt/modal_script.h"
#include "support/temp_tree.h"

namespace tresmor::tests {
namespace {

class QtDialogsTest : public TempTree {
 protected:
  QtDialogsTest() { ShowActive(main_); }

  static QLineEdit* NameIn(QWidget& window) { return window.findChild<QLineEdit*>("fileNameEdit"); }
  static void Type(QWidget& window, const QString& name) {
    NameIn(window)->setText(name);
    QTest::keyClick(NameIn(window), Qt::Key_Return);
  }
  static std::string FolderOf(const QWidget& window) {
    return static_cast<const QFileDialog&>(window).directory().path().toStdString() + "/";
  }
  void ExpectCancel(const QString& title) {
    script_.Expect(title, [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  }

  QWidget main_;
  QtEventQueue events_;
  const Twips twips_ = Twips::OfApplication();
  Binder binder_{events_, twips_};
  QtDialogs dialogs_{binder_};
  ModalScript script_;
};

TEST_F(QtDialogsTest, ABoxTellsWordsInLinesAndNamesInOne) {
  script_.ExpectBox("Title <i>", QStringLiteral("Can't open\n'<b>a\u240Ab\uFFFD' & more"));
  const BoxText text = BoxText("Can't open\r\n'").Name("<b>a\nb\xFF").Words("' & more");
  EXPECT_EQ(dialogs_.MessageBox(text, BoxIcon::Critical, "Title <i>", BoxButtons::Ok), BoxAnswer::Ok);
}

TEST_F(QtDialogsTest, ABoxWithoutATitleHasTheProgramsName) {
  script_.ExpectBox("Tresmor", "Please mark files before deletion.");
  EXPECT_EQ(dialogs_.MessageBox("Please mark files before deletion.", BoxIcon::None, "", BoxButtons::Ok),
            BoxAnswer::Ok);
}

TEST_F(QtDialogsTest, WhatBelongsToTheMainWindowOwnsNoDialog) {
  QDialog tip;
  tip.winId();
  tip.windowHandle()->setTransientParent(main_.windowHandle());
  ShowActive(tip);
  EXPECT_EQ(ModalOwner(), &main_);
  main_.hide();
  EXPECT_EQ(ModalOwner(), &tip);
}

struct BoxCase {
  BoxButtons buttons;
  QString button;  // that is clicked; none for the Escape key
  BoxAnswer answer;
};

TEST_F(QtDialogsTest, EachButtonIsItsAnswerAndEscapeTheLeast) {
  const std::vector<BoxCase> cases = {{BoxButtons::YesNo, "Yes", BoxAnswer::Yes},
                                      {BoxButtons::YesNo, "No", BoxAnswer::No},
                                      {BoxButtons::YesNo, "", BoxAnswer::No},
                                      {BoxButtons::OkCancel, "OK", BoxAnswer::Ok},
                                      {BoxButtons::OkCancel, "Cancel", BoxAnswer::Cancel},
                                      {BoxButtons::OkCancel, "", BoxAnswer::Cancel},
                                      {BoxButtons::YesNoCancel, "Yes", BoxAnswer::Yes},
                                      {BoxButtons::YesNoCancel, "No", BoxAnswer::No},
                                      {BoxButtons::YesNoCancel, "", BoxAnswer::Cancel},
                                      {BoxButtons::Ok, "OK", BoxAnswer::Ok},
                                      {BoxButtons::Ok, "", BoxAnswer::Ok}};
  for (const BoxCase& box : cases) {
    script_.Expect("Title", [&](QWidget& window) {
      EXPECT_EQ(window.parentWidget(), &main_);
      if (box.button.isEmpty()) {
        QTest::keyClick(&window, Qt::Key_Escape);
      } else {
        Click(Find<QPushButton>(window, box.button));
      }
    });
    EXPECT_EQ(dialogs_.MessageBox("?", BoxIcon::Question, "Title", box.buttons), box.answer)
        << box.button.toStdString();
  }
}

TEST_F(QtDialogsTest, AnInputBoxGivesBackTheExactBytes) {
  const std::string odd = "a\xFF\nb";
  script_.Expect("Rename", [](QWidget& window) {
    const auto* const label = window.findChild<QLabel*>();
    EXPECT_EQ(label->text(), QStringLiteral("Please type a new file name for \n/<b>x</b>\u240A && y"));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    auto* const field = window.findChild<QLineEdit*>();
    field->setCursorPosition(0);
    QTest::keyClicks(field, "new ");
    QTest::keyClick(field, Qt::Key_Return);
  });
  const BoxText prompt = BoxText("Please type a new file name for \r\n").Name("/<b>x</b>\n & y");
  EXPECT_EQ(dialogs_.InputBox(prompt, "Rename", odd), "new " + odd);
  script_.Expect("Rename", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
  EXPECT_EQ(dialogs_.InputBox("?", "Rename", "kept"), "");
}

TEST_F(QtDialogsTest, BoxesOfLongNamesStayOnAScreen) {
  const auto expect = [this](const QString& title) {
    script_.Expect(title, [](QWidget& window) {
      EXPECT_LT(window.width(), 1000);
      EXPECT_LT(window.height(), 700);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  const std::string path = "/" + std::string(255, 'w') + "/" + std::string(255, 'w');
  expect("Rename");
  dialogs_.InputBox(BoxText("Please type a new file name for \r\n").Name(path), "Rename", "w");
  for (const std::string& name : {path, std::string(9000, 'w')}) {
    expect("Path");
    dialogs_.MessageBox(BoxText("Path '").Name(name).Words("' isn't there."), BoxIcon::None, "Path", BoxButtons::Ok);
  }
}

TEST_F(QtDialogsTest, F1InABoxIsAboutTheWindowThatItStandsOver) {
  std::vector<std::int32_t> topics;
  binder_.OnHelp = [&](std::int32_t topic) { topics.push_back(topic); };
  FileQuestion question;
  question.title = "File";
  question.filters = {{"All Files", "*.*"}};
  const auto expectAsking = [this](const QString& title) {
    script_.Expect(title, [](QWidget& window) {
      QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, Qt::Key_F1);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  const auto askAll = [&] {
    for (const char* const title : {"Box", "Input", "File", "Folder"}) expectAsking(title);
    dialogs_.MessageBox("?", BoxIcon::None, "Box", BoxButtons::OkCancel);
    dialogs_.InputBox("?", "Input", "");
    dialogs_.OpenFileDlg(question);
    dialogs_.BrowseFolder("Folder", root_);
  };
  askAll();
  EXPECT_EQ(topics, std::vector<std::int32_t>(4, 0)) << "the window has no topic";
  topics.clear();
  Frame form;
  form.HelpContextID = 7;
  binder_.BindHelp(form, main_);
  askAll();
  EXPECT_EQ(topics, std::vector<std::int32_t>(4, 7));
}

FileQuestion OpenQuestion(const std::string& folder) {
  FileQuestion question;
  question.title = "Load";
  question.filters = {{"Session (*.Tresmor)", "*.Tresmor"}, {"All Files", "*.*"}};
  question.defaultExtension = "Tresmor";
  question.startFolder = folder;
  return question;
}

TEST_F(QtDialogsTest, AFileToOpenMayBeTypedWithoutItsExtension) {
  MakeFile("a.Tresmor");
  MakeFile("plain");
  const FileQuestion question = OpenQuestion(At(""));
  script_.Expect("Load", [this](QWidget& window) {
    auto& dialog = static_cast<QFileDialog&>(window);
    EXPECT_EQ(dialog.nameFilters(), (QStringList{"Session (*.Tresmor)", "All Files (*)"}));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(FolderOf(window), At(""));
    Type(window, "a");
  });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("a.Tresmor"));
  script_.Expect("Load", [](QWidget& window) { Type(window, "plain"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("plain"));
  ExpectCancel("Load");
  EXPECT_EQ(dialogs_.OpenFileDlg(question), std::nullopt);
}

TEST_F(QtDialogsTest, AFileToOpenThatIsNotThereIsAskedAboutOnceMore) {
  const FileQuestion question = OpenQuestion(At(""));
  const auto expectTyped = [this](const QString& name, const std::string& asked, const QString& answer) {
    script_.Expect("Load", [name](QWidget& window) { Type(window, name); });
    script_.ExpectBox("Load", QString::fromStdString(At(asked) + " doesn't exist.\nDo you want to create it?"), answer);
  };
  expectTyped("gone", "gone.Tresmor", "No");
  ExpectCancel("Load");
  EXPECT_EQ(dialogs_.OpenFileDlg(question), std::nullopt);
  expectTyped("gone", "gone.Tresmor", "Yes");
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("gone.Tresmor"));
  expectTyped("gone.txt", "gone.txt", "Yes");
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("gone.txt"));
}

TEST_F(QtDialogsTest, AFileBehindALinkIsNamedByTheLink) {
  MakeFolder("real");
  MakeFile("real/there.Tresmor");
  ASSERT_EQ(symlink(At("real/there.Tresmor").c_str(), At("link.Tresmor").c_str()), 0);
  script_.Expect("Load", [](QWidget& window) {
    EXPECT_TRUE(static_cast<QFileDialog&>(window).testOption(QFileDialog::DontResolveSymlinks));
    const auto* const files = window.findChild<QListView*>("listView");
    QModelIndex link;
    WaitUntil([&] {
      const QAbstractItemModel& model = *files->model();
      const QModelIndexList found = model.match(model.index(0, 0, files->rootIndex()), Qt::DisplayRole, "link.Tresmor");
      link = found.value(0);
      return link.isValid();
    });
    QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, files->visualRect(link).center());
    Click(Find<QPushButton>(window, "Open"));
  });
  EXPECT_EQ(dialogs_.OpenFileDlg(OpenQuestion(At(""))), At("link.Tresmor"));
}

FileQuestion SaveQuestion(const std::string& name) {
  FileQuestion question;
  question.mode = FileDialogMode::Save;
  question.title = "Save";
  question.filters = {{"CSV", "*.csv"}};
  question.defaultExtension = "csv";
  question.startName = name;
  return question;
}

// For a file, a desktop's dialog would ask about replacing the name as it was typed, not the one with its extension.
TEST_F(QtDialogsTest, OnlyFoldersMayBeAskedForByTheDesktop) {
  const auto expectOwn = [this](const QString& title, bool own) {
    script_.Expect(title, [own](QWidget& window) {
      EXPECT_EQ(static_cast<QFileDialog&>(window).testOption(QFileDialog::DontUseNativeDialog), own);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  for (const FileQuestion& question : {OpenQuestion(At("")), SaveQuestion(At("a.csv"))}) {
    expectOwn(QString::fromStdString(question.title), true);
    EXPECT_EQ(dialogs_.OpenFileDlg(question), std::nullopt);
  }
  expectOwn("Select", false);
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("")), std::nullopt);
}

// As a desktop gives one whose name it can't tell, when its dialog has closed already.
TEST_F(QtDialogsTest, AFolderThatCantBeToldIsRefusedAfterItsDialog) {
  for (const char* name : {"odd\uFFFD", "exact\uFFFD", "plain"}) MakeFolder(name);
  // A desktop's dialog tells such a name of a folder that has another.
  script_.Expect("Select", [this](QWidget& window) {
    QObject::connect(static_cast<QDialog*>(&window), &QDialog::finished,
                     [this] { std::filesystem::remove(At("odd\uFFFD")); });
    Type(window, "odd\uFFFD");
  });
  script_.Expect("Select", [this](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text(),
              "This dialog can't choose a folder whose name isn't UTF-8:\n" + QString::fromStdString(At("odd\uFFFD")));
    EXPECT_EQ(window.parentWidget(), &main_);
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  script_.Expect("Select", [](QWidget& window) { Type(window, "plain"); });
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("")), At("plain"));
  script_.Expect("Select", [](QWidget& window) { Type(window, "exact\uFFFD"); });
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("")), At("exact\uFFFD"));
}

// The toolkit would take them for marks around the names of several files.
TEST_F(QtDialogsTest, QuotationMarksArePartOfAName) {
  MakeFile("x.csv");
  const FileQuestion question = SaveQuestion(At(""));
  script_.Expect("Save", [](QWidget& window) { Type(window, R"(my "x")"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At(R"(my "x".csv)"));
  script_.Expect("Save", [](QWidget& window) { Type(window, R"(~/"x")"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), QDir::homePath().toStdString() + R"(/"x".csv)");
  script_.Expect("Save", [](QWidget& window) { Type(window, R"("x.csv")"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At(R"("x.csv")"));
  script_.Expect("Save", [this](QWidget& window) { Type(window, QString::fromStdString(At(R"(x".csv)"))); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At(R"(x".csv)"));
}

TEST_F(QtDialogsTest, AFileWithQuotationMarksIsReplacedOnlyIfToldSo) {
  MakeFile(R"(my "x".csv)");
  const QString replace = QString::fromStdString(At(R"(my "x".csv)")) + " already exists.\nDo you want to replace it?";
  script_.Expect("Save", [](QWidget& window) { Type(window, R"(my "x")"); });
  script_.ExpectBox("Save", replace, "No");
  ExpectCancel("Save");
  EXPECT_EQ(dialogs_.OpenFileDlg(SaveQuestion(At(""))), std::nullopt);
  script_.Expect("Save", [](QWidget& window) { QTest::keyClick(NameIn(window), Qt::Key_Return); });
  script_.ExpectBox("Save", replace, "Yes");
  EXPECT_EQ(dialogs_.OpenFileDlg(SaveQuestion(At(R"(my "x".csv)"))), At(R"(my "x".csv)"));
}

TEST_F(QtDialogsTest, AFileToOpenMayHaveQuotationMarks) {
  MakeFile("x.Tresmor");
  MakeFile(R"(my "x".Tresmor)");
  script_.Expect("Load", [](QWidget& window) { Type(window, R"(my "x")"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(OpenQuestion(At(""))), At(R"(my "x".Tresmor)"));
}

TEST_F(QtDialogsTest, AFolderMayHaveQuotationMarks) {
  MakeFolder("x");
  MakeFolder(R"(my "x")");
  script_.Expect("Select", [](QWidget& window) { Type(window, R"(my "x")"); });
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("")), At(R"(my "x")"));
  script_.Expect("Select", [](QWidget& window) { Type(window, R"(no "x")"); });
  script_.ExpectBox("Select", "There is no folder of this name:\n" + QString::fromStdString(At(R"(no "x")")));
  ExpectCancel("Select");
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("")), std::nullopt);
  script_.Expect("Save", [this](QWidget& window) {
    Type(window, R"(my "x")");
    EXPECT_EQ(FolderOf(window), At(R"(my "x"/)"));
    EXPECT_EQ(NameIn(window)->text(), "");
    Type(window, "a");
  });
  EXPECT_EQ(dialogs_.OpenFileDlg(SaveQuestion(At(""))), At(R"(my "x"/a.csv)"));
}

TEST_F(QtDialogsTest, AFileToBeginAtMeansItsFolder) {
  MakeFolder("sub");
  MakeFile("sub/file");
  const auto expectAt = [this](const QString& title, const std::string& folder) {
    script_.Expect(title, [folder](QWidget& window) {
      EXPECT_EQ(FolderOf(window), folder);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  expectAt("Load", At("sub/"));
  EXPECT_EQ(dialogs_.OpenFileDlg(OpenQuestion(At("sub/file"))), std::nullopt);
  expectAt("Select", At("sub/"));
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub/file")), std::nullopt);
}

TEST_F(QtDialogsTest, AFileToSaveMayBeNewAndIsReplacedOnlyIfToldSo) {
  MakeFile("old.csv");
  const FileQuestion question = SaveQuestion(At("old.csv"));
  const auto type = [](const QString& text) {
    return [text](QWidget& window) {
      auto* const name = window.findChild<QLineEdit*>("fileNameEdit");
      EXPECT_EQ(name->text(), "old.csv");
      // The folder is listed by a thread, and what was proposed is selected there then.
      const auto* const files = window.findChild<QListView*>("listView");
      WaitUntil([&] { return files->selectionModel()->hasSelection() && name->hasFocus(); });
      name->setText(text);
      QTest::keyClick(name, Qt::Key_Return);
    };
  };
  script_.Expect("Save", type("new"));
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("new.csv"));
  script_.Expect("Save", type("old"));
  script_.Expect("Save", [](QWidget& window) { Click(Find<QPushButton>(window, "Yes")); });
  EXPECT_EQ(dialogs_.OpenFileDlg(question), At("old.csv"));
  ExpectCancel("Save");
  EXPECT_EQ(dialogs_.OpenFileDlg(question), std::nullopt);
}

TEST_F(QtDialogsTest, AProposalIsMadeInTheNearestFolderThatIsThere) {
  MakeFolder("sub");
  script_.Expect("Save", [this](QWidget& window) {
    EXPECT_EQ(FolderOf(window), At("sub/"));
    EXPECT_EQ(NameIn(window)->text(), "old.csv");
    QTest::keyClick(&window, Qt::Key_Escape);
  });
  EXPECT_EQ(dialogs_.OpenFileDlg(SaveQuestion(At("sub/gone/deeper/old.csv"))), std::nullopt);
}

TEST_F(QtDialogsTest, ANameThatTheDialogCannotTellIsRefused) {
  MakeFile("a\uFFFD.csv");
  MakeFile("a?.csv");
  script_.Expect("Save", [](QWidget& window) {
    EXPECT_EQ(EditedBytes(NameIn(window)->text()), "a\xFF.csv");
    QTest::keyClick(NameIn(window), Qt::Key_Return);
  });
  script_.ExpectBox(
      "Save", "This dialog can't choose a file whose name isn't UTF-8:\n" + QString::fromStdString(At("a\uFFFD.csv")));
  script_.Expect("Save", [](QWidget& window) { Type(window, "b"); });
  EXPECT_EQ(dialogs_.OpenFileDlg(SaveQuestion(At("a\xFF.csv"))), At("b.csv"));
}

TEST_F(QtDialogsTest, WithoutAFullPathADialogBeginsAtTheUsualPlace) {
  MakeFolder("sub");
  const auto folderOf = [this](const std::string& start) {
    std::string folder;
    script_.Expect("Select", [&folder](QWidget& window) {
      folder = FolderOf(window);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
    EXPECT_EQ(dialogs_.BrowseFolder("Select", start), std::nullopt);
    return folder;
  };
  script_.Expect("Select", [](QWidget& window) { Click(Find<QPushButton>(window, "Choose")); });
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub")), At("sub"));  // which is the usual place from now on
  EXPECT_EQ(folderOf(""), At("sub/"));
  EXPECT_EQ(folderOf("gedit"), At("sub/"));
}

TEST_F(QtDialogsTest, AFolderIsLookedForAsFarAsItsPathExists) {
  MakeFolder("sub");
  const auto expectAt = [this](const std::string& folder) {
    script_.Expect("Select", [folder](QWidget& window) {
      EXPECT_EQ(static_cast<QFileDialog&>(window).directory().path().toStdString(), folder);
      QTest::keyClick(&window, Qt::Key_Escape);
    });
  };
  expectAt(At("sub"));
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub/gone/deeper")), std::nullopt);
  expectAt(At("sub"));
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub")), std::nullopt);
  MakeFolder("sub/odd\xFF");
  MakeFolder("sub/odd\uFFFD");
  expectAt(At("sub"));
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub/odd\xFF")), std::nullopt);
  script_.Expect("Select", [](QWidget& window) {
    EXPECT_EQ(static_cast<QFileDialog&>(window).fileMode(), QFileDialog::Directory);
    Click(Find<QPushButton>(window, "Choose"));
  });
  EXPECT_EQ(dialogs_.BrowseFolder("Select", At("sub")), At("sub"));
}

}  // namespace
}  // namespace tresmor::tests
