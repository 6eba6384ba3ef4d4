#include "fileops/file_commands.h"

#include <gmock/gmock.h>

#include <functional>

#include "fileops/fileops_world.h"
#include "fileops/scripted_file_forms.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::Mark;

using Command = void (FileCommands::*)();

class FileCommandsTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  // The next dialog is filled and "Yes" clicked.
  void Yes(const std::function<void(FrmFileOper&)>& fill = [](FrmFileOper&) {}) {
    forms.deeds.push_back([fill](FrmFileOper& frm) {
      fill(frm);
      frm.OKButton.OnClick();
    });
  }
  // The same with a destination.
  void YesTo(
      const std::string& destination, const std::function<void(FrmFileOper&)>& fill = [](FrmFileOper&) {}) {
    Yes([=](FrmFileOper& frm) {
      frm.txtDestination.Text = destination;
      fill(frm);
    });
  }
  void No() {
    forms.deeds.push_back([](FrmFileOper& frm) { frm.CancelButton.OnClick(); });
  }

  tests::ScriptedFileForms forms;
  FileCommands commands{results, preview, {{files, shell, operations, dialogs}, events, forms}};
  FrmFileOper& frm = commands.frmFileOper;
};

// --- The gates

TEST_F(FileCommandsTest, WithoutMarksABoxAsksForThem) {
  AddFile("/data/a", Mark::Off);
  const std::vector<std::pair<Command, std::string>> gates = {
      {&FileCommands::DelFile, "Please mark files before deletion."},
      {&FileCommands::MoveFile, "Please mark files before moving files."},
      {&FileCommands::CopyFile, "Please mark files before copying files."}};
  for (const auto& [gate, text] : gates) {
    ExpectBox(text);
    (commands.*gate)();
    EXPECT_THAT(dialogs.boxes, IsEmpty());
  }
}

TEST_F(FileCommandsTest, WithoutRowsNothingHappens) {
  AddRow("/data/a", Mark::On, ResultList::ZeroSize);  // not the list on show
  commands.DelFile();
  commands.MoveFile();
  commands.CopyFile();
}

TEST_F(FileCommandsTest, AMarkOnTheLastRowIsEnough) {
  AddFile("/data/a", Mark::Off);
  AddFile("/data/b", Mark::Off);
  AddFile("/data/c");
  for (const Command gate : {&FileCommands::DelFile, &FileCommands::MoveFile, &FileCommands::CopyFile}) {
    No();
    (commands.*gate)();
    EXPECT_TRUE(frm.lblMsg.Caption().ends_with("?\r\n/data/c\r\n"));
  }
  EXPECT_EQ(frm.OperMode, kCopyMode);
  EXPECT_THAT(operations.calls, IsEmpty());
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a", "/data/b", "/data/c*"));
}

// --- The destination

TEST_F(FileCommandsTest, WithoutADestinationTheDialogStays) {
  AddFile("/data/a");
  int focused = 0;
  frm.txtDestination.Listen([&](const Notice& notice) { focused += notice.what == Notice::What::Focus; });
  const auto tryIt = [&](FrmFileOper& form) {
    form.OKButton.OnClick();
    EXPECT_TRUE(form.Visible());
    form.txtDestination.Text = "/nowhere";
    form.OKButton.OnClick();
    EXPECT_TRUE(form.Visible());
    form.CancelButton.OnClick();
    form.DestPath = "";
  };
  for (int i = 0; i < 2; ++i) {
    ExpectBox("Destination path does not exist, please select a destination folder by clicking Browse button.",
              BoxIcon::Exclamation);
  }
  forms.deeds.push_back(tryIt);
  commands.MoveFile();
  for (int i = 0; i < 2; ++i) {
    ExpectBox("Please select a destination folder by clicking Browse button.", BoxIcon::Exclamation);
  }
  forms.deeds.push_back(tryIt);
  commands.CopyFile();
  EXPECT_EQ(focused, 4);
  EXPECT_THAT(operations.calls, IsEmpty());
  EXPECT_THAT(operations.callsAtUndoSteps, IsEmpty());
}

