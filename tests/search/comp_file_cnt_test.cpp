// The comparison of one range: verdicts, what is read, and what it costs.

#include "search/comp_file_cnt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <memory>
#include <thread>

#include "search/long_compare.h"
#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

// A table of files of one folder, in the order given.
class Range {
 public:
  explicit Range(SearchLimits limits = {}) : limits_(limits) {}

  MemoryFileSystem& Files() { return files_; }

  void Add(std::string content, const std::string& name = "") {
    const auto size = static_cast<std::int64_t>(content.size());
    const std::string path = "/d/" + NameFor(name);
    files_.MakeFile(path, std::move(content));
    Record(size);
  }
  void Add(std::int64_t size, MemoryFileSystem::Generator content) {
    files_.MakeFile("/d/" + NameFor(""), size, std::move(content));
    Record(size);
  }

  enum class Threads { One, Shared };
  std::vector<std::int32_t> Compare(SizeRule rule = SizeRule::SameSize, bool tolerant = false,
                                    Threads threads = Threads::One) {
    names_.emplace_back();
    const FolderId folder = tree_.AddTop("/d/");
    FileProps table{records_, &tree_};
    for (std::size_t k = 0; k < records_.size(); ++k) {
      table.records[k].folder = folder;
      table.records[k].name = names_[k].data();
      table.records[k].nameLength = static_cast<std::uint16_t>(names_[k].size());
    }
    const CompareRange range{0, table.Last(), records_.front().Sz};
    stop_.Reset();
    ThreadPool pool(threads == Threads::One ? 1 : 3);
    std::vector<std::unique_ptr<FileCompare>> compares;
    for (std::size_t k = 0; k < pool.Threads(); ++k) {
      compares.push_back(std::make_unique<FileCompare>(ComparePorts{files_, stop_, limits_, pool.Threads()}));
    }
    if (threads == Threads::Shared) {
      CompLongFiles(table, range, compares, pool);
    } else {
      compares.front()->CompFileCnt(table, range, tolerant, rule);
    }
    std::vector<std::int32_t> groups;
    for (const FileProp& record : table.records) groups.push_back(record.DupGrp);
    return groups;
  }

  bool Stopped() const { return stop_.Stopped(); }
  void StopWhenOpening() {
    files_.SetHook([this](const MemoryFileSystem::Call& call) {
      if (call.op == MemoryFileSystem::Op::Open) stop_.Stop();
    });
  }
  // Stops the comparison in front of the given number of reads.
  void StopAfter(int reads) {
    auto left = std::make_shared<std::atomic<int>>(reads);
    files_.SetHook([this, left](const MemoryFileSystem::Call& call) {
      if (call.op == MemoryFileSystem::Op::Read && --*left == 0) stop_.Stop();
    });
  }

 private:
  const std::string& NameFor(const std::string& name) {
    names_.push_back(name.empty() ? std::to_string(names_.size()) : name);
    return names_.back();
  }
  void Record(std::int64_t size) {
    FileProp record;
    record.Sz = size;
    records_.push_back(record);
  }

  SearchLimits limits_;
  MemoryFileSystem files_;
  StopToken stop_;
  FolderTree tree_;
  std::deque<std::string> names_;
  std::vector<FileProp> records_;
};

std::string Changed(std::string content, std::size_t at) {
  content[at] = '!';
  return content;
}

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

// --- the loose comparison
// ---------------------------------------------------------------------------------------------

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

// --- portions
// ---------------------------------------------------------------------------------------------------------

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
// -------------------------------------------------------------------------------------------------------------

std::map<std::string, std::int64_t> BytesRead(const MemoryFileSystem& files) {
  std::map<std::string, std::int64_t> bytes;
  std::map<std::pair<std::string, std::int64_t>, int> at;
  for (const auto& call : files.Calls()) {
    if (call.op != MemoryFileSystem::Op::Read) continue;
    bytes[call.path] += call.length;
    const int times = ++at[{call.path, call.offset}];
    EXPECT_EQ(times, 1) << call.path << " at " << call.offset;
  }
  return bytes;
}

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
// ------------------------------------------------------------------------------------------------------------

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

// --- long files, shared by threads
// ------------------------------------------------------------------------------------

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
