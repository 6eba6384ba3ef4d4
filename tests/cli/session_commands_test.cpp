// The commands on sessions: saving, searching again, showing, marking and exporting what was found.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/console_world.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::ConsoleRun;

constexpr std::int64_t kDay = 1'088'640'000;  // 2004-07-01 00:00:00 UTC

// Three of one content, each a day newer than the one before; two of one name; an empty file. The last file of all has
// a name that is last, so that it joins no group.
class SessionTest : public tests::ConsoleTest {
 protected:
  SessionTest() {
    files.MakeFolder("/home");
    Make("/data/a/one.txt", "same content", 0);
    Make("/data/a/sub/two.jpg", "same content", 1);
    Make("/data/b/three.txt", "same content", 2);
    Make("/data/b/one.txt", "else", 3);
    Make("/data/empty", "", 0);
    Make("/data/z", std::string(2000, 'z'), 0);
  }
  void Make(const std::string& path, const std::string& content, int day) {
    files.MakeFile(path, content);
    files.SetModified(path, kDay + day * 86'400);
  }
  std::string Content(const std::string& path) {
    Errors failure = Errors::None;
    const auto reader = files.Open(path, failure);
    if (!reader) return "none";
    std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
    reader->ReadAt(0, bytes);
    return bytes;
  }
  void Save() { ASSERT_EQ(Find({"/data", "--save", "s.Tresmor", "--quiet"}).status, kRanThrough); }
  // The marked paths of a list, in its order.
  std::vector<std::string> Marked(const char* list = "duplicates") {
    std::vector<std::string> paths;
    const auto document = nlohmann::json::parse(Run({"show", "s.Tresmor", "--format", "json"}).out);
    for (const auto& row : document["lists"][list]) {
      if (row.contains("marked")) paths.push_back(row["path"]);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
  }
  std::vector<std::string> Mark(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"mark", "s.Tresmor"});
    const ConsoleRun run = Run(arguments);
    EXPECT_EQ(run.status, kRanThrough) << run.err;
    return Marked();
  }
  using Paths = std::vector<std::string>;

  static constexpr char kFile[] = "/home/s.Tresmor";
  static constexpr char kOldest[] = "/data/a/one.txt";
  static constexpr char kMiddle[] = "/data/a/sub/two.jpg";
  static constexpr char kNewest[] = "/data/b/three.txt";
};

TEST_F(SessionTest, FindSavesAndPrintsAsBefore) {
  const ConsoleRun plain = Find({"/data"});
  const ConsoleRun saving = Find({"/data", "--tolerant", "--save", "s.Tresmor"});
  EXPECT_EQ(saving.out, plain.out);
  EXPECT_EQ(saving.err, "");
  EXPECT_EQ(saving.status, kRanThrough);
  EXPECT_THAT(Content(kFile), StartsWith("3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 1 \r\n 0 \r\n 1 \r\n 1 \r\n"
                                         "/data/*.*|-Yes|-|-|-|-Yes|-True\r\nTrue\r\n 4 \r\n 1 \r\n"));
  EXPECT_THAT(Content(kFile), HasSubstr("three.txt|-/data/b/|-"));
}

TEST_F(SessionTest, ADateOfTheScopeIsTheLocalesAndKeepsItsTime) {
  EXPECT_EQ(Find({"/data", "--since", "2 Jul 2003", "--save", "s.Tresmor"}).status, kRanThrough);
  EXPECT_THAT(Content(kFile), HasSubstr("/data/*.*|-Yes|-|-|-2003-07-02|-Yes|-True"));
  const ConsoleRun run = Find(
      {"/data", "--since", "7/1/2004 12:00:01 AM", "--format", "csv", "--types", "duplicates", "--save", "s.Tresmor"});
  EXPECT_THAT(Content(kFile), HasSubstr("|-2004-07-01 00:00:01|-"));
  EXPECT_THAT(run.out, AllOf(HasSubstr("two.jpg"), Not(HasSubstr("one.txt"))));
  EXPECT_EQ(Run({"run", "s.Tresmor", "--format", "csv"}).out, run.out);
}

