// How blocking work leaves the interface thread: it runs on a worker, the interface thread pumps its events meanwhile,
// and what the work has to tell comes over as notices, in order.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "base/stop_token.h"
#include "platform/event_queue.h"

namespace tresmor {

// The bounded line between a job and the interface thread. A job may post from any of its threads; what one thread
// posted, and what was posted before it began to post, is delivered in that order.
template <class Note>
class JobLine {
 public:
  JobLine(EventQueue& events, std::size_t capacity) : events_(events), capacity_(capacity) {}

  // Hands a notice over. Waits while the line is full.
  void Post(Note notice) { Put(std::move(notice)); }
  // The same, and waits until it was delivered: for a question that the job can't go on without.
  void Ask(Note notice) {
    const std::uint64_t ticket = Put(std::move(notice));
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return delivered_ >= ticket || closed_; });
  }

  // The rest is RunJob's.

  enum class Next { Notice, Nothing, End };
  // Interface thread. After Nothing the next notice, or the end, wakes the event queue, once.
  Next Take(std::optional<Note>& notice) {
    const std::lock_guard lock(mutex_);
    if (!line_.empty()) {
      notice = std::move(line_.front());
      line_.pop_front();
      changed_.notify_all();
      return Next::Notice;
    }
    if (ended_) return Next::End;
    idle_ = true;
    return Next::Nothing;
  }
  // Interface thread: the notice that was taken last has been dealt with.
  void Delivered() {
    const std::lock_guard lock(mutex_);
    ++delivered_;
    changed_.notify_all();
  }
  // Nothing more will be taken: what is in the line is dropped, what is posted from now on too, and nobody waits.
  void Close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    line_.clear();
    changed_.notify_all();
  }
  // The job has returned.
  void End() {
    bool wake = false;
    {
      const std::lock_guard lock(mutex_);
      ended_ = true;
      wake = std::exchange(idle_, false);
    }
    if (wake) events_.Wake();
  }

 private:
  // Gives how many notices had to be delivered for this one to be.
  std::uint64_t Put(Note notice) {
    bool wake = false;
    std::uint64_t ticket = 0;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [&] { return line_.size() < capacity_ || closed_; });
      if (closed_) return 0;
      line_.push_back(std::move(notice));
      ticket = ++posted_;
      wake = std::exchange(idle_, false);
    }
    if (wake) events_.Wake();
    return ticket;
  }

  EventQueue& events_;
  const std::size_t capacity_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Note> line_;
  std::uint64_t posted_ = 0;
  std::uint64_t delivered_ = 0;
  bool idle_ = false;  // the interface thread waits, or is about to
  bool closed_ = false;
  bool ended_ = false;
};

inline constexpr std::size_t kJobLineCapacity = 256;
inline constexpr std::chrono::milliseconds kJobIdleWait{100};
inline constexpr double kJobPumpEvery = 0.02;  // seconds of deliveries after which events get their turn

// The interface thread's half of RunJob: returns when the job has ended and its line is empty.
template <class Note, class Deliver>
void ServeJob(EventQueue& events, JobLine<Note>& line, Deliver& deliver) {
  using Next = typename JobLine<Note>::Next;
  std::optional<Note> notice;
  double pumped = events.Seconds();
  for (;;) {
    const Next next = line.Take(notice);
    if (next == Next::End) return;
    if (next == Next::Notice) {
      deliver(std::move(*notice));
      line.Delivered();
      if (events.Seconds() - pumped < kJobPumpEvery) continue;
    }
    events.Pump(next == Next::Nothing ? kJobIdleWait : std::chrono::milliseconds(0));
    pumped = events.Seconds();
  }
}

// Runs job(JobLine<Note>&) on a thread of its own and returns when it has ended. Interface thread; it delivers every
// notice by deliver(Note&&) and pumps `events` in between. `stop` is what the job polls.
//
// What the job throws is thrown here, after all that it posted was delivered. What a delivery or an event throws stops
// the job by `stop`, drops the undelivered rest, waits for the job's end, and is thrown here.
template <class Note, class Job, class Deliver>
void RunJob(EventQueue& events, StopToken& stop, Job&& job, Deliver&& deliver,
            std::size_t capacity = kJobLineCapacity) {
  JobLine<Note> line(events, capacity);
  std::exception_ptr ofJob;
  std::exception_ptr ofDelivery;
  std::thread worker([&] {
    try {
      job(line);
    } catch (...) {
      ofJob = std::current_exception();
    }
    line.End();
  });
  try {
    ServeJob(events, line, deliver);
  } catch (...) {
    ofDelivery = std::current_exception();
    stop.Stop();
    line.Close();
  }
  worker.join();
  if (ofDelivery) std::rethrow_exception(ofDelivery);
  if (ofJob) std::rethrow_exception(ofJob);
}

// The same of a job that has nothing to tell and that nobody stops.
template <class Job>
void RunJob(EventQueue& events, Job&& job) {
  struct Nothing {};
  StopToken stop;
  RunJob<Nothing>(
      events, stop, [&](JobLine<Nothing>&) { job(); }, [](Nothing&&) {});
}

}  // namespace tresmor
