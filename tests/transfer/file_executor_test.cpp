#include "transfer/file_executor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "transfer/transfer_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using Call = MemoryFileChanges::Call;
using testing::ElementsAre;
using testing::HasSubstr;

class FileExecutorTest : public testing::Test {
 protected:
  void Make(const std::string& path) { files.MakeFile(path, "bytes of " + path); }
  bool Stands(const std::string& path) const {
    FileStat stat;
    return files.Stat(path, stat) == Errors::None;
  }
  std::string Bytes(const std::string& path) const {
    const auto all = AllFiles(files);
    const auto found = all.find(path);
    return found == all.end() ? "nothing" : found->second;
  }
  // Nothing but what was named stands in the folder.
  std::vector<std::string> Names(const std::string& folder) const {
    FolderListing listing;
    EXPECT_EQ(files.List(folder, listing), Errors::None);
    std::vector<std::string> names;
    for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
    std::ranges::sort(names);
    return names;
  }
  void ExpectDone(const OperationResult& result) {
    EXPECT_EQ(result.code, OperationCode::Done) << result.description;
    EXPECT_EQ(result.description, "");
  }
  void ExpectFailed(const OperationResult& result, OperationCode code, const std::string& description) {
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.description, description);
  }

  Disks disks;
  MemoryFileSystem& files = disks.files;
  Program program{disks};
  MemoryFileChanges& changes = program.changes;
  ScriptedWatch& watch = program.watch;
};

// --- Deleting

TEST_F(FileExecutorTest, DeletesForGood) {
  Make("/a/one");
  files.MakeLink("/a/link", "/a/gone");
  ExpectDone(program.Do(DeleteThese({"/a/one", "/a/link"})));
  EXPECT_THAT(Names("/a"), ElementsAre());
  EXPECT_FALSE(Stands("/home/me/state/undo"));
}

TEST_F(FileExecutorTest, DeletesNoFolderForGood) {
  Make("/a/in/one");
  ExpectFailed(program.Do(DeleteThese({"/a/in"})), OperationCode::Denied,
               "/a/in could not be deleted: it is a folder, and folders can only be moved to the trash.");
  EXPECT_TRUE(Stands("/a/in/one"));
}

TEST_F(FileExecutorTest, AsksOnceBeforeADelete) {
  Make("/a/one");
  Make("/a/two");
  ShFileOpStruct operation = DeleteThese({"/a/one", "/a/two", "/a/one"});
  operation.fFlags = FOF_RENAMEONCOLLISION;
  watch.answer = false;
  ExpectFailed(program.Do(operation), OperationCode::Cancelled, "Cancelled: nothing was deleted.");
  EXPECT_THAT(watch.questions, ElementsAre(2));
  EXPECT_THAT(changes.Calls(), ElementsAre());
  watch.answer = true;
  ExpectDone(program.Do(operation));
  EXPECT_THAT(Names("/a"), ElementsAre());
}

TEST_F(FileExecutorTest, AsksBeforeTheTrashTooAndNeverBeforeAMove) {
  Make("/a/one");
  Make("/a/two");
  ShFileOpStruct operation = TrashThese({"/a/one"});
  operation.fFlags = FOF_RENAMEONCOLLISION | FOF_ALLOWUNDO;
  ExpectDone(program.Do(operation));
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/two"}, "/d")));
  EXPECT_THAT(watch.questions, ElementsAre(1));
}

// --- The trash

TEST_F(FileExecutorTest, TrashesIntoTheHomeTrash) {
  Make("/a/one.txt");
  ExpectDone(program.Do(TrashThese({"/a/one.txt"})));
  EXPECT_EQ(Bytes("/home/me/Trash/files/one.txt"), "bytes of /a/one.txt");
  EXPECT_FALSE(Stands("/a/one.txt"));
}