TEST_F(SessionTest, FindSavesWhatWasFoundUntilItWasCancelled) {
  InterruptAtFirst(MemoryFileSystem::Op::Open);
  EXPECT_EQ(Find({"/data", "--save", kFile}).status, kCancelled);
  EXPECT_THAT(Content(kFile), AllOf(HasSubstr("empty|-/data/|-"), Not(HasSubstr("three.txt"))));
}

TEST_F(SessionTest, AFailedSaveIsToldAndTheFindingsArePrinted) {
  files.MakeFile(kFile, "old");
  writer.Fail(Errors::DiskFull);
  const ConsoleRun run = Find({"/data", "--format", "groups", "--save", "s.Tresmor"});
  EXPECT_EQ(run.err, "tresmor-cli: 's.Tresmor' can't be saved: " + std::string(Describe(Errors::DiskFull)) + ".\n");
  EXPECT_THAT(run.out, HasSubstr(kNewest));
  EXPECT_EQ(run.status, kFailed);
  EXPECT_EQ(Content(kFile), "old");
}

TEST_F(SessionTest, ASaveIntoAFolderThatIsNotThereIsWrongUse) {
  const ConsoleRun run = Find({"/data", "--save", "/none/s.Tresmor"});
  EXPECT_EQ(run.err, "tresmor-cli: Path '/none/' does not exist.\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kWrongUse);
  EXPECT_EQ(Find({"/data", "--save", ""}).status, kWrongUse);
}

TEST_F(SessionTest, AScopeThatASessionCannotTellIsNotSaved) {
  Make("/x|-y/a", "", 0);
  const ConsoleRun run = Find({"/x|-y", "--save", "s.Tresmor"});
  EXPECT_THAT(run.err, HasSubstr("Search session can't be saved"));
  EXPECT_THAT(run.out, HasSubstr("/x|-y/a"));
  EXPECT_EQ(run.status, kFailed);
  EXPECT_EQ(Content(kFile), "none");
}

TEST_F(SessionTest, NamesThatASessionCannotTellAreMadeVisible) {
  Make("/data/two\r\nlines\n\\", "", 0);
  ConsoleRun run = Find({"/data", "--save", "s.Tresmor", "--quiet"});
  EXPECT_EQ(run.err,
            "tresmor-cli: 1 file(s) left out, since a name with \"|-\" or a line end in it has no place in a search "
            "session: /data/two\\r\\nlines\\n\\\\\n");
  EXPECT_EQ(run.status, kRanThrough);
  Make("/o\r\nd\nd/a", "", 0);
  run = Find({"/o\r\nd\nd", "--save", "s.Tresmor", "--quiet"});
  EXPECT_EQ(run.err,
            "tresmor-cli: Search session can't be saved, since a name with \"|-\" or a line end in it has no place in "
            "a search session: /o\\r\\nd\\nd/*.*\n");
  EXPECT_EQ(run.status, kFailed);
}

TEST_F(SessionTest, RunSearchesWhatTheSessionTells) {
  Make("/out/c", "same content", 0);
  ASSERT_EQ(Find({"/data", "--area", "/out", "--exclude", "/data/a/sub", "--pattern", "*.txt;c;.h", "--types",
                  "duplicates", "--hidden", "--save", "s.Tresmor"})
                .status,
            kRanThrough);
  const std::string before = Content(kFile);
  Make("/data/.h", "same content", 0);
  const ConsoleRun run = Run({"run", "s.Tresmor", "--format", "csv", "--save", "t.Tresmor"});
  EXPECT_THAT(run.out, StartsWith("list,group,folder,name,size,date\r\n"));
  for (const char* name : {",/data/a/,one.txt,", ",/data/b/,three.txt,", ",/out/,c,", ",/data/,.h,"}) {
    EXPECT_THAT(run.out, HasSubstr(name));
  }
  EXPECT_THAT(run.out, AllOf(Not(HasSubstr("two.jpg")), Not(HasSubstr("zero,")), Not(HasSubstr("names,"))));
  EXPECT_EQ(run.status, kRanThrough);
  EXPECT_EQ(Content(kFile), before);
  EXPECT_THAT(Content("/home/t.Tresmor"), HasSubstr(".h|-/data/|-"));
}

TEST_F(SessionTest, RunPrintsTheTypesOfTheSessionInText) {
  ASSERT_EQ(Find({"/data", "--types", "zero,names", "--save", "s.Tresmor"}).status, kRanThrough);
  const std::string text = Run({"run", "s.Tresmor"}).out;
  EXPECT_THAT(text, StartsWith("Zero size: 1 file\n"));
  EXPECT_THAT(text, AllOf(HasSubstr("Same name: "), Not(HasSubstr("Duplicates: ")), Not(HasSubstr("Portions: "))));
  EXPECT_EQ(Run({"run", "s.Tresmor", "--format", "groups"}).out, "/data/empty\n");
}

TEST_F(SessionTest, RunPrintsDuplicatesAsGroupsWhereThereAreSeveralTypes) {
  Save();
  EXPECT_THAT(Run({"run", "s.Tresmor", "--format", "groups"}).out, AllOf(HasSubstr(kOldest), Not(HasSubstr("empty"))));
}

TEST_F(SessionTest, RunTellsVersionsOnlyWhenAskedTo) {
  Make("/data/a.exe", tests::PeBytes({5, 1, 2600, 1}), 0);
  ASSERT_EQ(Find({"/data", "--versions", "--save", "s.Tresmor"}).status, kRanThrough);
  EXPECT_THAT(Run({"run", "s.Tresmor", "--format", "json"}).out, Not(HasSubstr("version")));
  EXPECT_THAT(Run({"run", "s.Tresmor", "--format", "json", "--versions"}).out, HasSubstr("\"version\":"));
  EXPECT_THAT(Run({"show", "s.Tresmor", "--format", "csv"}).out,
              StartsWith("list,group,folder,name,size,date,version"));
}

TEST_F(SessionTest, RunRefusesAFolderThatIsGoneAndRemarksOnOnesLeftOut) {
  Make("/usr/a", "", 0);
  ASSERT_EQ(Find({"/data", "/usr", "--quiet", "--save", "s.Tresmor"}).status, kRanThrough);
  EXPECT_EQ(Run({"run", "s.Tresmor"}).err,
            "tresmor-cli: '/usr/' is not searched: it lies in one of the system's own folders, which the session keeps "
            "out of.\n");
  EXPECT_EQ(Run({"run", "s.Tresmor", "--quiet"}).err, "");
  files.Remove("/data");
  const ConsoleRun run = Run({"run", "s.Tresmor"});
  EXPECT_EQ(run.err, "tresmor-cli: Path '/data/' does not exist.\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kWrongUse);
}

TEST_F(SessionTest, RunGivesTheStatusOfItsSearch) {
  Save();
  files.FailOpen(kOldest, Errors::PermissionDenied);
  EXPECT_EQ(Run({"run", "s.Tresmor"}).status, kReadErrors);
  InterruptAtFirst(MemoryFileSystem::Op::List);
  EXPECT_EQ(Run({"run", "s.Tresmor", "--quiet"}).status, kCancelled);
}

TEST_F(SessionTest, ShowPrintsAsTheSearchDid) {
  for (const char* format : {"groups", "groups0", "csv"}) {
    const ConsoleRun found =
        Find({"/data", "--types", "duplicates", "--versions", "--format", format, "--save", "s.Tresmor"});
    EXPECT_THAT(found.out, HasSubstr("one.txt"));
    EXPECT_EQ(Run({"show", "s.Tresmor", "--format", format}).out, found.out) << format;
  }
  Save();
  const ConsoleRun text = Run({"show", "s.Tresmor"});
  EXPECT_THAT(text.out,
              StartsWith("Zero size: 1 file\n=================\n     0 Bytes  2004/07/01 00:00:00  /data/empty\n"));
  EXPECT_THAT(text.out, HasSubstr("=\n\nNo. of zero-size files: 1\n"));
  EXPECT_EQ(text.status, kRanThrough);
  EXPECT_EQ(text.err, "");
  EXPECT_THAT(Run({"show", "s.Tresmor", "--format", "json"}).out,
              StartsWith("{\n\"lists\": {\n\"zero\": [\n{\"path\""));
  EXPECT_GE(ends, 1);
}

TEST_F(SessionTest, ShowLeavesOutTypesThatNobodyAskedFor) {
  Save();
  const std::string text = Run({"show", "s.Tresmor", "--types", "names"}).out;
  EXPECT_THAT(text, StartsWith("Same name: "));
  EXPECT_THAT(text, HasSubstr("No. of zero-size files: 0\n"));
  EXPECT_EQ(Run({"show", "s.Tresmor", "--types", "zero", "--format", "csv"}).out,
            "list,group,folder,name,size,date\r\nzero,,/data/,empty,0,2004-07-01T00:00:00Z\r\n");
  EXPECT_EQ(Run({"show", "s.Tresmor", "--types", "zero,names", "--format", "groups"}).status, kWrongUse);
}

TEST_F(SessionTest, MarksAreShown) {
  Save();
  EXPECT_THAT(Run({"show", "s.Tresmor", "--format", "json"}).out, Not(HasSubstr("marked")));
  const ConsoleRun run = Run({"mark", "s.Tresmor", "--by-date", "newer"});
  EXPECT_EQ(run.out, "2 files (24 Bytes) marked, out of 3 files.\n");
  EXPECT_EQ(run.err, "");
  const std::string text = Run({"show", "s.Tresmor"}).out;
  EXPECT_THAT(text, HasSubstr("Duplicates: 3 files in 1 group, 2 marked\n"));
  EXPECT_THAT(text, HasSubstr("\n      12 Bytes  2004/07/01 00:00:00  /data/a/one.txt\n"));
  EXPECT_THAT(text, HasSubstr("\n*     12 Bytes  2004/07/03 00:00:00  /data/b/three.txt\n"));
  EXPECT_THAT(text, HasSubstr("\n    12 Bytes  2004/07/01 00:00:00  /data/a/one.txt\n"));  // of the same name
  EXPECT_THAT(Run({"show", "s.Tresmor", "--format", "json"}).out, HasSubstr(",\"marked\":true}"));
}

TEST_F(SessionTest, MarkByDate) {
  Save();
  EXPECT_EQ(Mark({"--by-date", "newer"}), (Paths{kMiddle, kNewest}));
  EXPECT_EQ(Mark({"--by-date", "older"}), (Paths{kOldest, kMiddle}));
}

TEST_F(SessionTest, MarkByFolder) {
  Save();
  EXPECT_EQ(Mark({"--folder", "/data/a"}), (Paths{kOldest}));
  EXPECT_EQ(Mark({"--folder", "/data/a/", "--sub-folders"}), (Paths{kOldest, kMiddle}));
  EXPECT_EQ(Mark({"--clear", "--folder", "../data/b", "--folder", "/dat", "--sub-folders"}), Paths{});
  EXPECT_EQ(Mark({"--folder", "/data/b", "--folder", "/data/a/sub"}), (Paths{kMiddle, kNewest}));
  Run({"mark", "s.Tresmor", "--list", "names", "--folder", "/data/b"});
  EXPECT_EQ(Marked("names"), (Paths{"/data/b/one.txt"}));
  EXPECT_EQ(Marked(), (Paths{kMiddle, kNewest}));
}

TEST_F(SessionTest, AFolderMayBeRelative) {
  Make("/home/p/x", "pair", 0);
  Make("/home/q/x", "pair", 0);
  ASSERT_EQ(Find({".", "--pattern", "x", "--save", "s.Tresmor"}).status, kRanThrough);
  EXPECT_EQ(Mark({"--folder", "./p"}), (Paths{"/home/p/x"}));
  EXPECT_EQ(Run({"mark", "s.Tresmor", "--folder", ""}).status, kWrongUse);
}

TEST_F(SessionTest, MarkByPatternAndClear) {
  Save();
  EXPECT_EQ(Mark({"--pattern", "*.JPG; t*"}), (Paths{kMiddle, kNewest}));
  EXPECT_EQ(Mark({"--pattern", "[o]ne*", "--clear"}), (Paths{kOldest}));
  EXPECT_EQ(Mark({"--clear"}), Paths{});
}

TEST_F(SessionTest, KeepTakesOneMarkOffAGroupThatIsMarkedWholly) {
  Save();
  EXPECT_EQ(Mark({"--pattern", "*"}), (Paths{kOldest, kMiddle}));
  EXPECT_EQ(Mark({"--pattern", "*", "--keep", "newest"}), (Paths{kOldest, kMiddle}));
  EXPECT_EQ(Mark({"--pattern", "*", "--keep", "oldest"}), (Paths{kMiddle, kNewest}));
  EXPECT_EQ(Mark({"--pattern", "*", "--keep", "none"}), (Paths{kOldest, kMiddle, kNewest}));
}

class MarkVersionsTest : public SessionTest {
 protected:
  MarkVersionsTest() {
    Make("/data/low/p.exe", tests::PeBytes({5, 1, 2600, 1}), 0);
    Make("/data/high/p.exe", tests::PeBytes({6, 0, 1, 1}), 0);
    Make("/data/y", "y", 0);  // a name between the last and the pair
    Find({"/data", "--versions", "--pattern", "*.exe;y;z", "--types", "names", "--save", "s.Tresmor"});
  }
  Paths MarkNames(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--list", "names", "--clear"});
    Mark(arguments);
    return Marked("names");
  }
};

// The words name what stays, whatever the dialog's entries say.
TEST_F(MarkVersionsTest, KeepNamesTheVersionThatStays) {
  EXPECT_EQ(MarkNames({"--pattern", "p*", "--keep", "lowest-version"}), (Paths{"/data/high/p.exe"}));
  EXPECT_EQ(MarkNames({"--pattern", "p*", "--keep", "highest-version"}), (Paths{"/data/low/p.exe"}));
}

TEST_F(MarkVersionsTest, MarkByVersion) {
  EXPECT_EQ(MarkNames({"--by-version", "newer"}), (Paths{"/data/high/p.exe"}));
  EXPECT_EQ(MarkNames({"--by-version", "older"}), (Paths{"/data/low/p.exe"}));
}

TEST_F(SessionTest, MarkBySize) {
  Save();
  Mark({"--list", "names", "--by-size", "largest"});
  EXPECT_EQ(Marked("names"), (Paths{"/data/a/one.txt"}));
  Mark({"--list", "names", "--by-size", "smallest"});
  EXPECT_EQ(Marked("names"), (Paths{"/data/b/one.txt"}));
}

TEST_F(SessionTest, ALaterRuleGoesOverTheOneBefore) {
  Save();
  Mark({"--list", "names", "--by-size", "largest", "--by-date", "newer"});
  EXPECT_EQ(Marked("names"), (Paths{"/data/a/one.txt"}));
}

TEST_F(SessionTest, MarkRefusesWhatTheDialogHasOutOfReach) {
  Save();
  const std::string before = Content(kFile);
  const auto refusal = [this](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"mark", "s.Tresmor"});
    const ConsoleRun run = Run(arguments);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.status, kWrongUse);
    return run.err;
  };
  EXPECT_THAT(refusal({"--by-size", "largest"}), HasSubstr("only the lists names and portions"));
  for (const char* option : {"--by-version=newer", "--keep=lowest-version", "--keep=highest-version"}) {
    EXPECT_THAT(refusal({option}), HasSubstr("The list has no versions")) << option;
  }
  EXPECT_EQ(refusal({"--pattern", "one*;[a"}),
            "tresmor-cli: Run-time error '93': " + std::string(Describe(Errors::BadPattern)) + "\n");
  EXPECT_EQ(Content(kFile), before);
}