TEST_F(FileCommandsTest, ADestinationThatIsAFileIsTheOperationsMatter) {
  AddFile("/data/a");
  files.MakeFile("/file", "");
  YesTo("/file");
  commands.CopyFile();
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].pTo, "/file");
}

TEST_F(FileCommandsTest, BrowsingBeginsAtTheDestination) {
  AddFile("/data/a");
  dialogs.folders = {{"Select destination folder", "/home/me", std::nullopt},
                     {"Select destination folder", "/home/me", "/keep"},
                     {"Select destination folder", "/keep", std::nullopt}};
  forms.deeds.push_back([](FrmFileOper& form) {
    form.cmdBrowse.OnClick();
    EXPECT_EQ(form.DestPath, "/home/me");
    EXPECT_EQ(form.txtDestination.Text(), "");
    form.txtDestination.Text = "typed";
    form.cmdBrowse.OnClick();
    EXPECT_EQ(form.DestPath, "/keep");
    EXPECT_EQ(form.txtDestination.Text(), "/keep");
    form.txtDestination.Text = "typed";
    form.cmdBrowse.OnClick();
    EXPECT_EQ(form.DestPath, "/keep");
    EXPECT_EQ(form.txtDestination.Text(), "typed");
    form.CancelButton.OnClick();
  });
  commands.MoveFile();
}

TEST_F(FileCommandsTest, TheNextUseShowsTheLastValues) {
  AddFile("/data/a");
  files.MakeFolder("/keep");
  YesTo("/keep", [](FrmFileOper& form) {
    form.chkDirStruct.Value = kTicked;
    form.chkYesToAll.Value = kTicked;
  });
  commands.CopyFile();
  forms.deeds.push_back([](FrmFileOper& form) {
    EXPECT_EQ(form.txtDestination.Text(), "/keep");
    EXPECT_TRUE(form.chkDirStruct.Ticked() && form.chkYesToAll.Ticked());
    form.txtDestination.Text = "forgotten";
    form.CancelButton.OnClick();
  });
  commands.MoveFile();
  forms.deeds.push_back([](FrmFileOper& form) {
    EXPECT_EQ(form.txtDestination.Text(), "/keep");
    form.CancelButton.OnClick();
  });
  commands.CopyFile();
}

TEST_F(FileCommandsTest, TicksAndTheWayOfDeletingOutliveEveryOtherUse) {
  AddFile("/data/a");
  files.MakeFolder("/keep");
  const std::vector<Command> all = {&FileCommands::DelFile, &FileCommands::MoveFile, &FileCommands::CopyFile,
                                    &FileCommands::DelFile};
  for (const bool value : {true, false}) {
    forms.deeds.push_back([value](FrmFileOper& form) {
      (value ? form.optDelPermanently : form.optRecycleBin).Value = true;
      for (CheckBox* box : {&form.chkRemoveEmptyDir, &form.chkDirStruct, &form.chkOpenDestDir, &form.chkYesToAll}) {
        box->Value = value ? kTicked : kOff;
      }
      form.CancelButton.OnClick();
    });
    commands.DelFile();
    for (const Command command : all) {
      forms.deeds.push_back([value](FrmFileOper& form) {
        EXPECT_EQ(form.optDelPermanently.Value(), value);
        EXPECT_EQ(form.optRecycleBin.Value(), !value);
        EXPECT_EQ(form.chkRemoveEmptyDir.Ticked(), value);
        EXPECT_EQ(form.chkDirStruct.Ticked(), value);
        EXPECT_EQ(form.chkOpenDestDir.Ticked(), value);
        EXPECT_EQ(form.chkYesToAll.Ticked(), value);
        form.CancelButton.OnClick();
      });
      (commands.*command)();
    }
  }
}

