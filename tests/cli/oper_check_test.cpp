// What is looked at before marked files go, and what is left alone then.
#include <gmock/gmock.h>

#include "cli/oper_world.h"

namespace tresmor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tests::ConsoleRun;
using tests::OperTest;

TEST_F(OperTest, AGroupThatWouldKeepNothingIsSkippedAndNamed) {
  SaveAndMark("x;one");
  const ConsoleRun run = Do("delete");
  EXPECT_EQ(run.err,
            "tresmor-cli: Skipped '/data/d/x': no file of its group would stay.\n"
            "tresmor-cli: Skipped '/data/c/x': no file of its group would stay.\n");
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 2 skipped.\n");
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_FALSE(Exists("/data/a/one"));
  EXPECT_THAT(Rows(), testing::ElementsAre("/data/b/two", "/data/c/three", "/data/c/x*", "/data/d/x*"));
  // Not comparing says nothing about whole groups.
  EXPECT_EQ(Do("delete", {"--yes", "--no-verify"}).status, kNotAllDone);
  EXPECT_TRUE(Exists("/data/c/x"));
}

TEST_F(OperTest, WithAllowAllWholeGroupsGo) {
  SaveAndMark("x");
  EXPECT_EQ(Do("delete", {"--yes", "--allow-all"}).status, kRanThrough);
  EXPECT_FALSE(Exists("/data/c/x") || Exists("/data/d/x"));
  EXPECT_THAT(Rows(), testing::ElementsAre("/data/a/one", "/data/b/two", "/data/c/three"));
}

// The other one has gone since, so that the marked one is the last.
TEST_F(OperTest, AFileThatIsGoneDoesNotStay) {
  SaveAndMark("one;two");
  files.Remove("/data/c/three");
  EXPECT_THAT(Do("delete", {}).out, HasSubstr("1 group would keep no file"));
  EXPECT_EQ(Do("delete", {"--yes", "--no-verify"}).status, kNotAllDone);
  EXPECT_TRUE(Exists("/data/a/one") && Exists("/data/b/two"));
}

TEST_F(OperTest, AChangedFileIsSkippedAndNamed) {
  for (const char* changed : {"SAME content", "same content and more"}) {
    SaveAndMark("t*");
    files.SetContent("/data/b/two", changed);
    const ConsoleRun run = Do("delete");
    EXPECT_EQ(run.err, "tresmor-cli: Skipped '/data/b/two': no file of its group that stays was found equal.\n");
    EXPECT_EQ(run.status, kNotAllDone);
    EXPECT_EQ(Data().at("/data/b/two"), changed);
    EXPECT_FALSE(Exists("/data/c/three"));
    EXPECT_THAT(Rows(), testing::Contains("/data/b/two*"));
    files.MakeFile("/data/c/three", "same content");
    files.SetContent("/data/b/two", "same content");
  }
}

TEST_F(OperTest, MovesAndTheTrashAreCheckedToo) {
  SaveAndMark("two");
  files.SetContent("/data/b/two", "SAME content");
  EXPECT_EQ(Do("trash").status, kNotAllDone);
  EXPECT_EQ(Do("move", {"/dest", "--yes"}).status, kNotAllDone);
  EXPECT_TRUE(Exists("/data/b/two"));
  EXPECT_EQ(Do("copy", {"/dest", "--yes"}).status, kRanThrough);
  EXPECT_EQ(AllFiles(files, "/dest").at("/dest/two"), "SAME content");
}

TEST_F(OperTest, WithNoVerifyAChangedFileGoes) {
  SaveAndMark("two");
  files.SetContent("/data/b/two", "SAME content");
  EXPECT_EQ(Do("delete", {"--yes", "--no-verify"}).status, kRanThrough);
  EXPECT_FALSE(Exists("/data/b/two"));
}

TEST_F(OperTest, WhatCannotBeReadProvesNothing) {
  SaveAndMark("x");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/c", "--pattern", "none"});
  files.FailRead("/data/d/x", 2, Errors::Device);
  EXPECT_THAT(Do("delete").err, HasSubstr("Skipped '/data/c/x'"));
  files.FailRead("/data/d/x", 2, Errors::None);
  files.FailOpen("/data/c/x", Errors::PermissionDenied);
  EXPECT_THAT(Do("delete").err, HasSubstr("Skipped '/data/c/x'"));
  EXPECT_TRUE(Exists("/data/c/x"));
}

TEST_F(OperTest, AnyFileThatStaysWillDo) {
  SaveAndMark("three");
  files.SetContent("/data/a/one", "else");
  EXPECT_EQ(Do("delete").status, kRanThrough);
  EXPECT_FALSE(Exists("/data/c/three"));
}

