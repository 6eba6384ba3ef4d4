#include "base/stop_token.h"

namespace tresmor {

void StopToken::Stop() { Change(kStopped, 0); }
void StopToken::Pause() { Change(kPaused, 0); }
void StopToken::Resume() { Change(0, kPaused); }
void StopToken::Reset() { Change(0, kPaused | kStopped); }

bool StopToken::WaitWhilePaused() const {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return state_.load(std::memory_order_relaxed) != kPaused; });
  return (state_.load(std::memory_order_relaxed) & kStopped) != 0;
}

void StopToken::Change(int set, int clear) {
  const std::lock_guard lock(mutex_);
  state_.store((state_.load(std::memory_order_relaxed) & ~clear) | set, std::memory_order_relaxed);
  changed_.notify_all();
}

}  // namespace tresmor
