// The text of the version that a program file bears.
#pragma once

#include <cstdint>
#include <string>

namespace tresmor {

// What is in use of the platform's record: the file version, two parts of 16 bits in each number.
struct VS_FIXEDFILEINFO {
  std::int32_t dwFileVersionMS = 0;
  std::int32_t dwFileVersionLS = 0;
};

// The upper part of a number by a division by 65535, and one less below 0. The divisor is meant: the texts that it
// gives are what people have seen and sorted by ever since. It comes out one above the true upper half where the two
// halves add up to 65535 or more.
std::int32_t HiWord(std::int32_t value);
// The lower 16 bits, 0 to 65535.
std::int32_t LoWord(std::int32_t value);

// "5.01.2600.01" of 5.1.2600.1. A second number below 1 is shown whole, as "5.01.0000".
std::string VersionText(const VS_FIXEDFILEINFO& info);

}  // namespace tresmor
