// Each test limits a process of its own.
#include "picture/limits.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "picture/system_calls.h"

namespace tresmor {
namespace {

using testing::ExitedWithCode;

bool IsLowered(decltype(RLIMIT_AS) what, rlim_t most) {
  rlimit limit{};
  return getrlimit(what, &limit) == 0 && limit.rlim_cur <= most && limit.rlim_max <= most;
}

// 0, or the number of the first that doesn't hold.
int FirstFalse(std::initializer_list<bool> claims) {
  int number = 0;
  for (const bool claim : claims) {
    ++number;
    if (!claim) return number;
  }
  return 0;
}

TEST(LimitsTest, LowersTimeFilesAndRights) {
  const auto child = [] {
    if (!LowerLimits()) return 100;
    int end = 0;
    prctl(PR_GET_PDEATHSIG, &end);
    return FirstFalse({IsLowered(RLIMIT_CPU, kMostSeconds), IsLowered(RLIMIT_FSIZE, 0), IsLowered(RLIMIT_CORE, 0),
                       IsLowered(RLIMIT_NOFILE, kMostOpenFiles), prctl(PR_GET_DUMPABLE) == 0, end == SIGKILL,
                       prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1});
  };
  EXPECT_EXIT(_exit(child()), ExitedWithCode(0), "");
  EXPECT_EXIT(_exit(LowerLimits() && LowerLimits() ? 0 : 1), ExitedWithCode(0), "") << "lower ones stay";
}

TEST(LimitsTest, LimitsMemory) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs terabytes";
#else
  const auto child = [] {
    if (!LowerLimits()) return 100;
    const auto fits = [](std::size_t size) {
      return mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
    };
    return FirstFalse({fits(kMostMemory / 4), !fits(kMostMemory)});
  };
  EXPECT_EXIT(_exit(child()), ExitedWithCode(0), "");
#endif
}

bool AreCallsLimited() {
#if defined(__x86_64__) || defined(__aarch64__)
  return prctl(PR_GET_SECCOMP, 0, 0, 0, 0) == 0;  // -1 where the system doesn't know of it
#else
  return false;
#endif
}

int Try(long result) { return result < 0 ? errno : 0; }

TEST(SystemCallsTest, LeavesReadingAndThreads) {
  const auto child = [] {
    if (!LowerLimits()) return 100;
    AllowFewCalls();
    bool ran = false;
    std::thread([&] { ran = true; }).join();
    char byte = 0;
    const int file = open("/dev/zero", O_RDONLY | O_CLOEXEC);
    return FirstFalse({ran, read(file, &byte, 1) == 1, close(file) == 0});
  };
  EXPECT_EXIT(_exit(child()), ExitedWithCode(0), "");
}

TEST(SystemCallsTest, LeavesNeitherNetworkNorProgramsNorChanges) {
  if (!AreCallsLimited()) GTEST_SKIP() << "not on this processor or system";
  const auto child = [] {
    if (!LowerLimits()) return 100;
    AllowFewCalls();
    char name[] = "/bin/true";
    char* argv[] = {name, nullptr};
    return FirstFalse({
        Try(socket(AF_INET, SOCK_STREAM, 0)) == ENOSYS,
        Try(socket(AF_UNIX, SOCK_STREAM, 0)) == ENOSYS,
        Try(execv(name, argv)) == ENOSYS,
        Try(syscall(__NR_clone, SIGCHLD, nullptr, nullptr, nullptr, 0UL)) == ENOSYS,
        Try(open("/dev/null", O_WRONLY | O_CLOEXEC)) == ENOSYS,
        Try(open("/dev/null", O_RDWR | O_CLOEXEC)) == ENOSYS,
        Try(open("/dev/null", O_RDONLY | O_TRUNC | O_CLOEXEC)) == ENOSYS,
        Try(open("/dev/null/x", O_RDONLY | O_CREAT | O_CLOEXEC, 0644)) == ENOSYS,
        Try(unlink("/nonexistent")) == ENOSYS,
        Try(rename("/nonexistent", "/nonexistent")) == ENOSYS,
        Try(mkdir("/nonexistent/x", 0755)) == ENOSYS,
        Try(kill(getpid(), 0)) == ENOSYS,
    });
  };
  EXPECT_EXIT(_exit(child()), ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tresmor
