#include "qt/qt_event_queue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <utility>

namespace tresmor {

QtEventQueue::QtEventQueue() { clock_.start(); }

void QtEventQueue::Pump(std::chrono::milliseconds wait) {
  ++pumps_;
  QTimer alarm;
  if (wait.count() > 0) {
    // Ends the wait: the dispatcher itself waits without limit.
    alarm.setSingleShot(true);
    alarm.start(wait);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  } else {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  }
  --pumps_;
  if (const std::exception_ptr thrown = std::exchange(thrown_, nullptr)) std::rethrow_exception(thrown);
}

void QtEventQueue::Wake() {
  if (QAbstractEventDispatcher* const dispatcher = QCoreApplication::eventDispatcher()) dispatcher->wakeUp();
}

EventQueue::TimerId QtEventQueue::StartTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, [this, tick = std::move(tick)] {
    const std::function<void()> own = tick;  // which may stop its own timer
    Deliver(own);
  });
  timer->start(interval);
  timers_[++lastTimer_] = std::move(timer);
  return lastTimer_;
}

void QtEventQueue::StopTimer(TimerId id) {
  const auto found = timers_.find(id);
  if (found == timers_.end()) return;
  found->second->stop();
  found->second.release()->deleteLater();  // it may be the one that is ticking
  timers_.erase(found);
}

double QtEventQueue::Seconds() const { return static_cast<double>(clock_.nsecsElapsed()) * 1e-9; }

void QtEventQueue::Deliver(const std::function<void()>& handler) {
  try {
    handler();
  } catch (...) {
    if (pumps_ > 0) {
      if (!thrown_) thrown_ = std::current_exception();
    } else if (OnUncaught) {
      OnUncaught(std::current_exception());
    }
  }
}

}  // namespace tresmor
