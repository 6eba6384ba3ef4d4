// Cutting by heads: portions, and big runs of one size.

#include "search/srch_portion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::Contains;
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

std::ptrdiff_t CountCalls(const MemoryFileSystem& files, MemoryFileSystem::Op op, const std::string& path) {
  const auto calls = files.Calls();
  return std::count_if(calls.begin(), calls.end(),
                       [&](const auto& call) { return call.op == op && call.path == path; });
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

// Sizes and heads alone decide the order of the table, so equal files are listed in the order that they will have once
// their ends are changed.
TEST(SrchPortion, SecondStretchOf255HasABudgetOfMissesOfItsOwn) {
  SearchLimits limits;
  limits.wholeBelow = 1000;
  limits.block = 50;  // twenty blocks, and a budget of six
  const std::string content(1000, 'x');
  MemoryFileSystem files;
  for (int k = 0; k < 255; ++k) files.MakeFile("/d/" + std::to_string(k), content);
  const auto equal = RunSearch(files, Duplicates(), limits)->log.RowsOf(ResultList::Duplicates);
  ASSERT_EQ(equal.size(), 255U);
  const std::string start = content.substr(0, 950);
  for (std::size_t k = 1; k < equal.size(); ++k) {
    files.SetContent("/d/" + equal[k].name, start + std::string(50, k <= 6 ? 'b' : 'c'));
  }
  SearchRequest request = Duplicates();
  request.tolerant = true;
  // The seventh miss, in the last block, costs all behind it their place. They agree among themselves, and the second
  // time that is enough, since the six are paid for by a new budget.
  EXPECT_THAT(GroupSizes(RunSearch(files, request, limits)->log, ResultList::Duplicates),
              ElementsAre(std::pair(0, 7), std::pair(7, 248)));
}

// The table's last record goes along with the run in front of it, and with it the run is one of 255.
TEST(SrchPortion, LastLargerFileMakesARunOf254ABigOne) {
  for (const char filling : {'x', 'a'}) {  // a head like the others', and one that sorts in front of them
    MemoryFileSystem files;
    for (int k = 0; k < 254; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(1000, 'x'));
    files.MakeFile("/d/larger", std::string(1001, filling));
    const auto run = RunSearch(files, Duplicates());
    const std::int32_t leader = filling == 'x' ? 0 : 1;
    EXPECT_THAT(GroupSizes(run->log, ResultList::Duplicates), ElementsAre(std::pair(leader, 254)));
    for (const Finding& row : run->log.rows) EXPECT_NE(row.name, "larger");
    std::vector<std::string> heads;
    for (const auto& call : files.Calls()) {
      if (call.op == MemoryFileSystem::Op::Read && call.length == 400) heads.push_back(call.path);
    }
    EXPECT_EQ(heads.size(), 255U);
    EXPECT_THAT(heads, Contains("/d/larger"));
  }
}

// Of 600 files that agree in their heads the ninety in the middle are never compared, and the two ends not with each
// other.
TEST(SrchPortion, MiddleOfABigRunIsLeftOut) {
  MemoryFileSystem files;
  for (int k = 0; k < 600; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(500, 'x'));
  const auto run = RunSearch(files, Duplicates());
  EXPECT_THAT(GroupSizes(run->log, ResultList::Duplicates), ElementsAre(std::pair(0, 255), std::pair(345, 255)));
  std::map<std::string, int> read;
  for (const auto& call : files.Calls()) {
    if (call.op == MemoryFileSystem::Op::Read) ++read[call.path];
  }
  EXPECT_EQ(std::count_if(read.begin(), read.end(), [](const auto& file) { return file.second == 1; }), 90);
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

// Whether it is the first of the table, with which nothing is compared, or stands behind another.
TEST(SrchPortion, RangeOfOneReadsOneHead) {
  for (const bool isFirst : {true, false}) {
    MemoryFileSystem files;
    if (!isFirst) files.MakeFile("/d/a", "small");
    files.MakeFile("/d/b", std::string(60'000, 'x'));
    EXPECT_THAT(RunSearch(files, Portions())->log.rows, IsEmpty());
    EXPECT_EQ(CountCalls(files, MemoryFileSystem::Op::Open, "/d/b"), 1) << isFirst;
    EXPECT_EQ(CountCalls(files, MemoryFileSystem::Op::Open, "/d/a"), 0);
    for (const auto& call : files.Calls()) {
      if (call.op == MemoryFileSystem::Op::Read) {
        EXPECT_EQ(call.length, 400);
      }
    }
  }
}

TEST(SrchPortion, RangeOfOneWhoseHeadCannotBeReadIsAReadError) {
  for (const bool isFirst : {true, false}) {
    MemoryFileSystem files;
    if (!isFirst) files.MakeFile("/d/a", "small");
    files.MakeFile("/d/b", std::string(60'000, 'x'));
    files.FailRead("/d/b", 100, Errors::Device);
    EXPECT_THAT(RunSearch(files, Portions())->log.Names(ResultList::ReadErrors), ElementsAre("b:-3")) << isFirst;
  }
}

// What stands in front has a head only where the search for duplicates read it to cut a big run; else it counts as zero
// bytes.
TEST(SrchPortion, RangeOfOneMeetsTheRecordInFrontByTheHeadThatIsKnownOfIt) {
  struct Case {
    bool duplicates;
    char front;
    char range;
    bool compared;
    bool found;
  };
  SearchLimits limits;
  limits.span = 2;
  limits.block = 100;
  limits.portionFrom = 950;
  for (const auto& [duplicates, front, range, compared, found] : {Case{false, 'x', 'x', false, false},
                                                                  {false, 'x', '\0', true, false},
                                                                  {false, '\0', '\0', true, true},
                                                                  {true, 'x', 'x', true, true},
                                                                  {true, 'x', '\0', false, false}}) {
    MemoryFileSystem files;
    for (int k = 0; k < 3; ++k) files.MakeFile("/d/front" + std::to_string(k), std::string(900, front));
    files.MakeFile("/d/range", std::string(999, range));
    SearchLog log;
    bool readWhole = false;
    files.SetHook([&](const MemoryFileSystem::Call& call) {
      const bool comparing =
          log.events.size() > 1 && log.events[log.events.size() - 2].starts_with("progress Search file portions ");
      readWhole |= comparing && call.op == MemoryFileSystem::Op::Read && call.path.starts_with("/d/front");
    });
    StopToken stop;
    ThreadPool pool(1);
    FakeShell shell;
    ExecSrch(Portions(duplicates), {files, shell, FakeVersions(), pool, stop, log}, limits);
    EXPECT_EQ(readWhole, compared) << duplicates << int{front} << int{range};
    EXPECT_EQ(log.RowsOf(ResultList::Portions).size(), found ? 2U : 0U) << duplicates << int{front} << int{range};
  }
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
  std::vector<std::string> read;
  for (const auto& call : files.Calls()) {
    if (call.op != MemoryFileSystem::Op::Read) continue;
    EXPECT_EQ(call.length, 400);
    read.push_back(call.path);
  }
  EXPECT_THAT(read, ElementsAre("/d/0", "/d/1", "/d/2", "/d/3", "/d/4", "/d/5"));  // none behind the stop
  EXPECT_THAT(log.events, Contains("progress Search file portions in [value] of 20 files..."));
}

// They are read before any run is compared: a figure from them would have to fall back to the runs in front.
TEST(SrchPortion, HeadsOfBigRunsTellTheirFiguresBeforeThoseOfTheComparison) {
  MemoryFileSystem files;
  for (std::size_t size = 1; size <= 40; ++size) {
    for (const char* folder : {"/d/1/", "/d/2/"}) files.MakeFile(folder + std::to_string(size), std::string(size, 'x'));
  }
  files.MakeFile("/d/alone", std::string(500, 'x'));
  for (int k = 0; k < 300; ++k) files.MakeFile("/d/big/" + std::to_string(k), std::string(1000, 'x'));
  SearchLog log;
  std::vector<std::size_t> heads;  // how many figures were told before each
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Read && call.length == 400) heads.push_back(log.tags.size());
  });
  StopToken stop;
  ThreadPool pool(1);
  FakeShell shell;
  ExecSrch(Duplicates(), {files, shell, FakeVersions(), pool, stop, log});
  ASSERT_GE(heads.size(), 300U);
  EXPECT_EQ(log.tags[heads[0] - 1], 0);
  EXPECT_EQ(log.tags[heads[299]], 380);
  const auto comparison = log.tags.begin() + static_cast<std::ptrdiff_t>(heads[299]) + 1;
  EXPECT_EQ(*comparison, 1);  // the file that is alone
  const auto showing = comparison + 42;
  EXPECT_TRUE(std::is_sorted(comparison, showing));
  EXPECT_EQ(*(showing - 1), 380);
}

TEST(SrchPortion, HeadsOfAPortionSearchTellTheirFigures) {
  for (const int small : {0, 1}) {
    for (const int candidates : {1, 3}) {
      MemoryFileSystem files;
      if (small == 1) files.MakeFile("/d/small", "x");
      std::vector<std::int64_t> expected;
      for (int k = 0; k < candidates; ++k) {
        files.MakeFile("/d/" + std::to_string(k), std::string(60'000 + static_cast<std::size_t>(k), 'x'));
        expected.push_back(small + k);
      }
      SearchLog log;
      std::vector<std::int64_t> ofHeads;
      log.onTag = [&](std::int64_t index) {
        const auto& event = log.events[log.events.size() - 2];  // behind it the bar was set
        if (event.starts_with("progress Reading file heads... ")) ofHeads.push_back(index);
      };
      StopToken stop;
      ThreadPool pool(1);
      FakeShell shell;
      ExecSrch(Portions(), {files, shell, FakeVersions(), pool, stop, log});
      EXPECT_EQ(ofHeads, expected);
    }
  }
}

// Heads that don't fit into the buffers together are read in shares, and only those still equal are read on.
TEST(SrchPortion, HeadsAreRankedInBoundedMemory) {
  SearchLimits limits;
  limits.buffers = 2 * 300 * 10;  // ten bytes of each of 300 heads
  limits.firstPiece = limits.nextPiece = limits.largestPiece = 10;
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
