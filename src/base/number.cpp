#include "base/number.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include "base/failure.h"
#include "base/text.h"

namespace tresmor {

namespace {

// A number without its sign as it is read digit by digit.
struct Digits {
  static constexpr std::int64_t kFarTooMuch = std::int64_t{1} << 40;

  std::int64_t whole = 0;
  int tenth = 0;        // first digit of the fraction
  bool beyond = false;  // whether a digit behind that isn't 0
  std::size_t count = 0;
  std::size_t decimals = 0;
  bool inFraction = false;

  void Take(int digit) {
    ++count;
    if (!inFraction) {
      whole = std::min(whole * 10 + digit, kFarTooMuch);
    } else if (decimals++ == 0) {
      tenth = digit;
    } else {
      beyond = beyond || digit != 0;
    }
  }
  std::int64_t Rounded() const {
    const bool up = tenth > 5 || (tenth == 5 && (beyond || whole % 2 == 1));
    return whole + (up ? 1 : 0);
  }
};

Digits ReadDigits(std::string_view text, NumberMarks marks) {
  Digits digits;
  while (!text.empty()) {
    std::size_t taken = 1;
    if (text[0] >= '0' && text[0] <= '9') {
      digits.Take(text[0] - '0');
    } else if (!digits.inFraction && text.starts_with(marks.decimal)) {
      digits.inFraction = true;
      taken = marks.decimal.size();
    } else if (!digits.inFraction && digits.count > 0 && !marks.thousands.empty() &&
               text.starts_with(marks.thousands)) {
      taken = marks.thousands.size();
    } else {
      throw Failure(Errors::TypeMismatch);
    }
    text.remove_prefix(taken);
  }
  if (digits.count == 0) throw Failure(Errors::TypeMismatch);
  return digits;
}

template <typename T>
T Checked(std::int64_t value) {
  if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) throw Failure(Errors::Overflow);
  return static_cast<T>(value);
}

}  // namespace

std::int64_t DivideRoundEven(std::int64_t value, std::int64_t divisor) {
  std::int64_t quotient = value / divisor;
  std::int64_t rest = value % divisor;
  if (rest < 0) {
    rest += divisor;
    --quotient;
  }
  const std::int64_t missing = divisor - rest;
  const bool up = rest > missing || (rest == missing && quotient % 2 != 0);
  return up ? quotient + 1 : quotient;
}

std::int64_t RoundEven(double value) {
  constexpr double kBound = 9223372036854775808.0;  // 2 to the 63rd
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -kBound && rounded < kBound)) throw Failure(Errors::Overflow);
  return static_cast<std::int64_t>(rounded);
}

std::int32_t ParseInt32(std::string_view text, NumberMarks marks) {
  text = TrimBlanks(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const std::int64_t value = ReadDigits(text, marks).Rounded();
  return Checked<std::int32_t>(negative ? -value : value);
}

std::int32_t ParseInt32(std::string_view text) {
  static const std::string decimal = std::localeconv()->decimal_point;
  static const std::string thousands = std::localeconv()->thousands_sep;
  return ParseInt32(text, {decimal, thousands});
}

std::int16_t CheckedInt16(std::int64_t value) { return Checked<std::int16_t>(value); }

}  // namespace tresmor
