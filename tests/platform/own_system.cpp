#include "platform/own_system.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>

#include <cstddef>
#include <cstdint>
#include <thread>

namespace tresmor {

namespace {

bool LetFail(long number, int error) {
  sock_filter steps[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(number), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(error)),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{sizeof steps / sizeof *steps, steps};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

bool LeaveOthersMounts() {
  return unshare(CLONE_NEWNS) == 0 && mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool RunOnThread(const std::function<bool()>& prepare, const std::function<void()>& work) {
  bool ready = false;
  std::thread([&] {
    ready = prepare();
    if (ready) work();
  }).join();
  return ready;
}

}  // namespace

bool WithFailingCall(long number, int error, const std::function<void()>& work) {
  return RunOnThread([&] { return LetFail(number, error); }, work);
}

bool WithOwnMounts(const std::function<void()>& work) { return RunOnThread(LeaveOthersMounts, work); }

}  // namespace tresmor
