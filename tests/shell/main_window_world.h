// A main window over everything that tests have in place of the machine, with a view.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/date.h"
#include "desk/options.h"
#include "desk/scripted_event_queue.h"
#include "results/pe_version.h"
#include "results/rows.h"
#include "search/scope_row.h"
#include "shell/main_window.h"
#include "support/fake_file_operations.h"
#include "support/fake_main_view.h"
#include "support/fake_picture_loader.h"
#include "support/fake_shell.h"
#include "support/memory_file_changes.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "support/memory_settings.h"
#include "support/scripted_dialogs.h"

namespace tresmor::tests {

// Closes each guarded message by OK, and does with the other dialogs what the test says.
class ScriptedForms final : public ModalForms, public FileForms, public ShellForms {
 public:
  void ShowModal(FrmMyMsgBox& form) override {
    shown.push_back(form.Message);
    form.chkDontShow.Value = ticksDontShow ? kTicked : kOff;
    form.OKButton.OnClick();
  }
  void ShowModal(FrmFileOper& form) override { Play(inFileOper, form); }
  void ShowModal(FrmOptions& form) override { Play(inOptions, form); }
  void ShowModal(FrmSmartDel& form, const ListTip& tips) override {
    if (withTips) withTips(form, tips);
    Play(inSmartDel, form);
  }

  std::vector<std::string> shown;
  bool ticksDontShow = false;  // before that
  std::function<void(FrmFileOper&)> inFileOper;
  std::function<void(FrmOptions&)> inOptions;
  std::function<void(FrmSmartDel&)> inSmartDel;
  std::function<void(FrmSmartDel&, const ListTip&)> withTips;  // before that

 private:
  template <class Form>
  static void Play(const std::function<void(Form&)>& script, Form& form) {
    EXPECT_TRUE(form.Visible());
    if (script) {
      script(form);
    } else {
      ADD_FAILURE() << "unexpected dialog: " << form.Caption();
    }
    form.Visible = false;
  }
};

struct MainWindowWorld {
  MainWindowWorld() {
    files.MakeFolder("/home/me");
    files.MakeFolder("/data");
  }

  // Every hook is set, and says its name in `log`.
  MainWindowHooks AllHooks() {
    return {.OwnFileProp = [this](const std::string& file) { log.push_back("sheet of " + file); }};
  }
  MainWindowPorts Ports() {
    return {.files = files,
            .writer = writer,
            .changes = changes,
            .operations = operations,
            .versions = versions,
            .settings = settings,
            .shell = shell,
            .screen = screen,
            .events = events,
            .dialogs = dialogs,
            .forms = forms,
            .fileForms = forms,
            .shellForms = forms,
            .pictures = pictures,
            .now = [this] { return now; },
            .random = [] { return 0.5; },
            .version = {3, 1, 7},
            .programFolder = "/opt/tresmor"};
  }

  // A file with a marked row that is SelectedItem too.
  static void AddRow(FrmMain& frm, ResultList kind, const std::string& name) {
    Finding finding;
    finding.folder = "/data/";
    finding.name = name;
    ListView& lst = frm.results.List(kind);
    AddResultItem(lst, finding);
    lst.SetChecked(lst.Count(), true);
    lst.SetSelected(lst.Count(), true);
  }

  ScriptedEventQueue events;
  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  MemoryFileChanges changes{files};
  FakeFileOperations operations{files};
  PeVersionReader versions{files};
  MemorySettings settings;
  FakeShell shell;
  FakeScreen screen;
  ScriptedDialogs dialogs;
  ScriptedForms forms;
  FakePictureLoader pictures;
  std::vector<std::string> log;
  DateStamp now = 0;
};

class MainWindowTest : public testing::Test, protected MainWindowWorld {
 protected:
  void Keep(const char* section, const char* key, const char* value) { settings.Save(kAppTitle, section, key, value); }
  void Load() {
    window.Load();
    log.clear();
  }
  // `deed` is done from within an action.
  void InAction(const std::function<void()>& deed) {
    forms.inOptions = [deed](FrmOptions&) { deed(); };
    frm.mnuOptions.OnClick();
  }
  // The next start finds the last reminder to be that many days ago.
  void LetDaysPass(int days) {
    Keep(kOptionsSection, "LastUpdateCheck", "1899-12-30");
    now = days * kOneDay;
  }
  void ExpectReminder(BoxAnswer answer = BoxAnswer::No) {
    dialogs.boxes.push_back(
        {"Tresmor can check its update periodically, and you haven't checked it for more than 45 days. \r\n\r\nDo you "
         "want to check if new version available online?",
         "Check new version", BoxIcon::Question, BoxButtons::YesNo, answer});
  }
  void ExpectError(const std::string& error) { dialogs.boxes.push_back({"Run-time error " + error, ""}); }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;
  FakeMainView view{frm};
};

}  // namespace tresmor::tests