TEST_F(SessionTest, AFailedSaveOfMarksLeavesTheFile) {
  Save();
  const std::string before = Content(kFile);
  writer.Fail(Errors::PermissionDenied);
  const ConsoleRun run = Run({"mark", "s.Tresmor", "--by-date", "newer"});
  EXPECT_THAT(run.err, StartsWith("tresmor-cli: 's.Tresmor' can't be saved: "));
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kFailed);
  EXPECT_EQ(Content(kFile), before);
}

TEST_F(SessionTest, ExportWritesOneList) {
  Save();
  const ConsoleRun run = Run({"export", "s.Tresmor", "--list", "zero", "out.csv"});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, kRanThrough);
  EXPECT_EQ(Content("/home/out.csv"), "^ Name,In Folder,Date Modified\r\n\"empty\",\"/data/\",2004/07/01 00:00:00\r\n");
  EXPECT_EQ(Run({"export", "s.Tresmor", "/home/dup.csv"}).status, kRanThrough);
  EXPECT_THAT(Content("/home/dup.csv"), HasSubstr("\"three.txt\",\"/data/b/\","));
  EXPECT_TRUE(shell.opened.empty());
}

TEST_F(SessionTest, ExportNeverTakesTheSessionsPlace) {
  Save();
  const std::string before = Content(kFile);
  const ConsoleRun run = Run({"export", "s.Tresmor", kFile});
  EXPECT_THAT(run.err, HasSubstr("is the session itself"));
  EXPECT_EQ(run.status, kWrongUse);
  EXPECT_EQ(Content(kFile), before);
}

