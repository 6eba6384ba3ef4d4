// The progress and cancel channel of long routines: they set a template and a figure, and a timer makes text of it once
// a second, so that a loop pays one store for each file.
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

  std::string ProgressMsg;      // with the placeholder "[value]"
  std::int32_t pbItemsCnt = 0;  // what the bar's 100 stands for
  double SrchStartTime = 0;     // as EventQueue::Seconds tells it
  bool CancelSrch = false;      // the user stopped the search

  // The timer's Tag as text, from the next tick on. Any thread; the last call wins.
  void SetTag(std::int64_t index) { posted_.store(index, std::memory_order_relaxed); }
  // Empties the timer's Tag now and takes back what SetTag left for the next tick.
  void ClearTag();

  // "hh:mm:ss" since SrchStartTime.
  std::string Elapsed() const;

  // Shows the progress. No failure ends it: what fails is passed over.
  void Tick();

 private:
  static constexpr std::int64_t kNothing = -1;

  const EventQueue& events_;
  Timer& tmrProgress_;
  Panel& msgBar_;
  ProgressBar& pbMain_;
  std::atomic<std::int64_t> posted_{kNothing};
};

}  // namespace tresmor
