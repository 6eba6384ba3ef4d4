// The commands that trash, delete, move and copy marked files, and the one that puts them back.
#include <gmock/gmock.h>

#include "cli/oper_world.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tests::ConsoleRun;
using tests::OperTest;

TEST_F(OperTest, WithoutYesAPlanIsPrintedAndNothingDone) {
  SaveAndMark("t*");
  const auto before = AllFiles(files);
  const ConsoleRun run = Do("trash", {});
  EXPECT_EQ(run.out, "2 files (24 Bytes) would be moved to the trash.\nNothing was done. Give --yes to do it.\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, kRanThrough);
  EXPECT_THAT(Do("delete", {}).out, StartsWith("2 files (24 Bytes) would be deleted for good.\n"));
  EXPECT_THAT(Do("move", {"../dest"}).out, StartsWith("2 files (24 Bytes) would be moved to '../dest'.\n"));
  EXPECT_THAT(Do("copy", {"/dest"}).out, StartsWith("2 files (24 Bytes) would be copied to '/dest'.\n"));
  EXPECT_EQ(AllFiles(files), before);
  EXPECT_THAT(changes.Calls(), IsEmpty());
}

TEST_F(OperTest, WithoutMarksThePlanSaysWhatIsMissing) {
  SaveAndMark("none");
  for (const char* const command : {"trash", "delete"}) {
    const ConsoleRun run = Do(command, {});
    EXPECT_EQ(run.out, "No file of this list is marked, so there is nothing to do; 'tresmor-cli mark' marks files.\n");
    EXPECT_EQ(run.status, kRanThrough);
  }
}

TEST_F(OperTest, ThePlanNamesTheGroupsThatWouldKeepNoFile) {
  SaveAndMark("x;one");
  const std::string group = "  group 0 of 2 files: /data/d/x\nNothing";
  EXPECT_THAT(Do("trash", {}).out,
              HasSubstr("\n1 group would keep no file, so that they are skipped without --allow-all:\n" + group));
  EXPECT_THAT(Do("trash", {"--allow-all"}).out, HasSubstr("\n1 group would keep no file:\n" + group));
  EXPECT_THAT(Do("copy", {"/dest"}).out, Not(HasSubstr("group")));
}

TEST_F(OperTest, ThePlanKnowsTheGroupsOfOtherLists) {
  files.MakeFile("/data/empty", "");
  SaveAndMark("x", "names");
  EXPECT_THAT(Do("delete", {"--list", "names"}).out,
              HasSubstr("\n1 group would keep no file:\n  group 1 of 2 files: "));
  Run({"mark", "s.Tresmor", "--list", "zero", "--pattern", "*", "--keep", "none"});
  EXPECT_EQ(Do("delete", {"--list", "zero"}).out,
            "1 file (0 Bytes) would be deleted for good.\nNothing was done. Give --yes to do it.\n");
}

TEST_F(OperTest, TrashMovesToTheTrashAndPrunesTheSession) {
  SaveAndMark("t*");
  const ConsoleRun run = Do("trash");
  EXPECT_EQ(run.out, "2 files (24 Bytes) moved to the trash.\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.status, kRanThrough);
  EXPECT_THAT(AllFiles(files, "/home/me/Trash/files"),
              ElementsAre(testing::Pair("/home/me/Trash/files/three", "same content"),
                          testing::Pair("/home/me/Trash/files/two", "same content")));
  EXPECT_THAT(Rows(), ElementsAre("/data/a/one", "/data/c/x", "/data/d/x"));
}

TEST_F(OperTest, DeleteLeavesNothingInTheTrash) {
  SaveAndMark("t*");
  EXPECT_EQ(Do("delete").out, "2 files (24 Bytes) deleted for good.\n");
  EXPECT_EQ(Data().size(), 3U);
  EXPECT_THAT(AllFiles(files, "/home/me/Trash"), IsEmpty());
}

TEST_F(OperTest, MoveAndCopyPutFilesIntoOneFolder) {
  files.MakeFile("/dest/two", "here before");
  SaveAndMark("t*");
  EXPECT_EQ(Do("copy", {"/dest", "--yes"}).out, "2 files (24 Bytes) copied to '/dest'.\n");
  EXPECT_THAT(Rows(), testing::Contains("/data/b/two*"));
  EXPECT_EQ(Do("move", {"../dest", "--yes"}).out, "2 files (24 Bytes) moved to '../dest'.\n");
  EXPECT_THAT(
      AllFiles(files, "/dest"),
      ElementsAre(testing::Pair("/dest/three", "same content"), testing::Pair("/dest/three (2)", "same content"),
                  testing::Pair("/dest/two", "here before"), testing::Pair("/dest/two (2)", "same content"),
                  testing::Pair("/dest/two (3)", "same content")));
  EXPECT_THAT(Rows(), Not(testing::Contains(HasSubstr("two"))));
}

TEST_F(OperTest, StructureKeepsTheFolders) {
  SaveAndMark("t*");
  EXPECT_EQ(Do("move", {"/dest", "--structure", "--yes"}).status, kRanThrough);
  EXPECT_TRUE(Exists("/dest/data/b/two") && Exists("/dest/data/c/three"));
}

TEST_F(OperTest, EmptiedFoldersGoWhenAskedFor) {
  SaveAndMark("t*");
  EXPECT_EQ(Do("move", {"/dest", "--yes"}).status, kRanThrough);
  EXPECT_TRUE(Exists("/data/b"));
  EXPECT_EQ(Run({"undo"}).status, kRanThrough);
  SaveAndMark("t*");
  const ConsoleRun run = Do("move", {"/dest", "--yes", "--remove-empty"});
  EXPECT_EQ(run.out, "2 files (24 Bytes) moved to '/dest'.\n");
  EXPECT_FALSE(Exists("/data/b"));
  EXPECT_TRUE(Exists("/data/c/x"));
  EXPECT_EQ(Run({"undo"}).out, "3 items put back.\n");
  EXPECT_TRUE(Exists("/data/b/two"));
}

// Sessions that were made by hand may have one.
TEST_F(OperTest, ARowWithoutAPathKeepsNoOthersFromGoing) {
  files.MakeFile("/home/s.Tresmor",
                 "3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n"
                 "/data/*.*|-Yes|-|-|-|-Yes|-True\r\nTrue\r\n 1 \r\n 3 \r\n\r\n"
                 "one|-/data/a/|- |-         0|-2004/07/01 00:00:00|-|-True\r\n"
                 "|-|- |-         0|-2004/07/01 00:00:00|-|-True\r\n"
                 "two|-/data/b/|- |-         0|-2004/07/01 00:00:00|-|-True\r\n");
  const ConsoleRun run = Do("delete", {"--yes", "--list", "zero"});
  EXPECT_THAT(run.err, HasSubstr("it is no full path"));
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_FALSE(Exists("/data/a/one") || Exists("/data/b/two"));
}

TEST_F(OperTest, ADestinationHasToBeThere) {
  SaveAndMark("t*");
  const ConsoleRun run = Do("move", {"/nowhere", "--yes"});
  EXPECT_EQ(run.err, "tresmor-cli: Path '/nowhere' does not exist.\n");
  EXPECT_EQ(run.status, kWrongUse);
  EXPECT_EQ(Do("copy", {"", "--yes"}).status, kWrongUse);
  EXPECT_EQ(Do("copy", {"--yes"}).status, kWrongUse);
  EXPECT_EQ(Data().size(), 5U);
}

TEST_F(OperTest, AFailureIsToldAndKeepsItsRow) {
  SaveAndMark("t*");
  changes.Fail(MemoryFileChanges::Op::Remove, "/data/b/two", Errors::PermissionDenied);
  const ConsoleRun run = Do("delete");
  EXPECT_THAT(run.err,
              AllOf(StartsWith("tresmor-cli: File operations failed. Error Code: 5 "), HasSubstr("/data/b/two")));
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 1 not.\n");
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_THAT(Rows(), AllOf(testing::Contains("/data/b/two*"), Not(testing::Contains(HasSubstr("three")))));
}

TEST_F(OperTest, ACancelLeavesTheRestAndSavesTheSession) {
  SaveAndMark("t*");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove) interrupted = true;
  });
  const ConsoleRun run = Do("delete");
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled: 1 of 2 were done.\n");
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 1 not.\n");
  EXPECT_EQ(run.status, kCancelled);
  EXPECT_EQ(Data().size(), 4U);
  interrupted = false;
  EXPECT_EQ(Rows().size(), 4U);
}

