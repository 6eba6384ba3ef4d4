#include "results/version_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "results/version_key.h"

namespace tresmor {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

VS_FIXEDFILEINFO Info(std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d) {
  return {a * 0x10000 + b, c * 0x10000 + d};
}

TEST(VersionText, HiWordIsTheUpperHalfOfOrdinaryVersions) {
  EXPECT_EQ(HiWord(0), 0);
  EXPECT_EQ(HiWord(0x00010000), 1);
  EXPECT_EQ(HiWord(0x00050001), 5);
  EXPECT_EQ(HiWord(0x0A280001), 2600);
}

TEST(VersionText, HiWordIsOneAboveOnceTheHalvesAddUpTo65535) {
  EXPECT_EQ(HiWord(0x0000FFFE), 0);
  EXPECT_EQ(HiWord(0x0000FFFF), 1);
  EXPECT_EQ(HiWord(0x0001FFFD), 1);
  EXPECT_EQ(HiWord(0x0001FFFE), 2);
  EXPECT_EQ(HiWord(kMax), 32768);
}

TEST(VersionText, HiWordBelowZeroIsCutTowardsZeroAndLessOne) {
  EXPECT_EQ(HiWord(-1), -1);
  EXPECT_EQ(HiWord(-65534), -1);
  EXPECT_EQ(HiWord(-65535), -2);
  EXPECT_EQ(HiWord(kMin), -32769);
}

TEST(VersionText, LoWordIsTheLowSixteenBits) {
  EXPECT_EQ(LoWord(0x00050001), 1);
  EXPECT_EQ(LoWord(0x0001FFFF), 65535);
  EXPECT_EQ(LoWord(-1), 65535);
  EXPECT_EQ(LoWord(kMin), 0);
}

TEST(VersionText, AllPartsButTheFirstHaveTwoDigits) {
  EXPECT_EQ(VersionText(Info(1, 2, 0, 3)), "1.02.00.03");
  EXPECT_EQ(VersionText(Info(5, 1, 2600, 1)), "5.01.2600.01");
  EXPECT_EQ(VersionText(Info(0, 0, 0, 1)), "0.00.00.01");
  EXPECT_EQ(VersionText(Info(1, 100, 0, 3)), "1.100.00.03");
}

TEST(VersionText, WithoutASecondNumberAFieldOfFourDigitsEndsIt) {
  EXPECT_EQ(VersionText(Info(1, 2, 0, 0)), "1.02.0000");
  EXPECT_EQ(VersionText(Info(5, 1, 0, 0)), "5.01.0000");
}

TEST(VersionText, ANegativeSecondNumberEndsItWhole) {
  EXPECT_EQ(VersionText({0x00010002, kMin}), "1.02.-2147483648");
  EXPECT_EQ(VersionText({0x00010002, -1}), "1.02.-0001");
  EXPECT_EQ(VersionText({0x00010002, -12345}), "1.02.-12345");
}

TEST(VersionText, ANegativeFirstNumberKeepsItsSign) { EXPECT_EQ(VersionText({-1, 1}), "-1.65535.00.01"); }

TEST(VersionText, ShowsWhatTheDivisorMakesOfFullHalves) {
  EXPECT_EQ(VersionText({0x0001FFFE, 0x0001FFFF}), "2.65534.02.65535");
}

TEST(VersionText, ItsKeysOrderVersionsByNumber) {
  EXPECT_EQ(VerSortKey(VersionText(Info(5, 1, 2600, 1))), "0005000126000001");
  EXPECT_EQ(VerSortKey(VersionText(Info(5, 1, 0, 0))), "000500010000");
  EXPECT_EQ(VerSortKey(VersionText({0x00010002, -1})), "00010002-0001");
  EXPECT_LT(VerSortKey(VersionText(Info(1, 9, 1, 0))), VerSortKey(VersionText(Info(1, 10, 1, 0))));
  EXPECT_LT(VerSortKey(VersionText(Info(9, 0, 1, 0))), VerSortKey(VersionText(Info(10, 0, 1, 0))));
}

}  // namespace
}  // namespace tresmor
