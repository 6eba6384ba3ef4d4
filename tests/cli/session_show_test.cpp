// Sessions shown and exported, and what all commands on them have in common.
#include <gmock/gmock.h>

#include "cli/session_world.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using tests::ConsoleRun;
using tests::SessionTest;

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
