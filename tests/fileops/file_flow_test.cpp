// The commands on marked files down to the disk: the dialog over what really deletes, moves and copies.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <future>

#include "fileops/file_commands.h"
#include "fileops/fileops_world.h"
#include "fileops/scripted_file_forms.h"
#include "transfer/transfer_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::Mark;

class FileFlowTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  explicit FileFlowTest(PathStyle style = PathStyle::Posix(), const std::string& home = "/home/me")
      : FileOpsWorld(style),
        log(files, changes, JoinPath(home, "undo", style)),
        trashFolder(JoinPath(home, "T", style)) {
    trash.home = {{trashFolder, ""}};
    for (const char* name : {"files", "info"}) files.MakeFolder(JoinPath(trashFolder, name, style));
  }

  // A marked file, whose bytes are its path.
  void AddMarked(const std::string& path) {
    files.MakeFile(path, path);
    AddRow(path);
  }
  std::string Bytes(const std::string& path) const {
    Errors failure = Errors::None;
    const auto reader = files.Open(path, failure);
    if (!reader) return "nothing";
    std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
    reader->ReadAt(0, bytes);
    return bytes;
  }
  bool Stands(const std::string& path) const {
    FileStat stat;
    return files.Stat(path, stat) == Errors::None;
  }
  std::vector<std::string> Names(const std::string& folder) const {
    FolderListing listing;
    EXPECT_EQ(files.List(folder, listing), Errors::None);
    std::vector<std::string> names;
    for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
    std::ranges::sort(names);
    return names;
  }
  std::vector<std::string> Trashed() const { return Names(JoinPath(trashFolder, "files", files.Style())); }

  // The next dialog is filled and "Yes" clicked, which closes it.
  void Yes(const std::function<void(FrmFileOper&)>& fill) {
    forms.deeds.push_back([fill](FrmFileOper& form) {
      fill(form);
      form.OKButton.OnClick();
    });
  }
  static void Tick(std::initializer_list<CheckBox*> boxes) {
    for (CheckBox* const box : boxes) box->Value = kTicked;
  }
  void ExpectQuestion(const std::string& text, BoxAnswer answer) {
    dialogs.boxes.push_back({text, "Deleting files", BoxIcon::Question, BoxButtons::YesNo, answer});
  }
  void ExpectFailed(int code, const std::string& description) {
    ExpectBox("File operations failed. Error Code: " + std::to_string(code) + "\r\n\r\n" + description);
  }
  // The button of the progress is clicked while `path` is on its way to its new place.
  void CancelAt(const std::string& path) {
    changes.SetHook([this, path](const MemoryFileChanges::Call& call) {
      if (call.op != MemoryFileChanges::Op::Rename || call.from != path) return;
      onItsWay.set_value();
      clicked.get_future().wait();
    });
    events.onPump = [this] {
      if (events.pumps > 1) return;
      onItsWay.get_future().wait();
      EXPECT_TRUE(commands.frmFileProgress.Visible());
      commands.frmFileProgress.cmdCancel.OnClick();
      clicked.set_value();
    };
  }
  std::int64_t Undone() {
    ScriptedWatch watch;
    return Undo(files, changes, log).Run(watch).putBack;
  }

  MemoryFileChanges changes{files};
  FakeTrashPlaces trash;
  UndoLog log;
  FileExecutor executor{files, changes, trash, log};
  const std::string trashFolder;
  tests::ScriptedFileForms forms;
  FileCommands commands{results, preview, {{files, shell, executor, dialogs}, events, forms}};
  std::promise<void> onItsWay;
  std::promise<void> clicked;
};

class WindowsFileFlowTest : public FileFlowTest {
 protected:
  WindowsFileFlowTest() : FileFlowTest(PathStyle::Windows(), "C:\\Me") {}
};

// --- Deleting

