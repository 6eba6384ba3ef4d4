// The one place where what a user does enters the program.
#pragma once

#include <functional>
#include <utility>

#include "desk/one_action.h"
#include "platform/dialogs.h"

namespace tresmor {

// One serves a window, and each dialog has its own. An action runs alone: one that comes while another runs is dropped.
// Passive handlers (ticks, layout, selection, hover texts) run at any time, on top of an action too. No failure of
// either leaves here: it ends the handler, and one box tells it. Interface thread.
class ActionDispatch {
 public:
  using Handler = std::function<void()>;
  struct Hooks {
    Handler restore;  // after a failed action and before its box: what it may have left locked or hidden
    Handler atRest;   // after each action, when the next may run
  };

  explicit ActionDispatch(Dialogs& dialogs, Hooks hooks = {}) : dialogs_(dialogs), hooks_(std::move(hooks)) {}
  ActionDispatch(const ActionDispatch&) = delete;
  ActionDispatch& operator=(const ActionDispatch&) = delete;

  bool IsRunning() const { return action_.IsRunning(); }

  void Run(const Handler& action);
  void RunPassive(const Handler& handler);

  // Has what a control calls, if it calls anything, run through here from now on.
  template <class... Args>
  void BindAction(std::function<void(Args...)>& event) {
    Bind(event, &ActionDispatch::Run);
  }
  template <class... Args>
  void BindPassive(std::function<void(Args...)>& event) {
    Bind(event, &ActionDispatch::RunPassive);
  }

 private:
  template <class... Args>
  void Bind(std::function<void(Args...)>& event, void (ActionDispatch::*run)(const Handler&)) {
    if (!event) return;
    event = [this, run, handler = std::move(event)](Args... args) { (this->*run)([&] { handler(args...); }); };
  }
  // Tells a failure after `restore`, if there is one.
  void Guard(const Handler& handler, const Handler& restore);

  Dialogs& dialogs_;
  const Hooks hooks_;
  OneAction action_;
};

}  // namespace tresmor
