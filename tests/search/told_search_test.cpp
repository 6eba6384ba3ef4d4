// The fast search against the plain one, on many small random worlds.

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "base/text.h"
#include "search/search_world.h"
#include "search/told_search.h"

namespace tresmor {
namespace {

// Every rule that turns on a figure is in reach of a dozen files of a few bytes.
SearchLimits SmallLimits() {
  SearchLimits limits;
  limits.wholeBelow = 24;
  limits.block = 8;
  limits.span = 6;
  limits.head = 5;
  limits.portionFrom = 6;
  limits.firstPiece = 3;
  limits.largestPiece = 11;
  limits.segment = 1 << 20;
  limits.threadBuffers = 1 << 12;
  return limits;
}

class World {
 public:
  explicit World(unsigned seed) : random_(seed) {
    const int count = Pick(1, 24);
    const std::vector<std::int64_t> sizes = {0, Pick(1, 12), Pick(1, 30), 24, Pick(24, 60), 8, 9, 16, 17, 32};
    const bool fewSizes = Pick(0, 2) == 0;
    const int failures = Pick(0, 3) == 0 ? Pick(1, 4) : 0;
    const bool areas = Pick(0, 1) == 0;
    const char* names[] = {"a", "b", "A", "c.txt", "C.TXT", "d"};
    for (int k = 0; k < count; ++k) {
      ToldFile file;
      file.isTarget = !areas || Pick(0, 2) == 0;
      file.folder = std::string(file.isTarget ? "/t/" : "/u/") + std::to_string(k) + "/";
      file.name = names[Pick(0, 5)];
      const auto size = sizes[static_cast<std::size_t>(Pick(0, fewSizes ? 2 : 9))];
      file.content = Content(size);
      if (size > 0 && Pick(1, 12) <= failures) Spoil(file);
      files.push_back(file);
    }
    // The walk takes targets first.
    std::stable_partition(files.begin(), files.end(), [](const ToldFile& file) { return file.isTarget; });
  }

  int Pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }

  std::vector<ToldFile> files;

 private:
  // Few different beginnings and few changes, so that files agree for a while and then part.
  std::string Content(std::int64_t size) {
    std::string content(static_cast<std::size_t>(size), Pick(0, 5) == 0 ? '\0' : 'x');
    for (int change = Pick(0, 2); change > 0 && size > 0; --change) {
      content[static_cast<std::size_t>(Pick(0, static_cast<int>(size) - 1))] = static_cast<char>('0' + Pick(0, 1));
    }
    return content;
  }

  void Spoil(ToldFile& file) {
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

  std::mt19937 random_;
};

void Make(MemoryFileSystem& memory, const std::vector<ToldFile>& files) {
  auto shrinking = std::make_shared<std::map<std::string, std::string>>();
  for (const ToldFile& file : files) {
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

ToldResult ResultOf(const SearchRun& run) {
  ToldResult result;
  result.figure = run.figure;
  for (const Finding& row : run.log.rows) {
    result.rows.push_back({static_cast<int>(row.list), row.folder + row.name, row.dupGrp, row.size});
  }
  return result;
}

// Read errors of one phase come between its groups, but in the table's order within their own list; what counts is the
// order within each list.
std::vector<ToldRow> ByList(std::vector<ToldRow> rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const ToldRow& a, const ToldRow& b) { return a.list < b.list; });
  return rows;
}

std::string Print(const std::vector<ToldFile>& files, const std::vector<ToldRow>& rows) {
  std::string text;
  for (const ToldFile& file : files) {
    text += file.folder + file.name + " '" + ReplaceAll(file.content, std::string_view("\0", 1), "_") + "'" +
            (file.opens ? "" : " shut") + (file.rightLength ? "" : " shrinks") +
            (file.failsAt >= 0 ? " fails at " + std::to_string(file.failsAt) : "") + "\n";
  }
  for (const ToldRow& row : rows) {
    text += std::to_string(row.list) + " " + row.path + " " + std::to_string(row.dupGrp) + "\n";
  }
  return text;
}

class ToldSearchTest : public testing::TestWithParam<int> {};

constexpr int kWorldsEach = 2500;

TEST_P(ToldSearchTest, FastSearchGivesWhatThePlainOneGives) {
  ThreadPool alone(1);
  ThreadPool together(2);
  for (int k = 0; k < kWorldsEach; ++k) {
    const auto seed = static_cast<unsigned>(GetParam() * kWorldsEach + k);
    World world(seed);
    auto request = RequestFor({RowOf("/t/"), RowOf("/u/", false)}, true, world.Pick(0, 4) > 0, world.Pick(0, 1) == 0,
                              world.Pick(0, 1) == 0);
    request.tolerant = world.Pick(0, 2) == 0;
    request.isAllSrchTarget = world.files.back().isTarget && world.Pick(0, 1) == 0;
    SearchLimits limits = SmallLimits();
    if (world.Pick(0, 3) == 0) limits.segment = 8;
    const ToldResult told = ToldSearch(world.files, request, limits);
    for (ThreadPool* pool : {&alone, &together}) {
      MemoryFileSystem memory;
      Make(memory, world.files);
      const auto run = RunSearch(memory, request, limits, *pool);
      const ToldResult result = ResultOf(*run);
      ASSERT_TRUE(ByList(result.rows) == ByList(told.rows))
          << "seed " << seed << ", threads " << pool->Threads() << (request.tolerant ? ", tolerant" : "")
          << (request.isAllSrchTarget ? "" : ", areas") << "\n"
          << Print(world.files, told.rows) << "but found\n"
          << Print({}, result.rows);
      ASSERT_EQ(result.figure, told.figure) << "seed " << seed;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Worlds, ToldSearchTest, testing::Range(0, 8));

}  // namespace
}  // namespace tresmor
