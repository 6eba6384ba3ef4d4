// Each command on a file that is no whole session with a result.
#include <gmock/gmock.h>

#include "cli/session_world.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using tests::ConsoleRun;
using tests::SessionTest;

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

}  // namespace
}  // namespace tresmor
