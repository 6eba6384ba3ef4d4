#include "desk/bind_timer.h"

#include <chrono>
#include <memory>
#include <optional>

namespace tresmor {
namespace {

class Running {
 public:
  explicit Running(EventQueue& events) : events_(events) {}
  ~Running() { Stop(); }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  void Start(Timer& timer) {
    Stop();
    id_ = events_.StartTimer(std::chrono::milliseconds(timer.Interval()), [&timer] {
      if (timer.OnTick) timer.OnTick();
    });
  }
  void Stop() {
    if (id_) events_.StopTimer(*id_);
    id_.reset();
  }

 private:
  EventQueue& events_;
  std::optional<EventQueue::TimerId> id_;
};

}  // namespace

void BindTimer(Timer& timer, EventQueue& events) {
  // The listener dies with the timer and takes the event queue's timer with it.
  auto running = std::make_shared<Running>(events);
  if (timer.Enabled()) running->Start(timer);
  timer.Listen([&timer, running = std::move(running)](const Notice& notice) {
    if (notice.what != Notice::What::Enabled || notice.when != Notice::When::After) return;
    if (timer.Enabled()) {
      running->Start(timer);
    } else {
      running->Stop();
    }
  });
}

}  // namespace tresmor