TEST_F(FileCommandsTest, ADeleteTakesTheHiddenDestinationOver) {
  AddFile("/data/a");
  AddFile("/data/b", Mark::Off);
  files.MakeFolder("/keep");
  YesTo("/keep");
  commands.MoveFile();
  lst.SetChecked(1, true);
  Yes([](FrmFileOper& form) { EXPECT_EQ(form.txtDestination.Text(), "/keep"); });
  commands.DelFile();
  EXPECT_EQ(frm.DestPath, "/keep");
  AddFile("/data/c");
  YesTo("/other");
  commands.DelFile();
  EXPECT_EQ(frm.DestPath, "/other");
  ASSERT_THAT(operations.calls, SizeIs(3));
  EXPECT_EQ(operations.calls[1].pTo, "");
}

// --- The flows

TEST_F(FileCommandsTest, ADeleteIsToTheRecycleBinOrForGood) {
  AddFile("/data/a");
  Yes();
  commands.DelFile();
  AddFile("/data/b");
  Yes([](FrmFileOper& form) {
    form.optDelPermanently.Value = true;
    form.chkYesToAll.Value = kTicked;
    form.chkDirStruct.Value = kTicked;  // of no concern here
  });
  commands.DelFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_EQ(operations.calls[0].wFunc, FO_DELETE);
  EXPECT_EQ(operations.calls[0].fFlags, 0x0048);
  EXPECT_EQ(operations.calls[1].fFlags, 0x0018);
  EXPECT_THAT(Rows(lst), IsEmpty());
  EXPECT_THAT(operations.callsAtUndoSteps, ElementsAre(0U, 1U));
  EXPECT_THAT(operations.callsAtStepEnds, ElementsAre(1U, 2U));
}

TEST_F(FileCommandsTest, EmptiedFoldersGoToTheRecycleBinAfterADeleteForGood) {
  AddFile("/data/a");
  AddFile("/other/b");
  files.MakeFile("/other/c", "");
  Yes([](FrmFileOper& form) {
    form.optDelPermanently.Value = true;
    form.chkRemoveEmptyDir.Value = kTicked;
  });
  commands.DelFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_EQ(operations.calls[0].fFlags, 0x0008);
  EXPECT_EQ(operations.calls[1].fFlags, 0x0048);
  EXPECT_THAT(Sources(1), ElementsAre("/data"));
  EXPECT_THAT(operations.callsAtUndoSteps, ElementsAre(0U));  // one step with the files
  EXPECT_THAT(operations.callsAtStepEnds, ElementsAre(2U));
  EXPECT_THAT(Rows(lst), IsEmpty());
}

TEST_F(FileCommandsTest, YesToAllHoldsForTheEmptiedFoldersOfADeleteToo) {
  AddFile("/data/a");
  Yes([](FrmFileOper& form) {
    form.chkRemoveEmptyDir.Value = kTicked;
    form.chkYesToAll.Value = kTicked;
  });
  commands.DelFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_EQ(operations.calls[0].fFlags, 0x0058);
  EXPECT_EQ(operations.calls[1].fFlags, 0x0058);
}

TEST_F(FileCommandsTest, YesToAllHoldsForAMoveAndACopy) {
  AddFile("/data/a");
  files.MakeFolder("/keep");
  YesTo("/keep", [](FrmFileOper& form) { form.chkYesToAll.Value = kTicked; });
  commands.CopyFile();
  YesTo("/keep", [](FrmFileOper& form) { form.chkYesToAll.Value = kTicked; });
  commands.MoveFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_EQ(operations.calls[0].fFlags, 0x0018);
  EXPECT_EQ(operations.calls[1].fFlags, 0x0018);
}

TEST_F(FileCommandsTest, AMoveIsOneStepWithItsEmptiedFolders) {
  AddFile("/data/a");
  files.MakeFolder("/keep");
  YesTo("/keep", [](FrmFileOper& form) { form.chkRemoveEmptyDir.Value = kTicked; });
  commands.MoveFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(operations.callsAtUndoSteps, ElementsAre(0U));
  EXPECT_THAT(operations.callsAtStepEnds, ElementsAre(2U));
}

