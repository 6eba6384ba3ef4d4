// Moving and copying where nothing fails.
#include "transfer/file_executor_world.h"

namespace tresmor {

namespace {

using Op = MemoryFileChanges::Op;
using Call = MemoryFileChanges::Call;
using testing::ElementsAre;

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
    if (!call.path.starts_with("/home/me/state")) order.push_back(call.op);
  }
  EXPECT_THAT(order,
              ElementsAre(Op::MakeFolder, Op::Rename, Op::BeginCopy, Op::CopyNext, Op::CopyNext, Op::TakeAttributes,
                          Op::Flush, Op::CompareNext, Op::CompareNext, Op::SourceUnchanged, Op::Rename, Op::FlushFolder,
                          Op::FlushFolder, Op::SourceUnchanged, Op::StandsAt, Op::Remove, Op::FlushFolder));
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

TEST_F(FileExecutorTest, ANameKeepsItsLengthAndOnlyANumberedOneIsShortened) {
  files.SetLongestName(600);  // as on a disk that counts characters
  const std::string name = std::string(300, 'x') + ".jpg";
  Make("/a/" + name);
  Make("/b/" + name);
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/" + name}, "/d")));
  ExpectDone(program.Do(PutThese(FO_COPY, {"/a/" + name}, "/usb/d")));
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/b/" + name}, "/d")));
  EXPECT_THAT(Names("/d"), ElementsAre(std::string(247, 'x') + " (2).jpg", name));
  EXPECT_THAT(Names("/usb/d"), ElementsAre(name));
  EXPECT_EQ(Bytes("/d/" + name), "bytes of /a/" + name);
}

TEST_F(FileExecutorTest, ANameThatIsTooLongForTheDiskIsShortened) {
  files.SetLongestName(600);
  const std::string name = std::string(300, 'x') + ".jpg";
  const std::string shortened = std::string(251, 'x') + ".jpg";
  changes.SetWithoutRename("/usb/in place");
  Make("/a/" + name);
  for (const char* folder : {"/d/", "/usb/d/"}) changes.Fail(Op::Rename, folder + name, Errors::BadFileName);
  changes.Fail(Op::BeginCopy, "/usb/in place/" + name, Errors::BadFileName);
  for (const char* folder : {"/d", "/usb/d", "/usb/in place"}) {
    ExpectDone(program.Do(PutThese(FO_COPY, {"/a/" + name}, folder)));
    EXPECT_THAT(Names(folder), ElementsAre(shortened));
  }
  Make("/b/" + name);
  ExpectDone(program.Do(PutThese(FO_MOVE, {"/b/" + name}, "/d")));
  EXPECT_EQ(Bytes("/d/" + std::string(247, 'x') + " (2).jpg"), "bytes of /b/" + name);
  EXPECT_EQ(program.Undone().putBack, 1);
  EXPECT_TRUE(Stands("/b/" + name));
}

TEST_F(FileExecutorTest, ANameThatIsNotTooLongIsTriedOnce) {
  Make("/a/one");
  changes.Fail(Op::Rename, "/d/one", Errors::BadFileName);
  ExpectFailed(program.Do(PutThese(FO_MOVE, {"/a/one"}, "/d")), OperationCode::BadName,
               "/a/one could not be moved: the disk doesn't take the name /d/one.");
  EXPECT_EQ(changes.Count(Op::Rename), 1U);
  EXPECT_TRUE(Stands("/a/one"));
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

TEST_F(FileExecutorTest, WithoutADestinationNothingIsDone) {
  Make("/a/one");
  files.MakeFolder("/d");
  for (const char* destination : {"", "d"}) {
    ExpectFailed(program.Do(PutTheseAt(FO_MOVE, {"/a/one"}, {"/d/one"}, destination)), OperationCode::BadName,
                 "Nothing was done: the destination is no full path.");
  }
  EXPECT_TRUE(Stands("/a/one"));
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
  EXPECT_EQ(code(PutThese(5, {"/a/one"}, "/d")), OperationCode::BadName);
  EXPECT_EQ(code(TrashThese({"/a/none"})), OperationCode::NotFound);
  EXPECT_THAT(changes.Calls(), ElementsAre());
}

TEST_F(FileExecutorTest, AFailureWithoutANameSaysSo) {
  Make("/a/one");
  ExpectFailed(program.Do(DeleteThese({"", "/a/one"})), OperationCode::BadName,
               "A file without a name could not be deleted: it is no full path.");
  EXPECT_FALSE(Stands("/a/one"));
}

// --- Paths with "\" that take no notice of case

TEST(FileExecutorOnAnotherStyle, MovesTrashesAndUndoes) {
  MemoryFileSystem files(PathStyle::Windows());
  MemoryFileChanges changes(files);
  FakeTrashPlaces trash;
  trash.home = {{"C:\\Trash", ""}};
  UndoLog log(files, changes, "C:\\State\\undo");
  FileExecutor executor(files, changes, trash, log);
  ScriptedWatch watch;
  files.MakeFolder("C:\\Trash\\files");
  files.MakeFolder("C:\\Trash\\info");
  files.MakeFile("C:\\A\\One.txt", "one");
  files.MakeFile("C:\\A\\Two", "two");
  files.MakeFile("D:\\Keep\\ONE.TXT", "old");
  const auto before = AllFiles(files, "\\");
  const auto code = [&](const ShFileOpStruct& operation) { return executor.ShFileOperation(operation, watch).code; };
  EXPECT_EQ(code(PutThese(FO_MOVE, {"C:\\A\\One.txt"}, "c:\\a")), OperationCode::SameFile);
  EXPECT_EQ(code(PutThese(FO_MOVE, {"C:\\A\\One.txt", "c:\\a\\one.TXT"}, "D:\\keep")), OperationCode::Done);
  EXPECT_EQ(code(PutTheseAt(FO_MOVE, {"C:\\A\\Two"}, {"D:\\KEEP\\x\\Two"}, "D:\\keep\\")), OperationCode::Done);
  EXPECT_EQ(code(PutTheseAt(FO_MOVE, {"D:\\keep\\x\\two"}, {"D:\\other\\Two"}, "D:\\keep")), OperationCode::BadName);
  EXPECT_EQ(code(TrashThese({"d:\\keep\\X"})), OperationCode::Done);
  auto now = AllFiles(files, "\\");
  EXPECT_EQ(now["\\D:\\Keep\\One (2).txt"], "one");
  EXPECT_EQ(now["\\D:\\Keep\\ONE.TXT"], "old");
  EXPECT_EQ(now["\\C:\\Trash\\files\\X\\Two"], "two");
  const UndoResult result = Undo(files, changes, log).Run(watch);
  EXPECT_EQ(result.putBack, 3);
  EXPECT_EQ(result.trouble, "");
  EXPECT_EQ(AllFiles(files, "\\"), before);
}

}  // namespace

}  // namespace tresmor