TEST_F(FileExecutorTest, TakesAnotherNameInTheTrash) {
  Make("/home/me/Trash/files/one.txt");
  files.MakeFile("/home/me/Trash/info/one (2).txt.trashinfo", "somebody else's");
  Make("/a/one.txt");
  ExpectDone(program.Do(TrashThese({"/a/one.txt"})));
  EXPECT_EQ(Bytes("/home/me/Trash/files/one (3).txt"), "bytes of /a/one.txt");
  EXPECT_TRUE(Stands("/home/me/Trash/info/one (3).txt.trashinfo"));
  EXPECT_EQ(Bytes("/home/me/Trash/info/one (2).txt.trashinfo"), "somebody else's");
}

TEST_F(FileExecutorTest, ShortensNamesThatLeaveNoRoomForTrashinfo) {
  const std::string name = std::string(245, 'x') + "\xC3\xA4\xC3\xA4.jpg";
  Make("/a/" + name);
  ExpectDone(program.Do(TrashThese({"/a/" + name})));
  EXPECT_THAT(Names("/home/me/Trash/files"), ElementsAre(std::string(241, 'x') + ".jpg"));
  EXPECT_THAT(Names("/home/me/Trash/info"), ElementsAre(std::string(241, 'x') + ".jpg.trashinfo"));
}

TEST_F(FileExecutorTest, NeverCopiesOrDeletesWhereThereIsNoTrash) {
  Make("/a/one");
  Make("/usb/two");
  program.trash.home.clear();
  program.trash.usb = {{"/home/me/Trash", ""}};
  const OperationResult result = program.Do(TrashThese({"/a/one", "/usb/two"}));
  ExpectFailed(result, OperationCode::NoTrash,
               "/a/one could not be moved to the trash: its disk has no trash. 1 more failed too.");
  EXPECT_TRUE(Stands("/a/one"));
  EXPECT_TRUE(Stands("/usb/two"));
  EXPECT_THAT(Names("/home/me/Trash/info"), ElementsAre());
}

TEST_F(FileExecutorTest, TriesTheNextTrashFolder) {
  files.MakeFolder("/usb/.Trash/1/files");
  files.MakeFolder("/usb/.Trash/1/info");
  changes.SetReadOnly("/usb/.Trash/1/info");
  program.trash.usb.insert(program.trash.usb.begin(), {"/usb/.Trash/1", "/usb"});
  Make("/usb/one");
  ExpectDone(program.Do(TrashThese({"/usb/one"})));
  EXPECT_TRUE(Stands("/usb/.Trash-1/files/one"));
  EXPECT_EQ(program.Undone().putBack, 1);
  EXPECT_TRUE(Stands("/usb/one"));
}

TEST_F(FileExecutorTest, TrashesAFolderWithAllInIt) {
  Make("/a/in/one");
  ExpectDone(program.Do(TrashThese({"/a/in/"})));
  EXPECT_EQ(Bytes("/home/me/Trash/files/in/one"), "bytes of /a/in/one");
  EXPECT_THAT(Names("/a"), ElementsAre());
}

TEST_F(FileExecutorTest, TrashesNoFolderThatHoldsTheTrash) {
  ExpectFailed(program.Do(TrashThese({"/home/me"})), OperationCode::SameFile,
               "/home/me could not be moved to the trash: the trash itself lies in it.");
  EXPECT_TRUE(Stands("/home/me/Trash"));
}

TEST_F(FileExecutorTest, WhatIsNamedTwiceOrWentWithItsFolderIsDone) {
  Make("/a/in/one");
  Make("/a/in/two");
  ExpectDone(program.Do(TrashThese({"/a/in/one", "/a/in", "/a/in", "/a/in/", "/a/in/two", "/a/in/deep/three"})));
  EXPECT_EQ(watch.told.back().files, 4);
  EXPECT_EQ(watch.told.back().allFiles, 4);
}

TEST_F(FileExecutorTest, RemovesTheTrashinfoOfWhatDidNotGo) {
  Make("/a/one");
  changes.SetReadOnly("/a");
  const OperationResult result = program.Do(TrashThese({"/a/one"}));
  EXPECT_EQ(result.code, OperationCode::Denied);
  EXPECT_THAT(result.description, HasSubstr("/a/one could not be moved to the trash: there is no permission"));
  EXPECT_THAT(Names("/home/me/Trash/info"), ElementsAre());
}

