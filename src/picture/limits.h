// What the picture helper gives up before it looks at a file that may be hostile.
#pragma once

#include <cstdint>

namespace tresmor {

// Limits memory to kMostMemory and the processor's time to kMostSeconds, lets no file be written and few be open,
// leaves no core, gains no rights, and ends with the parent process. False if the system refuses one of these. For
// good, and for the whole process. Builds with the address sanitizer, which needs terabytes, don't limit memory.
bool LowerLimits();

inline constexpr std::uint64_t kMostMemory = 2ULL << 30;  // bytes of address space
inline constexpr std::uint64_t kMostSeconds = 10;
inline constexpr std::uint64_t kMostOpenFiles = 32;

}  // namespace tresmor