TEST_F(FileCommandsTest, AMoveLeavesTheFolderThatHoldsItsDestination) {
  AddFile("/data/a");
  AddFile("/other/b");
  files.MakeFolder("/data/keep");
  YesTo("/data/keep", [](FrmFileOper& form) { form.chkRemoveEmptyDir.Value = kTicked; });
  commands.MoveFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_EQ(operations.calls[0].wFunc, FO_MOVE);
  EXPECT_THAT(Sources(1), ElementsAre("/other"));
}

TEST_F(FileCommandsTest, ADeleteHasNoDestinationThatAFolderMightHold) {
  AddFile("/data/a");
  files.MakeFolder("/data/keep");
  YesTo("/data/keep", [](FrmFileOper& form) { form.chkRemoveEmptyDir.Value = kTicked; });
  commands.DelFile();
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(Sources(1), ElementsAre("/data"));
}

TEST_F(FileCommandsTest, ACopyRemovesNoFolderAndKeepsRowsAndMarks) {
  AddFile("/data/a");
  AddFile("/data/b", Mark::Off);
  AddRow("/empty/gone");
  files.MakeFolder("/empty");
  files.MakeFolder("/keep");
  YesTo("/keep", [](FrmFileOper& form) {
    form.chkRemoveEmptyDir.Value = kTicked;  // from a move before
    form.chkDirStruct.Value = kTicked;
  });
  commands.CopyFile();
  ASSERT_THAT(operations.calls, SizeIs(1));
  EXPECT_EQ(operations.calls[0].wFunc, FO_COPY);
  EXPECT_EQ(operations.calls[0].fFlags, 0x0009);
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a*", "/data/b"));
  EXPECT_THAT(operations.callsAtUndoSteps, ElementsAre(0U));
}

TEST_F(FileCommandsTest, OnlyRowsOfFilesThatHaveGoneLeave) {
  AddFile("/data/a");
  AddFile("/data/stuck");
  AddRow("/data/gone", Mark::Off);
  AddFile("/data/b");
  AddRow("/data/a", Mark::On, ResultList::SameName);
  operations.stuck = {"/data/stuck"};
  ExpectFailure(OperationCode::Denied, "/data/stuck: Permission denied.");
  files.MakeFolder("/keep");
  YesTo("/keep", [](FrmFileOper& form) { form.chkRemoveEmptyDir.Value = kTicked; });
  commands.MoveFile();
  EXPECT_THAT(Rows(lst), ElementsAre("/data/stuck*", "/data/gone"));
  EXPECT_THAT(Rows(results.List(ResultList::SameName)), ElementsAre("/data/a*"));
  EXPECT_THAT(operations.calls, SizeIs(1));  // the folder isn't empty
}

TEST_F(FileCommandsTest, TheDestinationOpensAfterASuccess) {
  AddFile("/data/a");
  files.MakeFolder("/keep");
  YesTo("/keep");
  commands.CopyFile();
  EXPECT_THAT(shell.opened, IsEmpty());
  Yes([](FrmFileOper& form) { form.chkOpenDestDir.Value = kTicked; });
  commands.CopyFile();
  EXPECT_THAT(shell.opened, ElementsAre("/keep"));
  ExpectFailure(OperationCode::Denied, "no");
  Yes();
  commands.CopyFile();
  EXPECT_THAT(shell.opened, ElementsAre("/keep"));
  Yes();
  commands.MoveFile();
  EXPECT_THAT(shell.opened, ElementsAre("/keep", "/keep"));
  AddFile("/data/b");
  Yes();
  commands.DelFile();  // the tick is hidden
  EXPECT_THAT(shell.opened, SizeIs(2));
}

