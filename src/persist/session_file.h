// Search sessions as files: what to search for, where, and, if wanted, what was found.
//
// A file is lines of text that end in CR LF: "3.0.0"; for each search type whether it is ticked; the three options; the
// number of scope rows and these; whether results follow; the number of result lists and, for each, its number of rows,
// its tag and its rows. Fields of a row stand apart by "|-". Numbers have a blank on both sides, booleans are "True" or
// "False". Files of version "1.2.0", which are read only, don't tell which scope rows keep a folder out (none does) nor
// whether results follow (they do).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/list_view.h"
#include "controls/timer.h"
#include "desk/progress.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_writer.h"
#include "results/result_lists.h"

namespace tresmor {

// The session in hand.
struct SessionState {
  std::string SessionFile;      // its path, empty if it has none
  bool SaveSrchResult = false;  // whether it is saved with what was found
  bool HasSrchResult = false;   // whether a search was begun or a session loaded
};

// What a session is read from and written into.
struct SessionControls {
  CheckList& lstSrchType;
  CheckBox& chkTolerant;
  CheckBox& chkHidden;
  CheckBox& chkProtectWinDir;
  ListView& lstPath;
  ResultLists& results;
  SessionState& session;
};

// What shows how far the reading of a session is, and lets it show. `progress` is bound to the timer.
struct SessionProgress {
  Progress& progress;
  Timer& tmrProgress;
  EventQueue& events;
};

struct SessionSaver {
  const FileWriter& writer;
  EventQueue& events;
  Dialogs& dialogs;
};

// All on the interface thread.

// Writes the controls as they stand, the list of read errors apart. Pumps events now and then; nothing may add, remove
// or move rows then. Result rows that the format can't tell, since a cell holds "|-" or CR LF, are left out, and a box
// says so after the save. If a scope row is one of them nothing is saved: a box says why, and the result is false.
// Throws the Failure of the writer; the old file is then as it was.
bool SaveSession(const std::string& sFileName, const SessionControls& controls, const SessionSaver& saver);

// Puts the session told by `sFile` into the controls. Scope and lists were emptied before; sorting, counting and the
// end of the progress come after. Pumps events now and then; a list is hidden while it is filled. False if the file is
// of a version that isn't known, which a box has said.
// Throws Failure with what was read so far in the controls, the list that was being filled hidden and the timer
// running: PastEnd (a line is missing), TypeMismatch and Overflow (a number or boolean is none or too great), Subscript
// (fields or lists that there is no place for, a row without the fields it must have).
bool LoadSession(std::string_view sFile, const SessionControls& controls, const SessionProgress& shown,
                 Dialogs& dialogs);

// The next line of `sFile`. `pos` counts from 1 and stands on the CR behind the line that was read before, at -1 at the
// start; it goes on to the CR of this one. Throws Failure PastEnd, with `pos` as it was, if no CR LF is left.
// `sFile` is shorter than 2 GiB.
std::string_view NextLine(std::string_view sFile, std::int32_t& pos);

}  // namespace tresmor
