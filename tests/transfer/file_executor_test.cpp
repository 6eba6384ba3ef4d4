// Cancel, progress and numbers of files.
#include "transfer/file_executor_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using testing::ElementsAre;

// --- Cancel and progress

TEST_F(FileExecutorTest, ACancelEndsBetweenFiles) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  watch.cancelled = [this] { return Stands("/d/one"); };
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two", "/a/three"}, "/d")), OperationCode::Cancelled,
               "Cancelled: 1 of 3 were moved.");
  EXPECT_THAT(Names("/a"), ElementsAre("three", "two"));
}

TEST_F(FileExecutorTest, ACancelEndsBetweenPiecesAndLeavesNoPart) {
  files.MakeFile("/a/one", std::string(100, 'x'));
  changes.SetPiece(10);
  for (const Op op : {Op::CopyNext, Op::CompareNext}) {
    const std::size_t before = changes.Count(op);
    watch.cancelled = [&, op] { return changes.Count(op) == before + 3; };
    ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::Cancelled,
                 "Cancelled: 0 of 1 were moved.");
    EXPECT_EQ(changes.Count(op), before + 3);
    EXPECT_THAT(Names("/usb/d"), ElementsAre());
    EXPECT_TRUE(Stands("/a/one"));
    EXPECT_EQ(watch.told.back().bytes, 0);
  }
}

TEST_F(FileExecutorTest, ACancelThatLeavesNothingIsNone) {
  Make("/a/one");
  watch.cancelled = [this] { return Stands("/d/one"); };
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")));
  Make("/a/two");
  watch.cancelled = [this] { return Stands("/d/two"); };
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/gone", "/a/two"}, "/d")), OperationCode::NotFound,
               "/a/gone could not be moved: it is not there.");
}

TEST_F(FileExecutorTest, ACancelTellsTheFirstFailureToo) {
  Make("/a/two");
  Make("/a/three");
  watch.cancelled = [this] { return Stands("/d/two"); };
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two", "/a/three"}, "/d")), OperationCode::Cancelled,
               "Cancelled: 1 of 3 were moved. /a/one could not be moved: it is not there.");
}

TEST_F(FileExecutorTest, ACancelBeforeTheFirstFileKeepsTheLastUndoStep) {
  Make("/a/one");
  Make("/a/two");
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")));
  program.executor.BeginUndoStep().reset();
  watch.cancelled = [] { return true; };
  EXPECT_EQ(program.Do(PutThese(FO_MOVE, {"/a/two"}, "/d")).code, OperationCode::Cancelled);
  watch.cancelled = nullptr;
  EXPECT_EQ(program.Undone().putBack, 1);
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, TellsProgressByFilesAndBytes) {
  files.MakeFile("/a/one", std::string(25, 'x'));
  files.MakeFile("/usb/two", std::string(25, 'y'));
  changes.SetPiece(10);
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one", "/usb/two"}, "/d")));
  std::vector<std::string> told;
  for (const OperationProgress& progress : watch.told) {
    EXPECT_EQ(progress.allFiles, 2);
    EXPECT_EQ(progress.allBytes, 50);
    const std::string line =
        progress.path + " " + std::to_string(progress.files) + " " + std::to_string(progress.bytes);
    if (told.empty() || told.back() != line) told.push_back(line);
  }
  EXPECT_THAT(told, ElementsAre("/a/one 0 0", "/usb/two 1 25", "/usb/two 1 35", "/usb/two 1 45", "/usb/two 1 50",
                                "/usb/two 2 50"));
}

// --- Many

TEST_F(FileExecutorTest, EqualNamesTakeSteadyWork) {
  constexpr int kFiles = 3000;
  Paths paths;
  for (int i = 0; i < kFiles; ++i) {
    paths.push_back("/a/" + std::to_string(i) + "/same.txt");
    files.MakeFile(paths.back(), "x");
  }
  files.ClearCalls();
  ExpectDone(program.Do(PutThese(FO_MOVE, paths, "/d")));
  EXPECT_LT(files.Calls().size(), 10U * kFiles);
  EXPECT_LT(changes.Calls().size(), 2U * kFiles);
  EXPECT_TRUE(Stands("/d/same (3000).txt"));
  files.ClearCalls();
  Paths moved{"/d/same.txt"};
  for (int i = 2; i <= kFiles; ++i) moved.push_back("/d/same (" + std::to_string(i) + ").txt");
  ExpectDone(program.Do(PutThese(FO_MOVE, moved, "/e")));
  // The log is opened once for hundreds of files.
  EXPECT_LT(changes.Count(Op::Append), 30U);
}

