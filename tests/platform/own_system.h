// A system as a test wants it, for the thread that runs the test's work alone.
#pragma once

#include <functional>

namespace tresmor {

// Runs `work` on a thread on which the system call of this number fails with `error`. False, and nothing was run, where
// the system doesn't let one do that.
bool WithFailingCall(long number, int error, const std::function<void()>& work);

// What a test says where the next fails.
inline constexpr char kNoMounts[] = "nothing can be mounted here";

// Runs `work` on a thread whose mounts nobody else sees. False, and nothing was run, without the right to that.
bool WithOwnMounts(const std::function<void()>& work);

}  // namespace tresmor
