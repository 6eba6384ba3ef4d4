#include "picture/limits.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>

namespace tresmor {

namespace {

bool Lower(decltype(RLIMIT_AS) what, rlim_t most) {
  rlimit limit{};
  if (getrlimit(what, &limit) != 0) return false;
  limit.rlim_max = std::min(limit.rlim_max, most);
  limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
  return setrlimit(what, &limit) == 0;
}

bool LowerMemory() {
#ifdef __SANITIZE_ADDRESS__
  return true;
#else
  return Lower(RLIMIT_AS, kMostMemory);
#endif
}

}  // namespace

bool LowerLimits() {
  return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 &&
         prctl(PR_SET_DUMPABLE, 0) == 0 && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && LowerMemory() &&
         Lower(RLIMIT_CPU, kMostSeconds) && Lower(RLIMIT_FSIZE, 0) && Lower(RLIMIT_NOFILE, kMostOpenFiles) &&
         Lower(RLIMIT_CORE, 0);
}

}  // namespace tresmor
