// The main window put together: its form, the parts that work on it, and everything the user can set off.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/date.h"
#include "desk/action_dispatch.h"
#include "desk/guarded_msg.h"
#include "desk/options.h"
#include "desk/presets.h"
#include "desk/progress.h"
#include "fileops/file_commands.h"
#include "fileops/single_file.h"
#include "persist/settings.h"
#include "platform/picture_loader.h"
#include "platform/screen.h"
#include "platform/settings_store.h"
#include "results/list_tip.h"
#include "results/preview.h"
#include "scope/scope_page.h"
#include "shell/export_command.h"
#include "shell/frm_help.h"
#include "shell/frm_main.h"
#include "shell/frm_tip.h"
#include "shell/options_dialog.h"
#include "shell/result_page.h"
#include "shell/search_button.h"
#include "shell/search_control.h"
#include "shell/session_commands.h"
#include "shell/shell_forms.h"
#include "shell/smart_marker_dialog.h"
#include "shell/update_check.h"

namespace tresmor {

struct MainWindowPorts {
  const FileSystem& files;
  const FileWriter& writer;
  FileChanges& changes;
  FileOperations& operations;
  const VersionReader& versions;
  SettingsStore& settings;
  const Shell& shell;
  const Screen& screen;
  EventQueue& events;
  Dialogs& dialogs;
  ModalForms& forms;
  FileForms& fileForms;
  ShellForms& shellForms;
  PictureLoader& pictures;
  std::function<DateStamp()> now;  // of the local clock
  std::function<double()> random;  // 0 or more, less than 1
  ProgramVersion version;
  std::string programFolder;  // that the program's own files lie in, without a separator at the end
};

// What the window calls and is no part of it. What needs a hook that isn't set can't be chosen.
struct MainWindowHooks {
  // A sheet of a file's properties for mnuPropPage, where the desktop has none.
  std::function<void(const std::string& file)> OwnFileProp;
};

// Interface thread.
class MainWindow {
 public:
  // The form is hidden yet. What is in `ports` outlives the window.
  MainWindow(const MainWindowPorts& ports, MainWindowHooks hooks);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  FrmMain frm;
  FrmTip frmTip;
  FrmHelp frmHelp;

  // What the program does first, once, when whoever shows the form listens to it already. The form becomes Visible when
  // all is done, so that boxes of the start come before it.
  void Load();

  // Loads a session as the menu's command does, for a file that the program was started with. Nothing if an action
  // runs.
  void OpenSession(const std::string& sFileName);

  // Hover texts of the lists, for whoever shows them.
  const ListTip& Tips() const { return tips_; }
  // The dialogs of the commands on files.
  FileCommands& Files() { return fileCommands_; }
  // Shows the help about a topic, for whoever is asked for it; at any time, on top of an action too.
  void Help(const HelpTopic& topic);

 private:
  void BindButtons();
  void BindMenus();
  void BindFileMenu();
  void BindHelpMenu();
  void BindWindow();
  void BindTimers();
  // Has all that was bound go through the dispatch, but for what decides by itself how to go.
  void BindDispatch();
  void BindFieldDispatch();
  void BindListDispatch();

  void StartUp();
  bool GuardedMsg(GuardedId id) { return messages_.GuardedMsg(options_, id); }
  // The path of a file that comes with the program.
  std::string ProgramFile(const char* name) const;
  // Starts a search, or cancels the one that runs.
  void Search();
  // A command on marked files, which may have left their list by its end.
  void Transfer(void (FileCommands::*command)());
  bool MayClose();
  void Close();
  void RestoreAfterFailure();
  SettingsOwner Settings() { return {frm.txtPath, frm.txtExt, presets_, options_}; }

  const MainWindowPorts ports_;
  const MainWindowHooks hooks_;
  ActionDispatch dispatch_;
  ActionDispatch cancel_;  // of a search: runs on top of it, but not of itself
  OneAction refusal_;      // of closing
  bool closeLater_ = false;

  Options options_;
  Presets presets_;
  GuardedMessages messages_;
  HoveredRow hovered_;
  ListTip tips_{hovered_, {}};
  Progress progress_;
  ScopePage scopePage_;
  Preview preview_;
  SearchControl search_;
  SearchButton searchButton_;
  FileCommands fileCommands_;
  SingleFile singleFile_;
  SessionCommands sessions_;
  ExportCommand export_;
  ResultPage resultPage_;
  OptionsDialog optionsDialog_;
  SmartMarkerDialog smartMarker_;
};

}  // namespace tresmor
