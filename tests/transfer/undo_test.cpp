#include "transfer/undo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "transfer/transfer_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using testing::ElementsAre;

class UndoTest : public testing::Test {
 protected:
  void Make(const std::string& path) { files.MakeFile(path, "bytes of " + path); }
  bool Stands(const std::string& path) const {
    FileStat stat;
    return files.Stat(path, stat) == Errors::None;
  }
  void Do(const ShFileOpStruct& operation) {
    const OperationResult result = program.Do(operation);
    ASSERT_EQ(result.code, OperationCode::Done) << result.description;
  }
  // Undoes and gives what was left, a line each.
  std::vector<std::string> Left(std::int64_t putBack) {
    const UndoResult result = program.Undone();
    EXPECT_EQ(result.putBack, putBack);
    EXPECT_EQ(result.trouble, "");
    EXPECT_FALSE(result.cancelled);
    std::vector<std::string> lines;
    for (const UndoResult::Left& left : result.left) lines.push_back(left.path + ": " + left.reason);
    return lines;
  }
  std::map<std::string, std::string> Files() const {
    auto all = AllFiles(files);
    all.erase("/home/me/state/undo");
    return all;
  }

  Disks disks;
  MemoryFileSystem& files = disks.files;
  Program program{disks};
  MemoryFileChanges& changes = program.changes;
};

TEST_F(UndoTest, PutsBackWhatWasTrashedAndMoved) {
  for (const char* path : {"/a/one", "/a/two", "/b/in/three", "/usb/x/four", "/c/five"}) Make(path);
  files.MakeLink("/a/link", "one");
  const auto before = Files();
  Do(TrashThese({"/a/one", "/b/in", "/usb/x/four"}));
  Do(PutThese(FO_MOVE, {"/a/two", "/a/link"}, "/d"));
  Do(PutThese(FO_MOVE, {"/c/five"}, "/usb/d"));
  files.Remove("/c");
  EXPECT_THAT(Left(6), ElementsAre());
  EXPECT_EQ(Files(), before);
  EXPECT_TRUE(Stands("/a/link"));
  EXPECT_FALSE(Stands("/home/me/state/undo"));
  EXPECT_THAT(Left(0), ElementsAre());
}

TEST_F(UndoTest, UndoesTheLastStepAlone) {
  Make("/a/one");
  Make("/a/two");
  Make("/a/three");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  program.executor.BeginUndoStep().reset();
  Do(PutThese(FO_MOVE, {"/a/two"}, "/d"));
  Do(PutThese(FO_MOVE, {"/a/three"}, "/d"));
  EXPECT_THAT(Left(2), ElementsAre());
  EXPECT_THAT(Left(0), ElementsAre());
  EXPECT_TRUE(Stands("/d/one"));
  EXPECT_TRUE(Stands("/a/two"));
  EXPECT_TRUE(Stands("/a/three"));
}

TEST_F(UndoTest, ACopyIsNoStep) {
  Make("/a/one");
  Make("/a/two");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  program.executor.BeginUndoStep().reset();
  Do(PutThese(FO_COPY, {"/a/two"}, "/d"));
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_TRUE(Stands("/a/one"));
  EXPECT_TRUE(Stands("/d/two"));
}

TEST_F(UndoTest, WalksBackwards) {
  Make("/a/in/one");
  Do(TrashThese({"/a/in/one", "/a/in"}));
  EXPECT_THAT(Left(2), ElementsAre());
  EXPECT_EQ(AllFiles(files).at("/a/in/one"), "bytes of /a/in/one");
}

TEST_F(UndoTest, KnowsAFolderAgainThatFilesWereTakenFromBefore) {
  Make("/a/in/one");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::Rename && call.from == "/a/in/one") files.SetModified("/a/in", 99);
  });
  Do(TrashThese({"/a/in/one", "/a/in"}));
  changes.SetHook({});
  EXPECT_THAT(Left(2), ElementsAre());
}

TEST_F(UndoTest, SaysNothingOfWhatWentWithItsFolder) {
  Make("/a/in/one");
  Do(TrashThese({"/a/in", "/a/in/one"}));
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_TRUE(Stands("/a/in/one"));
}

