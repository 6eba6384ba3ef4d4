// Whole searches: the phases, their order and what they leave in the lists.

#include "search/exec_srch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

TEST(ExecSrch, EmptyFoldersGiveNoFilesFound) {
  MemoryFileSystem files;
  files.MakeFolder("/d/sub");
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_EQ(run->figure, 0);
  EXPECT_TRUE(run->log.rows.empty());
  EXPECT_THAT(run->log.events, Contains("message No Files found."));
  EXPECT_EQ(run->log.itemsCnt, 0);
}

TEST(ExecSrch, OneFileIsNoRunAndCountsAsNone) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "x");
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_EQ(run->figure, 0);
  EXPECT_TRUE(run->log.rows.empty());
  EXPECT_THAT(run->log.events, Not(Contains("hide 2")));  // names need two files
  EXPECT_THAT(run->log.events, Contains("hide 1"));
}

TEST(ExecSrch, FigureIsOneLessThanTheFiles) {
  MemoryFileSystem files;
  for (int k = 0; k < 100; ++k) files.MakeFile("/d/" + std::to_string(k), "x");
  EXPECT_EQ(RunSearch(files, Everything("/d/"))->figure, 99);
}

// The last record of the table joins a run that is open there, whatever its name.
TEST(ExecSrch, LastUnlikeNameJoinsTheRunBeforeIt) {
  MemoryFileSystem files;
  for (const char* path : {"/d/1/a", "/d/2/A", "/d/3/b"}) files.MakeFile(path, "x");
  const auto run = RunSearch(files, Only(SrchType::SameName));
  const auto names = run->log.Names(ResultList::SameName);
  ASSERT_EQ(names.size(), 3U);
  EXPECT_THAT(std::vector(names.begin(), names.begin() + 2), UnorderedElementsAre("a:-1", "A:-1"));
  EXPECT_EQ(names[2], "b:-1");
}

TEST(ExecSrch, UnlikeNamesBehindARunStayOut) {
  MemoryFileSystem files;
  for (const char* path : {"/d/1/a", "/d/2/a", "/d/3/b", "/d/4/c"}) files.MakeFile(path, "x");
  EXPECT_THAT(RunSearch(files, Only(SrchType::SameName))->log.Names(ResultList::SameName), ElementsAre("a:-1", "a:-1"));
}

TEST(ExecSrch, LastLargerFileTakesNoPartInTheRunOfSizes) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "0123456789");
  files.MakeFile("/d/b", "0123456789");
  files.MakeFile("/d/c", "01234567890123456789");
  files.FailOpen("/d/c", Errors::PermissionDenied);  // nobody asks for its bytes
  const auto run = RunSearch(files, Only(SrchType::Duplicates));
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:0", "b:0"));
  EXPECT_TRUE(run->log.RowsOf(ResultList::ReadErrors).empty());
}

// So many that as a run they would be cut by their heads.
TEST(ExecSrch, ZeroSizeFilesAreSkippedEvenIfNotAskedFor) {
  MemoryFileSystem files;
  for (int k = 0; k < 300; ++k) files.MakeFile("/d/empty" + std::to_string(k), "");
  files.MakeFile("/d/x", "1");
  files.MakeFile("/d/y", "1");
  SearchRequest request = Only(SrchType::Duplicates);
  request.types[static_cast<std::size_t>(SrchType::Portions)] = true;
  const auto run = RunSearch(files, request);
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("x:300", "y:300"));
  EXPECT_TRUE(run->log.RowsOf(ResultList::ZeroSize).empty());
  for (const auto& call : files.Calls()) {
    if (call.op == MemoryFileSystem::Op::Open) {
      EXPECT_THAT(call.path, Not(HasSubstr("empty")));
    }
  }
}

