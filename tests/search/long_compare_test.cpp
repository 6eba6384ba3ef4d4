// Long files, of which all threads compare one range together.

#include "search/long_compare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <thread>

#include "search/compare_range_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

SearchLimits ShortSegments() {
  SearchLimits limits;
  limits.segment = 100'000;
  return limits;
}

void FillLongRange(Range& range) {
  const std::string content(2'350'000, 'x');
  range.Add(content);
  range.Add(Changed(content, 2'349'999));
  range.Add(content);
  range.Add(Changed(content, 120'000));
  range.Add(Changed(content, 2'349'999));
  range.Add(Changed(Changed(content, 120'000), 2'000'000));
  range.Add(content);
  range.Add(Changed(content, 120'000));
}

TEST(CompLongFiles, VerdictsAreThoseOfOneThread) {
  for (int round = 0; round < 5; ++round) {
    Range shared(ShortSegments());
    FillLongRange(shared);
    EXPECT_THAT(shared.Compare(SizeRule::SameSize, false, Range::Threads::Shared),
                ElementsAre(0, 1, 0, 3, 1, -1, 0, 3));
    for (const auto& [path, bytes] : BytesRead(shared.Files())) EXPECT_LE(bytes, 2'350'000) << path;
  }
}

TEST(CompLongFiles, FailureIsJudgedAsByOneThreadInWhateverOrderStretchesAreDone) {
  Range alone;
  FillLongRange(alone);
  alone.Files().FailRead("/d/6", 1'700'000, Errors::Device);
  alone.Files().FailRead("/d/0", 2'100'000, Errors::Device);
  const auto expected = alone.Compare();
  EXPECT_THAT(expected, ElementsAre(-3, 0, -1, 3, 0, -1, -3, 3));
  for (int round = 0; round < 10; ++round) {
    Range shared(ShortSegments());
    FillLongRange(shared);
    shared.Files().FailRead("/d/6", 1'700'000, Errors::Device);
    shared.Files().FailRead("/d/0", 2'100'000, Errors::Device);
    shared.Files().SetHook([round](const MemoryFileSystem::Call& call) {
      if (call.offset / 100'000 % 3 == round % 3) std::this_thread::yield();
    });
    EXPECT_EQ(shared.Compare(SizeRule::SameSize, false, Range::Threads::Shared), expected);
  }
}

TEST(CompLongFiles, UnlikeFilesGoInTheFirstBlock) {
  Range range(ShortSegments());
  for (int k = 0; k < 6; ++k) {
    range.Add(50'000'000,
              [k](std::int64_t, std::span<char> into) { std::fill(into.begin(), into.end(), static_cast<char>(k)); });
  }
  EXPECT_THAT(range.Compare(SizeRule::SameSize, false, Range::Threads::Shared), testing::Each(-1));
  for (const auto& [path, bytes] : BytesRead(range.Files())) EXPECT_LE(bytes, 50'000) << path;
}

}  // namespace
}  // namespace tresmor
