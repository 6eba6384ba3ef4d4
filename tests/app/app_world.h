// The whole program over a home folder of its own, with real files in it.
#pragma once

#include <sys/stat.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QTabBar>
#include <QTreeView>
#include <filesystem>
#include <memory>
#include <string>

#include "app/window_program.h"
#include "qt/modal_script.h"
#include "results/rows.h"
#include "support/temp_tree.h"

namespace tresmor::tests {

// The file of a picture of one blue pixel.
inline std::string BlueBitmap() {
  return {
      "BM:\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0"
      "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xff\0\0\0",
      58};
}

class AppTest : public TempTree {
 protected:
  AppTest() {
    MakeFolder("home");
    MakeFolder("data");
    setenv("HOME", At("home").c_str(), 1);
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) unsetenv(name);
  }
  ~AppTest() override { Stop(); }

  void Start(const std::string& sessionFile = "") { StartIn(BuildFolder(), sessionFile); }
  // As if the program lay in that folder, with its own files and helpers.
  void StartIn(const std::string& programFolder, const std::string& sessionFile = "") {
    Make(programFolder);
    program_->Start([this] { ++closed_; }, sessionFile);
    QCoreApplication::processEvents();  // the tip of the day comes behind the window
    Activate();
  }
  void Make(const std::string& programFolder) {
    writers_ = std::make_unique<FileWriters>();
    closed_ = 0;
    program_ = std::make_unique<WindowProgram>(*writers_, FindUserFolders(), programFolder);
  }
  static std::string BuildFolder() {
    const std::string helper = TRESMOR_PICTURE;
    return helper.substr(0, helper.find_last_of('/'));
  }
  void Stop() { program_.reset(); }

  MainWindowView& View() { return program_->View(); }
  FrmMain& Frm() { return program_->Window().frm; }
  ListView& List(ResultList kind) { return Frm().results.List(kind); }

  QWidget* Named(const QString& name) {
    for (QWidget* const widget : View().findChildren<QWidget*>()) {
      if (widget->accessibleName() == name) return widget;
    }
    ADD_FAILURE() << "nothing has the name " << name.toStdString();
    return &View();
  }
  QPushButton* Button(const QString& caption) { return Find<QPushButton>(View(), caption); }
  QLineEdit* FolderField() { return static_cast<QComboBox*>(Named("Folder"))->lineEdit(); }

  // There is no window manager to do so once a dialog has gone.
  void Activate() {
    View().activateWindow();
    WaitUntil([this] { return View().isActiveWindow(); });
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    Activate();
    QTest::keyClick(View().focusWidget() != nullptr ? View().focusWidget() : &View(), key, keys);
  }
  // By the Tab key.
  void GoTo(QWidget* widget) {
    for (int presses = 0; !widget->hasFocus() && presses < 100; ++presses) Key(Qt::Key_Tab);
    EXPECT_TRUE(widget->hasFocus()) << widget->accessibleName().toStdString();
  }

  void AddFolder(const std::string& folder) {
    Frm().txtPath.SetText(folder);
    Click(Button("Add>"));
  }
  // Searches; the texts about searching itself are closed.
  void Search(const QString& report) {
    ExpectSearch(report);
    Click(Button("Search"));
    EXPECT_TRUE(script_.IsDone());
  }
  void ExpectSearch(const QString& report) {
    ExpectMessage("Be patient");
    script_.ExpectBox("Search completed", report);
    ExpectMessage("Smart Marker");
  }
  void ExpectMessage(const QString& title) {
    script_.Expect(title, [](QWidget& window) { Find<QPushButton>(window, "OK")->click(); });
  }
  // A file dialog in which this path is typed.
  void ExpectFile(const QString& title, const std::string& path) {
    script_.Expect(title, [path](QWidget& window) {
      auto* const name = window.findChild<QLineEdit*>("fileNameEdit");
      name->setText(QString::fromStdString(path));
      QTest::keyClick(name, Qt::Key_Return);
    });
  }
  // The dialog in front of deleting: to the trash, or for good.
  void ExpectDelete(bool forGood) {
    script_.Expect("Delete files", [forGood](QWidget& window) {
      for (auto* const option : window.findChildren<QRadioButton*>()) {
        if (forGood && option->accessibleName() == "Delete permanently") option->click();
      }
      Find<QCheckBox>(window, "Respond with Yes to All for any dialog box that is displayed. ")->click();
      Find<QPushButton>(window, "Yes")->click();
    });
  }

  static QString Report(int compared, int zero, const QString& duplicates, const QString& names) {
    return QString(
               "Search is completed. %1 file(s) compared.\n\nNo. of zero-size files: %2\nNo. of "
               "duplicate(same-content) files: %3\nNo. of same-name files: %4\nNo. of truncated files(file "
               "portions): 0, 0 group(s)\nNo. of files with reading error: 0\n\nINFO: Duplicate files are "
               "grouped by unquie 'Duplicate #' and different colours (not unqiue).")
        .arg(compared)
        .arg(zero)
        .arg(duplicates, names);
  }

  bool Exists(const std::string& path) const {
    struct stat info {};
    return lstat(At(path).c_str(), &info) == 0;
  }

  std::unique_ptr<FileWriters> writers_;
  ModalScript script_;
  std::unique_ptr<WindowProgram> program_;
  int closed_ = 0;
};

}  // namespace tresmor::tests
