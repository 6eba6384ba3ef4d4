// Lists as comma-separated values.
#include "persist/csv_export.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "persist/session_world.h"
#include "results/sort_list.h"
#include "search/search_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CsvExportTest : public testing::Test, protected tests::SessionWorld {
 protected:
  // The file of a list whose export succeeds and isn't opened.
  std::string Exported(const ListView& lst) {
    ExpectQuestion(BoxAnswer::No);
    ExportList("/home/list.csv", lst, ports);
    return ReadWholeFile(files, "/home/list.csv");
  }
  void ExpectQuestion(BoxAnswer answer) {
    dialogs.boxes.push_back({.text = "Result list is successfully exported, open it now? \r\n/home/list.csv",
                             .title = "Open?",
                             .icon = BoxIcon::Question,
                             .buttons = BoxButtons::YesNo,
                             .answer = answer});
  }

  FakeShell shell;
  ExportPorts ports{writer, shell, events, dialogs};
};

const std::vector<std::string> kCells = {"/x/", "         7", "        12", "2004/01/02 10:20:30"};

TEST_F(CsvExportTest, AnEmptyListHasItsHeaderAloneAndIsAskedForAllTheSame) {
  EXPECT_EQ(Exported(List(ResultList::Duplicates)),
            "Name,In Folder,Duplicate #,Size (Bytes),Date Modified,File version\r\n");
}

TEST_F(CsvExportTest, WritesRowsInTheirOrderWithoutPadding) {
  ListView& lst = List(ResultList::Duplicates);
  Add(lst, "b", kCells);
  Add(lst, " a ", {" /x y/ ", "         7", "2147483648", "2004/01/02 10:20:30", " 1.0 "});
  lst.SetChecked(1, true);
  EXPECT_EQ(Exported(lst),
            "Name,In Folder,Duplicate #,Size (Bytes),Date Modified,File version\r\n"
            "\"b\",\"/x/\",7,12,2004/01/02 10:20:30\r\n"
            "\" a \",\"/x y/\",7,2147483648,2004/01/02 10:20:30,1.0\r\n");
}

TEST_F(CsvExportTest, HiddenColumnsAreLeftOut) {
  ListView& lst = List(ResultList::ZeroSize);
  Add(lst, "a", {"/x/", " ", "         0", "2004/01/02 10:20:30", "1.0"});
  EXPECT_EQ(Exported(lst), "Name,In Folder,Date Modified\r\n\"a\",\"/x/\",2004/01/02 10:20:30\r\n");
}

TEST_F(CsvExportTest, NameAndFolderStandThereEvenIfTheyAreHidden) {
  ListView lst;
  lst.AddColumn({"Name", 0});
  lst.AddColumn({"In Folder", 0});
  lst.AddColumn({"Size", 10});
  Add(lst, "a", {"/x/", "5"});
  lst.AddRow("bare");
  EXPECT_EQ(Exported(lst), "Name,Size\r\n\"a\",\"/x/\",5\r\n\"bare\",\"\"\r\n");
}

TEST_F(CsvExportTest, OnlyTheFirstHeaderKeepsItsSortMark) {
  ListView& lst = List(ResultList::SameName);
  SortList(lst, kSizeItem + 1, kAscending);
  EXPECT_EQ(Exported(lst), "Name,In Folder,Size (Bytes),Date Modified,File version\r\n");
  SortList(lst, kSizeItem + 1, kDescending);
  EXPECT_EQ(Exported(lst), "Name,In Folder,Size (Bytes),Date Modified,File version\r\n");
  SortList(lst, kNameItem + 1, kAscending);
  EXPECT_EQ(Exported(lst), "^ Name,In Folder,Size (Bytes),Date Modified,File version\r\n");
  SortList(lst, kNameItem + 1, kDescending);
  EXPECT_EQ(Exported(lst), "v Name,In Folder,Size (Bytes),Date Modified,File version\r\n");
}

TEST_F(CsvExportTest, NothingIsEscaped) {
  ListView& lst = List(ResultList::ZeroSize);
  Add(lst, "a,b", {"/x,y/", " ", "         0", "1,2"});
  Add(lst, "say \"hi\"", {"/x\"/", " ", "         0", "3"});
  EXPECT_EQ(Exported(lst),
            "Name,In Folder,Date Modified\r\n"
            "\"a,b\",\"/x,y/\",1,2\r\n"
            "\"say \"hi\"\",\"/x\"/\",3\r\n");
}

TEST_F(CsvExportTest, OpensTheFileOnYesAlone) {
  Exported(List(ResultList::ZeroSize));
  EXPECT_THAT(shell.opened, IsEmpty());
  ExpectQuestion(BoxAnswer::Yes);
  ExportList("/home/list.csv", List(ResultList::ZeroSize), ports);
  EXPECT_THAT(shell.opened, ElementsAre("/home/list.csv"));
}

TEST_F(CsvExportTest, AFailureIsToldAndNothingAsked) {
  files.MakeFile("/home/list.csv", "old");
  writer.Fail(Errors::PermissionDenied);
  dialogs.boxes = {{.text = "Result list export failed. File may already opened by other programs. \r\n"
                            "Error : #70 Permission denied",
                    .title = "Failed"}};
  ExportList("/home/list.csv", List(ResultList::ZeroSize), ports);
  EXPECT_EQ(ReadWholeFile(files, "/home/list.csv"), "old");
  EXPECT_THAT(shell.opened, IsEmpty());
}

// A writer that throws instead of giving a number.
template <class Thrown>
class ThrowingWriter final : public FileWriter {
 public:
  explicit ThrowingWriter(const Thrown& thrown) : thrown_(thrown) {}
  Errors Replace(const std::string&, std::string_view) const override { throw Thrown(thrown_); }
  Errors MakeFolder(const std::string&) const override { return Errors::None; }

 private:
  const Thrown thrown_;
};

TEST_F(CsvExportTest, LackOfMemoryIsToldAsWell) {
  const ScriptedDialogs::Box box = {.text =
                                        "Result list export failed. File may already opened by other programs. "
                                        "\r\nError : #7 Out of memory",
                                    .title = "Failed"};
  dialogs.boxes = {box, box};
  const ThrowingWriter<std::bad_alloc> noMemory{std::bad_alloc()};
  ExportList("/home/list.csv", List(ResultList::ZeroSize), {noMemory, shell, events, dialogs});
  const ThrowingWriter<std::length_error> tooLong{std::length_error("")};
  ExportList("/home/list.csv", List(ResultList::ZeroSize), {tooLong, shell, events, dialogs});
}

TEST_F(CsvExportTest, ReplacesAnOldFile) {
  files.MakeFile("/home/list.csv", std::string(10'000, 'x'));
  EXPECT_EQ(Exported(List(ResultList::ZeroSize)), "Name,In Folder,Date Modified\r\n");
}

TEST_F(CsvExportTest, LetsEventsInBetweenRows) {
  for (const char* const name : {"a", "b", "c"}) Add(List(ResultList::ZeroSize), name, kCells);
  Exported(List(ResultList::ZeroSize));
  EXPECT_EQ(events.pumps, 3);
}

}  // namespace
}  // namespace tresmor
