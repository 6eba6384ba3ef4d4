// The menus of the main window: what each item does, and when it can be chosen.
#include "shell/menu_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/main_window_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MenuRulesTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  std::vector<MenuItem*> FileItems() {
    return {&frm.mnuOpen,       &frm.mnuOpenEditor,   &frm.mnuDelete,   &frm.mnuMove,       &frm.mnuCopy,
            &frm.mnuRen,        &frm.mnuExport,       &frm.mnuPropPage, &frm.mnuOpenFolder, &frm.mnuMarkAll,
            &frm.mnuClearMarks, &frm.mnuMarkSelected, &frm.mnuShowVer,  &frm.mnuSmartDel};
  }
  void ExpectFileItems(bool enabled) {
    for (MenuItem* const item : FileItems()) item->Enabled = !enabled;
    frm.mnuFile.OnOpen();
    for (const MenuItem* const item : FileItems()) EXPECT_EQ(item->Enabled(), enabled) << item->Caption();
  }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;
};

TEST_F(MenuRulesTest, CommandsOnFilesWantRowsOnShowAndNoSearch) {
  ExpectFileItems(false);
  AddRow(frm, ResultList::SameName, "elsewhere");
  ExpectFileItems(false);
  AddRow(frm, ResultList::ZeroSize, "row");
  ExpectFileItems(true);
  for (const char* caption : {kCancelCaption, "", "Search"}) {
    frm.cmdSrch.Caption = caption;
    ExpectFileItems(false);
  }
  frm.cmdSrch.Caption = kSearchCaption;
  ExpectFileItems(true);
  frm.results.tabMain.Select(2);
  ExpectFileItems(false);
}

TEST_F(MenuRulesTest, CommandsOnSessionsWantNoSearchAndTheOthersAreLeftAlone) {
  const std::vector<MenuItem*> ruled = {&frm.mnuLoadResultList, &frm.mnuSaveResultList, &frm.mnuSaveAsResultList};
  frm.mnuSrch.Enabled = false;
  for (const bool atRest : {false, true, false}) {
    frm.cmdSrch.Caption = atRest ? kSearchCaption : kCancelCaption;
    frm.mnuSrchSession.OnOpen();
    for (const MenuItem* const item : ruled) EXPECT_EQ(item->Enabled(), atRest);
    EXPECT_FALSE(frm.mnuSrch.Enabled());
    EXPECT_TRUE(frm.mnuNewSrch.Enabled());
  }
}

TEST_F(MenuRulesTest, AnItemWithoutItsHookCannotBeChosen) {
  MainWindow bare(Ports(), {});
  FrmMain& form = bare.frm;
  EXPECT_FALSE(form.mnuPropPage.Enabled());
  AddRow(form, ResultList::ZeroSize, "row");
  form.mnuFile.OnOpen();
  EXPECT_FALSE(form.mnuPropPage.Enabled());
  EXPECT_TRUE(form.mnuOpen.Enabled() && form.mnuSmartDel.Enabled() && form.MnuQuit.Enabled());
  for (const Menu* const menu : form.Menus()) {
    for (const MenuItem* const item : menu->Items()) {
      EXPECT_TRUE(item == nullptr || !item->Enabled() || item->OnClick);
    }
  }
}

TEST_F(MenuRulesTest, LinksOpenTheirAddresses) {
  for (const MenuItem* const item : {&frm.mnuSuppForum, &frm.mnuWebSite, &frm.mnuEmail, &frm.mnuChkUpdate}) {
    item->OnClick();
  }
  EXPECT_THAT(shell.opened, ElementsAre("https://tresmor.example/support.asp?from=exe",
                                        "https://tresmor.example/?from=exe", "mailto:support@tresmor.example",
                                        "https://tresmor.example/ChkUpdate.asp?Major=3&Minor=1&Rev=7"));
}

