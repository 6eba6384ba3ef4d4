// Deleting for good, and the trash.
#include "transfer/file_executor_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using Call = MemoryFileChanges::Call;
using testing::ElementsAre;
using testing::HasSubstr;

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

TEST_F(FileExecutorTest, SaysWhyATrashThatThereIsCannotBeUsed) {
  Make("/a/one");
  program.trash.home.clear();
  program.trash.failure = {Errors::DiskFull, "/home/me/Trash"};
  ExpectFailed(program.Do(TrashThese({"/a/one"})), OperationCode::DiskFull,
               "/a/one could not be moved to the trash: the disk of /home/me/Trash is full.");
  program.trash.failure = {Errors::TooManyFiles, "/a"};
  ExpectFailed(program.Do(TrashThese({"/a/one"})), OperationCode::WriteFault,
               "/a/one could not be moved to the trash: /a: Too many files.");
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, WhatLiesInATrashIsNotTrashedOnceMore) {
  const auto expectLeft = [this](const std::string& path, const std::string& why) {
    ExpectFailed(program.Do(TrashThese({path})), OperationCode::SameFile,
                 path + " could not be moved to the trash: " + why + ".");
    EXPECT_TRUE(Stands(path));
  };
  Make("/home/me/Trash/files/in/one");
  Make("/home/me/Trash/info/in.trashinfo");
  expectLeft("/home/me/Trash", "the trash itself lies in it");
  expectLeft("/home/me", "the trash itself lies in it");
  expectLeft("/home/me/Trash/files/in", "it lies in the trash already");
  files.MakeLink("/linked", "/home/me/Trash/files");
  program.trash.home[0].within = "/home/me/Trash";
  expectLeft("/linked/in", "it lies in the trash already");
  for (const char* path : {"/home/me/Trash/files/in/one", "/home/me/Trash/files/in", "/home/me/Trash/files",
                           "/home/me/Trash/info/in.trashinfo"}) {
    expectLeft(path, "it lies in the trash already");
  }
  EXPECT_THAT(changes.Calls(), ElementsAre());
}

TEST_F(FileExecutorTest, WhatOnlyHasATrashsNameIsTrashedLikeTheRest) {
  for (const char* path : {"/old/.Trash-7/files/one", "/old/home/.local/share/Trash/files/two", "/old/.Trash"}) {
    Make(path);
    EXPECT_EQ(program.Do(TrashThese({path})).code, OperationCode::Done) << path;
    EXPECT_FALSE(Stands(path));
  }
}

TEST_F(FileExecutorTest, SaysSoWhereAFileCannotBeRenamedIntoTheTrashSafely) {
  Make("/a/one");
  changes.SetWithoutRename("/home/me/Trash");
  ExpectFailed(program.Do(TrashThese({"/a/one"})), OperationCode::NoTrash,
               "/a/one could not be moved to the trash: it can't be renamed into /home/me/Trash in a way that is sure "
               "to replace nothing.");
  EXPECT_TRUE(Stands("/a/one"));
}

TEST_F(FileExecutorTest, DeletesOnlyFilesAndLinksForGood) {
  Make("/a/one");
  files.MakeLink("/a/link", "nowhere");
  files.MakeFifo("/a/fifo");
  ExpectFailed(program.Do(DeleteThese({"/a/one", "/a/fifo", "/a/link"})), OperationCode::Denied,
               "/a/fifo could not be deleted: it is a pipe, a socket or a device, and only files and links are "
               "deleted for good.");
  EXPECT_THAT(Names("/a"), ElementsAre("fifo"));
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

}  // namespace

}  // namespace tresmor
