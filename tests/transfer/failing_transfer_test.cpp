// Moving and copying among others, and to destinations that fail.
#include "transfer/file_executor_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using Call = MemoryFileChanges::Call;
using testing::ElementsAre;

// --- Others at work at the same time

TEST_F(FileExecutorTest, ANameThatIsTakenAtTheLastMomentIsLeftAlone) {
  Make("/a/one");
  Make("/usb/two");
  Make("/a/three");
  changes.SetHook([this](const Call& call) {
    const bool placed = call.from == "/a/one" || call.from.ends_with(".part");
    if (call.op == Op::Rename && placed && !call.path.ends_with("one (2)") && !call.path.ends_with("two (3)")) {
      files.MakeFile(call.path, "quicker");
    }
    if (call.op == Op::Create && call.path == "/home/me/Trash/info/three.trashinfo") {
      files.MakeFile(call.path, "quicker");
    }
    if (call.op == Op::Rename && call.path == "/home/me/Trash/files/three (2)") files.MakeFolder(call.path);
  });
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one", "/usb/two"}, "/d")));
  EXPECT_EQ(Bytes("/d/one"), "quicker");
  EXPECT_EQ(Bytes("/d/two (2)"), "quicker");
  EXPECT_EQ(Bytes("/d/one (2)"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/d/two (3)"), "bytes of /usb/two");
  ExpectDone(program.Do(TrashThese({"/a/three"})));
  EXPECT_EQ(Bytes("/home/me/Trash/files/three (3)"), "bytes of /a/three");
  EXPECT_THAT(Names("/home/me/Trash/info"), ElementsAre("three (3).trashinfo", "three.trashinfo"));
  changes.SetHook({});
  EXPECT_EQ(program.Undone().putBack, 3);
  for (const char* path : {"/a/one", "/usb/two", "/a/three"}) EXPECT_EQ(Bytes(path), "bytes of " + std::string(path));
}

TEST_F(FileExecutorTest, AFolderThatSomebodyElseMadeMeanwhileWillDo) {
  Make("/a/one");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::MakeFolder) files.MakeFolder(call.path);
  });
  ExpectDone(program.Do(PutTheseAt(FO_MOVE, {"/a/one"}, {"/d/x/one"}, "/d")));
  EXPECT_TRUE(Stands("/d/x/one"));
}

TEST_F(FileExecutorTest, LeavesAFileThatChangesWhileItIsCopied) {
  for (const Op op : {Op::CopyNext, Op::Flush, Op::CompareNext, Op::Rename, Op::FlushFolder}) {
    SCOPED_TRACE(static_cast<int>(op));
    Disks fresh;
    fresh.files.MakeFile("/a/one", "first");
    Program other(fresh);
    other.changes.SetHook([&](const Call& call) {
      if (call.op == op && call.path != "/home/me/state/undo" && call.from != "/a/one") {
        fresh.files.SetContent("/a/one", "second");
      }
      if (call.op == op && call.from == "/a/one" && op != Op::Rename) fresh.files.SetContent("/a/one", "second");
    });
    const OperationResult result = other.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d"));
    EXPECT_EQ(result.code, OperationCode::Changed);
    EXPECT_EQ(result.description, "/a/one could not be moved: it changed while it was copied.");
    const auto all = AllFiles(fresh.files);
    EXPECT_EQ(all.at("/a/one"), "second");
    EXPECT_FALSE(all.contains("/usb/d/one"));
    EXPECT_FALSE(all.contains("/usb/d/.tresmor-1.part"));
  }
}

TEST_F(FileExecutorTest, MakesNoCopyOfAFileThatChanges) {
  Make("/a/one");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Flush) files.SetContent("/a/one", "second");
  });
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")), OperationCode::Changed,
               "/a/one could not be copied: it changed while it was copied.");
  EXPECT_THAT(Names("/d"), ElementsAre());
}

TEST_F(FileExecutorTest, KeepsTheCopyOfASourceThatIsGoneThoughItsRemovalFailed) {
  Make("/a/one");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Remove && call.path == "/a/one") files.Remove("/a/one");
  });
  changes.Fail(Op::Remove, "/a/one", Errors::Device);
  const OperationResult result = program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d"));
  EXPECT_EQ(result.code, OperationCode::ReadFault);
  EXPECT_EQ(Bytes("/usb/d/one"), "bytes of /a/one");
}

TEST_F(FileExecutorTest, FailsForAFileThatVanishes) {
  Make("/a/one");
  Make("/a/two");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Rename && call.from == "/a/one") files.Remove("/a/one");
  });
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two"}, "/d")), OperationCode::NotFound,
               "/a/one could not be moved: it is not there.");
  EXPECT_TRUE(Stands("/d/two"));
}

