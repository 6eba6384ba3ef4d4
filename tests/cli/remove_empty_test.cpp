// Folders that the marked files leave without a file: what the plan says of them, and what becomes of them.
#include <gmock/gmock.h>

#include "cli/oper_world.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using tests::ConsoleRun;
using tests::OperTest;

class EmptiedByCommandTest : public OperTest {
 protected:
  // What the plan of a command prints between its first line and its last.
  std::string Foreseen(const std::string& command, std::vector<std::string> options = {}) {
    options.emplace_back("--remove-empty");
    const std::string plan = Do(command, options).out;
    const std::size_t begin = plan.find('\n') + 1;
    return plan.substr(begin, plan.find("Nothing was done.") - begin);
  }
  Paths Trashed() const {
    Paths names;
    FolderListing listing;
    EXPECT_EQ(files.List("/home/me/Trash/files", listing), Errors::None);
    for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(EmptiedByCommandTest, ThePlanNamesTheFoldersThatWouldGo) {
  files.MakeFile("/data/b\n/three", "same content");
  SaveAndMark("t*");
  const std::string folders =
      "2 folders would then be moved to the trash, with all sub-folders, unless a file in them is skipped:\n"
      "  /data/b\n  /data/b\\n\n";
  EXPECT_EQ(Foreseen("trash"), folders);
  EXPECT_EQ(Foreseen("delete"), folders);
  EXPECT_EQ(Foreseen("move", {"/dest"}), folders);
  EXPECT_EQ(Foreseen("move", {"/data/b"}).find("/data/b\n"), std::string::npos);
  EXPECT_THAT(Do("trash", {}).out, Not(HasSubstr("folder")));
  SaveAndMark("one");
  files.MakeFile("/data/a/other", "");
  EXPECT_EQ(Foreseen("trash"), "");
}

TEST_F(EmptiedByCommandTest, FoldersThatNewcomersLieBelowAreNeitherForeseenNorTaken) {
  files.MakeFile("/data/data/b/two too", "same content");
  files.MakeFile("/data/b/sub/two", "same content");
  SaveAndMark("two*");
  EXPECT_THAT(Foreseen("move", {"/data", "--structure"}),
              AllOf(HasSubstr("2 folders "), HasSubstr("  /data/b\n"), HasSubstr("  /data/b/sub\n")));
  EXPECT_THAT(Foreseen("move", {"/data"}), HasSubstr("3 folders "));
  EXPECT_EQ(Do("move", {"/data", "--structure", "--yes", "--remove-empty"}).status, kRanThrough);
  EXPECT_THAT(Trashed(), ElementsAre("b"));
  EXPECT_TRUE(Exists("/data/data/b/two") && Exists("/data/data/b/sub/two") && Exists("/data/data/data/b/two too"));
}

TEST_F(EmptiedByCommandTest, FilesOfOtherListsAreNeverSkipped) {
  files.MakeFile("/data/e/empty", "");
  SaveAndMark("empty", "zero");
  EXPECT_EQ(Foreseen("delete", {"--list", "zero"}),
            "1 folder would then be moved to the trash, with all sub-folders:\n  /data/e\n");
}

TEST_F(EmptiedByCommandTest, TrashAndDeleteTakeTheFoldersTheyEmptied) {
  for (const char* command : {"trash", "delete"}) {
    SaveAndMark("two");
    const ConsoleRun run = Do(command, {"--yes", "--remove-empty"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, kRanThrough);
    EXPECT_FALSE(Exists("/data/b"));
    EXPECT_TRUE(Exists("/home/me/Trash/files/b"));
    EXPECT_EQ(Exists("/home/me/Trash/files/two"), std::string(command) == "trash");
    EXPECT_EQ(Run({"undo"}).status, kRanThrough);
    EXPECT_TRUE(Exists("/data/b"));
  }
  EXPECT_FALSE(Exists("/data/b/two"));
}

TEST_F(EmptiedByCommandTest, ALinkThatLedToAFolderIsNeitherForeseenNorTaken) {
  files.MakeFile("/real/r1", "real");
  files.MakeFile("/data/a/r2", "real");
  files.MakeLink("/via", "/real");
  ASSERT_EQ(Find({"/via", "/data", "--save", "s.Tresmor", "--quiet"}).status, kRanThrough);
  Run({"mark", "s.Tresmor", "--pattern", "r1;two", "--keep", "none"});
  ASSERT_THAT(Rows(), Contains("/via/r1*"));
  EXPECT_THAT(Foreseen("trash"), AllOf(HasSubstr("1 folder "), HasSubstr("  /data/b\n")));
  const ConsoleRun run = Do("trash", {"--yes", "--remove-empty"});
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, "2 files (16 Bytes) moved to the trash.\n");
  EXPECT_THAT(Trashed(), ElementsAre("b", "r1", "two"));
  EXPECT_TRUE(Exists("/via") && Exists("/real"));
}

TEST_F(EmptiedByCommandTest, AfterACancelTheFoldersOfWhatHasGoneStillGo) {
  SaveAndMark("two;one");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove) interrupted = true;
  });
  const ConsoleRun run = Do("delete", {"--yes", "--remove-empty"});
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled: 1 of 2 were done.\n");
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 1 not.\n");
  EXPECT_EQ(run.status, kCancelled);
  EXPECT_NE(Exists("/data/a"), Exists("/data/b"));
  EXPECT_EQ(Exists("/data/a"), Exists("/data/a/one"));
  EXPECT_EQ(Exists("/data/b"), Exists("/data/b/two"));
  EXPECT_EQ(Trashed().size(), 1U);
}

