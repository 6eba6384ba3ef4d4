// The fast search against the plain one, on many small random worlds.

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "base/text.h"
#include "search/plain_search.h"
#include "search/search_world.h"

namespace tresmor {
namespace {

// Every rule that turns on a figure is in reach of a dozen files of a few bytes.
// With a scale above 1 blocks have more than a hundred bytes, and the loose comparison slices of more than one.
SearchLimits SmallLimits(int scale) {
  SearchLimits limits;
  limits.wholeBelow = 24 * scale;
  limits.block = 8 * scale;
  limits.span = 6;
  limits.head = 5;
  limits.portionFrom = 6 * scale;
  limits.firstPiece = 3 * static_cast<std::size_t>(scale);
  limits.nextPiece = 5 * static_cast<std::size_t>(scale);
  limits.largestPiece = 11 * static_cast<std::size_t>(scale);
  limits.segment = 1 << 20;
  return limits;
}

class World {
 public:
  explicit World(unsigned seed) : random_(seed), scale(Pick(0, 4) == 0 ? 30 : 1) {
    const int count = Pick(1, 24);
    const std::vector<std::int64_t> sizes = {0, Pick(1, 12), Pick(1, 30), 24, Pick(24, 60), 8, 9, 16, 17, 32};
    const bool fewSizes = Pick(0, 2) == 0;
    const int failures = Pick(0, 3) == 0 ? Pick(1, 4) : 0;
    const bool areas = Pick(0, 1) == 0;
    const char* names[] = {"a", "b", "A", "c.txt", "C.TXT", "d"};
    for (int k = 0; k < count; ++k) {
      PlainFile file;
      file.isTarget = !areas || Pick(0, 2) == 0;
      file.folder = std::string(file.isTarget ? "/t/" : "/u/") + std::to_string(k) + "/";
      file.name = names[Pick(0, 5)];
      const auto size = sizes[static_cast<std::size_t>(Pick(0, fewSizes ? 2 : 9))];
      file.content = Content(size * scale);
      if (size > 0 && Pick(1, 12) <= failures) Spoil(file);
      files.push_back(file);
    }
    // The walk takes targets first.
    std::stable_partition(files.begin(), files.end(), [](const PlainFile& file) { return file.isTarget; });
  }

  int Pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }

  std::vector<PlainFile> files;

 private:
  std::mt19937 random_;

 public:
  const int scale;

 private:
  // Few different beginnings and few changes, so that files agree for a while and then part.
  std::string Content(std::int64_t size) {
    std::string content(static_cast<std::size_t>(size), Pick(0, 5) == 0 ? '\0' : 'x');
    for (int change = Pick(0, 2) * (scale > 1 ? Pick(1, 40) : 1); change > 0 && size > 0; --change) {
      content[static_cast<std::size_t>(Pick(0, static_cast<int>(size) - 1))] = static_cast<char>('0' + Pick(0, 1));
    }
    return content;
  }

  void Spoil(PlainFile& file) {
    switch (Pick(0, 3)) {
      case 0:
        file.opens = false;
        break;
      case 1:
        file.rightLength = false;
        break;
      default:
        file.failsAt = Pick(0, static_cast<int>(file.content.size()) - 1);
    }
  }
};

void Make(MemoryFileSystem& memory, const std::vector<PlainFile>& files) {
  auto shrinking = std::make_shared<std::map<std::string, std::string>>();
  for (const PlainFile& file : files) {
    const std::string path = file.folder + file.name;
    memory.MakeFile(path, file.content);
    if (!file.opens) memory.FailOpen(path, Errors::PermissionDenied);
    if (file.failsAt >= 0) memory.FailRead(path, file.failsAt, Errors::Device);
    if (!file.rightLength) (*shrinking)[path] = file.content.substr(0, file.content.size() - 1);
  }
  memory.SetHook([&memory, shrinking](const MemoryFileSystem::Call& call) {
    if (call.op != MemoryFileSystem::Op::Open) return;
    const auto found = shrinking->find(call.path);
    if (found != shrinking->end()) memory.SetContent(found->first, found->second);
  });
}

PlainResult ResultOf(const SearchRun& run) {
  PlainResult result;
  result.figure = run.figure;
  for (const Finding& row : run.log.rows) {
    result.rows.push_back({static_cast<int>(row.list), row.folder + row.name, row.dupGrp, row.size});
  }
  return result;
}

// Read errors of one phase come between its groups, but in the table's order within their own list; what counts is the
// order within each list.
std::vector<PlainRow> ByList(std::vector<PlainRow> rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const PlainRow& a, const PlainRow& b) { return a.list < b.list; });
  return rows;
}

std::string Print(const std::vector<PlainFile>& files, const std::vector<PlainRow>& rows) {
  std::string text;
  for (const PlainFile& file : files) {
    text += file.folder + file.name + " '" + ReplaceAll(file.content, std::string_view("\0", 1), "_") + "'" +
            (file.opens ? "" : " shut") + (file.rightLength ? "" : " shrinks") +
            (file.failsAt >= 0 ? " fails at " + std::to_string(file.failsAt) : "") + "\n";
  }
  for (const PlainRow& row : rows) {
    text += std::to_string(row.list) + " " + row.path + " " + std::to_string(row.dupGrp) + "\n";
  }
  return text;
}

class PlainSearchTest : public testing::TestWithParam<int> {};

constexpr int kWorldsEach = 2500;

TEST_P(PlainSearchTest, FastSearchGivesWhatThePlainOneGives) {
  ThreadPool alone(1);
  ThreadPool together(2);
  ThreadPool many(5);
  for (int k = 0; k < kWorldsEach; ++k) {
    const auto seed = static_cast<unsigned>(GetParam() * kWorldsEach + k);
    World world(seed);
    auto request = RequestFor({RowOf("/t/"), RowOf("/u/", false)}, world.Pick(0, 1) == 0, world.Pick(0, 4) > 0,
                              world.Pick(0, 1) == 0, world.Pick(0, 1) == 0);
    request.tolerant = world.Pick(0, 2) == 0;
    request.isAllSrchTarget = world.files.back().isTarget && world.Pick(0, 1) == 0;
    SearchLimits limits = SmallLimits(world.scale);
    limits.threadBuffers = static_cast<std::size_t>(world.Pick(0, 2) == 0 ? 64 : 4096);
    if (world.Pick(0, 3) == 0) limits.segment = 8 * world.scale;
    const PlainResult plain = PlainSearch(world.files, request, limits);
    for (ThreadPool* pool : {&alone, seed % 4 == 0 ? &many : &together}) {
      MemoryFileSystem memory;
      Make(memory, world.files);
      memory.SetOpenLimit(seed % 3 == 0 ? 8 : 100);
      const auto run = RunSearch(memory, request, limits, *pool);
      const PlainResult result = ResultOf(*run);
      ASSERT_TRUE(ByList(result.rows) == ByList(plain.rows))
          << "seed " << seed << ", threads " << pool->Threads() << (request.tolerant ? ", tolerant" : "")
          << (request.isAllSrchTarget ? "" : ", areas") << "\n"
          << Print(world.files, plain.rows) << "but found\n"
          << Print({}, result.rows);
      ASSERT_EQ(result.figure, plain.figure) << "seed " << seed;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Worlds, PlainSearchTest, testing::Range(0, 8));

}  // namespace
}  // namespace tresmor
