#include "picture/system_calls.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tresmor {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t kProcessor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kProcessor = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t kProcessor = 0;
#endif

constexpr std::uint32_t kAllowed[] = {
    // memory
    __NR_brk,
    __NR_mmap,
    __NR_munmap,
    __NR_mremap,
    __NR_mprotect,
    __NR_madvise,
    // what is open, and what is there to be opened
    __NR_read,
    __NR_pread64,
    __NR_readv,
    __NR_write,
    __NR_writev,
    __NR_lseek,
    __NR_close,
    __NR_fstat,
    __NR_newfstatat,
    __NR_statx,
    __NR_fstatfs,
    __NR_statfs,
    __NR_faccessat,
    __NR_readlinkat,
    __NR_getdents64,
    __NR_getcwd,
    __NR_fcntl,
    // threads, and how they wait and wake each other
    __NR_futex,
    __NR_set_robust_list,
    __NR_rseq,
    __NR_sched_yield,
    __NR_sched_getaffinity,
    __NR_eventfd2,
    __NR_ppoll,
    __NR_exit,
    __NR_exit_group,
    __NR_rt_sigaction,
    __NR_rt_sigprocmask,
    __NR_rt_sigreturn,
    __NR_sigaltstack,
    // questions
    __NR_getpid,
    __NR_gettid,
    __NR_getuid,
    __NR_geteuid,
    __NR_getgid,
    __NR_getegid,
    __NR_uname,
    __NR_sysinfo,
    __NR_getrandom,
    __NR_clock_gettime,
    __NR_clock_getres,
    __NR_clock_nanosleep,
    __NR_gettimeofday,
#ifdef __NR_access  // older forms, which newer processors don't have
    __NR_access,
    __NR_stat,
    __NR_lstat,
    __NR_readlink,
    __NR_poll,
#endif
};

// Calls that are allowed if one argument has of the bits in `mask` exactly those in `wanted`.
struct Condition {
  std::uint32_t call;
  std::uint32_t argument;  // from 0
  std::uint32_t mask;
  std::uint32_t wanted;
};
constexpr Condition kConditions[] = {
    {__NR_openat, 2, O_ACCMODE | O_CREAT | O_TRUNC, O_RDONLY},
    {__NR_clone, 0, CLONE_THREAD, CLONE_THREAD},
};

constexpr std::uint16_t kLoad = BPF_LD | BPF_W | BPF_ABS;
constexpr std::uint16_t kJumpIfEqual = BPF_JMP | BPF_JEQ | BPF_K;
constexpr std::uint16_t kReturn = BPF_RET | BPF_K;
constexpr std::uint32_t kUnknownCall = SECCOMP_RET_ERRNO | ENOSYS;

// The lower half of an argument, which on these processors comes first.
constexpr std::uint32_t PlaceOf(std::uint32_t argument) {
  return static_cast<std::uint32_t>(offsetof(seccomp_data, args)) + argument * 8;
}

// A filter's steps; a jump tells how many to leave out if its test holds, and if it doesn't.
std::vector<sock_filter> MakeFilter() {
  std::vector<sock_filter> steps = {
      {kLoad, 0, 0, offsetof(seccomp_data, arch)},
      {kJumpIfEqual, 1, 0, kProcessor},
      {kReturn, 0, 0, kUnknownCall},
      {kLoad, 0, 0, offsetof(seccomp_data, nr)},
  };
  for (const std::uint32_t call : kAllowed) {
    steps.push_back({kJumpIfEqual, 0, 1, call});
    steps.push_back({kReturn, 0, 0, SECCOMP_RET_ALLOW});
  }
  for (const Condition& condition : kConditions) {
    steps.push_back({kJumpIfEqual, 0, 5, condition.call});
    steps.push_back({kLoad, 0, 0, PlaceOf(condition.argument)});
    steps.push_back({BPF_ALU | BPF_AND | BPF_K, 0, 0, condition.mask});
    steps.push_back({kJumpIfEqual, 0, 1, condition.wanted});
    steps.push_back({kReturn, 0, 0, SECCOMP_RET_ALLOW});
    steps.push_back({kReturn, 0, 0, kUnknownCall});
  }
  steps.push_back({kReturn, 0, 0, kUnknownCall});
  return steps;
}

}  // namespace

void AllowFewCalls() {
  if (kProcessor == 0) return;
  std::vector<sock_filter> steps = MakeFilter();
  const sock_fprog filter{static_cast<unsigned short>(steps.size()), steps.data()};
  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

}  // namespace tresmor