TEST_F(SessionTest, AFailedExportIsTold) {
  Save();
  writer.Fail(Errors::DiskFull);
  const ConsoleRun run = Run({"export", "s.Tresmor", "out.csv"});
  EXPECT_THAT(run.err, StartsWith("tresmor-cli: Result list export failed."));
  EXPECT_EQ(run.status, kFailed);
  EXPECT_EQ(Content("/home/out.csv"), "none");
}

// Each command on a file that is no whole session with a result.
class DamagedSessionTest : public SessionTest {
 protected:
  // What all commands say of it. Nothing is printed and nothing written.
  void ExpectRefused(const std::string& content, const std::string& said, bool runToo = true) {
    if (Content(kFile) == "none") files.MakeFile(kFile, "");
    files.SetContent(kFile, content);
    std::vector<std::vector<std::string>> commands = {{"show", kFile},
                                                      {"show", kFile, "--format", "json"},
                                                      {"mark", kFile, "--by-date", "newer"},
                                                      {"export", kFile, "/home/out.csv"}};
    if (runToo) commands.push_back({"run", kFile, "--save", "/home/out.csv"});
    for (const auto& command : commands) {
      const ConsoleRun run = Run(command);
      EXPECT_THAT(run.err, AllOf(StartsWith("tresmor-cli: "), HasSubstr(said))) << command[0];
      EXPECT_EQ(run.out, "") << command[0];
      EXPECT_EQ(run.status, kFailed) << command[0];
      EXPECT_EQ(Content(kFile), content) << command[0];
      EXPECT_EQ(Content("/home/out.csv"), "none") << command[0];
    }
  }
  // That `run` has no quarrel with the rows of such a session.
  void ExpectSearched(const std::string& content) {
    files.SetContent(kFile, content);
    const ConsoleRun run = Run({"run", kFile, "--format", "groups"});
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(run.out, HasSubstr(kNewest));
    EXPECT_EQ(run.status, kRanThrough);
  }
  void ExpectNotBegun(const std::string& content, const std::string& said) {
    if (Content(kFile) == "none") files.MakeFile(kFile, "");
    files.SetContent(kFile, content);
    const ConsoleRun run = Run({"run", kFile, "--quiet", "--save", "t.Tresmor"});
    EXPECT_EQ(run.err, "tresmor-cli: " + said + "\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.status, kWrongUse);
    EXPECT_EQ(Content("/home/t.Tresmor"), "none");
  }
  static std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, what.size(), by);
  }
  // A session of one list of duplicates with these rows.
  static std::string Duplicates(const std::string& rows, int count) {
    return "3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n/data/*.*|-Yes|-|-|-|-Yes|-True\r\n"
           "True\r\n 2 \r\n 0 \r\n\r\n " +
           std::to_string(count) + " \r\n\r\n" + rows;
  }
};

