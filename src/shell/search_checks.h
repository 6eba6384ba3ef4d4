// What has to be there before a search may begin.
#pragma once

#include <optional>

#include "controls/check_list.h"
#include "platform/event_queue.h"
#include "shell/frm_main.h"

namespace tresmor {

// Whether any entry is ticked.
bool AtLeast1Chk(const CheckList& obj);

// The box, with the exclamation icon, for something that is missing.
struct SearchCheck {
  const char* title;
  const char* text;
  // Draws the user's eye to where it is to be told, once the box is closed; none if nothing does.
  void (*pointOut)(FrmMain& frm, EventQueue& events) = nullptr;
};

// The first of these that is missing: a scope row, a search type, a folder to search, a search target. None if a search
// may begin. Throws Failure Overflow for more rows than 16 bits count. Interface thread.
std::optional<SearchCheck> FailedSearchCheck(const FrmMain& frm);

}  // namespace tresmor
