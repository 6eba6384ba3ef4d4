#include "cli/checked_operations.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

#include "cli/console_watch.h"
#include "cli/console_world.h"
#include "support/fake_file_operations.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

class CheckedOperationsTest : public testing::Test {
 protected:
  CheckedOperationsTest() {
    for (const char* path : {"/a", "/b", "/c"}) files.MakeFile(path, "x");
    operations.onOperation = [this](const ShFileOpStruct& operation, OperationWatch& told) {
      paths.push_back(operation.pFrom);
      told.Progress({.files = 0, .allFiles = 1, .path = "itself"});
      told.Progress({.files = 1, .allFiles = 1, .bytes = 5, .path = "itself"});
    };
  }
  OperationResult Do(const ShFileOpStruct& operation) { return checked.ShFileOperation(operation, watch); }
  static std::string Alone(const std::string& path) { return ListOf({path}); }

  MemoryFileSystem files;
  FakeFileOperations operations{files};
  ScriptedWatch watch;
  std::set<std::string> stays;
  std::vector<std::string> judged;
  CheckedOperations checked{operations, [this](const std::string& path) {
                              judged.push_back(path + std::to_string(operations.calls.size()));
                              return !stays.contains(path);
                            }};
  std::vector<std::string> paths;
};

TEST_F(CheckedOperationsTest, EachPathIsJudgedRightBeforeItsOwnOperation) {
  stays = {"/b"};
  const OperationResult result = Do(DeleteThese({"/a", "/b", "/c"}));
  EXPECT_EQ(result.code, OperationCode::Done);
  EXPECT_EQ(result.description, "");
  EXPECT_THAT(judged, ElementsAre("/a0", "/b1", "/c1"));
  EXPECT_THAT(paths, ElementsAre(Alone("/a"), Alone("/c")));
  EXPECT_EQ(operations.calls[1].wFunc, FO_DELETE);
  EXPECT_EQ(operations.calls[1].fFlags, DeleteThese({"/a"}).fFlags);
}

TEST_F(CheckedOperationsTest, EachPathKeepsItsPlace) {
  stays = {"/a"};
  Do(PutTheseAt(FO_MOVE, {"/a", "/b", "/c"}, {"/d/1", "/d/2", "/d/3"}, "/d"));
  Do(PutThese(FO_MOVE, {"/b"}, "/d"));
  ASSERT_EQ(operations.calls.size(), 3U);
  EXPECT_EQ(operations.calls[0].pTo, Alone("/d/2"));
  EXPECT_EQ(operations.calls[1].pTo, Alone("/d/3"));
  EXPECT_EQ(operations.calls[1].destination, "/d");
  EXPECT_EQ(operations.calls[2].pTo, "/d");
}

TEST_F(CheckedOperationsTest, APathThatStandsTwiceIsDoneOnce) {
  Do(DeleteThese({"/a", "/b", "/a"}));
  EXPECT_THAT(paths, ElementsAre(Alone("/a"), Alone("/b")));
}

TEST_F(CheckedOperationsTest, ProgressIsThatOfAll) {
  stays = {"/b"};
  Do(DeleteThese({"/a", "/b", "/c"}));
  std::vector<std::string> told;
  for (const OperationProgress& each : watch.told) {
    told.push_back(std::to_string(each.files) + "/" + std::to_string(each.allFiles) + " " + each.path + " " +
                   std::to_string(each.bytes));
  }
  EXPECT_THAT(told, ElementsAre("0/3 /a 0", "0/3 /a 0", "1/3 /a 5", "1/3 /b 5", "1/3 /c 5", "1/3 /c 5", "2/3 /c 10"));
}

TEST_F(CheckedOperationsTest, TheFirstFailureIsTheResult) {
  operations.results = {{OperationCode::Denied, "a was not."}, {}, {OperationCode::NotFound, "c was not."}};
  const OperationResult result = Do(DeleteThese({"/a", "/b", "/c"}));
  EXPECT_EQ(result.code, OperationCode::Denied);
  EXPECT_EQ(result.description, "a was not. 1 more failed too.");
  EXPECT_EQ(operations.calls.size(), 3U);
}

TEST_F(CheckedOperationsTest, ACancelLeavesTheRestAndTellsTheFirstFailureToo) {
  operations.results = {{OperationCode::Denied, "a was not."}, {OperationCode::Cancelled, "Cancelled: 1 of 1."}};
  watch.cancelled = [this] { return operations.calls.size() == 2; };
  const OperationResult result = Do(DeleteThese({"/a", "/b", "/c"}));
  EXPECT_EQ(result.code, OperationCode::Cancelled);
  EXPECT_EQ(result.description, "Cancelled: 2 of 3 were done. a was not.");
  EXPECT_EQ(operations.calls.size(), 2U);
}

TEST_F(CheckedOperationsTest, ACancelThatLeavesNothingIsNone) {
  watch.cancelled = [this] { return operations.calls.size() == 2; };
  EXPECT_EQ(Do(DeleteThese({"/a", "/b"})).code, OperationCode::Done);
  operations.calls.clear();
  operations.results = {{}, {OperationCode::Cancelled, "Cancelled: 0 of 1."}};
  const OperationResult result = Do(DeleteThese({"/a", "/b"}));
  EXPECT_EQ(result.code, OperationCode::Cancelled);
}

TEST_F(CheckedOperationsTest, ACancelOfTheJudgementLeavesTheFile) {
  watch.cancelled = [this] { return !judged.empty(); };
  EXPECT_EQ(Do(DeleteThese({"/a", "/b"})).code, OperationCode::Cancelled);
  EXPECT_THAT(operations.calls, testing::IsEmpty());
}

TEST_F(CheckedOperationsTest, UndoStepsArePassedOn) {
  checked.BeginUndoStep().reset();
  EXPECT_EQ(operations.callsAtUndoSteps.size(), 1U);
}

// Sums of the console's.
class ConsoleOperationsTest : public tests::ConsoleTest {};

TEST_F(ConsoleOperationsTest, AnOperationThatToldNothingCountsForNothing) {
  FakeFileOperations operations(files);
  tests::Scratch out;
  ErrorOutput err(out.File(), ErrorDevice::File);
  UndoLog undoLog(files, changes, "/home/state/undo");
  const ConsolePorts ports{files,   writer,     shell, events, operations,           changes, undoLog,
                           "/home", out.File(), false, err,    [] { return false; }, [] {}};
  ConsoleWatch watch(ports);
  ConsoleOperations sums(operations, watch);
  operations.onOperation = [](const ShFileOpStruct&, OperationWatch& told) {
    told.Progress({.files = 3, .allFiles = 3, .bytes = 50, .path = ""});
  };
  sums.ShFileOperation(DeleteThese({"/a"}), watch);
  operations.onOperation = nullptr;
  sums.ShFileOperation(DeleteThese({"/a"}), watch);
  EXPECT_EQ(sums.Files(), 3);
  EXPECT_EQ(sums.Bytes(), 50);
}

}  // namespace
}  // namespace tresmor
