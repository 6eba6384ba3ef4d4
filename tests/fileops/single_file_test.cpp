#include "fileops/single_file.h"

#include <gmock/gmock.h>

#include <set>

#include "fileops/fileops_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Renames among the paths that it knows; nothing else is expected of it.
class RenamesOnly final : public FileChanges {
 public:
  Errors Rename(const std::string& from, const std::string& to) override {
    if (failure != Errors::None) return failure;
    if (!paths.contains(from)) return Errors::FileNotFound;
    if (paths.contains(to)) return Errors::FileExists;
    paths.erase(from);
    paths.insert(to);
    return Errors::None;
  }
  Errors MakeFolder(const std::string&) override { return Unexpected(); }
  Errors Create(const std::string&, std::string_view) override { return Unexpected(); }
  Errors Append(const std::string&, std::string_view) override { return Unexpected(); }
  std::unique_ptr<FileCopy> BeginCopy(const std::string&, const std::string&, Errors& failure, bool&) override {
    failure = Unexpected();
    return nullptr;
  }
  Errors Remove(const std::string&) override { return Unexpected(); }
  Errors FlushFolder(const std::string&) override { return Unexpected(); }
  Errors RemoveAbandoned(const std::string&) override { return Unexpected(); }
  Errors Replace(const std::string&, const std::string&) override { return Unexpected(); }
  std::unique_ptr<FileLock> Lock(const std::string&, Sharing, Errors& failure) override {
    failure = Unexpected();
    return nullptr;
  }

  std::set<std::string> paths;
  Errors failure = Errors::None;  // of each rename

 private:
  static Errors Unexpected() {
    ADD_FAILURE() << "a change that isn't a rename";
    return Errors::PermissionDenied;
  }
};

class SingleFileTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  SingleFileTest() {
    options.DefaultEditorOpt = "my editor";
    AddRow("/data/a.txt", tests::Mark::Off);
    AddRow("/data/my file.txt", tests::Mark::Off);
    changes.paths = {"/data/a.txt", "/data/my file.txt"};
  }
  void Answer(const std::string& answer) {
    dialogs.inputs.push_back({.prompt = "Please type a new file name for \r\n/data/my file.txt",
                              .title = "Rename",
                              .proposal = "my file.txt",
                              .answer = answer});
    lst.SetSelected(2, true);
    single.RenFile();
  }

  RenamesOnly changes;
  Options options;
  FrmFileProgress frm;
  FileJob job{frm, events, dialogs};
  SingleFile single{results, options, {files, changes, operations, shell, dialogs, job}};
};

TEST_F(SingleFileTest, EachAsksForARowWhereNoneIsSelected) {
  for (void (SingleFile::*const command)() : {&SingleFile::RenFile, &SingleFile::OpenFile, &SingleFile::OpenEditor}) {
    ExpectBox("Please select a file.", BoxIcon::None, "Select file");
    (single.*command)();
    EXPECT_THAT(dialogs.boxes, IsEmpty());
  }
  EXPECT_THAT(shell.opened, IsEmpty());
}