TEST_F(UndoTest, FollowsAFileThatWasMovedTwice) {
  Make("/a/one");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  Do(PutThese(FO_MOVE, {"/d/one"}, "/e"));
  Do(PutThese(FO_MOVE, {"/e/one"}, "/a"));
  Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/f"));
  EXPECT_THAT(Left(4), ElementsAre());
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(UndoTest, NeverReplacesAnything) {
  Make("/a/one");
  Make("/a/two");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  Do(TrashThese({"/a/two"}));
  files.MakeFile("/a/one", "new");
  files.MakeLink("/a/two", "/nowhere");
  EXPECT_THAT(Left(0), ElementsAre("/a/two: something stands there; it is left at /home/me/Trash/files/two",
                                   "/a/one: something stands there; it is left at /d/one"));
  EXPECT_EQ(AllFiles(files).at("/a/one"), "new");
  EXPECT_EQ(AllFiles(files).at("/d/one"), "bytes of /a/one");
  // They can be put back once there is room.
  files.Remove("/a/one");
  files.Remove("/a/two");
  EXPECT_THAT(Left(2), ElementsAre());
  EXPECT_FALSE(Stands("/home/me/Trash/info/two.trashinfo"));
}

TEST_F(UndoTest, NeverReplacesWhatComesAtTheLastMoment) {
  Make("/a/one");
  Make("/b/two");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  Do(PutThese(FO_MOVE, {"/b/two"}, "/usb/d"));
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::Rename && (call.from == "/d/one" || call.from.ends_with(".part"))) {
      files.MakeFile(call.path, "quicker");
    }
  });
  EXPECT_THAT(Left(0), ElementsAre("/b/two: /b/two stands there already", "/a/one: /a/one stands there already"));
  EXPECT_EQ(AllFiles(files).at("/a/one"), "quicker");
  EXPECT_EQ(AllFiles(files).at("/b/two"), "quicker");
  EXPECT_EQ(AllFiles(files).at("/d/one"), "bytes of /a/one");
  EXPECT_EQ(AllFiles(files).at("/usb/d/two"), "bytes of /b/two");
  EXPECT_FALSE(Stands("/b/.tresmor-1.part"));
}

TEST_F(UndoTest, LeavesWhatWasChangedOrWent) {
  for (const char* path : {"/a/one", "/a/two", "/a/three", "/a/four"}) Make(path);
  Do(PutThese(FO_MOVE, {"/a/one", "/a/two", "/a/three", "/a/four"}, "/d"));
  files.SetContent("/d/one", "longer than it was before");
  files.SetModified("/d/two", 5);
  files.Remove("/d/three");
  EXPECT_THAT(Left(1),
              ElementsAre("/a/three: it is no longer at /d/three", "/a/two: /d/two is another file or was changed",
                          "/a/one: /d/one is another file or was changed"));
  EXPECT_TRUE(Stands("/a/four"));
  EXPECT_TRUE(Stands("/d/one"));
}

TEST_F(UndoTest, SaysNothingOfWhatNeverWent) {
  Make("/a/one");
  Make("/a/two");
  changes.Fail(Op::Rename, "/d/one", Errors::Device);
  EXPECT_EQ(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d")).code, OperationCode::WriteFault);
  files.SetContent("/a/one", "edited");
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_EQ(AllFiles(files).at("/a/one"), "edited");
}

TEST_F(UndoTest, MistakesNoTwinForTheFile) {
  // Both have the same name, size and time; the second got another place than it was to get first.
  for (const char* path : {"/a/one", "/b/one"}) {
    files.MakeFile(path, path);
    files.SetModified(path, 1000);
  }
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::Rename && call.path == "/d/one") {
      files.MakeFile("/d/one", "/x/one");
      files.SetModified("/d/one", 1000);
    }
  });
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  files.Remove("/d/one (2)");
  EXPECT_THAT(Left(0), ElementsAre("/a/one: it is no longer at /d/one (2)"));
  EXPECT_TRUE(Stands("/d/one"));
}