// A name of the marked file itself would go with it.
TEST_F(OperTest, AFileDoesNotStayUnderAnotherSpelling) {
  SaveAndMark("x");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/c", "--pattern", "none"});
  files.Remove("/data/d");
  files.MakeLink("/data/d", "/data/c");
  EXPECT_THAT(Do("delete").err, HasSubstr("Skipped '/data/c/x': no file of its group would stay."));
  files.MakeHardLink("/elsewhere", "/data/c/x");
  EXPECT_THAT(Do("delete").err, HasSubstr("Skipped '/data/c/x': no file of its group would stay."));
  EXPECT_TRUE(Exists("/data/c/x"));
}

TEST_F(OperTest, AHardLinkThatStaysKeepsTheContent) {
  SaveAndMark("x");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/c", "--pattern", "none"});
  files.Remove("/data/d/x");
  files.MakeHardLink("/data/d/x", "/data/c/x");
  EXPECT_EQ(Do("delete").status, kRanThrough);
  EXPECT_THAT(Data().at("/data/d/x"), "pair");
}

TEST_F(OperTest, OtherListsAreNotChecked) {
  SaveAndMark("x", "names");
  EXPECT_EQ(Do("delete", {"--yes", "--list", "names"}).status, kRanThrough);
  EXPECT_FALSE(Exists("/data/c/x") || Exists("/data/d/x"));
  EXPECT_THAT(Rows("names"), Not(testing::Contains(HasSubstr("/x"))));
}

// Of two marked files the second is looked at when the first has gone.
TEST_F(OperTest, EachFileIsComparedRightBeforeItGoes) {
  SaveAndMark("t*");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove) files.SetContent("/data/a/one", "SAME content");
  });
  const ConsoleRun run = Do("delete");
  EXPECT_THAT(run.err, HasSubstr("': no file of its group that stays was found equal.\n"));
  EXPECT_EQ(run.out, "1 file (12 Bytes) deleted for good, 1 skipped.\n");
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_NE(Exists("/data/b/two"), Exists("/data/c/three"));
}

TEST_F(OperTest, AFileThatStaysIsLookedForRightBeforeEachFileGoes) {
  SaveAndMark("t*");
  changes.SetHook([this](const MemoryFileChanges::Call& call) {
    if (call.op == MemoryFileChanges::Op::Remove && Exists("/data/a/one")) files.Remove("/data/a/one");
  });
  const ConsoleRun run = Do("delete", {"--yes", "--no-verify"});
  EXPECT_THAT(run.err, HasSubstr("': no file of its group would stay.\n"));
  EXPECT_NE(Exists("/data/b/two"), Exists("/data/c/three"));
}

// Once the other names have gone a file has one, and a path through a link still leads to no other file.
TEST_F(OperTest, TheLastNameDoesNotStayUnderAnotherSpelling) {
  files.MakeLink("/via", "/data/e");
  files.MakeFile("/data/e/x2", "once more");
  files.MakeHardLink("/data/f/x3", "/data/e/x2");
  files.MakeFile("/home/s.Tresmor",
                 "3.0.0\r\nTrue\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 0 \r\n 1 \r\n 1 \r\n"
                 "/data/*.*|-Yes|-|-|-|-Yes|-True\r\nTrue\r\n 2 \r\n 0 \r\n\r\n 4 \r\n\r\n"
                 "x3|-/data/f/|-         1|-         9|-2004/07/01 00:00:00|-|-True\r\n"
                 "a|-/data/a/|-         1|-         9|-2004/07/01 00:00:00|-|-False\r\n"
                 "x2|-/data/e/|-         2|-         9|-2004/07/01 00:00:00|-|-True\r\n"
                 "x2|-/via/|-         2|-         9|-2004/07/01 00:00:00|-|-False\r\n");
  files.MakeFile("/data/a/a", "once more");
  const ConsoleRun run = Do("delete");
  EXPECT_EQ(run.err, "tresmor-cli: Skipped '/data/e/x2': no file of its group would stay.\n");
  EXPECT_FALSE(Exists("/data/f/x3"));
  EXPECT_TRUE(Exists("/data/e/x2"));
}

// "gone" lies in a folder that will be empty but for a sub-folder, where its equal lies.
class RemoveEmptyTest : public OperTest {
 protected:
  RemoveEmptyTest() {
    files.MakeFile("/data/b/gone", "pair 2");
    files.MakeFile("/data/b/sub/kept", "pair 2");
  }
  ConsoleRun Move(std::vector<std::string> options = {}, const std::string& destination = "/dest") {
    options.insert(options.end(), {destination, "--yes", "--remove-empty"});
    return Do("move", options);
  }
};