TEST_F(DamagedSessionTest, IsRefusedWithTheProgramsOwnWords) {
  ExpectRefused("2.0.0\r\n", "File version 2.0.0 not supported. Search session can't be read.");
  ExpectRefused("", "Loading search session failed.  Error : #62 ");
  ExpectRefused(std::string(100, '\xff') + "\r\n", "not supported");
  Save();
  const std::string whole = Content(kFile);
  ExpectRefused(whole.substr(0, whole.size() - 3), "Loading search session failed.  Error : #62 ");
  ExpectRefused("3.0.0\r\nTrue\r\nperhaps\r\n", "Loading search session failed.  Error : #13 ");
}

TEST_F(DamagedSessionTest, RowsThatCannotBePrintedAreDamageToo) {
  const std::string good = "a|-/data/|-         1|-         5|-2004/07/01 00:00:00|-|-False\r\n";
  files.MakeFile(kFile, Duplicates(good + good, 2));
  EXPECT_EQ(Run({"show", kFile, "--format", "groups"}).out, "/data/a\n/data/a\n");
  for (const std::string bad : {"a|-/data/|-         1|-five|-2004/07/01 00:00:00|-|-False\r\n",
                                "a|-/data/|-         1|--5|-2004/07/01 00:00:00|-|-False\r\n",
                                "a|-/data/|- |-         5|-2004/07/01 00:00:00|-|-False\r\n",
                                "a|-/data/|-         1|-         5|-2004|-|-False\r\n", "a|-|-False\r\n"}) {
    ExpectRefused(Duplicates(good + bad, 2), "Loading search session failed.  Error : #13 ", false);
    ExpectSearched(Duplicates(good + bad, 2));
  }
  const std::string huge = "a|-/data/|-         1|-9223372036854775807|-2004/07/01 00:00:00|-|-True\r\n";
  ExpectRefused(Duplicates(huge + good, 2), "Loading search session failed.  Error : #6 ", false);
  ExpectSearched(Duplicates(huge + good, 2));
}