TEST_F(UndoTest, MakesNoFolderInTheWayOfOneThatMayStillComeBack) {
  Make("/a/in/one");
  Make("/a/in/two");
  Do(TrashThese({"/a/in/one", "/a/in"}));
  changes.Fail(Op::Rename, "/a/in", Errors::DiskFull);
  EXPECT_THAT(Left(0), ElementsAre("/a/in: the disk of /a is full",
                                   "/a/in/one: its folder could not be put back; it is left at "
                                   "/home/me/Trash/files/one"));
  changes.Fail(Op::Rename, "/a/in", Errors::None);
  EXPECT_THAT(Left(2), ElementsAre());
  EXPECT_TRUE(Stands("/a/in/two"));
}

TEST_F(UndoTest, PutsAFileBackWithoutAFolderThatIsGoneForGood) {
  Make("/a/in/one");
  Do(TrashThese({"/a/in/one", "/a/in"}));
  files.Remove("/home/me/Trash/files/in");
  EXPECT_THAT(Left(1), ElementsAre("/a/in: it is no longer at /home/me/Trash/files/in"));
  EXPECT_TRUE(Stands("/a/in/one"));
}

TEST_F(UndoTest, FindsFilesOnDisksThatKeepTimesRoughly) {
  Make("/a/one");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::FlushFolder && Stands("/usb/d/one")) files.SetModified("/usb/d/one", 1000);
  });
  Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d"));
  changes.SetHook({});
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(UndoTest, CanBeCancelledAndTakenUpAgain) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d"));
  Do(PutThese(FO_MOVE, {"/a/three"}, "/usb/d"));
  program.watch.cancelled = [this] { return Stands("/a/.tresmor-1.part"); };
  UndoResult result = program.Undone();
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.putBack, 0);
  EXPECT_TRUE(Stands("/usb/d/three"));
  program.watch.cancelled = [this] { return Stands("/a/two"); };
  result = program.Undone();
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.putBack, 2);
  program.watch.cancelled = nullptr;
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(UndoTest, TellsProgress) {
  files.MakeFile("/a/one", std::string(25, 'x'));
  files.MakeFile("/a/two", std::string(25, 'y'));
  Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d"));
  files.MakeFile("/a/one", "taken");
  program.watch.told.clear();
  program.Undone();
  const OperationProgress& last = program.watch.told.back();
  EXPECT_EQ(last.files, 2);
  EXPECT_EQ(last.allFiles, 2);
  EXPECT_EQ(last.bytes, 25);
  EXPECT_EQ(last.allBytes, 50);
  EXPECT_EQ(program.watch.told.front().path, "/a/two");
}

TEST_F(UndoTest, TellsWhenItsLogCannotBeReadOrWritten) {
  Make("/a/one");
  Do(PutThese(FO_MOVE, {"/a/one"}, "/d"));
  files.FailOpen("/home/me/state/undo", Errors::PermissionDenied);
  UndoResult result = program.Undone();
  EXPECT_EQ(result.trouble,
            "The list of what can be undone, /home/me/state/undo, could not be read: Permission denied.");
  EXPECT_TRUE(Stands("/d/one"));
  files.FailOpen("/home/me/state/undo", Errors::None);
  changes.Fail(Op::Remove, "/home/me/state/undo", Errors::Device);
  result = program.Undone();
  EXPECT_EQ(result.putBack, 1);
  EXPECT_EQ(result.trouble,
            "The list of what can be undone, /home/me/state/undo, could not be written: Device I/O error.");
}

TEST_F(UndoTest, TellsWhatIsGoneThoughSomethingNewStandsInItsPlace) {
  Make("/a/one");
  Do(TrashThese({"/a/one"}));
  files.Remove("/home/me/Trash/files/one");
  files.Remove("/home/me/Trash/info/one.trashinfo");
  files.MakeFile("/a/one", "new");
  EXPECT_THAT(Left(0), ElementsAre("/a/one: it is no longer at /home/me/Trash/files/one"));
  EXPECT_EQ(AllFiles(files).at("/a/one"), "new");
  EXPECT_THAT(Left(0), ElementsAre());
}

TEST_F(UndoTest, TellsOnceOfWhatCanNeverComeBackButAgainOfWhatMay) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  files.MakeFolder("/usb/d");
  Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d"));
  Do(PutThese(FO_MOVE, {"/a/three"}, "/usb/d"));
  files.Remove("/d/one");
  files.SetContent("/d/two", "changed");
  changes.SetHook({});
  ASSERT_EQ(changes.Rename("/usb/d", "/usb/unplugged"), Errors::None);
  EXPECT_EQ(Left(0).size(), 3U);
  EXPECT_THAT(Left(0), ElementsAre("/a/three: it is no longer at /usb/d/three"));
  ASSERT_EQ(changes.Rename("/usb/unplugged", "/usb/d"), Errors::None);
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_TRUE(Stands("/a/three"));
}