TEST_F(FileFlowTest, ADeleteAsksMovesToTheTrashAndCanBeUndone) {
  AddMarked("/data/a");
  AddMarked("/data/b");
  AddFile("/data/c", Mark::Off);
  ExpectQuestion("Move these 2 items to the recycle bin?", BoxAnswer::Yes);
  Yes([](FrmFileOper&) {});
  commands.DelFile();
  EXPECT_THAT(Trashed(), ElementsAre("a", "b"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/c"));
  EXPECT_EQ(Undone(), 2);
  EXPECT_EQ(Bytes("/data/a"), "/data/a");
}

TEST_F(FileFlowTest, ADeleteThatIsDeclinedTouchesNothing) {
  AddMarked("/data/a");
  ExpectQuestion("Delete this item permanently? This can't be undone.", BoxAnswer::No);
  ExpectFailed(1223, "Cancelled: nothing was deleted.");
  Yes([](FrmFileOper& form) { form.optDelPermanently.Value = true; });
  commands.DelFile();
  EXPECT_TRUE(Stands("/data/a"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a*"));
  EXPECT_THAT(changes.Calls(), IsEmpty());
}

TEST_F(FileFlowTest, FoldersThatADeleteForGoodEmptiesLieInTheTrash) {
  AddMarked("/data/in/a");
  AddMarked("/data/in/b");
  AddMarked("/data/kept/c");
  files.MakeFile("/data/kept/d", "");
  ExpectQuestion("Delete these 3 items permanently? This can't be undone.", BoxAnswer::Yes);
  ExpectQuestion("Move this item to the recycle bin?", BoxAnswer::Yes);
  Yes([](FrmFileOper& form) {
    form.optDelPermanently.Value = true;
    Tick({&form.chkRemoveEmptyDir});
  });
  commands.DelFile();
  EXPECT_THAT(Trashed(), ElementsAre("in"));
  EXPECT_THAT(Names("/home/me/T/files/in"), IsEmpty());
  EXPECT_THAT(Names("/data"), ElementsAre("kept"));
  EXPECT_THAT(Rows(lst), IsEmpty());
  EXPECT_EQ(Undone(), 1);
  EXPECT_THAT(Names("/data/in"), IsEmpty());
}

// --- Moving and copying

TEST_F(FileFlowTest, AMoveGoesToTheFolderThatWasBrowsed) {
  files.MakeFolder("/keep");
  AddMarked("/a/f.txt");
  AddMarked("/b/f.txt");
  dialogs.folders = {{"Select destination folder", "/home/me", "/keep"}};
  Yes([](FrmFileOper& form) {
    form.cmdBrowse.OnClick();
    Tick({&form.chkOpenDestDir});
  });
  commands.MoveFile();
  EXPECT_EQ(Bytes("/keep/f.txt"), "/a/f.txt");
  EXPECT_EQ(Bytes("/keep/f (2).txt"), "/b/f.txt");
  EXPECT_THAT(Rows(lst), IsEmpty());
  EXPECT_THAT(shell.opened, ElementsAre("/keep"));
  EXPECT_THAT(Names("/a"), IsEmpty());  // it wasn't asked to go
  EXPECT_EQ(Undone(), 2);
}

TEST_F(WindowsFileFlowTest, FilesOfTwoDrivesThatMeetInOnePlaceAreBothKept) {
  files.MakeFolder("D:\\keep");
  AddMarked("C:\\x\\f");
  AddMarked("E:\\x\\f");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "D:\\keep";
    Tick({&form.chkDirStruct, &form.chkRemoveEmptyDir, &form.chkYesToAll});
  });
  commands.MoveFile();
  EXPECT_EQ(Bytes("D:\\keep\\x\\f"), "C:\\x\\f");
  EXPECT_EQ(Bytes("D:\\keep\\x\\f (2)"), "E:\\x\\f");
  EXPECT_FALSE(Stands("C:\\x") || Stands("E:\\x"));
  EXPECT_THAT(Trashed(), ElementsAre("x", "x (2)"));
}

TEST_F(FileFlowTest, AnEmptiedFolderThatNewcomersLieBelowStays) {
  AddMarked("/keep/data/in/a");
  AddMarked("/data/in/sub/b");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/keep";
    Tick({&form.chkDirStruct, &form.chkRemoveEmptyDir, &form.chkYesToAll});
  });
  commands.MoveFile();
  EXPECT_EQ(Bytes("/keep/data/in/sub/b"), "/data/in/sub/b");
  EXPECT_EQ(Bytes("/keep/keep/data/in/a"), "/keep/data/in/a");
  EXPECT_THAT(Trashed(), ElementsAre("sub"));
}