// Where no file is empty the duplicate phase starts at the second record, and what it raised stays raised: the smallest
// file is no candidate for a portion, unless duplicates were not asked for.
TEST(ExecSrch, SmallestFileStaysOutOfThePortionsOfASearchForDuplicates) {
  const std::string head(60'000, 'x');
  MemoryFileSystem files;
  files.MakeFile("/d/short", head);
  files.MakeFile("/d/long", head + head);
  files.MakeFile("/d/longer", head + head + head);
  SearchRequest request = Only(SrchType::Portions);
  EXPECT_THAT(RunSearch(files, request)->log.Names(ResultList::Portions), ElementsAre("short:0", "long:0", "longer:0"));
  request.types[static_cast<std::size_t>(SrchType::Duplicates)] = true;
  EXPECT_THAT(RunSearch(files, request)->log.Names(ResultList::Portions), ElementsAre("long:1", "longer:1"));
}

TEST(ExecSrch, RunsAreCutByHeadsFrom255FilesOn) {
  for (const int count : {254, 255}) {
    MemoryFileSystem files;
    for (int k = 0; k < count; ++k) files.MakeFile("/d/" + std::to_string(k), std::string(1000, 'x'));
    const auto run = RunSearch(files, Only(SrchType::Duplicates));
    EXPECT_EQ(run->log.RowsOf(ResultList::Duplicates).size(), static_cast<std::size_t>(count));
    int headsRead = 0;
    for (const auto& call : files.Calls()) {
      if (call.op == MemoryFileSystem::Op::Read && call.length == 400) ++headsRead;
    }
    EXPECT_EQ(headsRead, count == 255 ? 255 : 0);
  }
}

TEST(ExecSrch, FileReachedByATargetAndAnAreaIsATarget) {
  MemoryFileSystem files;
  files.MakeFile("/d/in/a", "same");
  files.MakeFile("/d/b", "same");
  // The area row comes first in the list, and still the target row decides.
  auto request = Only(SrchType::Duplicates, {RowOf("/d/", false), RowOf("/d/in/")});
  EXPECT_THAT(RunSearch(files, request)->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:0", "b:0"));
}

TEST(ExecSrch, AllEmptyFilesGiveNoPortions) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/c"}) files.MakeFile(path, "");
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_EQ(run->log.RowsOf(ResultList::ZeroSize).size(), 3U);
  EXPECT_TRUE(run->log.RowsOf(ResultList::Portions).empty());
  EXPECT_EQ(run->figure, 2);
  // No head is read and nothing compared.
  EXPECT_THAT(run->log.events, Contains("progress Reading file heads... [value] of 3 files..."));
  EXPECT_THAT(run->log.events, Not(Contains("progress Search file portions in [value] of 3 files...")));
}

TEST(ExecSrch, ReadErrorsAreListedByBothPhases) {
  MemoryFileSystem files;
  const std::string content(60'000, 'x');
  files.MakeFile("/d/a", content);
  files.MakeFile("/d/b", content);
  files.MakeFile("/d/c", content + "y");
  files.MakeFile("/d/0", "");  // keeps the smallest file in the portion range
  files.FailOpen("/d/b", Errors::PermissionDenied);
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_THAT(run->log.Names(ResultList::ReadErrors), ElementsAre("b:-3", "b:-3"));
  EXPECT_EQ(run->log.RowsOf(ResultList::Portions).size(), 2U);
}

TEST(ExecSrch, GroupsOfTwoListsMayBearTheSameNumber) {
  MemoryFileSystem files;
  const std::string content(60'000, 'x');
  files.MakeFile("/d/0", "");
  files.MakeFile("/d/a", content);
  files.MakeFile("/d/b", content);
  files.MakeFile("/d/c", content + "longer");
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:1", "b:1"));
  EXPECT_THAT(run->log.Names(ResultList::Portions), UnorderedElementsAre("a:1", "b:1", "c:1"));
}

TEST(ExecSrch, ZeroSizeFilesOfAnAreaAreNotListed) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "");
  files.MakeFile("/e/b", "");
  const auto run = RunSearch(files, Only(SrchType::ZeroSize, {RowOf("/d/"), RowOf("/e/", false)}));
  EXPECT_THAT(run->log.Names(ResultList::ZeroSize), ElementsAre("a:-1"));
}

TEST(ExecSrch, PairInTheAreaIsNotReportedAndNotEvenRead) {
  MemoryFileSystem files;
  files.MakeFile("/e/1", "pair");
  files.MakeFile("/e/2", "pair");
  files.MakeFile("/d/3", "x");  // smaller, or it would join the last run of the table
  const auto run = RunSearch(files, Only(SrchType::Duplicates, {RowOf("/d/"), RowOf("/e/", false)}));
  EXPECT_TRUE(run->log.rows.empty());
  for (const auto& call : files.Calls()) EXPECT_NE(call.op, MemoryFileSystem::Op::Open) << call.path;
}

TEST(ExecSrch, BigRunOfTheAreaIsNotReadEither) {
  MemoryFileSystem files;
  files.MakeFile("/d/target", "x");
  for (int k = 0; k < 300; ++k) files.MakeFile("/e/" + std::to_string(k), "pair");
  const auto run = RunSearch(files, Only(SrchType::Duplicates, {RowOf("/d/"), RowOf("/e/", false)}));
  EXPECT_TRUE(run->log.rows.empty());
  for (const auto& call : files.Calls()) EXPECT_NE(call.op, MemoryFileSystem::Op::Open) << call.path;
}

TEST(ExecSrch, VersionsAreReadOnlyIfAsked) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "same");
  files.MakeFile("/d/b", "same");
  auto request = Only(SrchType::Duplicates);
  EXPECT_EQ(RunSearch(files, request)->log.rows.front().version, std::nullopt);
  request.versions = true;
  const auto run = RunSearch(files, request);
  for (const Finding& row : run->log.rows) EXPECT_EQ(row.version, row.name);
}

