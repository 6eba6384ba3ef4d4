// Marks in a session: the rules that set them, and what shows them.
#include <gmock/gmock.h>

#include "cli/session_world.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::ConsoleRun;
using tests::SessionTest;

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

}  // namespace
}  // namespace tresmor