TEST_F(OperTest, ACancelThatLeavesNothingIsNone) {
  files.MakeFile("/data/empty", "");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove) interrupted = true;
  });
  for (const auto& [list, name] : {std::pair("duplicates", "two"), std::pair("zero", "empty")}) {
    interrupted = false;
    SaveAndMark(name, list);
    const ConsoleRun run = Do("delete", {"--yes", "--list", list});
    EXPECT_TRUE(interrupted);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, kRanThrough);
  }
}

TEST_F(OperTest, NobodyUndoesBetweenTheFilesOfAStep) {
  SaveAndMark("t*");
  std::vector<Errors> held;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op != MemoryFileSystem::Op::Open || call.path != "/data/a/one") return;
    held.push_back(UndoLog(files, changes, "/home/state/undo").HoldAlone());
  });
  EXPECT_EQ(Do("trash").status, kRanThrough);
  files.SetHook(nullptr);
  EXPECT_THAT(held, ElementsAre(testing::_, Errors::PathAccess));
  EXPECT_EQ(UndoLog(files, changes, "/home/state/undo").HoldAlone(), Errors::None);
}

// As no search finds it, but a session may have it.
TEST_F(OperTest, APathThatStandsTwiceCountsOnce) {
  for (const char* list : {"duplicates", "names"}) {
    for (const char* path : {"/data/a/x", "/data/c/x", "/data/d/x"}) {
      if (!Exists(path)) files.MakeFile(path, "pair");
    }
    SaveAndMark("x", list);
    std::string session = AllFiles(files).at("/home/s.Tresmor");
    for (std::size_t at = session.find("/data/a/"); at != session.npos; at = session.find("/data/a/", at)) {
      if (session.compare(at, 9, "/data/a/|") == 0) session.replace(at, 8, "/data/c/");
      ++at;
    }
    files.SetContent("/home/s.Tresmor", session);
    EXPECT_THAT(Do("copy", {"/dest", "--list", list}).out, StartsWith("2 files (8 Bytes) would be copied "));
    const ConsoleRun run = Do("move", {"/dest", "--yes", "--allow-all", "--list", list});
    EXPECT_EQ(run.out, "2 files (8 Bytes) moved to '/dest'.\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, kRanThrough);
    EXPECT_FALSE(Exists("/data/c/x"));
    EXPECT_TRUE(Exists("/data/a/x"));
  }
}

// More than one path for who reads on behind a NUL.
TEST_F(OperTest, ARowWithANulInItsPathFailsAndStays) {
  for (const std::string command : {"trash", "delete"}) {
    SaveAndMark("two");
    std::string session = AllFiles(files).at("/home/s.Tresmor");
    const std::string row = "two|-/data/b/";
    ASSERT_NE(session.find(row), session.npos);
    session.replace(session.find(row), 3, std::string("t\0/data/a/one", 13));
    files.SetContent("/home/s.Tresmor", session);
    EXPECT_THAT(Do(command, {}).out, HasSubstr("\n1 of them would fail: there is a NUL in the path.\n"));
    const auto before = Data();
    for (const char* option : {"--allow-all", "--no-verify"}) {
      const ConsoleRun run = Do(command, {"--yes", option});
      EXPECT_THAT(run.err, HasSubstr("(NUL in its path) /data/b/t\\\\0/data/a/one could not be "));
      EXPECT_EQ(run.status, kNotAllDone);
    }
    EXPECT_EQ(Data(), before);
    EXPECT_THAT(Rows(), testing::Contains(std::string("/data/b/t\0/data/a/one*", 22)));
  }
}

// More files than go in one operation.
TEST_F(OperTest, ACancelIsToldOnce) {
  for (int i = 0; i <= 2000; ++i) files.MakeFile("/data/many/t" + std::to_string(i), "");
  SaveAndMark("t[0-9]*", "zero");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove) interrupted = true;
  });
  const ConsoleRun run = Do("delete", {"--yes", "--list", "zero"});
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled: 1 of 2000 were deleted.\n");
  EXPECT_EQ(run.out, "1 file (0 Bytes) deleted for good, 2000 not.\n");
}

