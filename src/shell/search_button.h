// The button that starts a search and, while one runs, cancels it.
#pragma once

#include <functional>

#include "desk/guarded_msg.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "shell/frm_main.h"
#include "shell/search_control.h"

namespace tresmor {

struct SearchButtonPorts {
  EventQueue& events;
  Dialogs& dialogs;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
};

// Interface thread.
class SearchButton {
 public:
  SearchButton(FrmMain& frm, SearchControl& control, const SearchButtonPorts& ports)
      : frm_(frm), control_(control), ports_(ports) {}
  SearchButton(const SearchButton&) = delete;
  SearchButton& operator=(const SearchButton&) = delete;

  // The click on cmdSrch. At rest it is an action of its own: it begins a search if nothing is missing, and returns
  // when that has ended and was told. While one runs, which the caption tells, it comes from that one's events and asks
  // whether to cancel it. Throws the search's Failure.
  void Click();

 private:
  bool IsReady();
  void SearchAndTell();

  FrmMain& frm_;
  SearchControl& control_;
  const SearchButtonPorts ports_;
};

}  // namespace tresmor