// --- Destinations that fail

TEST_F(FileExecutorTest, AFullDiskKeepsSourcesAndLeavesNoPart) {
  files.MakeFile("/a/small", std::string(100, 's'));
  files.MakeFile("/a/large", std::string(1000, 'l'));
  files.MakeFile("/a/tiny", std::string(10, 't'));
  changes.SetPiece(64);
  changes.SetRoom(500);
  const OperationResult result = program.Do(PutThese(FO_MOVE, {"/a/small", "/a/large", "/a/tiny"}, "/usb/d"));
  ExpectFailed(result, OperationCode::DiskFull, "/a/large could not be moved: the disk of /usb/d is full.");
  EXPECT_THAT(Names("/usb/d"), ElementsAre("small", "tiny"));
  EXPECT_THAT(Names("/a"), ElementsAre("large"));
  EXPECT_EQ(watch.told.back().files, 2);
  EXPECT_EQ(watch.told.back().bytes, 110);
}

TEST_F(FileExecutorTest, AReadOnlyDestinationGivesOneMessage) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  files.MakeFolder("/d");
  files.MakeFolder("/usb/d");
  changes.SetReadOnly("/d");
  changes.SetReadOnly("/usb/d");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/two", "/a/three"}, "/d")), OperationCode::Denied,
               "/a/one could not be moved: there is no permission to move it to /d/one. 2 more failed too.");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::Denied,
               "/a/one could not be moved: there is no permission to write to /usb/d.");
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d/new")), OperationCode::Denied,
               "/a/one could not be copied: there is no permission to write to /d/new.");
  EXPECT_THAT(Names("/a"), ElementsAre("one", "three", "two"));
}

TEST_F(FileExecutorTest, AVanishedDestinationGivesOneMessage) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Rename && call.from == "/a/two") files.Remove("/d");
  });
  const OperationResult result = program.Do(PutThese(FO_COPY, {"/a/one"}, "/d"));
  ExpectDone(result);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/two", "/a/three"}, "/d")), OperationCode::NotFound,
               "/a/two could not be moved: /d is not there. 1 more failed too.");
  EXPECT_THAT(Names("/a"), ElementsAre("one", "three", "two"));
}

TEST_F(FileExecutorTest, ASourceThatCannotBeRemovedTakesItsCopyAlong) {
  Make("/a/one");
  changes.SetReadOnly("/a");
  changes.Fail(Op::Rename, "/usb/d/one", Errors::DifferentDrive);
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Rename && call.from != "/a/one") changes.Fail(Op::Rename, "/usb/d/one", Errors::None);
  });
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::Denied,
               "/a/one could not be moved: it can't be removed from its old place: permission denied.");
  EXPECT_THAT(Names("/usb/d"), ElementsAre());
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, AnUnreadableSourceIsToldAsSuch) {
  Make("/a/one");
  Make("/a/two");
  files.FailOpen("/a/one", Errors::PermissionDenied);
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")), OperationCode::Denied,
               "/a/one could not be copied: permission denied.");
  files.FailRead("/a/two", 3, Errors::Device);
  changes.SetPiece(3);
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/two"}, "/d")), OperationCode::ReadFault,
               "/a/two could not be copied: reading it failed.");
  EXPECT_THAT(Names("/d"), ElementsAre());
}

TEST_F(FileExecutorTest, ACopyThatReadsDifferentlyIsThrownAway) {
  Make("/a/one");
  changes.Fail(Op::CompareNext, "/usb/d/.tresmor-1.part", Errors::Device);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::WriteFault,
               "/a/one could not be moved: writing to /usb/d failed.");
  EXPECT_THAT(Names("/usb/d"), ElementsAre());
}

TEST_F(FileExecutorTest, PassesOverPartsThatOthersAreWriting) {
  Make("/a/one");
  Make("/a/other");
  Errors failure = Errors::None;
  bool atSource = false;
  files.MakeFolder("/d");
  const auto living = changes.BeginCopy("/a/other", "/d/.tresmor-1.part", failure, atSource);
  ASSERT_NE(living, nullptr);
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")));
  EXPECT_THAT(Names("/d"), ElementsAre(".tresmor-1.part", "one"));
  EXPECT_EQ(Bytes("/d/one"), "bytes of /a/one");
}

TEST_F(FileExecutorTest, TakesAwayPartsThatKilledProgramsLeft) {
  Make("/a/one");
  files.MakeFile("/d/.tresmor-1.part", "of a crash");
  files.MakeFile("/d/.tresmor-2.part", "of another one");
  files.MakeFolder("/d/.tresmor-3.part");
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")));
  EXPECT_THAT(Names("/d"), ElementsAre(".tresmor-3.part", "one"));
}

