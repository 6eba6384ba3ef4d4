// Signals as the program takes them: the first is a flag, a later one ends it.
#include "cli/interrupt.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace tresmor {
namespace {

using testing::ExitedWithCode;
using testing::KilledBySignal;

constexpr int kWasFlagged = 7;

// Each test's statement runs in a process of its own.
[[noreturn]] void EndWithTheFlag() { std::_Exit(Interrupted() ? kWasFlagged : 0); }

void Catch(void (*before)(int)) {
  std::signal(SIGINT, before);
  std::signal(SIGTERM, before);
  CatchInterrupts();
}

void WaitOutTheEcho() { std::this_thread::sleep_for(std::chrono::milliseconds(250)); }

TEST(InterruptDeathTest, TheFirstIsAFlag) {
  for (const int signal : {SIGINT, SIGTERM}) {
    EXPECT_EXIT(
        {
          Catch(SIG_DFL);
          std::raise(signal);
          EndWithTheFlag();
        },
        ExitedWithCode(kWasFlagged), "")
        << signal;
  }
}

TEST(InterruptDeathTest, ALaterOneEndsTheProgram) {
  for (const int signal : {SIGINT, SIGTERM}) {
    EXPECT_EXIT(
        {
          Catch(SIG_DFL);
          std::raise(SIGINT);
          WaitOutTheEcho();
          std::raise(signal);
          EndWithTheFlag();
        },
        KilledBySignal(signal), "")
        << signal;
  }
}

TEST(InterruptDeathTest, OneThatWasIgnoredStaysIgnored) {
  EXPECT_EXIT(
      {
        Catch(SIG_IGN);
        std::raise(SIGINT);
        EndWithTheFlag();
      },
      ExitedWithCode(0), "");
}

TEST(InterruptDeathTest, OnceReleasedTheFirstEndsTheProgram) {
  EXPECT_EXIT(
      {
        Catch(SIG_DFL);
        ReleaseInterrupts();
        std::raise(SIGINT);
        EndWithTheFlag();
      },
      KilledBySignal(SIGINT), "");
}

}  // namespace
}  // namespace tresmor
