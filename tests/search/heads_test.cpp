// The order of heads.

#include "search/heads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <string>
#include <vector>

#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

// A table of files with these contents, named after their places.
class HeadWorld {
 public:
  HeadWorld(const std::vector<std::string>& contents, const SearchLimits& limits) : limits_(limits) {
    table_.folders = &tree_;
    const FolderId folder = tree_.AddTop("/d/");
    for (const std::string& content : contents) {
      names_.push_back(std::to_string(names_.size()));
      files_.MakeFile("/d/" + names_.back(), content);
      FileProp record;
      record.Sz = static_cast<std::int64_t>(content.size());
      record.folder = folder;
      record.name = names_.back().data();
      record.nameLength = static_cast<std::uint16_t>(names_.back().size());
      table_.records.push_back(record);
    }
  }

  std::vector<std::uint32_t> Rank() {
    KeptFiles kept(files_, stop_, 0);
    ThreadPool pool(1);
    return RankHeads(table_, 0, table_.Last(), {files_, kept, pool, stop_, log_, limits_});
  }

  // Names of the files in the order of their reading.
  std::vector<std::string> Read() const {
    std::vector<std::string> read;
    for (const auto& call : files_.Calls()) {
      if (call.op == MemoryFileSystem::Op::Read) read.push_back(call.path.substr(3));
    }
    return read;
  }

 private:
  const SearchLimits limits_;
  FolderTree tree_;
  std::deque<std::string> names_;
  FileProps table_;
  MemoryFileSystem files_;
  StopToken stop_;
  SearchLog log_;
};

// Contents that part late, some of them behind the head, and of bytes that a signed comparison would put elsewhere.
std::vector<std::string> Contents(std::mt19937& random, std::size_t head) {
  constexpr char kBytes[] = {'\0', '\1', '\x7f', '\x80', '\xff'};
  const auto below = [&](std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(random); };
  std::vector<std::string> contents{std::string(below(head + 5), kBytes[below(5)])};
  while (contents.size() < 60) {
    std::string content = contents[below(contents.size())];
    if (below(4) == 0) content.resize(below(head + 5), kBytes[below(5)]);
    if (!content.empty() && below(2) == 0) content[below(content.size())] = kBytes[below(5)];
    contents.push_back(content);
  }
  return contents;
}

TEST(Heads, RanksOrderAsTheBytesDoWhateverIsReadAtATime) {
  std::mt19937 random(20030702);
  for (const std::size_t head : {1U, 7U, 8U, 21U}) {
    for (const std::size_t each : {1U, 3U, 9U, 1000U}) {
      const auto contents = Contents(random, head);
      SearchLimits limits;
      limits.head = head;
      limits.buffers = 2 * contents.size() * each;
      const auto ranks = HeadWorld(contents, limits).Rank();
      ASSERT_EQ(ranks.size(), contents.size());
      const auto padded = [&](std::size_t k) {
        std::string bytes = contents[k];
        bytes.resize(head);
        return bytes;
      };
      for (std::size_t a = 0; a < contents.size(); ++a) {
        for (std::size_t b = 0; b < contents.size(); ++b) {
          ASSERT_EQ(ranks[a] < ranks[b], padded(a) < padded(b)) << head << ' ' << each << ' ' << a << ' ' << b;
        }
      }
    }
  }
}

TEST(Heads, OnlyEqualBeginningsAreReadOnAndInTheOrderOfTheTable) {
  SearchLimits limits;
  limits.head = 4;
  limits.buffers = 2 * 5 * 2;  // two bytes of each of the five
  HeadWorld world({"zzba", "aabb", "mmmm", "zzab", "aaaa"}, limits);
  EXPECT_THAT(world.Rank(), ElementsAre(5, 2, 3, 4, 1));
  EXPECT_THAT(world.Read(), ElementsAre("0", "1", "2", "3", "4", "0", "1", "3", "4"));
}

}  // namespace
}  // namespace tresmor
