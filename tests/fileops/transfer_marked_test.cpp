#include "fileops/transfer_marked.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <future>

#include "fileops/fileops_world.h"

namespace tresmor {
namespace {

using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TransferTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  explicit TransferTest(PathStyle style = PathStyle::Posix()) : FileOpsWorld(style) {}

  FrmFileProgress frm;
  FileJob job{frm, events, dialogs};
  Transfer transfer{job, preview, {files, shell, operations, dialogs}};
};

class WindowsTransferTest : public TransferTest {
 protected:
  WindowsTransferTest() : TransferTest(PathStyle::Windows()) {}
};

// --- Where files go

TEST(MapDestPath, DropsTheDriveOfAPath) {
  const PathStyle style = PathStyle::Windows();
  EXPECT_EQ(MapDestPath("D:\\keep", "C:\\a\\b\\f.txt", style), "D:\\keep\\a\\b\\f.txt");
  EXPECT_EQ(MapDestPath("D:\\keep\\", "C:\\f.txt", style), "D:\\keep\\f.txt");
  EXPECT_EQ(MapDestPath("D:\\keep", "E:\\a\\f.txt", style), "D:\\keep\\a\\f.txt");
  EXPECT_EQ(MapDestPath("D:\\keep", "\\\\srv\\share\\d\\f.txt", style), "D:\\keep\\\\srv\\share\\d\\f.txt");
  EXPECT_EQ(MapDestPath("D:\\keep", "f.txt", style), "D:\\keep\\f.txt");
}

TEST(MapDestPath, DropsOneLeadingSeparator) {
  const PathStyle style = PathStyle::Posix();
  EXPECT_EQ(MapDestPath("/keep", "/a/b/f.txt", style), "/keep/a/b/f.txt");
  EXPECT_EQ(MapDestPath("/keep/", "/f.txt", style), "/keep/f.txt");
  EXPECT_EQ(MapDestPath("/keep", "//srv/f.txt", style), "/keep//srv/f.txt");
  EXPECT_EQ(MapDestPath("/keep", "a/f.txt", style), "/keep/f.txt");
  EXPECT_EQ(MapDestPath("/keep", "/a\\b/f", style), "/keep/a\\b/f");
}

// --- One operation

TEST_F(TransferTest, EachWishIsAFlag) {
  transfer.ShFileOper({.wFunc = FO_MOVE, .pFrom = "/a\0\0"s, .pTo = "/b"s, .destination = "/c"});
  transfer.ShFileOper({.wFunc = FO_DELETE, .pFrom = "/a\0\0"s, .bUndo = true});
  transfer.ShFileOper({.wFunc = FO_COPY, .pFrom = "/a\0\0"s, .pTo = "/b\0\0"s, .bMultiDest = true});
  transfer.ShFileOper({.wFunc = FO_COPY, .pFrom = "/a\0\0"s, .pTo = "/b"s, .bYesToAll = true});
  ASSERT_THAT(operations.calls, SizeIs(4));
  EXPECT_EQ(operations.calls[0].fFlags, 0x0008);
  EXPECT_EQ(operations.calls[1].fFlags, 0x0048);
  EXPECT_EQ(operations.calls[2].fFlags, 0x0009);
  EXPECT_EQ(operations.calls[3].fFlags, 0x0018);
  EXPECT_EQ(operations.calls[0].wFunc, 1U);
  EXPECT_EQ(operations.calls[0].pFrom, "/a\0\0"s);
  EXPECT_EQ(operations.calls[0].pTo, "/b");
  EXPECT_EQ(operations.calls[0].destination, "/c");
}

TEST_F(TransferTest, AFailureIsToldWithItsDescription) {
  ExpectFailure(OperationCode::DiskFull, "/b/a: The disk is full.");
  EXPECT_EQ(transfer.ShFileOper({.wFunc = FO_COPY, .pFrom = "/a\0\0"s, .pTo = "/b"}), 112);
}

TEST_F(TransferTest, ACancelIsToldLikeAnyFailure) {
  ExpectFailure(OperationCode::Cancelled, "");
  EXPECT_EQ(transfer.ShFileOper({.wFunc = FO_DELETE, .pFrom = "/a\0\0"s}), 1223);
}

TEST_F(TransferTest, TheProgressSaysWhatIsDone) {
  std::vector<std::string> titles;
  frm.Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::Visible && notice.when == Notice::When::After && frm.Visible()) {
      titles.push_back(frm.Caption());
    }
  });
  for (const std::uint32_t wFunc : {FO_MOVE, FO_COPY, FO_DELETE}) transfer.ShFileOper({.wFunc = wFunc});
  EXPECT_THAT(titles, ElementsAre("Moving files", "Copying files", "Deleting files"));
}

// --- Batches

TEST_F(TransferTest, WithoutMarksNothingIsDone) {
  AddRow("/data/f", tests::Mark::Off);
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 0);
  EXPECT_THAT(operations.calls, IsEmpty());
}

TEST_F(TransferTest, TwoThousandFilesAreOneBatch) {
  AddRows(2000);
  ExpectFailure(OperationCode::Denied, "no");
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 5);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), SizeIs(2000));
}

