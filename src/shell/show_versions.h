// The versions of the files that are listed already.
#pragma once

#include "desk/progress.h"
#include "platform/event_queue.h"
#include "platform/version_reader.h"
#include "shell/frm_main.h"

namespace tresmor {

struct ShowVersionsPorts {
  const VersionReader& versions;
  EventQueue& events;
};

// What mnuShowVer does: fills the version column of the list on show, every row anew, and tags the list. Interface
// thread; it pumps its events while other threads read the files. There is no cancel. Another list may come on show
// meanwhile. Rows may move and go: each one that remains has its own file's version in the end, for which some files
// may be read twice.
//
// `progress` is bound to the form's own timer, panel and bar. The time elapsed that it tells goes on from the last
// search, which alone sets its start.
// Throws what an event throws; the rows behind then keep their cells, and the list its tag.
void ShowVersions(FrmMain& frm, Progress& progress, const ShowVersionsPorts& ports);

}  // namespace tresmor