TEST_F(FileExecutorTest, ADestinationThatVanishesUnderACopyIsToldAsSuch) {
  Make("/a/one");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::Rename && call.from == "/usb/d/.tresmor-1.part") files.Remove("/usb/d");
  });
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::NotFound,
               "/a/one could not be moved: /usb/d is not there.");
  EXPECT_EQ(Bytes("/a/one"), "bytes of /a/one");
}

TEST_F(FileExecutorTest, EntersNothingThatTookThePlaceOfTheDestination) {
  for (const char* path : {"/a/one", "/a/two", "/a/three"}) Make(path);
  files.MakeFolder("/elsewhere");
  watch.cancelled = [this] {
    if (!Stands("/d/x/one")) return false;
    EXPECT_EQ(files.Move("/d/x", "/d/old"), Errors::None);
    files.MakeLink("/d/x", "/elsewhere");
    return false;
  };
  ExpectFailed(
      program.Do(PutTheseAt(FO_MOVE, {"/a/one", "/a/two", "/a/three"}, {"/d/x/one", "/d/x/two", "/d/y/three"}, "/d")),
      OperationCode::NotFound, "/a/two could not be moved: /d/x is another one than it was at first.");
  EXPECT_THAT(Names("/elsewhere"), ElementsAre());
  EXPECT_TRUE(Stands("/a/two"));
  EXPECT_TRUE(Stands("/d/old/one"));
  EXPECT_TRUE(Stands("/d/y/three"));
}

TEST_F(FileExecutorTest, AFileTooLargeForTheDiskIsToldAsSuch) {
  Make("/a/one");
  changes.Fail(Op::CopyNext, "/usb/d/.tresmor-1.part", Errors::Overflow);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::TooLarge,
               "/a/one could not be moved: it is too large for the disk of /usb/d.");
  EXPECT_THAT(Names("/usb/d"), ElementsAre());
}

TEST_F(FileExecutorTest, ANameThatTheDiskRefusesIsToldAndNotItsFolder) {
  const std::string end = " could not be moved: the disk doesn't take the name /usb/d/a:b.";
  for (const char* path : {"/a/a:b", "/usb/a:b", "/e/a:b"}) Make(path);
  changes.Fail(Op::Rename, "/usb/d/a:b", Errors::BadFileName);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/usb/a:b"}, "/usb/d")), OperationCode::BadName, "/usb/a:b" + end);
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::CompareNext) changes.Fail(Op::Rename, "/usb/d/a:b", Errors::BadFileName);
  });
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/a:b"}, "/usb/d")), OperationCode::BadName, "/a/a:b" + end);
  changes.SetHook(nullptr);
  changes.SetWithoutRename("/usb");
  changes.Fail(Op::BeginCopy, "/usb/d/a:b", Errors::BadFileName);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/e/a:b"}, "/usb/d")), OperationCode::BadName, "/e/a:b" + end);
  EXPECT_THAT(Names("/usb/d"), ElementsAre());
}

