// The command that exports the list on show.
#include "shell/export_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "desk/scripted_event_queue.h"
#include "persist/whole_file.h"
#include "results/rows.h"
#include "search/search_world.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

class ExportCommandTest : public testing::Test {
 protected:
  ExportCommandTest() { files.MakeFolder("/home"); }

  void Export(const std::string& file) {
    dialogs.files.push_back(file);
    dialogs.boxes.push_back({.text = "Result list is successfully exported, open it now? \r\n" + file,
                             .title = "Open?",
                             .icon = BoxIcon::Question,
                             .buttons = BoxButtons::YesNo,
                             .answer = BoxAnswer::No});
    command.mnuExport();
  }

  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  FakeShell shell;
  ScriptedDialogs dialogs;
  tests::ScriptedEventQueue events;
  FrmMain frm;
  ExportCommand command{frm, {writer, shell, events, dialogs}};
};

TEST_F(ExportCommandTest, AsksForAFileAndProposesTheLastOne) {
  frm.session.SessionFile = "/home/s.Tresmor";
  Export("/home/one.csv");
  const FileQuestion first = dialogs.asked.at(0);
  EXPECT_EQ(first.mode, FileDialogMode::Save);
  EXPECT_EQ(first.title, "Tresmor - Export search result list");
  ASSERT_EQ(first.filters.size(), 2U);
  EXPECT_EQ(first.filters[0].label, "Comma Separated Values (*.csv)");
  EXPECT_EQ(first.filters[0].pattern, "*.csv");
  EXPECT_EQ(first.filters[1].label, "All Files");
  EXPECT_EQ(first.filters[1].pattern, "*.*");
  EXPECT_EQ(first.defaultExtension, "csv");
  EXPECT_EQ(first.startName, "");
  EXPECT_EQ(first.startFolder, "/home/s.Tresmor");
  Export("/home/two.csv");
  EXPECT_EQ(dialogs.asked.at(1).startName, "/home/one.csv");
}

TEST_F(ExportCommandTest, ACancelKeepsTheProposal) {
  Export("/home/one.csv");
  dialogs.files = {std::nullopt};
  command.mnuExport();
  Export("/home/two.csv");
  EXPECT_EQ(dialogs.asked.at(2).startName, "/home/one.csv");
}

TEST_F(ExportCommandTest, AFailedExportIsProposedAgain) {
  writer.Fail(Errors::PermissionDenied);
  dialogs.files = {"/home/one.csv"};
  dialogs.boxes = {{.text = "Result list export failed. File may already opened by other programs. \r\n"
                            "Error : #70 Permission denied",
                    .title = "Failed"}};
  command.mnuExport();
  writer.Fail(Errors::None);
  Export("/home/two.csv");
  EXPECT_EQ(dialogs.asked.at(1).startName, "/home/one.csv");
}

TEST_F(ExportCommandTest, WritesTheListOnShow) {
  frm.results.List(ResultList::SameName).AddRow("shown");
  frm.results.List(ResultList::ZeroSize).AddRow("behind");
  frm.results.tabMain.Select(3);
  Export("/home/one.csv");
  EXPECT_EQ(ReadWholeFile(files, "/home/one.csv"),
            "^ Name,In Folder,Size (Bytes),Date Modified,File version\r\n\"shown\",\"\"\r\n");
}

}  // namespace
}  // namespace tresmor