TEST_F(MenuRulesTest, AboutIsABox) {
  dialogs.boxes = {
      {"Tresmor Ver. 3.1.7\r\n\r\nFree software under the MIT licence, without warranty of any "
       "kind.\r\n\r\nWeb site: https://tresmor.example\r\nEmail: support@tresmor.example\r\n",
       "About Tresmor", BoxIcon::Information}};
  frm.mnuAbout.OnClick();
}

TEST_F(MenuRulesTest, CommandsOnOneFileReachIt) {
  files.MakeFile("/data/row", "");
  AddRow(frm, ResultList::ZeroSize, "row");
  shell.answers = false;
  frm.mnuOpen.OnClick();
  frm.mnuOpenEditor.OnClick();
  frm.mnuOpenFolder.OnClick();
  EXPECT_THAT(shell.opened, ElementsAre("/data/row", " </data/row>", "/data/"));
  frm.mnuPropPage.OnClick();
  EXPECT_THAT(shell.shown, ElementsAre("/data/row"));
  EXPECT_THAT(log, ElementsAre("sheet of /data/row"));
  dialogs.inputs = {{"Please type a new file name for \r\n/data/row", "Rename", "row", "new"}};
  frm.mnuRen.OnClick();
  EXPECT_EQ(frm.results.Shown().Cell(1, kNameItem), "new");
  dialogs.files = {std::nullopt};
  frm.mnuExport.OnClick();
  EXPECT_EQ(dialogs.asked.back().defaultExtension, "csv");
  frm.mnuShowVer.OnClick();
  EXPECT_EQ(frm.results.Shown().Tag(), "Ver");
}

TEST_F(MenuRulesTest, CommandsOnMarksAndSessionsReachThem) {
  AddRow(frm, ResultList::ZeroSize, "row");
  ListView& lst = frm.results.Shown();
  frm.mnuClearMarks.OnClick();
  EXPECT_FALSE(lst.Checked(1));
  frm.mnuMarkSelected.OnClick();
  EXPECT_TRUE(lst.Checked(1));
  lst.SetChecked(1, false);
  frm.mnuMarkAll.OnClick();
  EXPECT_TRUE(lst.Checked(1));
  EXPECT_THAT(forms.shown, ElementsAre(kGuardedMessages[kTipOrgNDup].Message));
  for (const MenuItem* const item : {&frm.mnuLoadResultList, &frm.mnuSaveResultList, &frm.mnuSaveAsResultList}) {
    dialogs.files = {std::nullopt};
    item->OnClick();
  }
  ASSERT_THAT(dialogs.asked, SizeIs(3));
  EXPECT_EQ(dialogs.asked[0].mode, FileDialogMode::Open);
  EXPECT_EQ(dialogs.asked[1].mode, FileDialogMode::Save);
}

TEST_F(MenuRulesTest, TheTaskButtonAndARightClickOpenTheSameMenu) {
  int opened = 0;
  frm.mnuFile.Listen([&](const Notice& notice) { opened += notice.what == Notice::What::PopUp; });
  frm.cmdTask.OnClick();
  EXPECT_EQ(opened, 1);
  frm.results.Shown().OnMouseUp(MouseButton::Right);
  EXPECT_EQ(opened, 2);
}

TEST_F(MenuRulesTest, AShortcutGoesByTheRuleOfTheMoment) {
  frm.mnuMarkAll.Enabled = true;
  frm.mnuFile.Shortcut(frm.mnuMarkAll);
  EXPECT_THAT(forms.shown, IsEmpty());
  AddRow(frm, ResultList::ZeroSize, "row");
  frm.mnuFile.Shortcut(frm.mnuMarkAll);
  EXPECT_THAT(forms.shown, SizeIs(1));
}

TEST_F(MenuRulesTest, ATipShowsOverTheRowsOfTheLists) {
  AddRow(frm, ResultList::ZeroSize, "row");
  frm.results.Shown().OnMouseMove(1);
  EXPECT_THAT(window.Tips().texts.at(&frm.results.Shown()), testing::HasSubstr("row"));
}

}  // namespace
}  // namespace tresmor
