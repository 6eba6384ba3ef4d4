#include "results/version_key.h"

#include <gtest/gtest.h>

namespace tresmor {
namespace {

TEST(VerSortKey, FillsEachPartToFourDigits) {
  EXPECT_EQ(VerSortKey("1.2.3.40"), "0001000200030040");
  EXPECT_EQ(VerSortKey("1.10"), "00010010");
  EXPECT_EQ(VerSortKey("1.9"), "00010009");
  EXPECT_EQ(VerSortKey("0"), "0000");
  EXPECT_EQ(VerSortKey("00012.12345"), "001212345");
  EXPECT_EQ(VerSortKey("1. 5"), "00010005");
  EXPECT_EQ(VerSortKey("-3.-0"), "-00030000");
}

TEST(VerSortKey, LeavesWhatIsNoNumber) {
  EXPECT_EQ(VerSortKey("1.2b.rc1"), "00012brc1");
  EXPECT_EQ(VerSortKey("1..2."), "00010002");
  EXPECT_EQ(VerSortKey("1, 2, 3"), "1, 2, 3");
  EXPECT_EQ(VerSortKey(" . -"), "  -");
}

TEST(VerSortKey, AnEmptyVersionComesFirstAndFewerPartsBeforeMore) {
  EXPECT_EQ(VerSortKey(""), "");
  EXPECT_LT(VerSortKey("1.2"), VerSortKey("1.2.0"));
  EXPECT_LT(VerSortKey("1.9"), VerSortKey("1.10"));
}

}  // namespace
}  // namespace tresmor
