// Numbers with the rounding and the bounds that the program's rules ask for.
#pragma once

#include <cstdint>
#include <string_view>

namespace tresmor {

// value / divisor rounded without a drift: of two whole numbers equally near, the even one. divisor > 0.
std::int64_t DivideRoundEven(std::int64_t value, std::int64_t divisor);
// The same for a value that is no quotient of whole numbers. Throws Failure Overflow where the result can't hold it.
std::int64_t RoundEven(double value);

// What parts the digits of a number. No thousands mark is an empty one.
struct NumberMarks {
  std::string_view decimal = ".";
  std::string_view thousands = "";
};

// A decimal text as a signed 32-bit number, fractions rounded half to even: a sign, digits with thousands marks
// anywhere among them, and a fraction. Blanks at both ends are passed over. Throws Failure TypeMismatch (no number) or
// Overflow.
std::int32_t ParseInt32(std::string_view text, NumberMarks marks);
// The same by the marks of the process's locale, which are read at the first call and kept: any thread may call.
std::int32_t ParseInt32(std::string_view text);

// For counters of 16 bits: throws Failure Overflow instead of wrapping.
std::int16_t CheckedInt16(std::int64_t value);

}  // namespace tresmor