TEST_F(FileFlowTest, ACopyMakesItsFoldersAndKeepsItsRows) {
  files.MakeFolder("/keep");
  AddMarked("/data/in/a");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/keep";
    Tick({&form.chkDirStruct, &form.chkOpenDestDir});
  });
  commands.CopyFile();
  EXPECT_EQ(Bytes("/keep/data/in/a"), "/data/in/a");
  EXPECT_EQ(Bytes("/data/in/a"), "/data/in/a");
  EXPECT_THAT(Rows(lst), ElementsAre("/data/in/a*"));
  EXPECT_THAT(shell.opened, ElementsAre("/keep"));
}

TEST_F(FileFlowTest, ADestinationThatIsAFileIsToldByTheOperation) {
  files.MakeFile("/file", "precious");
  AddMarked("/data/a");
  ExpectFailed(183, "/data/a could not be moved: /file is a link or a file and no folder.");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/file";
    Tick({&form.chkOpenDestDir});
  });
  commands.MoveFile();
  EXPECT_EQ(Bytes("/file"), "precious");
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a*"));
  EXPECT_THAT(shell.opened, IsEmpty());
}

TEST_F(FileFlowTest, AFolderThatIsLeftAgainOnThePathIsNoneBelowTheDestination) {
  files.MakeFolder("/keep");
  files.MakeFolder("/data/in");
  files.MakeFile("/data/a", "bytes");
  AddRow("/data/in/../a");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/keep";
    Tick({&form.chkDirStruct});
  });
  commands.MoveFile();
  EXPECT_EQ(Bytes("/keep/data/a"), "bytes");
  EXPECT_THAT(Names("/keep/data"), ElementsAre("a"));
  EXPECT_THAT(Rows(lst), IsEmpty());
}

TEST_F(FileFlowTest, OfAFolderBehindALinkTheFilesGoAlone) {
  files.MakeFile("/real/a", "bytes");
  files.MakeLink("/link", "/real");
  AddRow("/link/a");
  Yes([](FrmFileOper& form) { Tick({&form.chkRemoveEmptyDir, &form.chkYesToAll}); });
  commands.DelFile();
  EXPECT_THAT(Trashed(), ElementsAre("a"));
  EXPECT_TRUE(Stands("/link"));
  EXPECT_THAT(Names("/real"), IsEmpty());
  EXPECT_EQ(Undone(), 1);
  EXPECT_EQ(Bytes("/link/a"), "bytes");
}

// --- The cancel

TEST_F(FileFlowTest, AfterACancelEmptiedFoldersStillGoAndTheRestKeepsItsMarks) {
  files.MakeFolder("/keep");
  for (const char* path : {"/one/a", "/two/b", "/two/c"}) AddMarked(path);
  CancelAt("/one/a");
  ExpectFailed(1223, "Cancelled: 1 of 3 were moved.");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/keep";
    Tick({&form.chkOpenDestDir, &form.chkRemoveEmptyDir});
  });
  ExpectQuestion("Move this item to the recycle bin?", BoxAnswer::Yes);
  commands.MoveFile();
  EXPECT_THAT(Names("/keep"), ElementsAre("a"));
  EXPECT_THAT(Trashed(), ElementsAre("one"));
  EXPECT_THAT(Rows(lst), ElementsAre("/two/b*", "/two/c*"));
  EXPECT_THAT(shell.opened, IsEmpty());
}

TEST_F(FileFlowTest, ACancelEndsOneBatchAndTheLastOneDecides) {
  constexpr int kFiles = 2001;
  files.MakeFolder("/keep");
  for (int i = 0; i < kFiles; ++i) AddMarked("/data/" + std::to_string(i));
  CancelAt("/data/0");
  ExpectFailed(1223, "Cancelled: 1 of 2000 were moved.");
  Yes([](FrmFileOper& form) {
    form.txtDestination.Text = "/keep";
    Tick({&form.chkOpenDestDir});
  });
  commands.MoveFile();
  EXPECT_THAT(Names("/keep"), ElementsAre("0", "2000"));
  EXPECT_THAT(Rows(lst), SizeIs(kFiles - 2));
  EXPECT_THAT(shell.opened, ElementsAre("/keep"));
}

}  // namespace
}  // namespace tresmor
