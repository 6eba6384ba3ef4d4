// A main window over everything that tests have in place of the machine, with a view.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

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

// Closes each guarded message by OK, and does with the dialog of file commands what the test says.
class ScriptedForms final : public ModalForms, public FileForms {
 public:
  void ShowModal(FrmMyMsgBox& form) override {
    shown.push_back(form.Message);
    form.OKButton.OnClick();
  }
  void ShowModal(FrmFileOper& form) override {
    if (inFileOper) {
      inFileOper(form);
    } else {
      ADD_FAILURE() << "unexpected dialog: " << form.Caption();
    }
    form.Visible = false;
  }

  std::vector<std::string> shown;
  std::function<void(FrmFileOper&)> inFileOper;
};

struct MainWindowWorld {
  MainWindowWorld() {
    files.MakeFolder("/home/me");
    files.MakeFolder("/data");
  }

  // Every hook is set, and says its name in `log`.
  MainWindowHooks AllHooks() {
    return {.mnuOptions = Logs("options"),
            .mnuSmartDel = Logs("smart marker"),
            .mnuHelp = Logs("help"),
            .mnuSuppForum = Logs("forum"),
            .mnuWebSite = Logs("site"),
            .mnuEmail = Logs("mail"),
            .mnuChkUpdate = Logs("update"),
            .mnuAbout = Logs("about"),
            .OwnFileProp = [this](const std::string& file) { log.push_back("sheet of " + file); },
            .InitTooltips = Logs("tooltips"),
            .RemindOfUpdate = Logs("reminder"),
            .ShowTip = Logs("tip")};
  }
  std::function<void()> Logs(const std::string& what) {
    return [this, what] {
      log.push_back(what);
      if (onHook) onHook();
    };
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
            .pictures = pictures,
            .now = [] { return DateStamp{0}; },
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
  std::function<void()> onHook;  // from within each of them
};

}  // namespace tresmor::tests
