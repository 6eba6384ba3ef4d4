// The commands on marked files over the executor that the programs use.
#include <gmock/gmock.h>

#include "fileops/fileops_world.h"
#include "transfer/transfer_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

class DeleteWithFoldersTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  DeleteWithFoldersTest() {
    for (const char* folder : {"/home/me/Trash/files", "/home/me/Trash/info"}) files.MakeFolder(folder);
  }
  MemoryFileChanges changes{files};
  FakeTrashPlaces trash;
  UndoLog log{files, changes, "/home/me/state/undo"};
  FileExecutor executor{files, changes, trash, log};
  FrmFileProgress frm;
  FileJob job{frm, events, dialogs};
  Transfer transfer{job, preview, {files, shell, executor, dialogs}};
  ScriptedWatch watch;
};

TEST_F(DeleteWithFoldersTest, FilesGoForGoodAndTheirEmptiedFoldersToTheTrash) {
  AddFile("/data/trashed");
  executor.BeginUndoStep().reset();
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE, .bUndo = true, .bYesToAll = true});
  lst.SetChecked(1, false);
  AddFile("/data/in/one");
  AddFile("/data/in/two");
  AddFile("/data/kept/three");
  files.MakeFile("/data/kept/four", "x");
  executor.BeginUndoStep().reset();
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE, .bUndo = false, .bYesToAll = true});
  transfer.RmEmptyDirs(lst, {}, true);
  FolderListing listing;
  ASSERT_EQ(files.List("/home/me/Trash/files", listing), Errors::None);
  EXPECT_EQ(listing.names, "trashedin");
  FileStat stat;
  EXPECT_EQ(files.Stat("/data/in", stat), Errors::FileNotFound);
  // What went before can still be put back.
  EXPECT_EQ(Undo(files, changes, log).Run(watch).putBack, 2);
  EXPECT_THAT(AllFiles(files), ElementsAre(testing::Pair("/data/kept/four", "x"), testing::Pair("/data/trashed", "x")));
  EXPECT_EQ(files.Stat("/data/in", stat), Errors::None);
}

}  // namespace
}  // namespace tresmor