TEST_F(OperTest, ACancelOfTheComparisonLeavesAll) {
  SaveAndMark("t*");
  files.SetHook([this](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::Open && call.path == "/data/a/one") interrupted = true;
  });
  const ConsoleRun run = Do("delete");
  EXPECT_EQ(run.err, "tresmor-cli: Cancelled: 0 of 2 were done.\n");
  EXPECT_EQ(run.status, kCancelled);
  EXPECT_EQ(Data().size(), 5U);
}

TEST_F(OperTest, AFailedSaveIsTold) {
  SaveAndMark("two");
  writer.Fail(Errors::DiskFull);
  const ConsoleRun run = Do("delete");
  EXPECT_THAT(run.err, HasSubstr("'s.Tresmor' can't be saved"));
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good.\n");
  EXPECT_EQ(run.status, kFailed);
}

TEST_F(OperTest, ATerminalShowsHowFarItIs) {
  SaveAndMark("two");
  errDevice = ErrorDevice::Terminal;
  EXPECT_THAT(Do("delete").err, HasSubstr("0 of 1  /data/b/two"));
}

TEST_F(OperTest, NamesAreMadeVisible) {
  files.MakeFile("/data/n\n1", "odd");
  files.MakeFile("/data/n\n2", "odd");
  SaveAndMark("n*");
  EXPECT_THAT(Do("delete", {}).out, HasSubstr(" of 2 files: /data/n\\n"));
  EXPECT_THAT(Do("delete").err, HasSubstr("'/data/n\\n1'"));
}

