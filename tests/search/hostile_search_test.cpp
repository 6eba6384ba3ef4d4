// Whole searches over real folders that mean no good: none hangs, fails, or calls two files the same that are not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <poll.h>
#include <sys/fsuid.h>
#include <sys/inotify.h>

#include <atomic>
#include <set>
#include <thread>

#include "search/search_world.h"
#include "support/temp_tree.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class HostileSearch : public TempTree {
 protected:
  SearchRequest Everything() const { return RequestFor({RowOf(root_)}, true, true, true, true); }
  SearchRequest Duplicates() const { return RequestFor({RowOf(root_)}, false, true, false, false); }
  std::vector<std::string> Names(ResultList list, const SearchRun& run) const {
    std::vector<std::string> names;
    for (const Finding& row : run.log.RowsOf(list)) names.push_back(row.name);
    return names;
  }
};

TEST_F(HostileSearch, NamesOfAnyBytesArePairedByContent) {
  const std::vector<std::string> names{"line\nend", "a|-b", "\xff\xfe", std::string(255, '\xe9'), "*?[", " "};
  for (std::size_t k = 0; k < names.size(); ++k) {
    MakeFolder(std::to_string(k));
    const std::string content = "content " + std::to_string(k);
    MakeFile(std::to_string(k) + "/" + names[k], content);
    MakeFile(std::to_string(k) + "/twin", content);
  }
  const auto run = RunSearch(files_, Duplicates(), {}, 2);
  std::map<std::int32_t, std::set<std::string>> groups;
  for (const Finding& row : run->log.RowsOf(ResultList::Duplicates)) groups[row.dupGrp].insert(row.name);
  std::set<std::set<std::string>> found;
  for (const auto& [number, group] : groups) found.insert(group);
  std::set<std::set<std::string>> expected;
  for (const std::string& name : names) expected.insert({name, "twin"});
  EXPECT_EQ(found, expected);
  EXPECT_THAT(run->log.RowsOf(ResultList::ReadErrors), IsEmpty());
}

TEST_F(HostileSearch, FilesBeyondTheLongestPathAreRead) {
  const std::string name(40, 'n');
  MakeShaft(name, 2000, "the same at the bottom");
  ASSERT_GT(2000 * name.size(), std::size_t{PATH_MAX});
  MakeFile("twin", "the same at the bottom");
  const auto run = RunSearch(files_, Duplicates(), {}, 2);
  EXPECT_THAT(Names(ResultList::Duplicates, *run), UnorderedElementsAre("end", "twin"));
}

TEST_F(HostileSearch, WhatIsNoFileIsNeverOpened) {
  MakeFile("a", "same");
  MakeFile("b", "same");
  Check(mkfifo(At("fifo").c_str(), 0644) == 0, "fifo");
  MakeLink("link", "a");
  MakeLink("null", "/dev/zero");
  const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  Check(inotify_add_watch(watch, At("fifo").c_str(), IN_OPEN) >= 0, "watch");
  const auto run = RunSearch(files_, Everything(), {}, 2);
  EXPECT_THAT(Names(ResultList::Duplicates, *run), UnorderedElementsAre("a", "b"));
  pollfd opened{watch, POLLIN, 0};
  EXPECT_EQ(poll(&opened, 1, 0), 0);
  close(watch);
}

TEST_F(HostileSearch, SparseFilesOfManyGigabytes) {
  constexpr std::int64_t giga = std::int64_t{1} << 30;
  MakeSparse("a", 3 * giga, 'x');
  MakeSparse("b", 3 * giga, 'y');
  // These part in the first byte, and nobody reads the rest.
  MakeSparse("c", 4000 * giga, 'x');
  MakeSparse("d", 4000 * giga, 'x');
  const int file = open(At("d").c_str(), O_WRONLY | O_CLOEXEC);
  Check(pwrite(file, "!", 1, 0) == 1, "d");
  close(file);
  const auto run = RunSearch(files_, Duplicates(), {}, 2);
  EXPECT_THAT(run->log.rows, IsEmpty());
}

TEST_F(HostileSearch, FilesOfMoreThanTwoGigabytesAreOrdinary) {
  constexpr std::int64_t size = (std::int64_t{1} << 31) + 5;
  MakeSparse("a", size, 'x');
  MakeSparse("b", size, 'x');
  const auto run = RunSearch(files_, Duplicates(), {}, 2);
  const auto rows = run->log.RowsOf(ResultList::Duplicates);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].size, size);
}

TEST_F(HostileSearch, FileThatMayNotBeReadIsAReadError) {
  MakeFile("a", "same");
  MakeFile("b", "same");
  MakeFile("c", "same");
  Check(chmod(At("b").c_str(), 0) == 0, "b");
  // The superuser may read everything: this thread works for somebody else, and alone.
  const auto user = static_cast<uid_t>(setfsuid(geteuid() == 0 ? 65534 : geteuid()));
  const auto run = RunSearch(files_, Duplicates(), {}, 1);
  setfsuid(user);
  EXPECT_THAT(Names(ResultList::ReadErrors, *run), ElementsAre("b"));
  EXPECT_THAT(Names(ResultList::Duplicates, *run), UnorderedElementsAre("a", "c"));
}

// One file comes, goes, grows and shrinks all the time; its bytes never are those of the others.
TEST_F(HostileSearch, RestlessFileIsNeverFoundEqual) {
  const std::string content(300'000, 'x');
  MakeFile("a", content);
  MakeFile("b", content);
  std::atomic<bool> quit{false};
  std::thread restless([&] {
    std::string other = content;
    other[200'000] = '!';
    for (std::size_t round = 0; !quit; ++round) {
      const int file = open(At("c").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
      (void)!write(file, other.data(), other.size());
      (void)!ftruncate(file, static_cast<off_t>(round % 7 * 50'000));
      close(file);
      if (round % 3 == 0) unlink(At("c").c_str());
    }
  });
  for (int round = 0; round < 60; ++round) {
    const auto run = RunSearch(files_, Duplicates(), {}, 2);
    EXPECT_THAT(Names(ResultList::Duplicates, *run), UnorderedElementsAre("a", "b"));
  }
  quit = true;
  restless.join();
}

TEST_F(HostileSearch, PseudoFileSystemsHoldNothing) {
  const auto run =
      RunSearch(files_, RequestFor({RowOf("/proc/"), RowOf("/sys/"), RowOf("/proc/self/")}, true, true, true, true));
  EXPECT_EQ(run->log.itemsCnt, 0);
  EXPECT_THAT(run->log.rows, IsEmpty());
}

TEST_F(HostileSearch, OneFileUnderManyPathsIsNoDuplicate) {
  MakeFolder("a");
  MakeFile("a/1", "content");
  MakeLink("way", "a");
  Check(link(At("a/1").c_str(), At("hard").c_str()) == 0, "hard");
  const auto run = RunSearch(
      files_, RequestFor({RowOf(root_), RowOf(At("way/")), RowOf(At("a/../a/"))}, true, true, true, true), {}, 2);
  EXPECT_THAT(run->log.rows, IsEmpty());
  EXPECT_EQ(run->figure, 0);
}

}  // namespace
}  // namespace tresmor