TEST_F(FileExecutorTest, WritesTheTrashinfoBeforeItMoves) {
  Make("/a/one");
  ExpectDone(program.Do(TrashThese({"/a/one"})));
  const auto& calls = changes.Calls();
  ASSERT_GE(calls.size(), 2U);
  EXPECT_EQ(calls[calls.size() - 2], (Call{Op::Create, "/home/me/Trash/info/one.trashinfo", ""}));
  EXPECT_EQ(calls.back(), (Call{Op::Rename, "/home/me/Trash/files/one", "/a/one"}));
}

// --- Moving and copying

TEST_F(FileExecutorTest, MovesByARenameOnOneDisk) {
  Make("/a/one");
  files.MakeLink("/a/link", "one");
  files.MakeFifo("/a/pipe");
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one", "/a/link", "/a/pipe"}, "/d/e")));
  EXPECT_THAT(Names("/d/e"), ElementsAre("link", "one", "pipe"));
  EXPECT_EQ(changes.Count(Op::BeginCopy), 0U);
  EXPECT_THAT(Names("/a"), ElementsAre());
}

TEST_F(FileExecutorTest, MovesAcrossDisksInTheSafeOrder) {
  Make("/a/one");
  files.SetModified("/a/one", 1234567);
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/usb/d")));
  EXPECT_EQ(Bytes("/usb/d/one"), "bytes of /a/one");
  EXPECT_THAT(Names("/usb/d"), ElementsAre("one"));
  EXPECT_FALSE(Stands("/a/one"));
  FileStat stat;
  ASSERT_EQ(files.Stat("/usb/d/one", stat), Errors::None);
  EXPECT_EQ(stat.modified, 1234567);
  std::vector<Op> order;
  for (const Call& call : changes.Calls()) {
    if (call.path != "/home/me/state/undo" && call.path != "/home/me/state/undo.new") order.push_back(call.op);
  }
  EXPECT_THAT(order,
              ElementsAre(Op::MakeFolder, Op::Rename, Op::BeginCopy, Op::CopyNext, Op::CopyNext, Op::TakeAttributes,
                          Op::Flush, Op::CompareNext, Op::CompareNext, Op::SourceUnchanged, Op::Rename, Op::FlushFolder,
                          Op::FlushFolder, Op::SourceUnchanged, Op::Remove, Op::FlushFolder));
}

TEST_F(FileExecutorTest, CopiesAndKeepsTheSource) {
  Make("/a/one");
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/usb/d")));
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")));
  EXPECT_EQ(Bytes("/usb/d/one"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/d/one"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/a/one"), "bytes of /a/one");
  EXPECT_EQ(changes.Count(Op::Append), 0U);
}

TEST_F(FileExecutorTest, CopiesAndCarriesAcrossPlainFilesAlone) {
  files.MakeLink("/a/link", "/a/one");
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/link"}, "/d")), OperationCode::Denied,
               "/a/link could not be copied: it is no plain file.");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/link"}, "/usb/d")), OperationCode::Denied,
               "/a/link could not be moved: it is no plain file, which alone can be moved to another disk.");
  EXPECT_TRUE(Stands("/a/link"));
}

TEST_F(FileExecutorTest, MovesAndCopiesNoFolder) {
  Make("/a/in/one");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/in"}, "/d")), OperationCode::Denied,
               "/a/in could not be moved: it is a folder, and only files can be moved.");
  ExpectFailed(program.Do(PutThese(FO_COPY, {"/a/in"}, "/d")), OperationCode::Denied,
               "/a/in could not be copied: it is a folder, and only files can be copied.");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/in"}, "/a/in/deeper")), OperationCode::SameFile,
               "/a/in could not be moved: the destination lies in it.");
  EXPECT_FALSE(Stands("/d"));
  EXPECT_FALSE(Stands("/a/in/deeper"));
}