TEST_F(FileExecutorTest, KeepsASourceWhoseCopyIsNoLongerInItsPlace) {
  Make("/a/one");
  changes.SetHook([this](const Call& call) {
    if (call.op != Op::FlushFolder || call.path != "/usb/d") return;
    files.Remove("/usb/d/one");
    files.MakeFile("/usb/d/one", "somebody else's");
  });
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::WriteFault,
               "/a/one could not be moved: its copy is no longer at /usb/d/one.");
  EXPECT_EQ(Bytes("/a/one"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/usb/d/one"), "somebody else's");
}

TEST_F(FileExecutorTest, LooksAgainJustBeforeItTakesAFileAway) {
  for (const auto& [operation, words] :
       {std::pair(DeleteThese({"/a/one", "/a/two", "/a/three"}), "deleted"),
        std::pair(TrashThese({"/a/one", "/a/two", "/a/three"}), "moved to the trash"),
        std::pair(PutThese(FO_MOVE, {"/a/one", "/a/two", "/a/three"}, "/d"), "moved")}) {
    SCOPED_TRACE(words);
    Disks fresh;
    for (const char* name : {"/a/one", "/a/two", "/a/three"}) fresh.files.MakeFile(name, "old");
    Program other(fresh);
    other.changes.SetHook([&](const Call& call) {
      if (call.path != "/a/one" && call.from != "/a/one") return;
      fresh.files.SetContent("/a/two", "written to meanwhile");
      fresh.files.Remove("/a/three");
      fresh.files.MakeFile("/a/three", "new");
      fresh.files.SetModified("/a/three", 1'000'000'000);
    });
    const OperationResult result = other.Do(operation);
    EXPECT_EQ(result.code, OperationCode::Changed);
    EXPECT_EQ(result.description, "/a/two could not be " + std::string(words) +
                                      ": it was changed or replaced meanwhile. 1 more failed too.");
    const auto all = AllFiles(fresh.files);
    EXPECT_EQ(all.at("/a/two"), "written to meanwhile");
    EXPECT_EQ(all.at("/a/three"), "new");
    EXPECT_FALSE(all.contains("/a/one"));
  }
}

// --- Disks that can't rename without replacing

TEST_F(FileExecutorTest, WhereARenameMightReplaceACopyIsMadeInItsPlace) {
  for (const char* path : {"/a/one", "/usb/two", "/d/taken/one"}) Make(path);
  changes.SetWithoutRename("/d");
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one", "/usb/two"}, "/d/taken")));
  EXPECT_THAT(Names("/d/taken"), ElementsAre("one", "one (2)", "two"));
  EXPECT_EQ(Bytes("/d/taken/one (2)"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/d/taken/two"), "bytes of /usb/two");
  EXPECT_FALSE(Stands("/a/one"));
  EXPECT_EQ(watch.told.back().bytes, watch.told.back().allBytes);
  changes.SetWithoutRename("/usb");
  changes.SetWithoutRename("/a");
  EXPECT_EQ(program.Undone().putBack, 2);
  EXPECT_EQ(Bytes("/a/one"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/usb/two"), "bytes of /usb/two");
  EXPECT_THAT(Names("/d/taken"), ElementsAre("one"));
}

TEST_F(FileExecutorTest, ACopyInItsPlaceReplacesNothingAndLeavesNoHalf) {
  Make("/a/one");
  files.MakeFolder("/d");
  changes.SetWithoutRename("/d");
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::BeginCopy && call.path == "/d/one") files.MakeFile("/d/one", "quicker");
  });
  changes.Fail(Op::CompareNext, "/d/one (2)", Errors::Device);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")), OperationCode::WriteFault,
               "/a/one could not be moved: writing to /d failed.");
  EXPECT_THAT(Names("/d"), ElementsAre("one"));
  EXPECT_EQ(Bytes("/d/one"), "quicker");
  EXPECT_EQ(Bytes("/a/one"), "bytes of /a/one");
}

TEST_F(FileExecutorTest, ARenameByCopyReplacesNothingAndIsNoStepToUndo) {
  for (const char* path : {"/a/one", "/d/two", "/d/taken"}) Make(path);
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/b")));
  program.executor.BeginUndoStep().reset();
  changes.SetWithoutRename("/d");
  const auto rename = [](const std::string& to) {
    return ShFileOpStruct{FO_RENAME, ListOf({"/d/two"}), ListOf({to}), FOF_MULTIDESTFILES, "/d"};
  };
  ExpectFailed(program.Do(rename("/d/taken")), OperationCode::Exists,
               "/d/two could not be moved: /d/taken stands there already.");
  // Its time comes out another one than it was, as on disks that keep it roughly.
  changes.SetHook([this](const Call& call) {
    if (call.op == Op::FlushFolder) files.SetModified("/d/new", 1000);
  });
  ExpectDone(program.Do(rename("/d/new")));
  EXPECT_THAT(Names("/d"), ElementsAre("new", "taken"));
  EXPECT_EQ(Bytes("/d/new"), "bytes of /d/two");
  EXPECT_EQ(Bytes("/d/taken"), "bytes of /d/taken");
  EXPECT_EQ(program.Undone().putBack, 1);
  EXPECT_TRUE(Stands("/a/one") && Stands("/d/new"));
}

TEST_F(FileExecutorTest, DoesNothingThatItCannotNote) {
  Make("/a/one");
  changes.Fail(Op::Append, "/home/me/state/undo.new", Errors::DiskFull);
  ExpectFailed(program.Do(TrashThese({"/a/one"})), OperationCode::DiskFull,
               "/a/one could not be moved to the trash: how to undo it can't be noted, as the disk of "
               "/home/me/state/undo is full.");
  EXPECT_TRUE(Stands("/a/one"));
  changes.Fail(Op::Append, "/home/me/state/undo.new", Errors::None);
  files.Remove("/home/me/state");
  changes.SetReadOnly("/home/me");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")), OperationCode::Denied,
               "/a/one could not be moved: how to undo it can't be noted, as there is no permission to write to "
               "/home/me/state.");
  EXPECT_TRUE(Stands("/a/one"));
  ExpectDone(program.Do(DeleteThese({"/a/one"})));
}

}  // namespace

}  // namespace tresmor
