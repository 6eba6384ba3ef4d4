#include "results/list_tip.h"

#include "results/result_fixture.h"
#include "results/sort_list.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

class ListTipTest : public tests::ResultFixture {
 protected:
  std::string Hover(std::int32_t row, const ListView& lst, TipRows rows = TipRows::Results) {
    ShowListTip(row, lst, rows, tip);
    return tip.texts[&lst];
  }

  HoveredRow hovered;
  ListTip tip{hovered, {}};
};

TEST_F(ListTipTest, TellsEveryCellUnderItsHeader) {
  Add(ResultList::Duplicates, "a.txt", 3, 42);
  EXPECT_EQ(Hover(1, duplicates),
            "Name: a.txt\r\nIn Folder: /data/\r\nDuplicate #:          3\r\nSize (Bytes):         42\r\n"
            "Date Modified: 1899/12/30 00:00:00");
}

TEST_F(ListTipTest, LeavesBlankCellsOutButNotThoseOfHiddenColumns) {
  Add(ResultList::ZeroSize, "a.txt");
  EXPECT_EQ(zero.Column(4).width, 0);
  EXPECT_EQ(Hover(1, zero),
            "Name: a.txt\r\nIn Folder: /data/\r\nSize (Bytes):          0\r\nDate Modified: 1899/12/30 00:00:00");
}

TEST_F(ListTipTest, LeavesACellOfSeveralBlanksOut) {
  AddVersion(ResultList::Duplicates, "a.txt", "   ");
  ASSERT_EQ(duplicates.Cell(1, kVersionItem), "   ");
  EXPECT_TRUE(Hover(1, duplicates).ends_with("\r\nDate Modified: 1899/12/30 00:00:00"));
}

TEST_F(ListTipTest, TakesTheSortMarksOffTheHeaders) {
  AddVersion(ResultList::Portions, "a.txt", "1.10");
  SortList(portions, 1, kAscending);
  EXPECT_TRUE(Hover(1, portions).starts_with("Name: a.txt\r\n"));
  SortList(portions, 6, kDescending);
  Hover(0, portions);
  hovered = {};
  EXPECT_TRUE(Hover(1, portions).ends_with("\r\nFile version: 1.10"));
  SortList(portions, 6, kAscending);
  ASSERT_EQ(portions.Column(6).text, "^ File version");
  hovered = {};
  EXPECT_TRUE(Hover(1, portions).ends_with("\r\nFile version: 1.10"));
}

TEST_F(ListTipTest, ScopeRowsTellWhetherTheyAreExcluded) {
  ListView lstPath;
  for (const char* header : {"Path", "Sub-folder", "Min. Size"}) lstPath.AddColumn({header});
  const std::vector<CellValue> cells = {"Yes", "12"};
  lstPath.SetSmallIcon(lstPath.AddRow("/home/*.*", cells), ScopeRow::kIncluded);
  lstPath.SetSmallIcon(lstPath.AddRow("/out/", std::vector<CellValue>{"No"}), ScopeRow::kExcluded);
  EXPECT_EQ(Hover(1, lstPath, TipRows::Scope), "Path: /home/*.*\r\nExclude: No\r\nSub-folder: Yes\r\nMin. Size: 12");
  EXPECT_EQ(Hover(2, lstPath, TipRows::Scope), "Path: /out/\r\nExclude: Yes\r\nSub-folder: No");
}

TEST_F(ListTipTest, FoldersTellTheirNameAlone) {
  ListView lstFolder;
  lstFolder.AddColumn({"Folders"});
  lstFolder.AddRow("/home/ann/");
  EXPECT_EQ(Hover(1, lstFolder, TipRows::Folders), "/home/ann/");
}

TEST_F(ListTipTest, NeverCutsAText) {
  const std::string name(40'000, 'n');
  Add(ResultList::ZeroSize, name);
  EXPECT_TRUE(Hover(1, zero).starts_with("Name: " + name + "\r\n"));
}

TEST_F(ListTipTest, AnEmptyPlaceClearsTheTextAndTheSameRowDoesNotBringItBack) {
  Add(ResultList::ZeroSize, "a");
  Add(ResultList::ZeroSize, "b");
  EXPECT_NE(Hover(1, zero), "");
  EXPECT_EQ(Hover(0, zero), "");
  EXPECT_EQ(Hover(1, zero), "");
  EXPECT_NE(Hover(2, zero), "");
  EXPECT_NE(Hover(1, zero), "");
}

TEST_F(ListTipTest, APointerOverABoundListTellsItsRows) {
  Options options;
  BindListTip(zero, TipRows::Results, options, tip);
  Add(ResultList::ZeroSize, "a");
  zero.OnMouseMove(1);
  EXPECT_TRUE(tip.texts[&zero].starts_with("Name: a\r\n"));
  zero.OnMouseMove(0);
  EXPECT_EQ(tip.texts[&zero], "");
  zero.OnMouseMove(1);
  EXPECT_EQ(tip.texts[&zero], "");
}

TEST_F(ListTipTest, ASettingOfOneAloneSwitchesTextsOff) {
  Options options;
  BindListTip(zero, TipRows::Results, options, tip);
  Add(ResultList::ZeroSize, "a");
  options.NoTooltipsOpt = 1;
  zero.OnMouseMove(1);
  EXPECT_TRUE(tip.texts.empty());
  options.NoTooltipsOpt = 2;
  zero.OnMouseMove(1);
  EXPECT_NE(tip.texts[&zero], "");
}

TEST_F(ListTipTest, AnEmptyPlaceOfOneListLeavesTheOthersAlone) {
  Add(ResultList::ZeroSize, "a");
  Hover(1, zero);
  Hover(0, duplicates);
  EXPECT_NE(tip.texts[&zero], "");
}

TEST_F(ListTipTest, TheSameRowIsNotToldAnew) {
  Add(ResultList::ZeroSize, "a");
  const std::string before = Hover(1, zero);
  zero.SetCell(1, kFolderItem, "/else/");
  EXPECT_EQ(Hover(1, zero), before);
}

TEST_F(ListTipTest, OneRowIsRememberedForAllLists) {
  Add(ResultList::ZeroSize, "a");
  Add(ResultList::ReadErrors, "b", -3);
  Hover(1, zero);
  EXPECT_TRUE(Hover(1, errors).starts_with("Name: b\r\n"));
  zero.SetCell(1, kNameItem, "new");
  EXPECT_TRUE(Hover(1, zero).starts_with("Name: new\r\n"));

  ListTip other{hovered, {}};
  ShowListTip(1, errors, TipRows::Results, other);
  zero.SetCell(1, kNameItem, "newer");
  EXPECT_TRUE(Hover(1, zero).starts_with("Name: newer\r\n"));
}

TEST_F(ListTipTest, ARowThatCameToTheSamePlaceIsAnother) {
  for (const char* name : {"a", "b"}) Add(ResultList::ZeroSize, name);
  Hover(1, zero);
  SortList(zero, 1, kDescending);
  EXPECT_TRUE(Hover(1, zero).starts_with("Name: b\r\n"));
  zero.RemoveRow(1);
  EXPECT_TRUE(Hover(1, zero).starts_with("Name: a\r\n"));
}

}  // namespace
}  // namespace tresmor
