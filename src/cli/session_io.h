// Sessions as the console program loads and saves them.
#pragma once

#include <string>

#include "cli/console.h"
#include "desk/progress.h"
#include "shell/frm_main.h"

namespace tresmor {

// Puts the session of a file into the form. False if there is none, it is of an unknown version, or damaged; why is
// told then. Cells of rows may hold anything.
bool LoadSession(FrmMain& frm, Progress& progress, const std::string& typed, const ConsolePorts& ports);

// Saves the form as a session. False if that failed, which is told then; an old file is as it was.
bool SaveSession(FrmMain& frm, const std::string& typed, const ConsolePorts& ports);

// A session whose result is to be looked at.
struct SavedResult {
  explicit SavedResult(const ConsolePorts& ports) : progress(ports.events, frm.tmrProgress, frm.msgBar, frm.pbMain) {}
  // As LoadSession; false also for a session that was saved without a result, and told as damage for one whose rows
  // can't be printed. After it each row has a size that is a whole number, a date and, where the list has them, a group
  // number; and the sizes of a list have a sum.
  bool Load(const std::string& typed, const ConsolePorts& ports);

  FrmMain frm;
  Progress progress;
};

}  // namespace tresmor