TEST_F(EmptiedByCommandTest, ACancelOfTheCleanUpIsTold) {
  SaveAndMark("two;one");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Rename) interrupted = true;
  });
  const ConsoleRun run = Do("delete", {"--yes", "--remove-empty"});
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled: 1 of 2 were moved to the trash.\n");
  EXPECT_EQ(run.status, kCancelled);
  EXPECT_THAT(Rows(), Not(Contains(HasSubstr("two"))));
}

// It lies in a sub-folder of a folder that the others have left.
TEST_F(EmptiedByCommandTest, AMarkedFileThatHasStayedKeepsTheFoldersAboveIt) {
  files.MakeFile("/data/b/sub/kept", "pair 2");
  files.MakeFile("/data/e/kept", "pair 2");
  SaveAndMark("two;kept");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/b", "--sub-folders", "--pattern", "none"});
  ASSERT_THAT(Foreseen("delete"), HasSubstr("2 folders "));
  changes.Fail(MemoryFileChanges::Op::Remove, "/data/b/sub/kept", Errors::PermissionDenied);
  const ConsoleRun run = Do("delete", {"--yes", "--remove-empty"});
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 1 not.\n");
  EXPECT_FALSE(Exists("/data/b/two"));
  EXPECT_TRUE(Exists("/data/b/sub/kept"));
  EXPECT_THAT(Rows(), Contains("/data/b/sub/kept*"));
}

TEST_F(EmptiedByCommandTest, AFolderThatHoldsTheSessionStays) {
  files.MakeFolder("/data/b/sub");
  ASSERT_EQ(Find({"/data", "--save", "/data/b/sub/s.Tresmor", "--quiet"}).status, kRanThrough);
  Run({"mark", "/data/b/sub/s.Tresmor", "--pattern", "two"});
  EXPECT_THAT(Run({"trash", "/data/b/sub/s.Tresmor", "--remove-empty"}).out, Not(HasSubstr("folder")));
  EXPECT_EQ(Run({"trash", "/data/b/sub/s.Tresmor", "--remove-empty", "--yes"}).status, kRanThrough);
  EXPECT_THAT(Trashed(), ElementsAre("two"));
  EXPECT_TRUE(Exists("/data/b/sub/s.Tresmor"));
}

// The file that kept the folder goes by somebody else's hand, when it was told that what lies below stays.
TEST_F(EmptiedByCommandTest, AFolderThatNobodyForesawToBeEmptiedStays) {
  files.MakeFile("/data/b/other", "");
  files.MakeFile("/data/b/sub/two", "same content");
  SaveAndMark("two;three");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/b", "--pattern", "none"});
  EXPECT_EQ(Foreseen("delete"), "");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove && Exists("/data/b/other")) files.Remove("/data/b/other");
  });
  EXPECT_EQ(Do("delete", {"--yes", "--remove-empty"}).status, kRanThrough);
  EXPECT_FALSE(Exists("/data/b/two"));
  EXPECT_TRUE(Exists("/data/b/sub/two"));
}

}  // namespace
}  // namespace tresmor
