// What a search from the command line prints, and what it says about itself.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "cli/console_world.h"

namespace tresmor {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tests::ConsoleRun;

class FindTest : public tests::ConsoleTest {
 protected:
  static constexpr std::int64_t kDay = 1'088'640'000;  // 2004-07-01 00:00:00 UTC

  // A pair, two files of one name, an empty file. Two further names are last in the order of names, so that none of
  // them joins the run before it.
  void MakeSmallWorld() {
    MakeFile("/data/a/one.txt", "same content");
    MakeFile("/data/b/copy of one.txt", "same content");
    MakeFile("/data/b/one.txt", "else");
    MakeFile("/data/empty", "");
    MakeFile("/data/y", "y");
    MakeFile("/data/z", std::string(2000, 'z'));
  }
  void MakeFile(const std::string& path, const std::string& content) {
    files.MakeFile(path, content);
    files.SetModified(path, kDay);
  }
};

TEST_F(FindTest, Text) {
  MakeSmallWorld();
  const ConsoleRun run = Find({"/data"});
  EXPECT_EQ(run.out,
            "Zero size: 1 file\n"
            "=================\n"
            "     0 Bytes  2004/07/01 00:00:00  /data/empty\n"
            "\n"
            "Duplicates: 2 files in 1 group\n"
            "==============================\n"
            "\n"
            "2 files, 24 Bytes\n"
            "    12 Bytes  2004/07/01 00:00:00  /data/b/copy of one.txt\n"
            "    12 Bytes  2004/07/01 00:00:00  /data/a/one.txt\n"
            "\n"
            "Same name: 2 files in 1 group\n"
            "=============================\n"
            "\n"
            "2 files, 16 Bytes\n"
            "     4 Bytes  2004/07/01 00:00:00  /data/b/one.txt\n"
            "    12 Bytes  2004/07/01 00:00:00  /data/a/one.txt\n"
            "\n"
            "Completed in 00:00:00, searched 5 files.\n"
            "No. of zero-size files: 1\n"
            "No. of duplicate(same-content) files: 2, 1 group(s)\n"
            "No. of same-name files: 2, 1 group(s)\n"
            "No. of truncated files(file portions): 0, 0 group(s)\n"
            "No. of files with reading error: 0\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, kRanThrough);
}

TEST_F(FindTest, TextShowsTheListsAskedFor) {
  MakeSmallWorld();
  const ConsoleRun run = Find({"/data", "--types", "portions"});
  EXPECT_THAT(run.out, StartsWith("Portions: 0 files in 0 groups\n=============================\n\nCompleted"));
}

TEST_F(FindTest, TextShowsReadErrorsAndHiddenFilesWithoutADate) {
  MakeFile("/data/.a", "same");
  MakeFile("/data/.b", "else");
  files.FailOpen("/data/.a", Errors::PermissionDenied);
  const ConsoleRun run = Find({"/data", "--hidden", "--types", "duplicates"});
  EXPECT_THAT(run.out, HasSubstr("Read errors: 1 file\n"
                                 "===================\n"
                                 "     4 Bytes                    -  /data/.a\n"));
  EXPECT_EQ(run.status, kReadErrors);
}

TEST_F(FindTest, TextWithSizesBeyondItsUnits) {
  files.MakeFile("/a", std::int64_t{3} << 40, [](std::int64_t, std::span<char>) {});
  files.FailRead("/a", 0, Errors::Device);
  files.MakeFile("/b", std::int64_t{3} << 40, [](std::int64_t, std::span<char>) {});
  EXPECT_THAT(Find({"/", "--types", "duplicates"}).out, HasSubstr("3298534883328 Bytes"));
}

TEST_F(FindTest, Groups) {
  MakeSmallWorld();
  MakeFile("/data/p", "pair");
  MakeFile("/data/q", "pair");
  const ConsoleRun run = Find({"/data", "--format", "groups"});
  EXPECT_EQ(run.out, "/data/p\n/data/q\n\n/data/b/copy of one.txt\n/data/a/one.txt\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, kRanThrough);
}

TEST_F(FindTest, DatesAreLookedUpOnlyForWhoShowsOrKeepsThem) {
  MakeFile("/data/p", "pair");
  MakeFile("/data/q", "pair");
  const auto looks = [&](const std::vector<std::string>& arguments) {
    files.ClearCalls();
    Find(arguments);
    const auto calls = files.Calls();
    return std::count_if(calls.begin(), calls.end(), [](const MemoryFileSystem::Call& call) {
      return call.op == MemoryFileSystem::Op::Stat && call.path == "/data/p";
    });
  };
  const auto bare = looks({"/data", "--types", "duplicates", "--format", "groups"});
  EXPECT_EQ(looks({"/data", "--types", "duplicates", "--format", "text"}), bare + 1);
  EXPECT_EQ(looks({"/data", "--types", "duplicates", "--format", "groups", "--save", "/data/s.Tresmor"}), bare + 1);
}

TEST_F(FindTest, GroupsOfTheOtherTypes) {
  MakeSmallWorld();
  MakeFile("/data/also empty", "");
  EXPECT_EQ(Find({"/data", "--format", "groups", "--types", "names"}).out, "/data/a/one.txt\n/data/b/one.txt\n");
  EXPECT_EQ(Find({"/data", "--format", "groups", "--types", "zero"}).out, "/data/also empty\n/data/empty\n");
  EXPECT_EQ(Find({"/data", "--format", "groups", "--types", "portions"}).out, "");
}

// The last file of the table joins the run of names before it, in the list; it is no group.
TEST_F(FindTest, GroupsLeaveOutGroupsOfOne) {
  MakeFile("/data/a/x", "1");
  MakeFile("/data/b/x", "22");
  MakeFile("/data/y", "333");
  EXPECT_EQ(Find({"/data", "--format", "groups", "--types", "names"}).out, "/data/b/x\n/data/a/x\n");
  EXPECT_THAT(Find({"/data", "--format", "csv", "--types", "names"}).out, HasSubstr("names,2,/data/,y,3,"));
}

TEST_F(FindTest, Groups0PartsGroupsByALoneNul) {
  MakeSmallWorld();
  MakeFile("/data/p\n", "pair");
  MakeFile("/data/q\xff", "pair");
  EXPECT_EQ(Find({"/data", "--format", "groups0"}).out,
            "/data/p\n\0/data/q\xff\0\0/data/b/copy of one.txt\0/data/a/one.txt\0"s);
}

TEST_F(FindTest, GroupsGiveTheBytesOfNamesButNotToATerminal) {
  MakeFile("/data/p\n", "pair");
  MakeFile("/data/q\xff", "pair");
  EXPECT_EQ(Find({"/data", "--format", "groups"}).out, "/data/q\xff\n/data/p\n\n");
  outIsTerminal = true;
  EXPECT_EQ(Find({"/data", "--format", "groups"}).out, "/data/q\\xff\n/data/p\\n\n");
  EXPECT_EQ(Find({"/data", "--format", "groups0"}).out, "/data/q\xff\0/data/p\n\0"s);
}

TEST_F(FindTest, Json) {
  MakeSmallWorld();
  const ConsoleRun run = Find({"/data", "--format", "json"});
  EXPECT_EQ(run.out, R"({
"searched": 5,
"elapsed_seconds": 0.0,
"cancelled": false,
"lists": {
"zero": [
{"path":"/data/empty","size":0,"date":"2004-07-01T00:00:00Z"}
],
"duplicates": [
{"path":"/data/b/copy of one.txt","size":12,"date":"2004-07-01T00:00:00Z","group":3},
{"path":"/data/a/one.txt","size":12,"date":"2004-07-01T00:00:00Z","group":3}
],
"names": [
{"path":"/data/b/one.txt","size":4,"date":"2004-07-01T00:00:00Z","group":1},
{"path":"/data/a/one.txt","size":12,"date":"2004-07-01T00:00:00Z","group":1}
],
"portions": [],
"errors": []
}
}
)");
}

TEST_F(FindTest, PortionsInEveryFormat) {
  const std::string content(120'000, 'x');
  MakeFile("/data/whole", content);
  MakeFile("/data/cut", content.substr(0, 60'000));
  const auto find = [this](const char* format) {
    return Find({"/data", "--types", "portions", "--format", format}).out;
  };
  EXPECT_THAT(find("text"), StartsWith("Portions: 2 files in 1 group\n"
                                       "============================\n"
                                       "\n"
                                       "2 files, 175.78 KB\n"
                                       "    58.59 KB  2004/07/01 00:00:00  /data/cut\n"
                                       "   117.19 KB  2004/07/01 00:00:00  /data/whole\n"
                                       "\n"
                                       "Completed"));
  EXPECT_THAT(find("json"), HasSubstr("\"portions\": [\n"
                                      R"({"path":"/data/cut","size":60000,"date":"2004-07-01T00:00:00Z","group":0},)"
                                      "\n"
                                      R"({"path":"/data/whole","size":120000,"date":"2004-07-01T00:00:00Z","group":0})"
                                      "\n],"));
  EXPECT_EQ(find("csv"),
            "list,group,folder,name,size,date\r\n"
            "portions,0,/data/,cut,60000,2004-07-01T00:00:00Z\r\n"
            "portions,0,/data/,whole,120000,2004-07-01T00:00:00Z\r\n");
  EXPECT_EQ(find("groups"), "/data/cut\n/data/whole\n");
  EXPECT_EQ(find("groups0"), "/data/cut\0/data/whole\0"s);
}

TEST_F(FindTest, JsonOfOddNames) {
  MakeFile("/data/.p\n\"", "");
  MakeFile("/data/q\xff", "");
  const auto document = nlohmann::json::parse(Find({"/data", "--format", "json", "--hidden"}).out);
  const auto& rows = document["lists"]["zero"];
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0]["path"], "/data/.p\n\"");
  EXPECT_TRUE(rows[0]["date"].is_null());
  EXPECT_FALSE(rows[0].contains("path_base64"));
  EXPECT_EQ(rows[1]["path"], "/data/q\xef\xbf\xbd");
  EXPECT_EQ(rows[1]["path_base64"], "L2RhdGEvcf8=");
}

TEST_F(FindTest, Csv) {
  MakeSmallWorld();
  MakeFile("/data/.a,\"b\r\n", "");
  EXPECT_EQ(Find({"/data", "--format", "csv", "--hidden"}).out,
            "list,group,folder,name,size,date\r\n"
            "zero,,/data/,\".a,\"\"b\r\n\",0,\r\n"
            "zero,,/data/,empty,0,2004-07-01T00:00:00Z\r\n"
            "duplicates,4,/data/b/,copy of one.txt,12,2004-07-01T00:00:00Z\r\n"
            "duplicates,4,/data/a/,one.txt,12,2004-07-01T00:00:00Z\r\n"
            "names,1,/data/a/,one.txt,12,2004-07-01T00:00:00Z\r\n"
            "names,1,/data/b/,one.txt,4,2004-07-01T00:00:00Z\r\n");
}

TEST_F(FindTest, ReadErrorsGiveTheirStatusInEveryFormat) {
  MakeFile("/data/a", "same");
  MakeFile("/data/b", "else");
  files.FailOpen("/data/a", Errors::PermissionDenied);
  for (const char* format : {"text", "groups", "groups0", "json", "csv"}) {
    EXPECT_EQ(Find({"/data", "--types", "duplicates", "--format", format}).status, kReadErrors) << format;
  }
  EXPECT_THAT(Find({"/data", "--format", "csv"}).out, HasSubstr("errors,,/data/,a,4,"));
}

TEST_F(FindTest, GroupsNameTheFirstReadErrorsBesideTheFindings) {
  for (int i = 0; i < 12; ++i) {
    MakeFile("/data/" + std::to_string(i), "same");
    files.FailOpen("/data/" + std::to_string(i), Errors::PermissionDenied);
  }
  const ConsoleRun run = Find({"/data", "--format", "groups"});
  EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 11);
  EXPECT_THAT(run.err, HasSubstr("tresmor-cli: Can't read '/data/"));
  EXPECT_THAT(run.err, HasSubstr("Can't read 2 more files"));
  EXPECT_EQ(run.out, "");
  const ConsoleRun quiet = Find({"/data", "--format", "groups", "--quiet"});
  EXPECT_EQ(quiet.err, "");
  EXPECT_EQ(quiet.status, kReadErrors);
}

TEST_F(FindTest, RowsTakeTheCriteria) {
  MakeFile("/data/a.jpg", "");
  MakeFile("/data/b.txt", "");
  MakeFile("/data/sub/c.jpg", "");
  MakeFile("/data/large.jpg", std::string(5000, 'x'));
  MakeFile("/data/sub/large.jpg", std::string(5000, 'x'));
  const auto paths = [this](std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--format", "groups"});
    return Find(std::move(arguments)).out;
  };
  EXPECT_EQ(paths({"/data", "--types", "zero", "--pattern", "*.jpg"}), "/data/a.jpg\n/data/sub/c.jpg\n");
  EXPECT_EQ(paths({"/data", "--types", "zero", "--pattern", "a.*;b.*"}), "/data/a.jpg\n/data/b.txt\n");
  EXPECT_EQ(paths({"/data", "--types", "zero", "--no-subfolders"}), "/data/a.jpg\n/data/b.txt\n");
  EXPECT_EQ(paths({"/data", "--types", "zero", "--min-kb", "0"}), "");
  EXPECT_EQ(paths({"/data", "--max-kb", "5"}), "");
  EXPECT_EQ(paths({"/data", "--min-kb", "4", "--max-kb", "6"}), "/data/large.jpg\n/data/sub/large.jpg\n");
  EXPECT_EQ(paths({"/data", "--since", "2004-07-03"}), "");
  EXPECT_EQ(paths({"/data", "--since", "2004-06-29"}), "/data/large.jpg\n/data/sub/large.jpg\n");
}

TEST_F(FindTest, AreasAreOnlyForComparison) {
  MakeFile("/area/a", "same");
  MakeFile("/area/b", "same");
  MakeFile("/data/c", "pair");
  MakeFile("/area/d", "pair");
  MakeFile("/area/empty", "");
  EXPECT_EQ(Find({"/data", "--area", "/area", "--format", "groups"}).out, "/area/d\n/data/c\n");
  EXPECT_EQ(Find({"/data", "--area", "/area", "--format", "groups", "--types", "zero"}).out, "");
}

TEST_F(FindTest, ExcludedFoldersAreKeptOutOf) {
  MakeFile("/data/a", "same");
  MakeFile("/data/b", "same");
  MakeFile("/data/out/c", "same");
  EXPECT_EQ(Find({"/data", "--exclude", "/data/out", "--format", "groups"}).out, "/data/b\n/data/a\n");
}

TEST_F(FindTest, ToleranceIsHandedOn) {
  MakeFile("/data/a", std::string(900, 'x') + "a");
  MakeFile("/data/b", std::string(900, 'x') + "b");
  EXPECT_EQ(Find({"/data", "--format", "groups"}).out, "");
  EXPECT_EQ(Find({"/data", "--format", "groups", "--tolerant"}).out, "/data/b\n/data/a\n");
}

TEST_F(FindTest, WithoutAWorkingFolderRelativePathsAreRefused) {
  MakeFile("/data/a", "");
  workingFolder = "";
  for (const char* typed : {".", "data"}) {
    const ConsoleRun run = Find({typed, "--types", "zero", "--format", "groups"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("Path '" + std::string(typed) + "' does not exist: the working folder is gone."));
  }
  EXPECT_EQ(Find({"/data", "--types", "zero", "--format", "groups", "--save", "s.Tresmor"}).status, 2);
  EXPECT_EQ(Run({"show", "s.Tresmor"}).status, 2);
  EXPECT_EQ(Find({"/data", "--types", "zero", "--format", "groups"}).out, "/data/a\n");
}

TEST_F(FindTest, HiddenFilesAndFoldersAreSearchedOnRequestAlone) {
  for (const char* path : {"/data/.a", "/data/.b/c", "/data/d"}) MakeFile(path, "");
  EXPECT_EQ(Find({"/data", "--types", "zero", "--format", "groups"}).out, "/data/d\n");
  EXPECT_EQ(Find({"/data", "--types", "zero", "--format", "groups", "--hidden"}).out,
            "/data/.a\n/data/.b/c\n/data/d\n");
}

TEST_F(FindTest, RelativePathsStartInTheWorkingFolder) {
  MakeFile("/home/data/a", "");
  MakeFile("/home/b", "");
  EXPECT_EQ(Find({"data", "--types", "zero", "--format", "groups"}).out, "/home/data/a\n");
  EXPECT_EQ(Find({"./data//.", "--types", "zero", "--format", "groups"}).out, "/home/data/a\n");
  EXPECT_EQ(Find({".", "--types", "zero", "--format", "groups"}).out, "/home/data/a\n/home/b\n");
  EXPECT_EQ(Find({"data/..", "--types", "zero", "--format", "groups"}).out, "/home/data/../data/a\n/home/data/../b\n");
}

TEST_F(FindTest, AFolderMayHaveAnyName) {
  MakeFile("/data;*.jpg,[a]/a", "");
  EXPECT_EQ(Find({"/data;*.jpg,[a]", "--types", "zero", "--format", "groups"}).out, "/data;*.jpg,[a]/a\n");
}

TEST_F(FindTest, ALinkToAFolderIsSearched) {
  MakeFile("/data/a", "");
  files.MakeLink("/link", "/data");
  EXPECT_EQ(Find({"/link", "--types", "zero", "--format", "groups"}).out, "/link/a\n");
}

TEST_F(FindTest, PathsThatCantBeSearchedAreWrongUse) {
  MakeFile("/data/a", "");
  files.MakeLink("/link", "/nowhere");
  const auto complaint = [this](const std::vector<std::string>& arguments) {
    files.ClearCalls();
    const ConsoleRun run = Find(arguments);
    EXPECT_EQ(run.status, kWrongUse);
    EXPECT_EQ(run.out, "");
    for (const MemoryFileSystem::Call& call : files.Calls()) EXPECT_NE(call.op, MemoryFileSystem::Op::List);
    return run.err;
  };
  EXPECT_EQ(complaint({"/data", "nope"}), "tresmor-cli: Path 'nope' does not exist.\n");
  EXPECT_EQ(complaint({"/data/a"}), "tresmor-cli: Path '/data/a' is no folder.\n");
  EXPECT_EQ(complaint({"/link"}), "tresmor-cli: Path '/link' is no folder.\n");
  EXPECT_EQ(complaint({""}), "tresmor-cli: Path '' does not exist.\n");
  EXPECT_EQ(complaint({"/data", "--area", "no\ne"}), "tresmor-cli: Path 'no\\ne' does not exist.\n");
  EXPECT_EQ(complaint({"/data", "--exclude", "none"}), "tresmor-cli: Path 'none' does not exist.\n");
  EXPECT_THAT(complaint({"/data", "--min-kb", "2", "--max-kb", "1"}), HasSubstr("Max File Size(1)"));
}

TEST_F(FindTest, ProtectedFoldersAreToldWithTheWayAround) {
  MakeFile("/usr/share/a", "");
  const ConsoleRun run = Find({"/usr/share", "--format", "groups", "--types", "zero"});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "tresmor-cli: '/usr/share/' is not searched: it lies in one of the system's own folders; --no-protect "
            "searches them.\n");
  EXPECT_EQ(run.status, kRanThrough);
  EXPECT_EQ(Find({"/usr/share", "--quiet"}).err, "");
  const ConsoleRun searched = Find({"/usr/share", "--format", "groups", "--types", "zero", "--no-protect"});
  EXPECT_EQ(searched.out, "/usr/share/a\n");
  EXPECT_EQ(searched.err, "");
}

TEST_F(FindTest, PathsInExcludedFoldersAreTold) {
  files.MakeFolder("/data/sub");
  files.MakeFolder("/database");
  EXPECT_EQ(Find({"/data/sub", "/database", "--exclude", "/data"}).err,
            "tresmor-cli: '/data/sub/' is not searched: it lies in a folder given to --exclude.\n");
}

TEST_F(FindTest, BoxesArePrinted) {
  files.MakeFolder("/data");
  shell.programFilesDir.clear();
  EXPECT_EQ(Find({"/data", "--quiet"}).err, "tresmor-cli: Error getting program files folder location.\n");
}

TEST_F(FindTest, NamesInBoxesAreMadeVisible) {
  files.MakeFile("/data/two\r\nlines", "x");
  files.FailStat("/data/two\r\nlines", Errors::PermissionDenied);
  EXPECT_EQ(Find({"/data", "--format", "csv"}).err,
            "tresmor-cli: Error 70: Permission denied File: '/data/two\\r\\nlines' Tresmor will try to ignore this.\n");
}

TEST_F(FindTest, InterruptEndsTheSearchAndPrintsWhatTheListsHold) {
  MakeSmallWorld();
  InterruptAtFirst(MemoryFileSystem::Op::Open);
  const ConsoleRun run = Find({"/data", "--format", "csv"});
  EXPECT_EQ(run.status, kCancelled);
  EXPECT_THAT(run.out, HasSubstr("zero,,/data/,empty,0,"));
  EXPECT_THAT(run.out, HasSubstr("names,1,/data/a/,one.txt,12,"));
  EXPECT_THAT(run.out, Not(HasSubstr("duplicates,")));
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled. What was found until then is printed.\n");
  EXPECT_EQ(ends, 1);
}

TEST_F(FindTest, InterruptInTheWalkFindsNothing) {
  MakeSmallWorld();
  InterruptAtFirst(MemoryFileSystem::Op::List);
  const ConsoleRun run = Find({"/data", "--format", "json", "--quiet"});
  EXPECT_EQ(run.status, kCancelled);
  const auto document = nlohmann::json::parse(run.out);
  EXPECT_EQ(document["cancelled"], true);
  EXPECT_EQ(document["searched"], 0);
  EXPECT_TRUE(document["lists"]["zero"].empty());
  EXPECT_EQ(run.err, "");
}

// No timer ticks here, so the program first asks when the search is over.
TEST_F(FindTest, AnInterruptBehindTheSearchLosesNothing) {
  MakeSmallWorld();
  const ConsoleRun whole = Find({"/data", "--format", "csv"});
  interrupted = true;
  const ConsoleRun run = Find({"/data", "--format", "csv"});
  EXPECT_THAT(run.out, HasSubstr("duplicates,"));
  EXPECT_EQ(run.out, whole.out);
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled. What was found until then is printed.\n");
  EXPECT_EQ(run.status, kCancelled);
}

TEST_F(FindTest, InterruptedGroupsAreWholeOrLeftOut) {
  MakeSmallWorld();
  InterruptAtFirst(MemoryFileSystem::Op::Open);
  const ConsoleRun run = Find({"/data", "--format", "groups"});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kCancelled);
}

// Each pump is a second later, and the search waits in its first listing until one has passed.
class ProgressTest : public FindTest {
 protected:
  ProgressTest() {
    MakeSmallWorld();
    files.SetHook([this](const MemoryFileSystem::Call& call) {
      if (call.op != MemoryFileSystem::Op::List || waits_.exchange(true)) return;
      events.Wake();
      ticked_.wait(false);
    });
    events.onPump = [this] {
      if (!waits_ || ticked_) return;
      events.seconds += 1;
      TickAll();
      ticked_ = true;
      ticked_.notify_all();
    };
  }

