// The menus of the main window word for word, and which rule makes each item one that can be chosen.
#include "shell/main_menu.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "shell/main_window_world.h"

namespace tresmor {
namespace {

enum class Rule {
  Always,    // no menu's opening touches it
  NoAction,  // while no action of the window runs, as here
  AtRest,    // while no search runs
  HasRows,   // while no search runs and there are rows on show
};

struct Row {
  MenuItem FrmMain::*item;  // none for a line between others
  std::string caption;
  std::string key;
  std::int32_t help = 0;
  Rule rule = Rule::Always;
};
const Row kLine = {nullptr, "", "", 0, Rule::Always};

struct Table {
  Menu FrmMain::*menu;
  std::string caption;
  std::vector<Row> rows;
};

const std::vector<Table>& Tables() {
  using F = FrmMain;
  static const std::vector<Table> tables = {
      {&F::MnuMain,
       "&Menu",
       {{&F::mnuOptions, "&Options", "", 112, Rule::NoAction}, kLine, {&F::MnuQuit, "&Quit", "", 0}}},
      {&F::mnuSrchSession,
       "Search Sess&ion",
       {{&F::mnuSrch, "&Search!", "F5", 120},
        {&F::mnuNewSrch, "&New Search", "", 120},
        kLine,
        {&F::mnuLoadResultList, "&Load Search Session", "Ctrl+L", 119, Rule::AtRest},
        {&F::mnuSaveResultList, "&Save Search Session", "Ctrl+S", 119, Rule::AtRest},
        {&F::mnuSaveAsResultList, "Save Search Session &As", "Ctrl+A", 119, Rule::AtRest}}},
      {&F::mnuFile,
       "&Result Files",
       {{&F::mnuOpen, "&Open File", "Ctrl+O", 101, Rule::HasRows},
        {&F::mnuOpenEditor, "&Open with default editor", "Ctrl+E", 0, Rule::HasRows},
        {&F::mnuOpenFolder, "Open &Folder", "Ctrl+F", 101, Rule::HasRows},
        {&F::mnuDelete, "&Delete marked files", "Ctrl+D", 116, Rule::HasRows},
        {&F::mnuMove, "&Move marked files", "Ctrl+M", 116, Rule::HasRows},
        {&F::mnuCopy, "&Copy marked files", "", 116, Rule::HasRows},
        {&F::mnuRen, "&Rename", "Ctrl+R", 104, Rule::HasRows},
        {&F::mnuExport, "E&xport result list (CSV format)", "Ctrl+X", 114, Rule::HasRows},
        kLine,
        {&F::mnuPropPage, "File &Properties", "Ctrl+P", 101, Rule::HasRows},
        {&F::mnuShowVer, "Show file &version", "Ctrl+V", 101, Rule::HasRows},
        kLine,
        {&F::mnuSmartDel, "&Smart Marker...", "Ctrl+K", 100, Rule::HasRows},
        {&F::mnuMarkAll, "Mark &all", "Ctrl+G", 100, Rule::HasRows},
        {&F::mnuMarkSelected, "Mark Selec&ted files", "Ctrl+T", 100, Rule::HasRows},
        {&F::mnuClearMarks, "&Clear all marks", "Ctrl+C", 100, Rule::HasRows}}},
      {&F::mnuMainHelp,
       "&Help",
       {{&F::mnuHelp, "&Content and Index", "", 0},
        kLine,
        {&F::mnuSuppForum, "Online &Support Forum", "", 107},
        {&F::mnuWebSite, "Tresmor &Web Site - https://tresmor.example", "", 0},
        {&F::mnuEmail, "&Email Tresmor (support@tresmor.example)", "", 0},
        {&F::mnuChkUpdate, "&Check if new version available", "", 0},
        kLine,
        {&F::mnuAbout, "About Tresmor", "", 0}}}};
  return tables;
}

class MainMenuTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  template <class Check>
  void ForEachItem(Check check) {
    for (const Table& table : Tables()) {
      for (const Row& row : table.rows) {
        if (row.item != nullptr) check(row, frm.*row.item);
      }
    }
  }
  // Items are first put to the opposite of what their rules say, and off where they have none, which they stay.
  void ExpectAfterOpening(bool atRest, bool hasRows) {
    const auto expected = [&](const Row& row) {
      if (row.rule == Rule::Always || row.rule == Rule::NoAction) return row.rule == Rule::NoAction;
      return atRest && (row.rule == Rule::AtRest || hasRows);
    };
    ForEachItem([&](const Row& row, MenuItem& item) { item.Enabled = row.rule != Rule::Always && !expected(row); });
    for (const Menu* const menu : frm.Menus()) {
      if (menu->OnOpen) menu->OnOpen();
    }
    ForEachItem([&](const Row& row, const MenuItem& item) {
      EXPECT_EQ(item.Enabled(), expected(row)) << row.caption << atRest << hasRows;
    });
  }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;
};

TEST_F(MainMenuTest, HasTheseMenusAndItemsInThisOrder) {
  const std::vector<Menu*> menus = frm.Menus();
  ASSERT_EQ(menus.size(), Tables().size());
  for (std::size_t i = 0; i < menus.size(); ++i) {
    const Table& table = Tables()[i];
    EXPECT_EQ(menus[i], &(frm.*table.menu));
    EXPECT_EQ(menus[i]->Caption(), table.caption);
    const std::vector<MenuItem*>& items = menus[i]->Items();
    ASSERT_EQ(items.size(), table.rows.size()) << table.caption;
    for (std::size_t row = 0; row < items.size(); ++row) {
      const auto item = table.rows[row].item;
      EXPECT_EQ(items[row], item == nullptr ? nullptr : &(frm.*item)) << table.caption << row;
    }
  }
}

TEST_F(MainMenuTest, EachItemHasItsWordsKeyAndHelp) {
  ForEachItem([](const Row& row, const MenuItem& item) {
    EXPECT_EQ(item.Caption(), row.caption);
    EXPECT_EQ(item.Key(), row.key) << row.caption;
    EXPECT_EQ(item.HelpContextID, row.help) << row.caption;
    EXPECT_TRUE(item.OnClick) << row.caption;
  });
}

TEST_F(MainMenuTest, EachItemGoesByItsRule) {
  for (const bool atRest : {true, false}) {
    frm.cmdSrch.Caption = atRest ? kSearchCaption : kCancelCaption;
    for (ListView& list : frm.results.lstResult) list.Clear();
    ExpectAfterOpening(atRest, false);
    AddRow(frm, ResultList::ZeroSize, "row");
    ExpectAfterOpening(atRest, true);
  }
}

}  // namespace
}  // namespace tresmor