TEST_F(FileExecutorTest, ACancelIsNoticedWhileNamesAreTaken) {
  Make("/a/one");
  Make("/a/two");
  int taken = 0;
  changes.SetHook([&](const MemoryFileChanges::Call& call) {
    if (call.op != Op::Rename) return;
    files.MakeFile(call.path, "quicker");
    ++taken;
  });
  watch.cancelled = [&] { return taken == 5; };
  EXPECT_EQ(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")).code, OperationCode::Cancelled);
  EXPECT_EQ(taken, 5);
  taken = 0;
  EXPECT_EQ(program.Do(TrashThese({"/a/two"})).code, OperationCode::Cancelled);
  EXPECT_EQ(taken, 5);
  EXPECT_THAT(Names("/a"), ElementsAre("one", "two"));
  EXPECT_THAT(Names("/home/me/Trash/info"), ElementsAre());
}

TEST_F(FileExecutorTest, ADeleteForGoodKeepsTheUndoStepBefore) {
  for (const char* path : {"/a/one", "/b/in/two", "/b/in/three"}) Make(path);
  ExpectDone(program.Do(TrashThese({"/a/one", "/b/in/two"})));
  Program later(disks);
  later.executor.BeginUndoStep().reset();
  ExpectDone(later.Do(DeleteThese({"/b/in/three"})));
  ExpectDone(later.Do(TrashThese({"/b/in"})));  // the folder that it emptied
  EXPECT_FALSE(Stands("/b/in"));
  EXPECT_EQ(later.Undone().putBack, 3);
  EXPECT_THAT(Names("/b/in"), ElementsAre("two"));
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, NoOtherProgramComesBetweenTheOperationsOfAStep) {
  for (const char* path : {"/a/one", "/b/two", "/c/three"}) Make(path);
  UndoLog otherLog(files, changes, "/home/me/state/undo");
  FileExecutor otherExecutor(files, changes, program.trash, otherLog);
  {
    const auto step = program.executor.BeginUndoStep();
    ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")));
    const auto otherStep = otherExecutor.BeginUndoStep();
    EXPECT_THAT(Undo(files, changes, otherLog).Run(watch).trouble, testing::HasSubstr("is in use by another program"));
    ExpectDone(otherExecutor.ShFileOperation(PutThese(FO_MOVE, {"/b/two"}, "/e"), watch));
    ExpectDone(program.Do(PutThese(FO_MOVE, {"/c/three"}, "/d")));
  }
  EXPECT_EQ(program.Undone().putBack, 3);
}

TEST_F(FileExecutorTest, ADestinationThatHasGoneBetweenTwoOperationsOfAStepIsNotMadeAgain) {
  for (const char* path : {"/a/one", "/a/two", "/b/one", "/b/two", "/c/one"}) Make(path);
  {
    const auto step = program.executor.BeginUndoStep();
    ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/stick/new")));
    ExpectDone(program.Do(PutTheseAt(FO_COPY, {"/b/one"}, {"/stick/new/b/one"}, "/stick/new")));
    files.Remove("/stick");
    ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/two"}, "/stick/new")), OperationCode::NotFound,
                 "/a/two could not be copied: /stick/new is not there.");
    EXPECT_FALSE(Stands("/stick"));
    files.MakeFolder("/stick/new/b");
    ExpectFailed(program.Do(PutTheseAt(FO_COPY, {"/b/two"}, {"/stick/new/b/two"}, "/stick/new")),
                 OperationCode::NotFound,
                 "/b/two could not be copied: /stick/new/b is another one than it was at first.");
  }
  ExpectDone(program.Do(PutThese(FO_COPY, {"/c/one"}, "/stick/new")));
  files.Remove("/stick");
  const auto step = program.executor.BeginUndoStep();
  ExpectDone(program.Do(PutThese(FO_COPY, {"/c/one"}, "/stick/new")));
}

TEST_F(FileExecutorTest, ASecondProgramAtWorkJoinsTheStep) {
  Make("/a/one");
  Make("/b/two");
  UndoLog otherLog(files, changes, "/home/me/state/undo");
  FileExecutor other(files, changes, program.trash, otherLog);
  ScriptedWatch otherWatch;
  changes.SetHook([&, begun = false](const MemoryFileChanges::Call& call) mutable {
    if (begun || call.op != Op::Rename) return;
    begun = true;
    other.BeginUndoStep().reset();
    ExpectDone(other.ShFileOperation(PutThese(FO_MOVE, {"/b/two"}, "/e"), otherWatch));
    EXPECT_EQ(Undo(files, changes, otherLog).Run(otherWatch).trouble,
              "The list of what can be undone, /home/me/state/undo, is in use by another program; nothing was put "
              "back.");
  });
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")));
  EXPECT_EQ(program.Undone().putBack, 2);
  EXPECT_TRUE(Stands("/a/one"));
  EXPECT_TRUE(Stands("/b/two"));
}

}  // namespace

}  // namespace tresmor
