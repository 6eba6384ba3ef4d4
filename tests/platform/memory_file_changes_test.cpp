#include "support/memory_file_changes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tresmor {

namespace {

using Crash = MemoryFileChanges::Crash;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class MemoryFileChangesTest : public testing::Test {
 protected:
  MemoryFileChangesTest() {
    files.MakeFile("/a/old", "old");
    files.MakeFolder("/d");
  }
  // Does the work, crashes at its last step and gives what is left.
  std::map<std::string, std::string> Left(Crash crash, const std::function<void()>& work) {
    work();
    changes.CrashAfter(changes.Calls().size() + 1, crash);
    EXPECT_THROW(changes.FlushFolder("/elsewhere"), MemoryCrash);
    return AllFiles(files);
  }
  void Copy(const std::string& to, bool flush) {
    Errors failure = Errors::None;
    bool atSource = false;
    const auto copy = changes.BeginCopy("/a/old", to, failure, atSource);
    ASSERT_TRUE(copy);
    while (copy->CopyNext(2).bytes > 0) {
    }
    if (flush) copy->Flush();
  }

  MemoryFileSystem files;
  MemoryFileChanges changes{files};
};

TEST_F(MemoryFileChangesTest, ACrashOfTheProgramKeepsWhatWasDone) {
  const auto left = Left(Crash::OfProgram, [&] { Copy("/d/new", false); });
  EXPECT_THAT(left, ElementsAre(Pair("/a/old", "old"), Pair("/d/new", "old")));
  EXPECT_EQ(changes.Remove("/a/old"), Errors::Device);
  EXPECT_EQ(AllFiles(files), left);
}

TEST_F(MemoryFileChangesTest, ACrashOfTheMachineTakesNewNamesAlong) {
  EXPECT_THAT(Left(Crash::OfMachine, [&] { Copy("/d/new", true); }), ElementsAre(Pair("/a/old", "old")));
}

TEST_F(MemoryFileChangesTest, AFlushedFolderKeepsNamesAndLosesBytesThatWereNot) {
  EXPECT_THAT(Left(Crash::OfMachine,
                   [&] {
                     Copy("/d/new", false);
                     changes.FlushFolder("/d");
                   }),
              ElementsAre(Pair("/a/old", "old"), Pair("/d/new", "")));
}

TEST_F(MemoryFileChangesTest, WhatWasFlushedLasts) {
  EXPECT_THAT(Left(Crash::OfMachine,
                   [&] {
                     Copy("/d/part", true);
                     changes.Rename("/d/part", "/d/new");
                     changes.FlushFolder("/d");
                     changes.Remove("/a/old");
                   }),
              ElementsAre(Pair("/d/new", "old")));
}

TEST_F(MemoryFileChangesTest, ARemovalCountsAtOnceAndANameDoesNot) {
  EXPECT_THAT(Left(Crash::OfMachine,
                   [&] {
                     Copy("/d/new", true);
                     changes.Remove("/a/old");
                   }),
              IsEmpty());
}

TEST_F(MemoryFileChangesTest, ARenameIsUndoneWholeUnlessAFolderOfItWasFlushed) {
  EXPECT_THAT(Left(Crash::OfMachine, [&] { changes.Rename("/a/old", "/d/new"); }), ElementsAre(Pair("/a/old", "old")));
}

TEST_F(MemoryFileChangesTest, ARenameLastsOnceAFolderOfItWasFlushed) {
  EXPECT_THAT(Left(Crash::OfMachine,
                   [&] {
                     changes.Rename("/a/old", "/d/new");
                     changes.FlushFolder("/a");
                   }),
              ElementsAre(Pair("/d/new", "old")));
}

TEST_F(MemoryFileChangesTest, ANewFolderTakesWhatIsInItAlong) {
  EXPECT_THAT(Left(Crash::OfMachine,
                   [&] {
                     changes.MakeFolder("/d/in");
                     Copy("/d/in/new", true);
                     changes.FlushFolder("/d/in");
                     changes.Remove("/a/old");
                   }),
              IsEmpty());
}

TEST_F(MemoryFileChangesTest, KeepNamesLosesBytesAlone) {
  EXPECT_THAT(Left(Crash::OfMachineKeepNames, [&] { Copy("/d/new", false); }),
              ElementsAre(Pair("/a/old", "old"), Pair("/d/new", "")));
}

TEST_F(MemoryFileChangesTest, FailsByNumberAndByPath) {
  changes.FailAt(2, Errors::DiskFull);
  changes.Fail(MemoryFileChanges::Op::Rename, "/d/never", Errors::PermissionDenied);
  EXPECT_EQ(changes.MakeFolder("/d/1"), Errors::None);
  EXPECT_EQ(changes.MakeFolder("/d/2"), Errors::DiskFull);
  EXPECT_EQ(changes.MakeFolder("/d/2"), Errors::None);
  EXPECT_EQ(changes.Rename("/a/old", "/d/never"), Errors::PermissionDenied);
  EXPECT_EQ(changes.Calls().size(), 4U);
  EXPECT_EQ(changes.Calls()[3], (MemoryFileChanges::Call{MemoryFileChanges::Op::Rename, "/d/never", "/a/old"}));
}

TEST_F(MemoryFileChangesTest, HasDrivesRoomAndFoldersThatCannotBeWrittenTo) {
  changes.SetDrive("/d");
  EXPECT_EQ(changes.Rename("/a/old", "/d/new"), Errors::DifferentDrive);
  changes.SetRoom(5);
  EXPECT_EQ(changes.Create("/a/1", "123"), Errors::None);
  EXPECT_EQ(changes.Create("/a/2", "123"), Errors::DiskFull);
  EXPECT_EQ(changes.Create("/a/2", "12"), Errors::None);
  changes.SetReadOnly("/a");
  EXPECT_EQ(changes.Remove("/a/1"), Errors::PermissionDenied);
  EXPECT_EQ(changes.Create("/a/3", ""), Errors::PermissionDenied);
  EXPECT_EQ(changes.Rename("/a/1", "/3"), Errors::PermissionDenied);
}

}  // namespace

}  // namespace tresmor
