// Somebody who knows nothing of the window and tries everything on it.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "soak/machine.h"

namespace tresmor::soak {

// Plays with windows on one machine. Interface thread.
class Monkey {
 public:
  // All that is drawn comes from the seed; what threads make of it may differ a little from run to run.
  Monkey(std::uint64_t seed, Figures& figures);
  Monkey(const Monkey&) = delete;
  Monkey& operator=(const Monkey&) = delete;

  // Does one thing, waits for its end and looks whether all is well.
  void Step();

  // What is wrong, a line each; nothing mostly.
  const std::vector<std::string>& Troubles() const { return troubles_; }
  // What it did last, the latest at the end.
  const std::deque<std::string>& Log() const { return log_; }

 private:
  struct Deed {
    const char* name;
    std::size_t weight;  // how often it is drawn
    std::function<void()> act;
  };

  void Open();
  // In three files, by what of the window they are about.
  void AddScopeDeeds();
  void AddResultDeeds();
  void AddWindowDeeds();
  void Add(const char* name, std::size_t weight, std::function<void()> act) {
    deeds_.push_back({name, weight, std::move(act)});
  }
  const Deed& AnyDeed();
  void Do(const Deed& deed);
  void Click(const Button& button, bool reachable = true);
  void Toggle(CheckBox& box, bool reachable = true);
  bool ScopeIsReachable() const { return frm_->frmSelPath.Enabled(); }

  // What goes on while something else does.
  void AtPump();
  void Passive();

  // The state of the window after an action.
  void Settle();
  void Check();
  void CheckLocks();
  void CheckCounts();
  void CheckPanel();
  void Expect(bool holds, const std::string& what) {
    if (!holds) troubles_.push_back(what);
  }

  const std::uint64_t seed_;
  Figures& figures_;
  Machine machine_;
  Dice& dice_;
  std::unique_ptr<MainWindow> window_;
  FrmMain* frm_ = nullptr;
  std::unique_ptr<FakeMainView> view_;
  std::vector<Deed> deeds_;
  std::size_t weights_ = 0;
  std::uint64_t step_ = 0;
  int depth_ = 0;      // of handlers within handlers
  int modal_ = 0;      // boxes and dialogs that are open
  bool torn_ = false;  // a failure was told, which may leave lists half full and commands out of reach
  std::deque<std::string> log_;
  std::vector<std::string> troubles_;
};

}  // namespace tresmor::soak