TEST_F(RemoveEmptyTest, WhatGoesWithAFolderDoesNotStay) {
  SaveAndMark("gone;two");
  EXPECT_THAT(Do("move", {"/dest", "--remove-empty"}).out,
              AllOf(HasSubstr("1 group would keep no file, so that they are skipped without --allow-all:\n"),
                    HasSubstr(" of 2 files: /data/b/")));
  EXPECT_THAT(Do("move", {"/dest"}).out, Not(HasSubstr("group")));
  const ConsoleRun run = Move();
  EXPECT_EQ(run.err, "tresmor-cli: Skipped '/data/b/gone': no file of its group would stay.\n");
  EXPECT_EQ(run.out, "1 file (12 Bytes) moved to '/dest', 1 skipped.\n");
  EXPECT_EQ(run.status, kNotAllDone);
  EXPECT_TRUE(Exists("/data/b/gone") && Exists("/data/b/sub/kept") && Exists("/dest/two"));
  EXPECT_THAT(Rows(), testing::Contains("/data/b/gone*"));
}

TEST_F(RemoveEmptyTest, WithAllowAllTheFolderGoes) {
  SaveAndMark("gone;two");
  EXPECT_EQ(Move({"--allow-all"}).status, kRanThrough);
  EXPECT_FALSE(Exists("/data/b"));
  EXPECT_TRUE(Exists("/home/me/Trash/files/b/sub/kept"));
}

TEST_F(RemoveEmptyTest, WithoutEmptyingAFolderTheFileBelowStays) {
  SaveAndMark("gone;two");
  EXPECT_EQ(Do("move", {"/dest", "--yes"}).status, kRanThrough);
  EXPECT_TRUE(Exists("/dest/gone") && Exists("/data/b/sub/kept"));
}

TEST_F(RemoveEmptyTest, AFolderThatKeepsAFileTakesNothingAlong) {
  SaveAndMark("gone");  // "two" is there still
  EXPECT_EQ(Move().status, kRanThrough);
  EXPECT_TRUE(Exists("/dest/gone") && Exists("/data/b/sub/kept") && Exists("/data/b/two"));
}

TEST_F(RemoveEmptyTest, AFolderThatMustStayTakesNothingAlong) {
  files.MakeFolder("/data/b/dest");
  SaveAndMark("gone;two");
  EXPECT_EQ(Move({}, "/data/b/dest").status, kRanThrough);
  EXPECT_TRUE(Exists("/data/b/dest/gone") && Exists("/data/b/sub/kept"));
}

TEST_F(RemoveEmptyTest, AnyOtherFileThatStaysWillDo) {
  files.MakeFile("/data/e/kept", "pair 2");
  SaveAndMark("gone;two");
  files.SetContent("/data/b/sub/kept", "other!");  // goes along, so that nobody asks for it
  EXPECT_EQ(Move().status, kRanThrough);
  EXPECT_FALSE(Exists("/data/b"));
  EXPECT_TRUE(Exists("/data/e/kept"));
}

TEST_F(RemoveEmptyTest, APathThroughALinkDoesNotHideTheFolderAbove) {
  files.MakeLink("/via", "/data/b/sub");
  ASSERT_EQ(Find({"/data/b", "/via", "/data/a", "--no-subfolders", "--save", "s.Tresmor", "--quiet"}).status,
            kRanThrough);
  Run({"mark", "s.Tresmor", "--pattern", "gone;two", "--keep", "none"});
  ASSERT_THAT(Rows(), testing::Contains("/via/kept"));
  EXPECT_THAT(Move().err, HasSubstr("Skipped '/data/b/gone': no file of its group would stay."));
  EXPECT_TRUE(Exists("/data/b/sub/kept") && Exists("/data/b/gone"));
}

TEST_F(RemoveEmptyTest, WhatWasSkippedDoesNotGoWithAFolderEither) {
  files.Remove("/data/b/gone");
  files.MakeFile("/data/e/kept", "pair 2");
  SaveAndMark("two;kept");
  Run({"mark", "s.Tresmor", "--clear", "--folder", "/data/b", "--sub-folders", "--pattern", "none"});
  files.SetContent("/data/b/sub/kept", "other!");
  const ConsoleRun run = Move();
  EXPECT_EQ(run.err, "tresmor-cli: Skipped '/data/b/sub/kept': no file of its group that stays was found equal.\n");
  EXPECT_TRUE(Exists("/dest/two") && Exists("/data/b/sub/kept"));
  EXPECT_THAT(Rows(), testing::Contains("/data/b/sub/kept*"));
}

}  // namespace
}  // namespace tresmor
