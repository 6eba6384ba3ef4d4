#include "cli/interrupt.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>

namespace tresmor {
namespace {

using Clock = std::chrono::steady_clock;

// Some programs pass one signal on twice, to their child and to its group.
constexpr std::int64_t kOneRequest = Clock::duration(std::chrono::milliseconds(200)).count();

std::atomic<std::int64_t> firstAt{0};  // by Clock; 0 = not yet
static_assert(std::atomic<std::int64_t>::is_always_lock_free, "a signal handler writes it");

void Handle(int signal) {
  const std::int64_t now = Clock::now().time_since_epoch().count();
  std::int64_t first = 0;
  if (firstAt.compare_exchange_strong(first, now) || now - first < kOneRequest) return;
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void Replace(int signal, void (*handler)(int)) {
  // Whoever ignores a signal, as programs in the background of a shell do, goes on ignoring it.
  if (std::signal(signal, handler) == SIG_IGN) std::signal(signal, SIG_IGN);
}

}  // namespace

void CatchInterrupts() {
  Replace(SIGINT, Handle);
  Replace(SIGTERM, Handle);
}

bool Interrupted() { return firstAt.load(std::memory_order_relaxed) != 0; }

void ReleaseInterrupts() {
  Replace(SIGINT, SIG_DFL);
  Replace(SIGTERM, SIG_DFL);
}

}  // namespace tresmor
