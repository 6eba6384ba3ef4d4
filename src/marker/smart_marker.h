// Smart Marker: from a few choices of the user to marks on the rows of the result list on show. It changes nothing
// else. The list is the one that is on show when the run begins, also if an event brings up another meanwhile.
#pragma once

#include <functional>

#include "controls/timer.h"
#include "desk/guarded_msg.h"
#include "desk/presets.h"
#include "marker/frm_smart_del.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/settings_store.h"
#include "results/result_lists.h"

namespace tresmor {

struct SmartMarkerPorts {
  EventQueue& events;
  Dialogs& dialogs;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
};

// How far the rules went. A box has told of what kept them from the end.
enum class SmartMarks {
  Refused,  // the choices contradict each other; nothing was marked
  Stopped,  // a pattern is ill-formed; what was marked up to there is marked
  Done,
};

// First marks the files in the selected folders and those whose names match a pattern, and leaves all other marks; next
// unmarks one file of each group that is marked wholly, if that is asked for; last the choices by date, size and
// version mark every group anew, each over the one before it. The list is left sorted by its groups where a choice was
// made. Fails with Overflow as MarkGroups does. Interface thread.
SmartMarks MarkBySmartRules(FrmSmartDel& frm, ResultLists& results, const SmartMarkerPorts& ports);

// What of the rest of the program the dialog's button touches.
struct ClickMarkPorts {
  SmartMarkerPorts rules;
  Timer& tmrUpdate;
  SettingsStore& settings;
  const Presets& presets;
};

// What a click on cmdMark does: the rules, then the pattern goes to the top of its history, in the box and in the
// settings, and the marks are to be counted. Gives whether the dialog closes; only then there is a history to keep.
// Throws the Failure of the rules and of the settings. Interface thread.
bool ClickMark(FrmSmartDel& frm, ResultLists& results, const ClickMarkPorts& ports);

}  // namespace tresmor