TEST_F(OperTest, UndoPutsBackWhatWentToTheTrashOrWasMoved) {
  const auto before = Data();
  SaveAndMark("t*");
  for (const std::vector<std::string>& command : {Paths{"trash", "--yes"}, Paths{"move", "--yes", "/dest"}}) {
    ASSERT_EQ(Do(command[0], {command.begin() + 1, command.end()}).status, kRanThrough);
    const ConsoleRun run = Run({"undo"});
    EXPECT_EQ(run.out, "2 items put back.\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, kRanThrough);
    EXPECT_EQ(Data(), before);
    EXPECT_THAT(AllFiles(files, "/home/me/Trash"), IsEmpty());
    SaveAndMark("t*");
  }
  const ConsoleRun again = Run({"undo"});
  EXPECT_EQ(again.out, "There is nothing to undo.\n");
  EXPECT_EQ(again.status, kRanThrough);
}

TEST_F(OperTest, CopiesAndDeletionsLeaveWhatCanBeUndone) {
  SaveAndMark("t*");
  Do("trash");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/c", "--pattern", "none"});
  EXPECT_EQ(Do("copy", {"/dest", "--yes"}).status, kRanThrough);
  EXPECT_EQ(Do("delete").status, kRanThrough);
  EXPECT_EQ(Run({"undo"}).out, "2 items put back.\n");
  EXPECT_TRUE(Exists("/data/b/two"));
}

TEST_F(OperTest, UndoOverwritesNothingAndSaysSo) {
  SaveAndMark("t*");
  Do("trash");
  files.MakeFile("/data/b/two", "a newcomer");
  const ConsoleRun run = Run({"undo"});
  EXPECT_THAT(run.err, StartsWith("tresmor-cli: '/data/b/two' was not put back: something stands there"));
  EXPECT_EQ(run.out, "1 item put back.\n");
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_EQ(Data().at("/data/b/two"), "a newcomer");
  EXPECT_EQ(AllFiles(files).at("/home/me/Trash/files/two"), "same content");
}

TEST_F(OperTest, ACancelledUndoGoesOnTheNextTime) {
  SaveAndMark("t*");
  Do("trash");
  interrupted = true;
  EXPECT_EQ(Run({"undo"}).status, kCancelled);
  interrupted = false;
  EXPECT_EQ(Run({"undo"}).out, "2 items put back.\n");
}

TEST_F(OperTest, OptionsAreThoseOfTheCommand) {
  SaveAndMark("t*");
  EXPECT_EQ(Do("trash", {"--structure"}).status, kWrongUse);
  EXPECT_EQ(Do("copy", {"/dest", "--no-verify"}).status, kWrongUse);
  const ConsoleRun copy = Do("copy", {"/dest", "--remove-empty", "--yes"});
  EXPECT_EQ(copy.err, "tresmor-cli: copy: --remove-empty is not for copies, since they leave no folder empty.\n");
  EXPECT_EQ(copy.status, kWrongUse);
  EXPECT_THAT(AllFiles(files, "/dest"), IsEmpty());
  EXPECT_THAT(Run({"copy", "--help"}).out, AllOf(HasSubstr("--structure"), Not(HasSubstr("--remove-empty"))));
  EXPECT_EQ(Do("delete", {"--list", "errors"}).status, kWrongUse);
  EXPECT_THAT(Run({"move", "--help"}).out,
              AllOf(HasSubstr("DEST"), HasSubstr("--structure"), HasSubstr("--remove-empty"), HasSubstr("--yes"),
                    HasSubstr("--no-verify"), HasSubstr("--allow-all"), HasSubstr("--list LIST")));
  for (const char* command : {"trash", "delete"}) {
    EXPECT_THAT(Run({command, "--help"}).out, AllOf(HasSubstr("--remove-empty"), Not(HasSubstr("--structure"))));
  }
  EXPECT_THAT(Run({"undo", "--help"}).out, HasSubstr("Put back what the last trash or move did"));
}

}  // namespace
}  // namespace tresmor