TEST_F(TransferTest, APathWithANulIsListedAsOneThatIsNoPath) {
  AddRow("/data/a");
  AddRow("/data/one\0/data/two"s);
  transfer.TransferMarked(lst, {.wFunc = FO_MOVE, .bDirStruct = true, .destPath = "/d"});
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/data/a", "(NUL in its path) /data/one\\0/data/two"));
  EXPECT_THAT(operations.Paths(operations.calls[0].pTo), ElementsAre("/d/data/a", "/d/data/one\\0/data/two"));
}

TEST_F(TransferTest, APathThatStandsTwiceIsListedOnceWhicheverBatchItIsIn) {
  AddRows(1999);
  for (const char* path : {"/data/7", "/data/0", "/Data/0", "/data/7"}) AddRow(path);
  transfer.TransferMarked(lst, {.wFunc = FO_MOVE, .bDirStruct = true, .destPath = "/d"});
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(Sources(0), SizeIs(1999));
  EXPECT_THAT(Sources(1), ElementsAre("/Data/0"));
  EXPECT_EQ(operations.calls[1].pTo, "/d/Data/0\0\0"s);
}

TEST_F(TransferTest, ABatchOfNothingNewIsNone) {
  AddRows(2000);
  AddRow("/data/0");
  ExpectFailure(OperationCode::Denied, "no");
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 5);
  EXPECT_THAT(operations.calls, SizeIs(1));
}

TEST_F(TransferTest, OneMoreIsABatchOfItsOwn) {
  AddRow("/data/unmarked", tests::Mark::Off);
  AddRows(2001);
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 0);
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(Sources(0), SizeIs(2000));
  EXPECT_EQ(Sources(0).back(), "/data/1999");
  EXPECT_THAT(Sources(1), ElementsAre("/data/2000"));
}

TEST_F(TransferTest, AFailureOfAnEarlierBatchIsToldAndForgotten) {
  AddRows(4000);
  ExpectFailure(OperationCode::NotFound, "gone");
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 0);
  EXPECT_THAT(operations.calls, SizeIs(2));
}

TEST_F(TransferTest, AFailureOfTheLastBatchIsTheResult) {
  AddRows(4000);
  operations.results.push_back({});
  ExpectFailure(OperationCode::Denied, "no");
  EXPECT_EQ(transfer.TransferMarked(lst, {.wFunc = FO_DELETE}), 5);
}

TEST_F(TransferTest, EveryBatchNamesItsOwnDestinations) {
  AddRows(2001);
  transfer.TransferMarked(lst, {.wFunc = FO_COPY, .bDirStruct = true, .destPath = "/keep"});
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(operations.Paths(operations.calls[0].pTo), SizeIs(2000));
  EXPECT_EQ(operations.calls[1].pTo, "/keep/data/2000\0\0"s);
}

TEST_F(TransferTest, AMoveWithoutStructureNamesTheFolderAsItStands) {
  AddRow("/a/f");
  AddRow("/b/f");  // the newcomer is renamed, as the flag says
  transfer.TransferMarked(lst, {.wFunc = FO_MOVE, .destPath = "/keep/"});
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].pFrom, "/a/f\0/b/f\0\0"s);
  EXPECT_EQ(operations.calls[0].pTo, "/keep/");
  EXPECT_EQ(operations.calls[0].destination, "/keep/");
  EXPECT_EQ(operations.calls[0].fFlags, 0x0008);
}

TEST_F(WindowsTransferTest, FilesOfTwoDrivesMayMeetInOnePlace) {
  AddRow("C:\\x\\f");
  AddRow("E:\\x\\f");
  transfer.TransferMarked(lst, {.wFunc = FO_MOVE, .bDirStruct = true, .bYesToAll = true, .destPath = "D:\\keep"});
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].pTo, "D:\\keep\\x\\f\0D:\\keep\\x\\f\0\0"s);
  EXPECT_EQ(operations.calls[0].destination, "D:\\keep");
  EXPECT_EQ(operations.calls[0].fFlags, 0x0019);
}

TEST_F(TransferTest, ADeleteHasNoDestination) {
  AddRow("/a/f");
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE, .bUndo = true});
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].pTo, "");
  EXPECT_EQ(operations.calls[0].destination, "");
  EXPECT_EQ(operations.calls[0].fFlags, 0x0048);
}

TEST_F(TransferTest, ThePreviewLetsGoOfItsFileFirst) {
  AddRow("/a/f.jpg");
  preview.imgPreview.File = "/a/f.jpg";
  preview.txtFilename.Text = "f.jpg";
  preview.txtFilename.ToolTipText = "/a/f.jpg";
  AtEachPump([&] { EXPECT_EQ(preview.imgPreview.File(), ""); });
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE});
  EXPECT_EQ(preview.imgPreview.File() + preview.txtFilename.Text() + preview.txtFilename.ToolTipText(), "");
}

TEST_F(TransferTest, RowsThatComeMeanwhileAreLeftAlone) {
  AddRows(2001);
  AtEachPump([&] { AddRow("/data/late"); });
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE});
  EXPECT_GT(lst.Count(), 2001);
  EXPECT_THAT(Sources(1), ElementsAre("/data/2000"));
}

