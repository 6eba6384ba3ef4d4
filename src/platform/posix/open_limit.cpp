#include "platform/posix/open_limit.h"

#include <sys/resource.h>

#include <atomic>

namespace tresmor {

namespace {

// What it was when it was raised last.
std::atomic<rlim_t> limitBefore{RLIM_INFINITY};

}  // namespace

std::size_t RaiseOpenLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
  const rlimit raised{limit.rlim_max, limit.rlim_max};
  if (limit.rlim_cur == raised.rlim_cur || setrlimit(RLIMIT_NOFILE, &raised) != 0) return limit.rlim_cur;
  limitBefore = limit.rlim_cur;
  return raised.rlim_cur;
}

void PutBackOpenLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur <= limitBefore) return;
  limit.rlim_cur = limitBefore;
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace tresmor