TEST(ExecSrch, PairOfTargetAndAreaIsReported) {
  MemoryFileSystem files;
  files.MakeFile("/d/1", "pair");
  files.MakeFile("/e/2", "pair");
  files.MakeFile("/e/3", "diff");
  files.MakeFile("/e/4", "diff");  // of the same size, and read, but without a target
  const auto run = RunSearch(files, Only(SrchType::Duplicates, {RowOf("/d/"), RowOf("/e/", false)}));
  const auto rows = run->log.RowsOf(ResultList::Duplicates);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_THAT((std::vector{rows[0].name, rows[1].name}), UnorderedElementsAre("1", "2"));
  EXPECT_EQ(rows[0].dupGrp, rows[1].dupGrp);
}

TEST(ExecSrch, ReadErrorOfADissolvedRangeIsNotReported) {
  MemoryFileSystem files;
  files.MakeFile("/d/1", "pair");
  files.MakeFile("/e/2", "diff");
  files.MakeFile("/e/3", "diff");
  files.FailOpen("/e/3", Errors::Device);
  EXPECT_TRUE(RunSearch(files, Only(SrchType::Duplicates, {RowOf("/d/"), RowOf("/e/", false)}))->log.rows.empty());
}

TEST(ExecSrch, ExcludedFolderIsNeitherEnteredNorStartedIn) {
  MemoryFileSystem files(PathStyle::Windows());
  files.MakeFile("C:\\Data\\a", "same");
  files.MakeFile("C:\\Data\\b", "same");
  files.MakeFile("C:\\Data\\Old\\c", "same");
  files.MakeFile("C:\\Database\\d", "same");
  const ScopeRow old{"c:\\data\\OLD\\", "Yes", "", "", "", "", ScopeRow::kExcluded};
  const ScopeRow data{"C:\\DATA\\", "Yes", "", "", "", "", ScopeRow::kExcluded};
  const ScopeRow dat{"C:\\Dat\\", "Yes", "", "", "", "", ScopeRow::kExcluded};
  const auto found = [&](std::vector<ScopeRow> rows) {
    auto request = Only(SrchType::Duplicates, std::move(rows));
    request.protectWinDir = false;
    return RunSearch(files, request)->log.RowsOf(ResultList::Duplicates).size();
  };
  EXPECT_EQ(found({RowOf("C:\\Data\\")}), 3U);
  EXPECT_EQ(found({RowOf("C:\\Data\\"), old}), 2U);
  EXPECT_EQ(found({RowOf("c:\\Data\\"), RowOf("C:\\Database\\"), old}), 3U);
  EXPECT_EQ(found({RowOf("C:\\Data\\Old\\"), RowOf("C:\\Database\\"), data}), 0U);
  EXPECT_EQ(found({RowOf("C:\\Data\\"), dat}), 3U);
  // Twins of one key, in whatever case, are one.
  EXPECT_EQ(found({RowOf("C:\\Data\\"), old, {"C:\\Data\\Old\\", "Yes", "", "", "", "", ScopeRow::kExcluded}}), 2U);
}