TEST_F(DamagedSessionTest, AnOddScopeCellFailsAtTheSearch) {
  files.MakeFile(kFile, Replaced(Duplicates("", 0), "|-Yes|-|-|-|-Yes|-", "|-Yes|-some|-|-|-Yes|-"));
  EXPECT_EQ(Run({"show", kFile}).err, "");
  const ConsoleRun run = Run({"run", kFile});
  EXPECT_EQ(run.err, "tresmor-cli: Run-time error '13': Type mismatch\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kFailed);
}

TEST_F(DamagedSessionTest, RunSaysWhatASearchCannotBeginWithout) {
  const std::string whole = Duplicates("", 0);
  const std::string row = "/data/*.*|-Yes|-|-|-|-Yes|-True\r\n";
  ExpectNotBegun(Replaced(whole, " 1 \r\n" + row, " 0 \r\n"),
                 "Please select path before search. Remember to click [Add>] to add path.");
  ExpectNotBegun(Replaced(whole, "True\r\nTrue\r\nTrue\r\nFalse\r\n", "False\r\nFalse\r\nFalse\r\nFalse\r\n"),
                 "Please select at least one search type.");
  ExpectNotBegun(Replaced(whole, row, "/data/|-Yes|-False\r\n"),
                 "Please include at least one path before search. You can select included path by unchecking "
                 "'Exclude' in tab 'Scope' and then click button [Add]. ");
  ExpectNotBegun(Replaced(whole, row, "/data/*.*|-Yes|-|-|-|-No|-True\r\n"),
                 "Please select at least one search target path before search. You can select 'Search Target' in tab "
                 "'Scope' and then click button [Add]. ");
}

TEST_F(DamagedSessionTest, AFileThatIsNotThereIsAFailure) {
  const ConsoleRun run = Run({"show", "none.Tresmor"});
  EXPECT_THAT(run.err, StartsWith("tresmor-cli: Loading search session failed.  Error : #53 "));
  EXPECT_EQ(run.status, kFailed);
}

TEST_F(DamagedSessionTest, ASessionWithoutAResultHasNothingToShow) {
  Save();
  std::string content = Content(kFile);
  const std::size_t at = content.find("-True\r\nTrue\r\n");
  ASSERT_NE(at, std::string::npos);
  content.replace(at, std::string::npos, "-True\r\nFalse\r\n 4 \r\n 0 \r\n\r\n 0 \r\n\r\n 0 \r\n\r\n 0 \r\n\r\n");
  ExpectRefused(content, "was saved without a result", false);
  EXPECT_THAT(Run({"run", kFile, "--format", "groups"}).out, HasSubstr(kNewest));
}

TEST_F(SessionTest, WrongUseIsTold) {
  EXPECT_THAT(Run({"mark"}).err, EndsWith("Try 'tresmor-cli mark --help'.\n"));
  EXPECT_THAT(Run({"mark", "f", "--by-date", "largest"}).err, HasSubstr("--by-date: largest"));
  EXPECT_THAT(Run({"mark", "f", "--list", "errors"}).err, HasSubstr("--list: errors"));
  EXPECT_THAT(Run({"export", "f"}).err, HasSubstr("OUT"));
  for (const char* command : {"run", "show", "mark", "export"}) EXPECT_EQ(Run({command, ""}).status, kWrongUse);
}

TEST_F(SessionTest, HelpTellsTheOptions) {
  const auto help = [this](const char* command) { return Run({command, "--help"}).out; };
  EXPECT_THAT(Find({"--help"}).out, HasSubstr("--save FILE"));
  EXPECT_THAT(help("run"), AllOf(HasSubstr("--save FILE"), HasSubstr("--progress WHEN"), HasSubstr("--quiet")));
  EXPECT_THAT(help("show"), AllOf(HasSubstr("--types TYPE,..."), HasSubstr("--format FORMAT"), HasSubstr("marked")));
  for (const char* option : {"--list LIST", "--folder DIR", "--sub-folders", "--pattern", "--by-date", "--by-size",
                             "--by-version", "--keep", "--clear", "lowest-version"}) {
    EXPECT_THAT(help("mark"), HasSubstr(option));
  }
  EXPECT_THAT(help("export"), AllOf(HasSubstr("OUT"), HasSubstr("--list LIST")));
}

// Their names as folders are folders.
TEST_F(SessionTest, NamesOfCommandsMayBePaths) {
  Make("/home/show/a", "", 0);
  Make("/home/mark/b", "", 0);
  EXPECT_EQ(Find({"show", "mark", "--types", "zero", "--format", "groups"}).out, "/home/show/a\n/home/mark/b\n");
}

TEST_F(SessionTest, OddNamesOfFilesStayWhole) {
  ASSERT_EQ(Find({"/data", "--save", "[a,b]"}).status, kRanThrough);
  EXPECT_EQ(Run({"show", "[a,b]"}).status, kRanThrough);
  EXPECT_EQ(Run({"export", "[a,b]", "+x"}).status, kRanThrough);
  EXPECT_THAT(Content("/home/+x"), HasSubstr("three.txt"));
}

}  // namespace
}  // namespace tresmor