TEST_F(SingleFileTest, RenamesTheFileAndItsRow) {
  AddRow("/data/my file.txt", tests::Mark::Off, ResultList::SameName);
  lst.SetCell(2, kSizeItem, PaddedNumber{7});
  Answer("new.txt");
  EXPECT_THAT(changes.paths, ElementsAre("/data/a.txt", "/data/new.txt"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/new.txt"));
  EXPECT_EQ(lst.Cell(2, kSizeItem), "         7");
  EXPECT_THAT(Rows(results.List(ResultList::SameName)), ElementsAre("/data/my file.txt"));
}

TEST_F(SingleFileTest, NoAnswerChangesNothing) {
  Answer("");
  EXPECT_THAT(changes.paths, ElementsAre("/data/a.txt", "/data/my file.txt"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/my file.txt"));
}

TEST_F(SingleFileTest, ANameThatIsTakenIsAFailure) {
  ExpectBox("File can't be renamed.", BoxIcon::None, "Can't rename");
  Answer("a.txt");
  EXPECT_THAT(changes.paths, ElementsAre("/data/a.txt", "/data/my file.txt"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/my file.txt"));
}

TEST_F(SingleFileTest, TheProposalUnchangedIsThePlatformsMatterAndTheRowKeepsItsName) {
  ExpectBox("File can't be renamed.", BoxIcon::None, "Can't rename");
  Answer("my file.txt");
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/my file.txt"));
}

TEST_F(SingleFileTest, OneBoxTellsAFailureOfTheRowToo) {
  dialogs.onInput = [&] {
    lst.Listen([](const Notice& notice) {
      if (notice.what == Notice::What::RowsChanged) throw Failure(Errors::Overflow);
    });
  };
  ExpectBox("File can't be renamed.", BoxIcon::None, "Can't rename");
  Answer("new.txt");
  EXPECT_THAT(changes.paths, ElementsAre("/data/a.txt", "/data/new.txt"));
}

TEST_F(SingleFileTest, AnAnswerMayLeadToAnotherFolder) {
  Answer("../b/new.txt");
  EXPECT_THAT(changes.paths, ElementsAre("/data/../b/new.txt", "/data/a.txt"));
  EXPECT_EQ(lst.Cell(2, kNameItem), "../b/new.txt");
}

TEST_F(SingleFileTest, ARowThatMovedMeanwhileGetsTheName) {
  AddRow("/data/z.txt", tests::Mark::Off);
  dialogs.onInput = [&] { lst.RemoveRow(1); };
  Answer("new.txt");
  EXPECT_TRUE(changes.paths.contains("/data/new.txt"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/new.txt", "/data/z.txt"));
}

TEST_F(SingleFileTest, NoOtherRowGetsTheNameOfOneThatWent) {
  AddRow("/data/z.txt", tests::Mark::Off);
  dialogs.onInput = [&] { lst.RemoveRow(2); };
  Answer("new.txt");
  EXPECT_TRUE(changes.paths.contains("/data/new.txt"));
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/z.txt"));
}

TEST_F(SingleFileTest, WhatTheDiskCannotRenameSafelyIsAnOperationOfItsOwn) {
  changes.failure = Errors::DifferentDrive;
  Answer("new.txt");
  ASSERT_EQ(operations.calls.size(), 1U);
  const ShFileOpStruct& operation = operations.calls[0];
  EXPECT_EQ(operation.wFunc, FO_RENAME);
  EXPECT_THAT(Sources(0), ElementsAre("/data/my file.txt"));
  EXPECT_THAT(operations.Paths(operation.pTo), ElementsAre("/data/new.txt"));
  EXPECT_EQ(operation.fFlags, FOF_MULTIDESTFILES);
  EXPECT_EQ(operation.destination, "/data");
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/new.txt"));
  EXPECT_THAT(operations.callsAtUndoSteps, IsEmpty());
}

TEST_F(SingleFileTest, AnOperationThatFailsLeavesTheRow) {
  changes.failure = Errors::DifferentDrive;
  operations.results = {{OperationCode::Exists, "taken"}};
  ExpectBox("File can't be renamed.", BoxIcon::None, "Can't rename");
  Answer("new.txt");
  EXPECT_THAT(Rows(lst), ElementsAre("/data/a.txt", "/data/my file.txt"));
}

TEST_F(SingleFileTest, OpensTheFileByTheDesktop) {
  lst.SetSelected(2, true);
  single.OpenFile();
  EXPECT_THAT(shell.opened, ElementsAre("/data/my file.txt"));
}

TEST_F(SingleFileTest, TheFileIsThatOfTheRowWithTheFocusWhicheverAreSelected) {
  lst.SetSelected(1, true);
  lst.GiveFocus(2);
  single.OpenFile();
  EXPECT_THAT(shell.opened, ElementsAre("/data/my file.txt"));
}

TEST_F(SingleFileTest, OpensTheEditorWithThePathAsOneArgument) {
  lst.SetSelected(2, true);
  single.OpenEditor();
  options.DefaultEditorOpt = "";
  single.OpenEditor();
  EXPECT_THAT(shell.opened, ElementsAre("my editor </data/my file.txt>", " </data/my file.txt>"));
}

}  // namespace
}  // namespace tresmor