TEST(ExecSrch, FilesInARootAreListedWithItsSeparatorAlone) {
  for (const auto& [style, root] : {std::pair{PathStyle::Windows(), "C:\\"}, {PathStyle::Posix(), "/"}}) {
    MemoryFileSystem files(style);
    for (const char* name : {"a.txt", "b.txt"}) files.MakeFile(root + std::string(name), "same");
    const auto run = RunSearch(files, Only(SrchType::Duplicates, {RowOf(root)}));
    EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a.txt:0", "b.txt:0"));
    for (const Finding& row : run->log.rows) EXPECT_EQ(row.folder, root);
  }
}

TEST(ExecSrch, SystemFoldersAreProtectedOnlyIfAsked) {
  MemoryFileSystem files;
  files.MakeFile("/usr/a", "same");
  files.MakeFile("/opt/b", "same");
  auto request = Only(SrchType::Duplicates, {RowOf("/")});
  EXPECT_TRUE(RunSearch(files, request)->log.rows.empty());
  request.protectWinDir = false;
  EXPECT_EQ(RunSearch(files, request)->log.rows.size(), 2U);
}

TEST(ExecSrch, MissingProgramsFolderIsToldAndTheSearchGoesOn) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "same");
  files.MakeFile("/d/b", "same");
  ThreadPool pool(1);
  StopToken stop;
  FakeShell shell;
  shell.programFilesDir = "";
  SearchLog log;
  ExecSrch(Only(SrchType::Duplicates), {files, shell, FakeVersions(), pool, stop, log});
  EXPECT_THAT(log.boxes, ElementsAre("|Error getting program files folder location."));
  EXPECT_EQ(log.rows.size(), 2U);
}

TEST(ExecSrch, PhasesTellTheirTextsInOrder) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", std::string(30'000, 'x'));
  files.MakeFile("/d/b", std::string(30'000, 'x'));
  const auto run = RunSearch(files, Everything("/d/"));
  auto events = run->log.events;
  events.erase(std::unique(events.begin(), events.end()), events.end());  // the walk may tell a folder twice
  EXPECT_THAT(
      events,
      ElementsAre("tag cleared", "timer on", "progress Searching /d/*.*", "bar 100", "message Loading files ...",
                  "bar 0", "progress Loading [value] of 2 files...", "message Searching same file name  ...",
                  "progress Search files with same name in [value] of 2 files...", "bar 0", "hide 2", "show 2",
                  "message Searching duplicated files ...", "bar 0",
                  "progress Search duplicate files in [value] of 2 files...", "hide 1",
                  "progress Showing search result - duplicate files... processing [value] of 2 files...", "show 1",
                  "message Searching file portions ...", "progress Reading file heads... [value] of 2 files...",
                  "bar 0", "progress Search file portions in [value] of 2 files...", "bar 0", "hide 3",
                  "message Showing search result - file portions... [value] of 2 files...", "tag cleared", "show 3",
                  "timer off", "tag cleared"));
  EXPECT_EQ(run->log.itemsCnt, 2);
}

// The way by path needs no descriptor.
TEST(ExecSrch, LackOfDescriptorsForFoldersLosesNoFile) {
  MemoryFileSystem files;
  files.MakeFile("/d/a/same", "12345");
  files.MakeFile("/d/b/same", "12345");
  files.SetOpenLimit(0);
  ScopeRow row = RowOf("/d/");
  row.MaxSize = "1";
  const auto run = RunSearch(files, Only(SrchType::SameName, {row}));
  EXPECT_THAT(run->log.boxes, IsEmpty());
  EXPECT_EQ(run->log.Names(ResultList::SameName).size(), 2U);
}

TEST(ExecSrch, VanishedFileIsLeftOutOfTheTable) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/c"}) files.MakeFile(path, "same");
  bool gone = false;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Stat && !std::exchange(gone, true)) files.Remove("/d/b");
  });
  const auto run = RunSearch(files, Only(SrchType::Duplicates));
  EXPECT_EQ(run->figure, 1);
  EXPECT_TRUE(run->log.boxes.empty());
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:0", "c:0"));
}

