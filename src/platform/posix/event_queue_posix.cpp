#include "platform/posix/event_queue_posix.h"

#include <algorithm>

namespace tresmor {

void PosixEventQueue::Pump(std::chrono::milliseconds wait) {
  const bool ticked = TickDue();
  Clock::time_point end = now_() + (ticked ? std::chrono::milliseconds(0) : wait);
  for (const Timer& timer : timers_) end = std::min(end, timer.due);
  WaitUntil(end);
  if (!ticked) TickDue();
}

void PosixEventQueue::Wake() {
  {
    const std::lock_guard lock(mutex_);
    woken_ = true;
  }
  wake_.notify_one();
}

EventQueue::TimerId PosixEventQueue::StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
  timers_.push_back({++lastId_, interval, now_() + interval, std::move(tick)});
  return lastId_;
}

void PosixEventQueue::StopTimer(TimerId id) {
  std::erase_if(timers_, [id](const Timer& timer) { return timer.id == id; });
}

double PosixEventQueue::Seconds() const { return std::chrono::duration<double>(now_().time_since_epoch()).count(); }

// Ticks what is due now and says whether anything was. Each timer is looked up again before its tick, since an earlier
// tick may have stopped it.
bool PosixEventQueue::TickDue() {
  const Clock::time_point now = now_();
  std::vector<TimerId> due;
  for (const Timer& timer : timers_) {
    if (timer.due <= now) due.push_back(timer.id);
  }
  for (const TimerId id : due) {
    Timer* timer = Find(id);
    if (timer == nullptr || timer->due > now) continue;  // stopped, or ticked already by a pump inside a tick
    timer->due += timer->interval;
    if (timer->due <= now) timer->due = now + timer->interval;  // ticks that were missed are left out
    const std::function<void()> tick = timer->tick;             // the timer may go while it ticks
    tick();
  }
  return !due.empty();
}

void PosixEventQueue::WaitUntil(Clock::time_point end) {
  std::unique_lock lock(mutex_);
  wake_.wait_for(lock, std::max(end - now_(), Clock::duration::zero()), [this] { return woken_; });
  woken_ = false;
}

PosixEventQueue::Timer* PosixEventQueue::Find(TimerId id) {
  const auto found = std::find_if(timers_.begin(), timers_.end(), [id](const Timer& timer) { return timer.id == id; });
  return found == timers_.end() ? nullptr : &*found;
}

}  // namespace tresmor