TEST_F(FileCommandsTest, RowsLeaveThenTheDestinationOpensThenTheDialogHides) {
  AddFile("/data/a");
  AddFile("/data/b", Mark::Off);
  files.MakeFolder("/keep");
  frm.chkOpenDestDir.Value = kTicked;
  std::size_t openedWhenHidden = 0;
  shell.onOpen = [&] {
    EXPECT_THAT(Rows(lst), ElementsAre("/data/b"));
    EXPECT_TRUE(frm.Visible());
  };
  frm.Listen([&](const Notice& notice) {
    if (notice.what == Notice::What::Visible && notice.when == Notice::When::After && !frm.Visible()) {
      openedWhenHidden = shell.opened.size();
    }
  });
  YesTo("/keep");
  commands.MoveFile();
  EXPECT_EQ(openedWhenHidden, 1U);
}

// Three batches, of which one fails.
TEST_F(FileCommandsTest, TheLastBatchAloneDecidesWhetherTheDestinationOpens) {
  files.MakeFolder("/keep");
  frm.chkOpenDestDir.Value = kTicked;
  for (const Command command : {&FileCommands::CopyFile, &FileCommands::MoveFile}) {
    for (std::size_t failing = 0; failing < 3; ++failing) {
      lst.Clear();
      AddRows(4001);
      shell.opened.clear();
      operations.calls.clear();
      operations.results.assign(failing, {});
      ExpectFailure(OperationCode::DiskFull, "full");
      YesTo("/keep");
      (commands.*command)();
      EXPECT_THAT(operations.calls, SizeIs(3));
      EXPECT_THAT(dialogs.boxes, IsEmpty());
      EXPECT_THAT(shell.opened, SizeIs(failing < 2 ? 1 : 0)) << failing;
    }
  }
}

TEST_F(FileCommandsTest, AClickThatComesWhileTheDialogIsHiddenDoesNothing) {
  AddFile("/data/a");
  frm.OKButton.OnClick();
  frm.cmdBrowse.OnClick();
  EXPECT_THAT(operations.calls, IsEmpty());
}

// --- While files are worked on

TEST_F(FileCommandsTest, TheButtonsOfTheDialogAreDroppedMeanwhile) {
  AddFile("/data/a");
  AtEachPump([&] {
    EXPECT_TRUE(frm.Visible());
    EXPECT_TRUE(commands.frmFileProgress.Visible());
    frm.CancelButton.OnClick();
    frm.OKButton.OnClick();
    frm.cmdBrowse.OnClick();
    EXPECT_TRUE(frm.Visible());
  });
  Yes();
  commands.DelFile();
  EXPECT_THAT(operations.calls, SizeIs(1));
  AtNoPump();
  AddFile("/data/b");
  No();
  commands.DelFile();
}

TEST_F(FileCommandsTest, AFailureIsToldAndTheDialogStays) {
  AddFile("/data/a");
  operations.onOperation = [](const ShFileOpStruct&, OperationWatch&) { throw Failure(Errors::DiskFull); };
  ExpectBox("Run-time error '61':\r\n\r\nDisk full", BoxIcon::Critical);
  forms.deeds.push_back([&](FrmFileOper& form) {
    form.OKButton.OnClick();
    EXPECT_TRUE(form.Visible());
    EXPECT_FALSE(commands.frmFileProgress.Visible());
    form.CancelButton.OnClick();
  });
  commands.DelFile();
}

TEST_F(FileCommandsTest, TheListThatWasAskedAboutIsWorkedOnThoughAnotherComesOnShow) {
  AddFile("/data/a");
  files.MakeFolder("/other");
  AddRow("/other/gone", Mark::On, ResultList::SameName);
  AtEachPump([&] { Show(ResultList::ReadErrors); });
  Yes([&](FrmFileOper& form) {
    form.chkRemoveEmptyDir.Value = kTicked;
    Show(ResultList::SameName);
  });
  commands.DelFile();
  EXPECT_THAT(Rows(lst), IsEmpty());
  EXPECT_THAT(Rows(results.List(ResultList::SameName)), ElementsAre("/other/gone*"));
  ASSERT_THAT(operations.calls, SizeIs(2));
  EXPECT_THAT(Sources(1), ElementsAre("/data"));
}

}  // namespace
}  // namespace tresmor