TEST_F(UndoTest, SaysNothingOfWhatACancelLeftInItsPlace) {
  Make("/a/one");
  Make("/a/two");
  program.watch.cancelled = [this] { return Stands("/d/one"); };
  EXPECT_EQ(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d")).code, OperationCode::Cancelled);
  program.watch.cancelled = nullptr;
  files.SetContent("/a/two", "edited");
  EXPECT_THAT(Left(1), ElementsAre());
  EXPECT_EQ(AllFiles(files).at("/a/two"), "edited");
}

TEST_F(UndoTest, TakesAwayATrashinfoThatAKilledProgramLeft) {
  Make("/a/one");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::Create) changes.CrashAfter(changes.Calls().size(), MemoryFileChanges::Crash::OfProgram);
  });
  EXPECT_THROW(program.Do(TrashThese({"/a/one"})), MemoryCrash);
  EXPECT_TRUE(Stands("/home/me/Trash/info/one.trashinfo"));
  EXPECT_EQ(Program(disks).Undone().putBack, 0);
  EXPECT_FALSE(Stands("/home/me/Trash/info/one.trashinfo"));
  EXPECT_TRUE(Stands("/a/one"));
}

// Files that come back into a folder change its time.
TEST_F(UndoTest, AnUndoAfterAKilledOneKnowsAFolderAgainThatIsBack) {
  Make("/a/in/one");
  Make("/a/in/deep/two");
  std::size_t calls = 0;
  for (std::size_t kill = 0; kill <= calls; ++kill) {
    Do(TrashThese({"/a/in/one", "/a/in"}));
    Program killed(disks);
    if (kill > 0) killed.changes.CrashAfter(kill, MemoryFileChanges::Crash::OfProgram);
    killed.changes.SetHook([&](const MemoryFileChanges::Call& call) {
      if (call.path == "/home/me/state/undo" && Stands("/a/in/one")) files.SetModified("/a/in", 99);
      if (call.path == "/a/in/one") files.SetModified("/a/in", 98);
    });
    try {
      killed.Undone();
    } catch (const MemoryCrash&) {
    }
    if (kill == 0) calls = killed.changes.Calls().size();
    const UndoResult second = Program(disks).Undone();
    EXPECT_TRUE(second.left.empty()) << "killed after " << kill << ": " << second.left.front().reason;
    EXPECT_EQ(second.trouble, "");
    EXPECT_EQ(AllFiles(files).at("/a/in/one"), "bytes of /a/in/one");
    EXPECT_TRUE(Stands("/a/in/deep/two"));
  }
  EXPECT_GT(calls, 5U);
}

TEST_F(UndoTest, AFolderThatVanishesUnderACopyBackIsToldAsSuch) {
  Make("/a/in/one");
  Do(PutThese(FO_MOVE, {"/a/in/one"}, "/usb/d"));
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == Op::Rename && call.from.ends_with(".part")) files.Remove("/a/in");
  });
  EXPECT_THAT(Left(0), ElementsAre("/a/in/one: /a/in is not there"));
  EXPECT_TRUE(Stands("/usb/d/one"));
}

TEST_F(UndoTest, TellsOfDamageAndPutsBackTheRest) {
  Make("/a/one");
  Make("/a/two");
  Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d"));
  std::string log = AllFiles(files).at("/home/me/state/undo");
  log[log.find("/a/one")] = '\0';
  files.SetContent("/home/me/state/undo", log);
  const UndoResult result = program.Undone();
  EXPECT_EQ(result.putBack, 1);
  EXPECT_EQ(
      result.trouble,
      "The list of what can be undone, /home/me/state/undo, is damaged; what it can't tell any more is left where "
      "it is.");
  EXPECT_TRUE(Stands("/d/one"));
  EXPECT_TRUE(Stands("/a/two"));
  EXPECT_EQ(program.Undone().trouble, "");
}

}  // namespace

}  // namespace tresmor
