// Smart Marker: from a few choices of the user to marks on the rows of the result list on show. It changes nothing
// else.
#pragma once

#include <functional>
#include <string>

#include "controls/timer.h"
#include "desk/guarded_msg.h"
#include "marker/frm_smart_del.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "results/result_lists.h"

namespace tresmor {

struct SmartMarkerPorts {
  EventQueue& events;
  Dialogs& dialogs;
  // Draws the eye to a control.
  std::function<void(Control& control)> FlashCtrl;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
  // Enters a text in the history of the pattern box and writes the history.
  std::function<void(const std::string& pattern)> KeepPattern;
};

// What a click on cmdMark does. First it marks the files in the selected folders and those whose names match a pattern,
// and leaves all other marks; next it unmarks one file of each group that is marked wholly, if that is asked for; last
// the choices by date, size and version mark every group anew, each over the one before it. The list is left sorted by
// its groups where a choice was made.
// Gives whether the dialog closes. It stays open where the choices contradict each other, with nothing marked, and
// where a pattern is ill-formed, with the marks that were set up to there; a box has told of it. Fails with Overflow as
// MarkGroups does. Interface thread.
bool MarkBySmartRules(FrmSmartDel& frm, ResultLists& results, Timer& tmrUpdate, const SmartMarkerPorts& ports);

}  // namespace tresmor