TEST_F(FileExecutorTest, RenamesTheNewcomer) {
  for (const char* path : {"/d/one.txt", "/d/one (2).txt", "/a/one.txt", "/b/one.txt", "/usb/one.txt"}) Make(path);
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one.txt", "/b/one.txt", "/usb/one.txt"}, "/d")));
  EXPECT_EQ(Bytes("/d/one.txt"), "bytes of /d/one.txt");
  EXPECT_EQ(Bytes("/d/one (2).txt"), "bytes of /d/one (2).txt");
  EXPECT_EQ(Bytes("/d/one (3).txt"), "bytes of /a/one.txt");
  EXPECT_EQ(Bytes("/d/one (4).txt"), "bytes of /b/one.txt");
  EXPECT_EQ(Bytes("/d/one (5).txt"), "bytes of /usb/one.txt");
}

TEST_F(FileExecutorTest, FailsOnATakenNameWhereItMayNotRename) {
  Make("/d/one");
  Make("/a/one");
  ShFileOpStruct operation = PutThese(FO_MOVE, {"/a/one"}, "/d");
  operation.fFlags = 0;
  ExpectFailed(program.Do(operation), OperationCode::Exists, "/a/one could not be moved: /d/one stands there already.");
  operation.wFunc = FO_COPY;
  EXPECT_EQ(program.Do(operation).code, OperationCode::Exists);
  EXPECT_THAT(Names("/d"), ElementsAre("one"));
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, CopyIntoItsOwnFolderMakesASecond) {
  Make("/a/one.tar.gz");
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one.tar.gz"}, "/a")));
  EXPECT_EQ(Bytes("/a/one.tar (2).gz"), "bytes of /a/one.tar.gz");
}

TEST_F(FileExecutorTest, MovesNothingOntoItself) {
  Make("/a/one");
  files.MakeLink("/way", "/a");
  for (const char* folder : {"/a", "/a/", "/way"}) {
    ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, folder)), OperationCode::SameFile,
                 "/a/one could not be moved: it stands there already.");
  }
  EXPECT_THAT(Names("/a"), ElementsAre("one"));
  EXPECT_THAT(changes.Calls(), ElementsAre());
}

TEST_F(FileExecutorTest, KeepsBothOfTwoHardLinks) {
  Make("/a/one");
  files.MakeHardLink("/d/one", "/a/one");
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")));
  EXPECT_THAT(Names("/d"), ElementsAre("one", "one (2)"));
}

TEST_F(FileExecutorTest, PutsEachToItsOwnPlaceWithStructure) {
  Make("/x/a/b/one");
  Make("/y/a/b/one");
  ExpectDone(program.Do(PutTheseAt(FO_MOVE, {"/x/a/b/one", "/y/a/b/one"}, {"/d//a/b/one", "/d/a/./b/one"}, "/d/")));
  EXPECT_EQ(Bytes("/d/a/b/one"), "bytes of /x/a/b/one");
  EXPECT_EQ(Bytes("/d/a/b/one (2)"), "bytes of /y/a/b/one");
}

TEST_F(FileExecutorTest, LeavesTheDestinationByNoWay) {
  Make("/a/one");
  Make("/a/two");
  const OperationResult result =
      program.Do(PutTheseAt(FO_MOVE, {"/a/one", "/a/two"}, {"/d/x/../../e/one", "/e/two"}, "/d"));
  ExpectFailed(result, OperationCode::BadName,
               "/a/one could not be moved: /d/x/../../e/one does not lie in the destination /d. 1 more failed too.");
  EXPECT_THAT(Names("/a"), ElementsAre("one", "two"));
}

TEST_F(FileExecutorTest, EntersNoLinkBelowTheDestination) {
  Make("/a/one");
  Make("/a/two");
  files.MakeFolder("/elsewhere");
  files.MakeFolder("/real");
  files.MakeLink("/d", "/real");
  files.MakeLink("/real/link", "/elsewhere");
  const OperationResult result =
      program.Do(PutTheseAt(FO_MOVE, {"/a/one", "/a/two"}, {"/d/link/one", "/d/x/two"}, "/d"));
  ExpectFailed(result, OperationCode::Exists, "/a/one could not be moved: /d/link is a link or a file and no folder.");
  EXPECT_THAT(Names("/elsewhere"), ElementsAre());
  EXPECT_TRUE(Stands("/real/x/two"));
}

