#pragma once

namespace tresmor {

// Keeps the actions of one window from running on top of each other: events that a long action lets in may start
// another, which is then dropped. One of these serves all actions of a window; a dialog that an action shows has its
// own. Interface thread.
class OneAction {
 public:
  OneAction() = default;
  OneAction(const OneAction&) = delete;
  OneAction& operator=(const OneAction&) = delete;

  bool IsRunning() const { return running_; }

  template <class Action>
  void Run(Action&& action) {
    if (running_) return;
    const Running running(running_);
    action();
  }

 private:
  class Running {
   public:
    explicit Running(bool& flag) : flag_(flag) { flag_ = true; }
    ~Running() { flag_ = false; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

   private:
    bool& flag_;
  };

  bool running_ = false;
};

}  // namespace tresmor
