#include "base/number.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/failure.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

TEST(DivideRoundEven, RoundsToTheNearestAndHalvesToEven) {
  EXPECT_EQ(DivideRoundEven(512, 1024), 0);
  EXPECT_EQ(DivideRoundEven(513, 1024), 1);
  EXPECT_EQ(DivideRoundEven(1536, 1024), 2);
  EXPECT_EQ(DivideRoundEven(2560, 1024), 2);
  EXPECT_EQ(DivideRoundEven(102400, 1024), 100);
  EXPECT_EQ(DivideRoundEven(101887, 1024), 99);
  EXPECT_EQ(DivideRoundEven(0, 7), 0);
  EXPECT_EQ(DivideRoundEven(4, 3), 1);
  EXPECT_EQ(DivideRoundEven(5, 3), 2);
}

TEST(DivideRoundEven, RoundsNegativeValuesLikePositiveOnes) {
  EXPECT_EQ(DivideRoundEven(-512, 1024), 0);
  EXPECT_EQ(DivideRoundEven(-513, 1024), -1);
  EXPECT_EQ(DivideRoundEven(-1536, 1024), -2);
  EXPECT_EQ(DivideRoundEven(-2560, 1024), -2);
  EXPECT_EQ(DivideRoundEven(-5, 3), -2);
  EXPECT_EQ(DivideRoundEven(-4, 3), -1);
}

TEST(DivideRoundEven, HoldsAtTheBounds) {
  constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
  constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(DivideRoundEven(kMax, 1), kMax);
  EXPECT_EQ(DivideRoundEven(kMin, 1), kMin);
  EXPECT_EQ(DivideRoundEven(kMax, kMax), 1);
  EXPECT_EQ(DivideRoundEven(kMax / 2, kMax), 0);
  EXPECT_EQ(DivideRoundEven(kMin, kMax), -1);
  EXPECT_EQ(DivideRoundEven(kMax, 2), kMax / 2 + 1);  // half above an odd number
}

TEST(RoundEven, RoundsHalvesToEven) {
  EXPECT_EQ(RoundEven(0.5), 0);
  EXPECT_EQ(RoundEven(1.5), 2);
  EXPECT_EQ(RoundEven(2.5), 2);
  EXPECT_EQ(RoundEven(2.5000001), 3);
  EXPECT_EQ(RoundEven(-1.5), -2);
  EXPECT_EQ(RoundEven(-0.5), 0);
  EXPECT_EQ(RoundEven(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
}

TEST(RoundEven, FailsBeyondTheBounds) {
  EXPECT_EQ(tests::FailureOf([] { RoundEven(9223372036854775808.0); }), Errors::Overflow);
  EXPECT_EQ(tests::FailureOf([] { RoundEven(-1e19); }), Errors::Overflow);
  EXPECT_EQ(tests::FailureOf([] { RoundEven(std::numeric_limits<double>::quiet_NaN()); }), Errors::Overflow);
  EXPECT_EQ(tests::FailureOf([] { RoundEven(std::numeric_limits<double>::infinity()); }), Errors::Overflow);
}

TEST(ParseInt32, ReadsWholeNumbers) {
  EXPECT_EQ(ParseInt32("0"), 0);
  EXPECT_EQ(ParseInt32("  42 "), 42);
  EXPECT_EQ(ParseInt32("-7"), -7);
  EXPECT_EQ(ParseInt32("+7"), 7);
  EXPECT_EQ(ParseInt32("0000000000000000000000012"), 12);
  EXPECT_EQ(ParseInt32("2147483647"), 2147483647);
  EXPECT_EQ(ParseInt32("-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(ParseInt32, RoundsFractionsHalfToEven) {
  EXPECT_EQ(ParseInt32("1.5"), 2);
  EXPECT_EQ(ParseInt32("2.5"), 2);
  EXPECT_EQ(ParseInt32("2.50000000000000000000000000001"), 3);
  EXPECT_EQ(ParseInt32("2.5000"), 2);
  EXPECT_EQ(ParseInt32("2.49999999999999999999999999999"), 2);
  EXPECT_EQ(ParseInt32("-1.5"), -2);
  EXPECT_EQ(ParseInt32("-0.5"), 0);
  EXPECT_EQ(ParseInt32(".6"), 1);
  EXPECT_EQ(ParseInt32("5."), 5);
  EXPECT_EQ(ParseInt32("2147483647.4"), 2147483647);
}

TEST(ParseInt32, FailsWhereThereIsNoNumber) {
  for (const char* text : {"", "  ", ".", "-", "+", "a", "1a", "1.2.3", "1 2", "--1", "0x10", "1,000", "1e3", "inf",
                           "99999999999999999999x"}) {
    EXPECT_EQ(tests::FailureOf([text] { ParseInt32(text); }), Errors::TypeMismatch) << text;
  }
}

TEST(ParseInt32, FailsWhereTheNumberIsTooGreat) {
  for (const char* text : {"2147483648", "-2147483649", "2147483647.5", "99999999999999999999999999"}) {
    EXPECT_EQ(tests::FailureOf([text] { ParseInt32(text); }), Errors::Overflow) << text;
  }
}

TEST(ParseInt32, FollowsTheMarks) {
  const NumberMarks marks{.decimal = ",", .thousands = "."};
  EXPECT_EQ(ParseInt32("1.234.567,5", marks), 1234568);
  EXPECT_EQ(ParseInt32("-0,5", marks), 0);
  EXPECT_EQ(ParseInt32("1\u00A0000", {.decimal = ",", .thousands = "\u00A0"}), 1000);
  EXPECT_EQ(tests::FailureOf([&] { ParseInt32(".5", marks); }), Errors::TypeMismatch);
  EXPECT_EQ(tests::FailureOf([&] { ParseInt32("1,5.0", marks); }), Errors::TypeMismatch);
}

TEST(CheckedInt16, FailsInsteadOfWrapping) {
  EXPECT_EQ(CheckedInt16(32767), 32767);
  EXPECT_EQ(CheckedInt16(-32768), -32768);
  EXPECT_EQ(tests::FailureOf([] { CheckedInt16(32768); }), Errors::Overflow);
  EXPECT_EQ(tests::FailureOf([] { CheckedInt16(-32769); }), Errors::Overflow);
  EXPECT_EQ(tests::FailureOf([] { CheckedInt16(std::int64_t{1} << 40); }), Errors::Overflow);
}

}  // namespace
}  // namespace tresmor
