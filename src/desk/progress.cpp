#include "desk/progress.h"

#include <cmath>
#include <utility>

#include "base/date.h"
#include "base/failure.h"
#include "base/number.h"
#include "base/text.h"

namespace tresmor {

Progress::Progress(const EventQueue& events, Timer& tmrProgress, Panel& msgBar, ProgressBar& pbMain)
    : events_(events), tmrProgress_(tmrProgress), msgBar_(msgBar), pbMain_(pbMain) {
  tmrProgress_.OnTick = [this] { Tick(); };
}

void Progress::Template::operator=(std::string text) {
  owner_.BeginPhase();
  text_ = std::move(text);
}

void Progress::SetTag(std::int64_t index) {
  std::int64_t highest = highest_.load(std::memory_order_relaxed);
  while (highest < index && !highest_.compare_exchange_weak(highest, index, std::memory_order_relaxed)) {
  }
}

void Progress::ClearTag() {
  BeginPhase();
  tmrProgress_.Tag = "";
}

void Progress::StartTag(std::int64_t index) {
  BeginPhase();
  tmrProgress_.Tag = std::to_string(index);
}

std::string Progress::Elapsed() const {
  return FormatElapsed(static_cast<std::int64_t>(std::floor(events_.Seconds() - SrchStartTime)));
}

void Progress::Tick() {
  const std::int64_t highest = highest_.load(std::memory_order_relaxed);
  PassOverFailure([&] {
    if (highest != kNothing) tmrProgress_.Tag = std::to_string(highest);
  });
  const std::string tag = tmrProgress_.Tag();
  PassOverFailure([&] { msgBar_.Text = ReplaceAll(ProgressMsg(), "[value]", tag) + " - " + Elapsed() + " elapsed."; });
  PassOverFailure([&] {
    // Fails for a tag that is no number and for a bar that would be out of its range.
    if (!tag.empty()) pbMain_.Value = static_cast<float>(ParseInt32(tag)) / static_cast<float>(pbItemsCnt) * 100;
  });
  PassOverFailure([&] {
    if (CancelSrch) tmrProgress_.Enabled = false;
  });
}

}  // namespace tresmor
