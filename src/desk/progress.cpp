#include "desk/progress.h"

#include <cmath>

#include "base/date.h"
#include "base/failure.h"
#include "base/number.h"
#include "base/text.h"

namespace tresmor {

Progress::Progress(const EventQueue& events, Timer& tmrProgress, Panel& msgBar, ProgressBar& pbMain)
    : events_(events), tmrProgress_(tmrProgress), msgBar_(msgBar), pbMain_(pbMain) {
  tmrProgress_.OnTick = [this] { Tick(); };
}

void Progress::ClearTag() {
  posted_.store(kNothing, std::memory_order_relaxed);
  tmrProgress_.Tag = "";
}

std::string Progress::Elapsed() const {
  return FormatElapsed(static_cast<std::int64_t>(std::floor(events_.Seconds() - SrchStartTime)));
}

void Progress::Tick() {
  const std::int64_t posted = posted_.exchange(kNothing, std::memory_order_relaxed);
  if (posted != kNothing) tmrProgress_.Tag = std::to_string(posted);
  const std::string tag = tmrProgress_.Tag();
  msgBar_.Text = ReplaceAll(ProgressMsg, "[value]", tag) + " - " + Elapsed() + " elapsed.";
  try {
    // A tag that is no number, or a bar that would be out of its range.
    if (!tag.empty()) pbMain_.Value = static_cast<float>(ParseInt32(tag)) / static_cast<float>(pbItemsCnt) * 100;
  } catch (const Failure&) {
  }
  if (CancelSrch) tmrProgress_.Enabled = false;
}

}  // namespace tresmor
