// The commands that save and load search sessions.
#pragma once

#include <string>

#include "desk/progress.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "platform/file_writer.h"
#include "shell/frm_main.h"

namespace tresmor {

struct SessionPorts {
  const FileSystem& files;
  const FileWriter& writer;
  EventQueue& events;
  Dialogs& dialogs;
};

// What of the window a session is made of, with the session in hand, or another.
SessionControls ControlsOf(FrmMain& frm);
SessionControls ControlsOf(FrmMain& frm, SessionState& session);

// How the box on a failure of loading begins.
inline constexpr char kLoadingFailed[] = "Loading search session failed. ";

// Interface thread. A command runs while no search does.
class SessionCommands {
 public:
  // `progress` is bound to the form's own timer, panel and bar.
  SessionCommands(FrmMain& frm, Progress& progress, const SessionPorts& ports)
      : frm_(frm), progress_(progress), ports_(ports) {}
  SessionCommands(const SessionCommands&) = delete;
  SessionCommands& operator=(const SessionCommands&) = delete;

  // Saves under the name the session has, as it was saved or loaded last; without a name as mnuSaveAsResultList. Both
  // throw the Failure of a save.
  void mnuSaveResultList();
  // Asks for a name and whether to save what was found.
  void mnuSaveAsResultList();
  // Asks for a file and opens it.
  void mnuLoadResultList();
  // Loads a file. Its name is the session's from then on, even if it could not be loaded.
  void OpenSession(const std::string& sFileName);

  // Replaces scope and result lists by those of a file. A failure, a lack of memory too, is told in a box; it leaves in
  // the controls what was read, the list in progress hidden, the timer running and the menus disabled. Gives whether
  // all was read.
  bool LoadSession(const std::string& sFileName);

 private:
  FrmMain& frm_;
  Progress& progress_;
  const SessionPorts ports_;
};

}  // namespace tresmor