 private:
  std::atomic<bool> waits_{false};
  std::atomic<bool> ticked_{false};
};

TEST_F(ProgressTest, IsALineEachTickOffATerminal) {
  EXPECT_EQ(Find({"/data", "--progress", "always"}).err, "Searching /data/*.* - 00:00:01 elapsed.\n");
}

TEST_F(ProgressTest, IsOneLineRedrawnOnATerminal) {
  errDevice = ErrorDevice::Terminal;
  EXPECT_EQ(Find({"/data"}).err, "\r\x1b[?7lSearching /data/*.* - 00:00:01 elapsed.\x1b[K\x1b[?7h\r\x1b[K");
}

TEST_F(ProgressTest, EndsWithTheSearchsLastWordsUnlessTheyArePrintedAnyway) {
  EXPECT_EQ(Find({"/data", "--progress", "always", "--format", "csv"}).err,
            "Searching /data/*.* - 00:00:01 elapsed.\n"
            "tresmor-cli: Completed in 00:00:01, searched 5 files.\n");
}

TEST_F(ProgressTest, IsSilentOffATerminalByDefault) { EXPECT_EQ(Find({"/data"}).err, ""); }

TEST_F(ProgressTest, IsSilentWhereNobodyWantsIt) {
  errDevice = ErrorDevice::Terminal;
  EXPECT_EQ(Find({"/data", "--progress", "never"}).err, "");
}

TEST_F(ProgressTest, IsSilentWhenQuietOnATerminal) {
  errDevice = ErrorDevice::Terminal;
  EXPECT_EQ(Find({"/data", "--quiet"}).err, "");
}

}  // namespace
}  // namespace tresmor
