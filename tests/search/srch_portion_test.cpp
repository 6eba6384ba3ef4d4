// Cutting by heads: portions, and big runs of one size.

#include "search/srch_portion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

SearchRequest Portions(bool duplicates = false) { return RequestFor({RowOf("/d/")}, false, duplicates, false, true); }
SearchRequest Duplicates() { return RequestFor({RowOf("/d/")}, false, true, false, false); }

// How many rows each group number has.
std::map<std::int32_t, int> GroupSizes(const SearchLog& log, ResultList list) {
  std::map<std::int32_t, int> sizes;
  for (const Finding& row : log.RowsOf(list)) ++sizes[row.dupGrp];
  return sizes;
}

TEST(SrchPortion, ShorterFileIsThePortionOfTheLonger) {
  const std::string content(120'000, 'x');
  MemoryFileSystem files;
  files.MakeFile("/d/long", content);
  files.MakeFile("/d/short", content.substr(0, 60'000));
  const auto run = RunSearch(files, Portions());
  EXPECT_THAT(run->log.Names(ResultList::Portions), ElementsAre("short:0", "long:0"));
}

TEST(SrchPortion, EqualFilesAreDuplicatesAndNoPortions) {
  MemoryFileSystem files;
  files.MakeFile("/d/0", "");
  files.MakeFile("/d/a", std::string(120'000, 'x'));
  files.MakeFile("/d/b", std::string(120'000, 'x'));
  const auto run = RunSearch(files, Portions(true));
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:1", "b:1"));
  EXPECT_THAT(run->log.Names(ResultList::Portions), IsEmpty());
}

TEST(SrchPortion, ShortFilesMakeNoGroup) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", std::string(40'000, 'x'));
  files.MakeFile("/d/b", std::string(30'000, 'x'));
  EXPECT_THAT(RunSearch(files, Portions())->log.rows, IsEmpty());
}

TEST(SrchPortion, SameHeadIsNoProof) {
  std::string other(120'000, 'x');
  other[400] = '!';
  MemoryFileSystem files;
  files.MakeFile("/d/a", std::string(60'000, 'x'));
  files.MakeFile("/d/b", other);
  EXPECT_THAT(RunSearch(files, Portions())->log.rows, IsEmpty());
}

TEST(SrchPortion, FilesBelowTheSmallestSizeAreNotLookedAt) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", std::string(20'479, 'x'));
  files.MakeFile("/d/b", std::string(60'000, 'x'));
  files.MakeFile("/d/c", std::string(70'000, 'x'));
  EXPECT_THAT(RunSearch(files, Portions())->log.Names(ResultList::Portions), ElementsAre("b:1", "c:1"));
  for (const auto& call : files.Calls()) {
    if (call.op == MemoryFileSystem::Op::Open) {
      EXPECT_NE(call.path, "/d/a");
    }
  }
}

// 255 files are two stretches that are the same records: the second finds everything settled.
TEST(SrchPortion, RunOf255IsComparedInTwoEqualStretches) {
  MemoryFileSystem files;
  for (int k = 0; k < 255; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(500, 'x'));
  const auto run = RunSearch(files, Duplicates());
  EXPECT_THAT(GroupSizes(run->log, ResultList::Duplicates), ElementsAre(std::pair(0, 255)));
}

// Of 600 files that agree in their heads the ninety in the middle are never compared, and the two ends not with each
// other.
TEST(SrchPortion, MiddleOfABigRunIsLeftOut) {
  MemoryFileSystem files;
  for (int k = 0; k < 600; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(500, 'x'));
  const auto run = RunSearch(files, Duplicates());
  EXPECT_THAT(GroupSizes(run->log, ResultList::Duplicates), ElementsAre(std::pair(0, 255), std::pair(345, 255)));
  std::map<std::string, int> opened;
  for (const auto& call : files.Calls()) {
    if (call.op == MemoryFileSystem::Op::Open) ++opened[call.path];
  }
  int headOnly = 0;
  for (const auto& [path, times] : opened) headOnly += times == 1 ? 1 : 0;
  EXPECT_EQ(headOnly, 90);
}

TEST(SrchPortion, BigRunOfTwoHeadsIsComparedWhole) {
  MemoryFileSystem files;
  for (int k = 0; k < 300; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(500, k % 2 == 0 ? 'a' : 'b'));
  const auto run = RunSearch(files, Duplicates());
  EXPECT_THAT(GroupSizes(run->log, ResultList::Duplicates), ElementsAre(std::pair(0, 150), std::pair(150, 150)));
}

// The record in front of the range was never read and counts as zero bytes: a range that begins with such a head begins
// one record early.
TEST(SrchPortion, RangeOfZeroBytesReachesBackToTheRecordInFront) {
  MemoryFileSystem files;
  files.MakeFile("/d/front", std::string(20'000, '\0'));
  files.MakeFile("/d/a", std::string(60'000, '\0'));
  files.MakeFile("/d/b", std::string(70'000, '\0'));
  const auto run = RunSearch(files, Portions());
  // It takes part, but has no whole block to agree with.
  EXPECT_THAT(run->log.Names(ResultList::Portions), ElementsAre("a:1", "b:1"));
  bool read = false;
  for (const auto& call : files.Calls()) read |= call.op == MemoryFileSystem::Op::Open && call.path == "/d/front";
  EXPECT_TRUE(read);
  EXPECT_THAT(run->log.RowsOf(ResultList::ReadErrors), IsEmpty());
}

TEST(SrchPortion, RangeOfOneReadsOneHead) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "small");
  files.MakeFile("/d/b", std::string(60'000, 'x'));
  EXPECT_THAT(RunSearch(files, Portions())->log.rows, IsEmpty());
  int opened = 0;
  for (const auto& call : files.Calls()) opened += call.op == MemoryFileSystem::Op::Open && call.path == "/d/b" ? 1 : 0;
  EXPECT_GE(opened, 1);
}

TEST(SrchPortion, HeadThatCannotBeReadIsAReadError) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", std::string(60'000, 'x'));
  files.MakeFile("/d/b", std::string(70'000, 'x'));
  files.MakeFile("/d/c", std::string(80'000, 'x'));
  files.FailRead("/d/b", 100, Errors::Device);
  const auto run = RunSearch(files, Portions());
  EXPECT_THAT(run->log.Names(ResultList::ReadErrors), ElementsAre("b:-3"));
  EXPECT_EQ(run->log.RowsOf(ResultList::Portions).size(), 2U);
}

TEST(SrchPortion, StopWhileHeadsAreReadComparesNothing) {
  MemoryFileSystem files;
  for (int k = 0; k < 20; ++k)
    files.MakeFile("/d/" + std::to_string(k), std::string(60'000 + static_cast<std::size_t>(k), 'x'));
  StopToken stop;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Read && call.path == "/d/5") stop.Stop();
  });
  ThreadPool pool(1);
  FakeShell shell;
  SearchLog log;
  EXPECT_EQ(ExecSrch(Portions(), {files, shell, FakeVersions(), pool, stop, log}), 19);
  EXPECT_THAT(log.rows, IsEmpty());
  for (const auto& call : files.Calls()) {
    if (call.op == MemoryFileSystem::Op::Read) {
      EXPECT_EQ(call.length, 400);
    }
  }
  EXPECT_THAT(log.events, testing::Contains("progress Search file portions in [value] of 20 files..."));
}

// Heads that don't fit into the buffers together are read in shares, and only those still equal are read on.
TEST(SrchPortion, HeadsAreRankedInBoundedMemory) {
  SearchLimits limits;
  limits.buffers = 2 * 300 * 10;  // ten bytes of each of 300 heads
  limits.firstPiece = limits.largestPiece = 10;
  MemoryFileSystem files;
  std::map<std::string, int> expected;
  for (int k = 0; k < 300; ++k) {
    std::string content(500, 'x');
    content[static_cast<std::size_t>(k % 5 * 90)] = '!';
    files.MakeFile("/d/" + std::to_string(k), content);
  }
  const auto run = RunSearch(files, Duplicates(), limits);
  const auto sizes = GroupSizes(run->log, ResultList::Duplicates);
  EXPECT_EQ(sizes.size(), 5U);
  for (const auto& [group, count] : sizes) EXPECT_EQ(count, 60);
}

}  // namespace
}  // namespace tresmor
