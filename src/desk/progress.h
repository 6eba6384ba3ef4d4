// What a long routine shows of itself. It leaves a template and a figure, and the text comes about only when a timer
// ticks, so that a loop may tell the figure for each file.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "controls/panel.h"
#include "controls/progress_bar.h"
#include "controls/timer.h"
#include "platform/event_queue.h"

namespace tresmor {

// Interface thread, but for SetTag. Its controls outlive it; the timer isn't enabled once it is gone.
class Progress {
 public:
  // Takes the timer's tick for itself.
  Progress(const EventQueue& events, Timer& tmrProgress, Panel& msgBar, ProgressBar& pbMain);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // A template with the placeholder "[value]". Writing it begins a phase, whose figures start afresh.
  class Template {
   public:
    explicit Template(Progress& owner) : owner_(owner) {}
    Template(const Template&) = delete;
    const std::string& operator()() const { return text_; }
    void operator=(std::string text);
    void operator=(const Template&) = delete;

   private:
    Progress& owner_;
    std::string text_;
  };

  Template ProgressMsg{*this};
  std::int32_t pbItemsCnt = 0;  // what the bar's 100 stands for
  // By EventQueue::Seconds, a steady clock: where somebody sets the time of day, or summer time begins, while a search
  // runs, its duration must not jump or turn negative.
  double SrchStartTime = 0;
  bool CancelSrch = false;  // a cancel was asked for: the next tick is the last

  // The timer's Tag as text, from the next tick on. Any thread; the highest figure of a phase wins, since files are
  // finished in any order.
  void SetTag(std::int64_t index);
  // Empties the timer's Tag now and begins a phase.
  void ClearTag();
  // Begins a phase whose first figure this is, shown from now on.
  void StartTag(std::int64_t index);

  // "hh:mm:ss" since SrchStartTime.
  std::string Elapsed() const;

  // Shows the progress. A step that fails is passed over, and the others are taken all the same.
  void Tick();

 private:
  static constexpr std::int64_t kNothing = -1;

  void BeginPhase() { highest_.store(kNothing, std::memory_order_relaxed); }

  const EventQueue& events_;
  Timer& tmrProgress_;
  Panel& msgBar_;
  ProgressBar& pbMain_;
  std::atomic<std::int64_t> highest_{kNothing};  // of this phase
};

}  // namespace tresmor
