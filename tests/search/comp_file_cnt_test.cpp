// The comparison of one range: verdicts, what is read, and what it costs.

#include "search/comp_file_cnt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <tuple>
#include <utility>

#include "search/compare_range_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

TEST(CompFileCnt, TwoEqualFilesAreAGroupUnderTheLower) {
  Range range;
  range.Add("0123456789");
  range.Add("0123456789");
  EXPECT_THAT(range.Compare(), ElementsAre(0, 0));
}

TEST(CompFileCnt, FileThatDiffersInItsLastByteStaysOut) {
  Range range;
  for (int k = 0; k < 3; ++k) range.Add("0123456789");
  range.Add("012345678!");
  EXPECT_THAT(range.Compare(), ElementsAre(0, 0, 0, -1));
}

TEST(CompFileCnt, LongFilesThatDifferInTheLastBlockPart) {
  const std::string content(2'000'000, 'x');
  Range range;
  range.Add(content);
  range.Add(Changed(content, 1'999'999));
  EXPECT_THAT(range.Compare(), ElementsAre(-1, -1));
}

TEST(CompFileCnt, GroupSplitsIntoTwo) {
  const std::string one(1'000'000, 'x');
  const std::string two = Changed(one, 60'000);
  Range range;
  range.Add(one);
  range.Add(one);
  range.Add(two);
  range.Add(two);
  EXPECT_THAT(range.Compare(), ElementsAre(0, 0, 2, 2));
}

TEST(CompFileCnt, FileThatCannotBeOpenedIsAReadErrorAndItsPartnerIsFree) {
  Range range;
  range.Add("same");
  range.Add("same");
  range.Files().FailOpen("/d/1", Errors::PermissionDenied);
  EXPECT_THAT(range.Compare(), ElementsAre(-1, -3));
}

TEST(CompFileCnt, FailureBehindTheLastNeededByteIsNotSeen) {
  std::string content(300'000, 'x');
  Range range;
  range.Add(content);
  range.Add(Changed(content, 10));
  range.Files().FailRead("/d/1", 200'000, Errors::Device);
  EXPECT_THAT(range.Compare(), ElementsAre(-1, -1));
}

TEST(CompFileCnt, LeaderThatFailsLeavesItsNumberToTheOthers) {
  const std::string content(1'000'000, 'x');
  Range range;
  for (int k = 0; k < 3; ++k) range.Add(content);
  range.Files().FailRead("/d/0", 500'000, Errors::Device);
  EXPECT_THAT(range.Compare(), ElementsAre(-3, 0, 0));
}

TEST(CompFileCnt, LastMemberOfAGroupThatFailuresEmptiedKeepsItsNumber) {
  const std::string content(1'000'000, 'x');
  Range range;
  range.Add(content);
  range.Add(content);
  range.Files().FailRead("/d/1", 500'000, Errors::Device);
  EXPECT_THAT(range.Compare(), ElementsAre(0, -3));
}

TEST(CompFileCnt, FileOfAnotherLengthThanRecordedIsAReadError) {
  for (const char* content : {"same+", "sam"}) {
    Range range;
    range.Add("same");
    range.Add("same");
    range.Add("same");
    range.Files().SetContent("/d/2", content);
    EXPECT_THAT(range.Compare(), ElementsAre(0, 0, -3)) << content;
  }
}

TEST(CompFileCnt, FileThatShrinksWhileBeingReadIsAReadError) {
  const std::string content(300'000, 'x');
  Range range;
  for (int k = 0; k < 3; ++k) range.Add(content);
  range.Files().SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Read && call.path == "/d/2" && call.offset > 0) {
      range.Files().SetContent("/d/2", content.substr(0, 70'000));
    }
  });
  EXPECT_THAT(range.Compare(), ElementsAre(0, 0, -3));
}

// --- portions

TEST(CompFileCntPortions, EqualSizesStandTogetherOnlyWhereALongerFileTiesThem) {
  const std::string head(60'000, 'x');
  Range tied;
  tied.Add(head);
  tied.Add(head);
  tied.Add(head + "more");
  EXPECT_THAT(tied.Compare(SizeRule::DifferentSizes), ElementsAre(0, 0, 0));
  Range alone;
  alone.Add(head);
  alone.Add(head);
  EXPECT_THAT(alone.Compare(SizeRule::DifferentSizes), ElementsAre(-1, -1));
}

TEST(CompFileCntPortions, BelowOneBlockThereIsNoGroup) {
  for (const auto& [size, group] : {std::pair{50'000, -1}, {50'001, 0}}) {
    Range range;
    range.Add(std::string(static_cast<std::size_t>(size), 'x'));
    range.Add(std::string(70'000, 'x'));
    EXPECT_THAT(range.Compare(SizeRule::DifferentSizes), ElementsAre(group, group)) << size;
  }
}

// Whole blocks of the smallest file are compared, the last whole one too; what hangs over isn't.
TEST(CompFileCntPortions, OnlyWholeBlocksOfTheSmallestCount) {
  const std::string content(150'000, 'x');
  for (const auto& [size, at, group] : {std::tuple{99'999, 50'000, 0}, {100'000, 99'999, -1}, {149'999, 100'000, 0}}) {
    Range range;
    range.Add(content.substr(0, static_cast<std::size_t>(size)));
    range.Add(Changed(content, static_cast<std::size_t>(at)));
    EXPECT_THAT(range.Compare(SizeRule::DifferentSizes), ElementsAre(group, group)) << size;
  }
}

TEST(CompFileCntPortions, ClassOfOneSizeIsNotReadOn) {
  const std::string content(500'000, 'x');
  Range range;
  range.Add(content);
  range.Add(content);
  range.Add(Changed(content + "more", 10));
  EXPECT_THAT(range.Compare(SizeRule::DifferentSizes), ElementsAre(-1, -1, -1));
  for (const auto& call : range.Files().Calls()) EXPECT_LT(call.offset, 50'000);
}

// --- cost

TEST(CompFileCntCost, EachByteIsReadOnce) {
  const std::string content(1'300'000, 'x');
  Range range;
  for (int k = 0; k < 12; ++k)
    range.Add(k % 3 == 0 ? Changed(content, static_cast<std::size_t>(k) * 100'000) : content);
  range.Compare();
  for (const auto& [path, bytes] : BytesRead(range.Files())) EXPECT_LE(bytes, 1'300'000) << path;
}

TEST(CompFileCntCost, UnlikeFilesGoAtTheFirstDifference) {
  Range range;
  for (int k = 0; k < 20; ++k) {
    range.Add(100'000'000,
              [k](std::int64_t, std::span<char> into) { std::fill(into.begin(), into.end(), static_cast<char>(k)); });
  }
  range.Compare();
  for (const auto& [path, bytes] : BytesRead(range.Files())) EXPECT_LE(bytes, 64 * 1024) << path;
}

TEST(CompFileCntCost, FewDescriptorsAreEnough) {
  const std::string content(400'000, 'x');
  Range range;
  range.Files().SetOpenLimit(8);
  for (int k = 0; k < 50; ++k) range.Add(content);
  for (const std::int32_t group : range.Compare()) EXPECT_EQ(group, 0);
  EXPECT_LE(range.Files().PeakOpenFiles(), 8U);
}

// --- stops

// Of a comparison that was stopped anywhere nothing is left but failures.
TEST(CompFileCntStop, LeavesNoGroup) {
  const std::string content(1'200'000, 'x');
  for (const SizeRule rule : {SizeRule::SameSize, SizeRule::DifferentSizes}) {
    for (const bool tolerant : {false, true}) {
      int stopped = 0;
      for (int reads = 1;; reads += 3) {
        Range range;
        range.Add(content);
        range.Add(content);
        range.Add(rule == SizeRule::SameSize ? content : content + "more");
        range.Files().FailRead("/d/1", 60'000, Errors::Device);
        range.StopAfter(reads);
        const auto groups = range.Compare(rule, tolerant);
        if (!range.Stopped()) break;  // it was done before
        EXPECT_THAT(groups, testing::Each(testing::Lt(0))) << reads;
        ++stopped;
      }
      EXPECT_GT(stopped, 5);
    }
  }
}

TEST(CompFileCntStop, EndsAWaitForDescriptorsWithoutAFailure) {
  Range range;
  range.Add("same");
  range.Add("same");
  range.Files().SetOpenLimit(0);
  range.StopWhenOpening();
  EXPECT_THAT(range.Compare(), ElementsAre(-1, -1));
}

}  // namespace
}  // namespace tresmor
