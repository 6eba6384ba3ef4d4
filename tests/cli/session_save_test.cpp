// Searches that are saved as sessions, and the search for what a session tells.
#include <gmock/gmock.h>

#include "cli/session_world.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::ConsoleRun;
using tests::SessionTest;

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

}  // namespace
}  // namespace tresmor
