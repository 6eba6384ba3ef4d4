// The window's program put together: the adapters of this machine and of the toolkit, and the main window over them.
#pragma once

#include "desk/job_file_writer.h"
#include "persist/ini_settings.h"
#include "platform/posix/posix_file_changes.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"
#include "platform/posix/posix_shell.h"
#include "platform/posix/posix_trash_places.h"
#include "platform/posix/user_folders.h"
#include "qt/main_window_view.h"
#include "qt/process_picture_loader.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_event_queue.h"
#include "qt/qt_forms.h"
#include "qt/qt_screen.h"
#include "results/pe_version.h"
#include "shell/main_window.h"
#include "transfer/file_executor.h"

namespace tresmor {

// What writes files of the program's own. To be made before the toolkit starts its threads.
struct FileWriters {
  PosixFileWriter usual;
  PosixFileWriter settings{PosixFileWriter::NewFiles::OfTheUserAlone};
};

// Interface thread; needs the toolkit's application object.
class WindowProgram {
 public:
  // `executableFolder` is where the program stands.
  WindowProgram(const FileWriters& writers, const UserFolders& folders, const std::string& executableFolder);
  WindowProgram(const WindowProgram&) = delete;
  WindowProgram& operator=(const WindowProgram&) = delete;

  // Opens the window, and then the session file if one is named. `closed` is called once the window has closed.
  void Start(std::function<void()> closed, const std::string& sessionFile = "");

  // Starts, and gives the program's exit status once the window has closed.
  int Run(const std::string& sessionFile);

  MainWindow& Window() { return window_; }
  MainWindowView& View() { return view_; }

 private:
  MainWindowPorts Ports(const std::string& executableFolder);
  MainWindowHooks Hooks();

  const FileWriters& writers_;
  const PosixFileSystem files_;
  const PosixShell shell_;
  const PeVersionReader versions_{files_};
  PosixFileChanges changes_;
  PosixTrashPlaces trash_;
  UndoLog undoLog_;
  FileExecutor operations_;
  IniSettings settings_;

  QtEventQueue events_;
  const JobFileWriter writer_{writers_.usual, events_};
  const Twips twips_ = Twips::OfApplication();
  Binder binder_{events_, twips_};
  QtDialogs dialogs_{binder_};
  const QtScreen screen_{twips_};
  ProcessPictureLoader pictures_;
  MainWindow window_;
  // Widgets go before what they show.
  QtForms forms_{binder_};
  MainWindowView view_;
};

}  // namespace tresmor
