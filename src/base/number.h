// Numbers with the rounding and the bounds that the program's rules ask for.
#pragma once

#include <cstdint>
#include <string_view>

namespace tresmor {

// value / divisor to the nearest whole number, a half going to the even neighbour. divisor > 0.
std::int64_t DivideRoundEven(std::int64_t value, std::int64_t divisor);
// The same for a value that is no quotient of whole numbers.
std::int64_t RoundEven(double value);

// A decimal text as a signed 32-bit number, by the locale's separators, fractions rounded half to even. Blanks at both
// ends are passed over. Throws Failure TypeMismatch (no number) or Overflow.
std::int32_t ParseInt32(std::string_view text);

// A counter that is 16-bit by design: fails with Overflow instead of wrapping.
std::int16_t CheckedInt16(std::int64_t value);

}  // namespace tresmor
