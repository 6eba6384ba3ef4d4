// Searches that are stopped: where they end, and what they leave in the lists.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "search/exec_srch.h"
#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

struct StoppedRun {
  SearchLog log;
  std::int64_t figure = -1;
};

using StopsAt = std::function<bool(const MemoryFileSystem::Call&, const SearchLog&)>;

// Stops the search in front of the first call that `stopsAt` says so of.
std::unique_ptr<StoppedRun> StopWhere(MemoryFileSystem& files, const SearchRequest& request, const StopsAt& stopsAt) {
  auto run = std::make_unique<StoppedRun>();
  StopToken stop;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (stopsAt(call, run->log)) stop.Stop();
  });
  ThreadPool pool(1);
  FakeShell shell;
  run->figure = ExecSrch(request, {files, shell, FakeVersions(), pool, stop, run->log});
  files.SetHook(nullptr);
  return run;
}

std::unique_ptr<StoppedRun> StopAt(MemoryFileSystem& files, const SearchRequest& request, MemoryFileSystem::Op op,
                                   const std::string& path) {
  return StopWhere(files, request, [&](const MemoryFileSystem::Call& call, const SearchLog&) {
    return call.op == op && call.path == path;
  });
}

TEST(ExecSrchStop, DuringTheWalkOrTheTableNothingIsListed) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/s/c"}) files.MakeFile(path, "same");
  for (const auto& [op, path] :
       {std::pair{MemoryFileSystem::Op::List, "/d/s/"}, {MemoryFileSystem::Op::Stat, "/d/a"}}) {
    const auto run = StopAt(files, Everything("/d/"), op, path);
    EXPECT_EQ(run->figure, 0);
    EXPECT_TRUE(run->log.rows.empty());
    EXPECT_THAT(run->log.events, Not(Contains("message Searching same file name  ...")));
  }
}

// Whether two names are one file is asked once more of their paths, behind the first look at all files.
TEST(ExecSrchStop, NoFurtherTwinsAreLookedAt) {
  constexpr int kNames = 8;
  MemoryFileSystem files;
  files.MakeFile("/d/0", "same");
  for (int k = 1; k < kNames; ++k) files.MakeHardLink("/d/" + std::to_string(k), "/d/0");
  int looks = 0;
  const auto run = StopWhere(files, Everything("/d/"), [&](const MemoryFileSystem::Call& call, const SearchLog&) {
    return call.op == MemoryFileSystem::Op::Stat && ++looks == kNames + 1;
  });
  EXPECT_EQ(looks, kNames + 2);  // the pair that was being asked about
  EXPECT_EQ(run->figure, 0);
  EXPECT_TRUE(run->log.rows.empty());
}

TEST(ExecSrchStop, ComparisonThatWasStoppedListsNoGroup) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/c"}) files.MakeFile(path, std::string(200'000, 'x'));
  const auto run = StopAt(files, Everything("/d/"), MemoryFileSystem::Op::Read, "/d/c");
  EXPECT_EQ(run->figure, 2);  // it falls through the phases behind, and shows the first record if that is in a group
  EXPECT_TRUE(run->log.rows.empty());
}

TEST(ExecSrchStop, BehindTheTableItEndsBeforeTheDuplicatesAndKeepsWhatIsListed) {
  MemoryFileSystem files;
  for (const char* path : {"/d/1/a", "/d/2/a", "/d/3/b", "/d/4/b", "/d/5/c"}) files.MakeFile(path, "same");
  for (const bool duplicates : {true, false}) {
    SearchRequest request = Only(SrchType::SameName);
    request.types[static_cast<std::size_t>(SrchType::Duplicates)] = duplicates;
    StopToken stop;
    ThreadPool pool(1);
    FakeShell shell;
    SearchLog log;
    log.onTag = [&](std::int64_t) {
      if (log.events.back() == "hide 2") stop.Stop();  // behind the first run of names
    };
    const auto figure = ExecSrch(request, {files, shell, FakeVersions(), pool, stop, log});
    EXPECT_EQ(figure, duplicates ? 0 : 4);
    EXPECT_THAT(log.Names(ResultList::SameName), ElementsAre("a:-1", "a:-1"));
    EXPECT_EQ(log.events.back() == "tag cleared", !duplicates);
  }
}

// Of a long run the first rows are handed on, and their dates read, before the last were added.
TEST(ExecSrchStop, RunOfNamesInWhichItStopsIsListedWholeAndNoneBehindIt) {
  constexpr int kFiles = 1100;
  MemoryFileSystem files;
  for (int k = 0; k < kFiles; ++k) files.MakeFile("/d/" + std::to_string(k) + "/a", "same");
  for (const char* path : {"/d/0/b", "/d/1/b", "/d/2/c", "/d/3/d"}) files.MakeFile(path, "same");
  int datesRead = 0;
  const auto run =
      StopWhere(files, Only(SrchType::SameName), [&](const MemoryFileSystem::Call& call, const SearchLog& log) {
        const bool ofNames = !log.events.empty() && log.events.back() == "hide 2";
        return call.op == MemoryFileSystem::Op::Stat && ofNames && ++datesRead == 1;
      });
  EXPECT_EQ(datesRead, kFiles);
  const auto rows = run->log.RowsOf(ResultList::SameName);
  EXPECT_EQ(rows.size(), static_cast<std::size_t>(kFiles));
  for (const Finding& row : rows) EXPECT_EQ(row.name, "a");
}

TEST(ExecSrchStop, NoFurtherBoxOnceOneWasAnsweredByACancel) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/c"}) {
    files.MakeFile(path, "same");
    files.FailStat(path, Errors::PermissionDenied);
  }
  StopToken stop;
  ThreadPool pool(1);
  FakeShell shell;
  SearchLog log;
  log.onBox = [&] { stop.Stop(); };
  ExecSrch(Only(SrchType::Duplicates), {files, shell, FakeVersions(), pool, stop, log});
  EXPECT_EQ(log.boxes.size(), 1U);
}

TEST(ExecSrchStop, RowsAddedBeforeAStopWhileShowingStay) {
  MemoryFileSystem files;
  for (int k = 0; k < 10; ++k) files.MakeFile("/d/" + std::to_string(k), "same");
  StopToken stop;
  ThreadPool pool(1);
  FakeShell shell;
  SearchLog log;
  bool showing = false;
  log.onTag = [&](std::int64_t index) {
    showing |= std::find(log.events.begin(), log.events.end(), "hide 1") != log.events.end();
    if (showing && index == 3) stop.Stop();
  };
  const auto figure = ExecSrch(Only(SrchType::Duplicates), {files, shell, FakeVersions(), pool, stop, log});
  EXPECT_EQ(figure, 9);
  EXPECT_EQ(log.RowsOf(ResultList::Duplicates).size(), 4U);
}

}  // namespace
}  // namespace tresmor