// --- Emptied folders

TEST_F(TransferTest, EmptiedFoldersGoToTheTrashOnceForEachRow) {
  files.MakeFolder("/a");
  files.MakeFolder("/b c");
  AddRow("/a/1");
  AddRow("/b c/2");
  AddRow("/a/3");
  files.ClearCalls();
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].wFunc, FO_DELETE);
  EXPECT_EQ(operations.calls[0].pFrom, "/a\0/b c\0/a\0\0"s);
  EXPECT_EQ(operations.calls[0].pTo, "");
  EXPECT_EQ(operations.calls[0].fFlags, 0x0048);
  const auto calls = files.Calls();
  EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                          [](const MemoryFileSystem::Call& call) { return call.op == MemoryFileSystem::Op::List; }),
            2);
}

TEST_F(TransferTest, YesToAllHoldsForFoldersToo) {
  files.MakeFolder("/a");
  AddRow("/a/1");
  transfer.RmEmptyDirs(lst, {}, true);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].fFlags, 0x0058);
}

TEST_F(TransferTest, AFolderOfFoldersAloneIsEmpty) {
  files.MakeFolder("/a/sub");
  files.MakeFile("/a/sub/f", "");
  AddRow("/a/1");
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/a"));
}

TEST_F(TransferTest, AnyOtherEntryKeepsItsFolder) {
  files.MakeFile("/a/stuck", "");
  files.MakeFile("/b/.hidden", "");
  files.MakeLink("/c/link", "/nowhere");
  files.MakeFifo("/d/fifo");
  files.MakeFolder("/e");
  files.SetUnreadable("/e");
  for (const char* path : {"/a/stuck", "/b/1", "/c/1", "/d/1", "/e/1", "/gone/1"}) AddRow(path);
  transfer.RmEmptyDirs(lst, {}, false);
  EXPECT_THAT(operations.calls, IsEmpty());
}

TEST_F(TransferTest, OnlyTheFoldersOfMarkedRowsAreLookedAtAndNotThoseAbove) {
  files.MakeFolder("/a/b/c");
  files.MakeFolder("/d");
  AddRow("/a/b/c/1");
  AddRow("/d/1", tests::Mark::Off);
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/a/b/c"));
}

TEST_F(TransferTest, TheRootAndWhatHoldsTheDestinationStay) {
  files.MakeFolder("/a/keep");
  files.MakeFolder("/keeper");
  files.MakeFolder("/home/me");
  shell.kept = {"/home/me"};
  for (const char* path : {"/1", "/a/1", "/a/keep/1", "/home/1", "/home/me/1", "/keeper/1"}) AddRow(path);
  transfer.RmEmptyDirs(lst, {"/a/keep"}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/keeper"));
}

TEST_F(TransferTest, TheTrashAndTheFoldersInItStay) {
  files.MakeFolder("/usb/.Trash/7/files/in");
  files.MakeFolder("/usb/in");
  for (const char* path : {"/usb/.Trash/7/files/in/1", "/usb/.Trash/7/files/1", "/usb/.Trash/1", "/usb/in/1"}) {
    AddRow(path);
  }
  operations.stuck = {"/usb/in"};
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/usb/in"));
}

TEST_F(TransferTest, ALinkToAFolderStaysAndSoDoesTheFolder) {
  files.MakeFolder("/real/sub");
  files.MakeLink("/link", "/real");
  for (const char* path : {"/link/1", "/link/sub/1", "/real/sub/../1"}) AddRow(path);
  operations.stuck = {"/link/sub"};
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_THAT(Sources(0), ElementsAre("/link/sub"));
}

TEST_F(WindowsTransferTest, FoldersLoseTheirSeparatorInEitherStyle) {
  files.MakeFolder("C:\\a b");
  AddRow("C:\\a b\\1");
  transfer.RmEmptyDirs(lst, {}, false);
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].pFrom, "C:\\a b\0\0"s);
}

TEST_F(TransferTest, ACancelWhileFoldersAreLookedForLeavesThemAllAndIsTold) {
  files.MakeFolder("/a");
  AddRow("/a/1");
  AddRow("/a/2");
  // The second row comes only after the click.
  std::promise<void> clicked;
  std::promise<void> asked;
  files.SetHook([&](const MemoryFileSystem::Call& call) {
    if (call.op != MemoryFileSystem::Op::List) return;
    asked.set_value();
    clicked.get_future().wait();
  });
  events.onPump = [&] {
    if (events.pumps > 1) return;
    asked.get_future().wait();
    frm.cmdCancel.OnClick();
    clicked.set_value();
  };
  ExpectBox("File operations failed. Error Code: 1223\r\n\r\nCancelled: no empty folder was moved to the trash.");
  transfer.RmEmptyDirs(lst, {}, false);
  EXPECT_THAT(operations.calls, IsEmpty());
  EXPECT_THAT(dialogs.boxes, IsEmpty());
}

}  // namespace
}  // namespace tresmor