TEST(ExecSrch, LengthThatCannotBeToldIsABoxAndTheFileIsLeftOut) {
  MemoryFileSystem files;
  for (const char* path : {"/d/a", "/d/b", "/d/c"}) files.MakeFile(path, "same");
  files.FailStat("/d/b", Errors::PermissionDenied);
  const auto run = RunSearch(files, Only(SrchType::Duplicates));
  EXPECT_THAT(run->log.boxes,
              ElementsAre("|Error 70: Permission denied\nFile: '/d/b'\nTresmor will try to ignore this."));
  EXPECT_THAT(run->log.Names(ResultList::Duplicates), UnorderedElementsAre("a:0", "c:0"));
}

TEST(ExecSrch, NothingIsADuplicateOfItself) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "same");
  files.MakeHardLink("/d/b", "/d/a");
  files.MakeLink("/link", "/d");
  const auto run = RunSearch(files, Everything("/d/"));
  EXPECT_TRUE(run->log.RowsOf(ResultList::Duplicates).empty());
  const auto twice =
      RunSearch(files, RequestFor({RowOf("/d/"), RowOf("/link/"), RowOf("/d/../d/")}, true, true, true, true));
  EXPECT_TRUE(twice->log.rows.empty());
  files.MakeFile("/d/c", "same");
  EXPECT_THAT(RunSearch(files, RequestFor({RowOf("/d/"), RowOf("/link/")}, false, true, false, false))
                  ->log.Names(ResultList::Duplicates),
              UnorderedElementsAre("a:0", "c:0"));
}

// --- threads

TEST(ExecSrchThreads, ResultIsTheSameWithAnyNumber) {
  MemoryFileSystem files;
  for (int k = 0; k < 600; ++k) {
    const std::string path = "/d/" + std::to_string(k % 7) + "/" + std::to_string(k / 7);
    std::string content(static_cast<std::size_t>(50 + k % 5 * 30'000), static_cast<char>('a' + k % 3));
    if (k % 11 == 0) content.back() = '!';
    files.MakeFile(path, content);
    if (k % 97 == 0) files.FailOpen(path, Errors::Device);
  }
  files.SetOpenLimit(24);
  const auto rowsOf = [&](std::size_t threads) {
    std::vector<std::string> rows;
    const auto run = RunSearch(files, Everything("/d/"), {}, threads);
    for (const Finding& row : run->log.rows) {
      rows.push_back(std::to_string(static_cast<int>(row.list)) + row.folder + row.name + std::to_string(row.dupGrp));
    }
    return rows;
  };
  const auto alone = rowsOf(1);
  EXPECT_GT(alone.size(), 500U);
  for (std::size_t threads : {2, 3, 8}) EXPECT_EQ(rowsOf(threads), alone) << threads << " threads";
  files.SetCached(CacheState::Cold);  // a thread that reads ahead joins in
  files.ClearCalls();
  for (std::size_t threads : {1, 2}) EXPECT_EQ(rowsOf(threads), alone) << threads << " threads";
  bool askedAhead = false;
  for (const auto& call : files.Calls()) askedAhead |= call.op == MemoryFileSystem::Op::ReadAhead;
  EXPECT_TRUE(askedAhead);
}

}  // namespace
}  // namespace tresmor
