// The loose comparison of one range.

#include "search/tolerant_compare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "search/compare_range_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

std::string WithChanges(std::string content, int changes) {
  for (int k = 0; k < changes; ++k) content[static_cast<std::size_t>(k)] = '!';
  return content;
}

TEST(CompFileCntTolerant, SeventyOneOfAHundredSlicesAreEnough) {
  const std::string content(100, 'x');
  for (const auto& [changes, group] : {std::pair{29, 0}, {30, -1}}) {
    Range range;
    range.Add(content);
    range.Add(WithChanges(content, changes));
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << changes;
  }
}

TEST(CompFileCntTolerant, ShortBlockHasASliceForEachCharacter) {
  const std::string content(10, 'x');
  for (const auto& [changes, group] : {std::pair{2, 0}, {3, -1}}) {  // 8 of 10 and 7 of 10
    Range range;
    range.Add(content);
    range.Add(WithChanges(content, changes));
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << changes;
  }
}

// 150 characters make slices of two, so that the last quarter of the slices lies behind the end and agrees for free;
// the first character is in none.
TEST(CompFileCntTolerant, SlicesBehindTheEndAgree) {
  const std::string content(150, 'x');
  for (const auto& [changes, group] : {std::pair{1 + 2 * 29, 0}, {2 + 2 * 29, -1}}) {
    Range range;
    range.Add(content);
    range.Add(WithChanges(content, changes));
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << changes;
  }
}

// A million bytes are twenty blocks and a budget of six misses.
std::string WithBadBlocks(int count) {
  std::string content(1'000'000, 'x');
  for (int block = 1; block <= count; ++block) {
    std::fill_n(content.begin() + block * 50'000, 50'000, '!');
  }
  return content;
}

TEST(CompFileCntTolerant, BudgetForgivesSixMissesAndThenEverythingFalls) {
  for (const auto& [bad, group] : {std::pair{6, 0}, {7, -1}}) {
    Range range;
    range.Add(WithBadBlocks(0));
    range.Add(WithBadBlocks(bad));
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << bad;
  }
}

TEST(CompFileCntTolerant, OverspentBudgetDropsEvenEqualFiles) {
  Range range;
  range.Add(WithBadBlocks(0));
  range.Add(WithBadBlocks(0));
  range.Add(WithBadBlocks(7));
  EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(-1, -1, -1));
}

TEST(CompFileCntTolerant, FirstBlockIsAGateWithoutABudget) {
  std::string content(1'000'000, 'x');
  std::string other = content;
  std::fill_n(other.begin(), 50'000, '!');
  Range range;
  range.Add(content);
  range.Add(other);
  EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(-1, -1));
}

// Whole blocks of forty such files would be forty megabytes; what is held of all of them together is a tenth of that.
// The changed slices lie all over the block, so that none may be read from the wrong place.
TEST(CompFileCntTolerant, BlocksAreReadInSharesThatFitTheBuffers) {
  Range range;
  for (int k = 0; k < 40; ++k) {
    const int spoilt = k % 2 == 0 ? 29 : 30;  // of a hundred slices, others in each file
    range.Add(999'999, [k, spoilt](std::int64_t offset, std::span<char> into) {
      for (std::size_t i = 0; i < into.size(); ++i) {
        const std::int64_t at = offset + static_cast<std::int64_t>(i);
        const std::int64_t slice = (at + 1) / 10'000 - 1;  // of ten thousand bytes, from byte 9,999 on
        const bool changed = k > 0 && slice >= 0 && slice * 37 % 99 < spoilt;
        into[i] = static_cast<char>(at % 251 + (changed ? k : 0));
      }
    });
  }
  const auto groups = range.Compare(SizeRule::SameSize, true);
  for (int k = 2; k < 40; k += 2) EXPECT_EQ(groups[static_cast<std::size_t>(k)], 0) << k;
  for (int k = 1; k < 40; k += 2) EXPECT_NE(groups[static_cast<std::size_t>(k)], 0) << k;
  for (const auto& call : range.Files().Calls()) EXPECT_LE(40 * call.length, 4'000'000);
}

// Seven of twenty blocks are half spoilt: too many for the budget of a file of twenty blocks, but few slices of a file
// that is one block.
TEST(CompFileCntTolerant, FileBelowAMillionBytesIsOneBlock) {
  for (const auto& [size, group] : {std::pair{999'999, 0}, {1'000'000, -1}}) {
    std::string content(static_cast<std::size_t>(size), 'x');
    std::string other = content;
    for (std::ptrdiff_t block = 1; block <= 7; ++block) std::fill_n(other.begin() + block * 50'000, 25'000, '!');
    Range range;
    range.Add(content);
    range.Add(other);
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << size;
  }
}

TEST(CompFileCntTolerant, TwoMillionBytesHaveABudgetOfTwelve) {
  for (const auto& [bad, group] : {std::pair{12, 0}, {13, -1}}) {
    std::string content(2'000'000, 'x');
    std::string other = content;
    std::fill_n(other.begin() + 50'000, bad * 50'000, '!');
    Range range;
    range.Add(content);
    range.Add(other);
    EXPECT_THAT(range.Compare(SizeRule::SameSize, true), ElementsAre(group, group)) << bad;
  }
}

}  // namespace
}  // namespace tresmor