TEST_F(FileExecutorTest, WithoutADestinationNoLinkAtAllIsEntered) {
  Make("/a/one");
  files.MakeFolder("/real");
  files.MakeLink("/d", "/real");
  EXPECT_EQ(program.Do(PutTheseAt(FO_MOVE, {"/a/one"}, {"/d/one"}, "")).code, OperationCode::Exists);
  ExpectDone(program.Do(PutTheseAt(FO_MOVE, {"/a/one"}, {"/real/x/one"}, "")));
  EXPECT_TRUE(Stands("/real/x/one"));
}

TEST_F(FileExecutorTest, NeverFollowsALinkThatHasTheNameOfTheFile) {
  Make("/a/one");
  Make("/precious");
  files.MakeLink("/d/one", "/precious");
  files.MakeLink("/d/one (2)", "/nowhere");
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")));
  EXPECT_EQ(Bytes("/d/one (3)"), "bytes of /a/one");
  EXPECT_EQ(Bytes("/precious"), "bytes of /precious");
}

TEST_F(FileExecutorTest, TheDestinationMayBeNoFile) {
  Make("/a/one");
  Make("/d");
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")), OperationCode::Exists,
               "/a/one could not be moved: /d is a link or a file and no folder.");
  files.MakeLink("/lost", "/nowhere");
  EXPECT_EQ(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/lost")).code, OperationCode::Exists);
}

TEST_F(FileExecutorTest, RefusesWhatIsNoOrder) {
  Make("/a/one");
  const auto code = [this](const ShFileOpStruct& operation) { return program.Do(operation).code; };
  EXPECT_EQ(code(PutThese(FO_MOVE, {}, "/d")), OperationCode::BadName);
  EXPECT_EQ(code(PutThese(FO_MOVE, {"/a/one"}, "")), OperationCode::BadName);
  EXPECT_EQ(code(PutThese(FO_MOVE, {"/a/one"}, "d")), OperationCode::BadName);
  EXPECT_EQ(code(PutThese(FO_MOVE, {"one"}, "/d")), OperationCode::BadName);
  EXPECT_EQ(code(PutTheseAt(FO_MOVE, {"/a/one", "/a/two"}, {"/d/one"}, "/d")), OperationCode::BadName);
  EXPECT_EQ(code(PutThese(4, {"/a/one"}, "/d")), OperationCode::BadName);
  EXPECT_EQ(code(TrashThese({"/a/none"})), OperationCode::NotFound);
  EXPECT_THAT(changes.Calls(), ElementsAre());
}

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
               "/a/two could not be moved: /d/ is not there. 1 more failed too.");
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

TEST_F(FileExecutorTest, PassesOverPartsOfOthers) {
  Make("/a/one");
  files.MakeFile("/d/.tresmor-1.part", "of a crash");
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/one"}, "/d")));
  EXPECT_EQ(Bytes("/d/.tresmor-1.part"), "of a crash");
  EXPECT_EQ(Bytes("/d/one"), "bytes of /a/one");
}

TEST_F(FileExecutorTest, DoesNothingThatItCannotNote) {
  Make("/a/one");
  changes.Fail(Op::Append, "/home/me/state/undo.new", Errors::DiskFull);
  ExpectFailed(program.Do(TrashThese({"/a/one"})), OperationCode::DiskFull,
               "/a/one could not be moved to the trash: the disk of /home/me/state/undo is full.");
  EXPECT_TRUE(Stands("/a/one"));
  ExpectDone(program.Do(DeleteThese({"/a/one"})));
}

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
  program.executor.BeginUndoStep();
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

}  // namespace

}  // namespace tresmor
