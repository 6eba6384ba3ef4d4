#include "shell/tooltips.h"

#include <gtest/gtest.h>

namespace tresmor {
namespace {

struct Expected {
  const Control& control;
  const char* text;
};

class TooltipsTest : public testing::Test {
 protected:
  FrmMain frm;
  HoveredRow hovered;
  ListTip tips{hovered, {}};
  const std::vector<Expected> texts = {
      {frm.cmdNewSrch, "Start a new search, clearing current settings"},
      {frm.cmdSrch, "Start the search"},
      {frm.chkTolerant,
       "Tolerate little diff. in duplictes and portions search type. WARNING: This may not correctly duplicated files "
       "(especially for small file)"},
      {frm.lstSrchType, "Note: Searching file portions can be slow, be patient."},
      {frm.cmdTask, "Click here to open, mark, delete and rename."},
      {frm.results.tabMain, "Search result (No. of files / No. of duplicate file groups)"},
      {frm.txtDate, "Type your specified date here."},
      {frm.cmdAdd, "Add selected folder"},
      {frm.cmdRemove, "Remove selected folder"},
      {frm.chkProtectWinDir, "Protect Windows and Program Files folders."},
  };
};

TEST_F(TooltipsTest, ControlsOfTheMainWindowHaveTheirTextsUntilTheyAreTakenAway) {
  for (const Expected& expected : texts) EXPECT_EQ(expected.control.ToolTipText(), "");
  InitTooltips(frm);
  for (const Expected& expected : texts) EXPECT_EQ(expected.control.ToolTipText(), expected.text);
  RemoveTooltips(frm, tips);
  for (const Expected& expected : texts) EXPECT_EQ(expected.control.ToolTipText(), "");
}

TEST_F(TooltipsTest, OtherControlsHaveNone) {
  frm.preview.txtFilename.ToolTipText = "/data/picture.jpg";
  InitTooltips(frm);
  const std::vector<const Control*> others = {
      &frm,           &frm.txtPath,    &frm.txtExt,  &frm.cmdBrowseFolder, &frm.chkSubDir, &frm.chkExclude,
      &frm.txtMinSz,  &frm.txtMaxSz,   &frm.cmbDate, &frm.cmbSrchArea,     &frm.lstPath,   &frm.TabPath,
      &frm.chkHidden, &frm.chkVer,     &frm.pbMain,  &frm.StatusBar1,      &frm.fraSrch,   &frm.fraSrchOpt,
      &frm.frmFileOp, &frm.frmSelPath, &frm.mnuFile, &frm.mnuSrch};
  for (const Control* const control : others) EXPECT_EQ(control->ToolTipText(), "");
  for (const ListView& lst : frm.results.lstResult) EXPECT_EQ(lst.ToolTipText(), "");
  RemoveTooltips(frm, tips);
  EXPECT_EQ(frm.preview.txtFilename.ToolTipText(), "/data/picture.jpg");  // says what it shows, on or off
}

TEST_F(TooltipsTest, ThoseOfRowsGoToo) {
  tips.texts[&frm.lstPath] = "row";
  RemoveTooltips(frm, tips);
  EXPECT_TRUE(tips.texts.empty());
}

TEST(SmartMarkerTooltips, AreFour) {
  FrmSmartDel frm;
  InitTooltips(frm);
  EXPECT_EQ(frm.cmdGetSelections.ToolTipText(), "Get selected folders from result list.");
  EXPECT_EQ(frm.cmbPattern.ToolTipText(), "e.g.: *.jpg; a*.gif");
  EXPECT_EQ(frm.cmdMark.ToolTipText(), "Mark those files fulfilling the above criteria.");
  EXPECT_EQ(frm.cmdClearMarks.ToolTipText(), "Mark those files fulfilling the above criteria.");
  for (const Control* const other :
       std::initializer_list<const Control*>{&frm, &frm.lstDate, &frm.lstSize, &frm.lstVer, &frm.lstFolder,
                                             &frm.cmdSelAll, &frm.cmdClrAll, &frm.CancelButton, &frm.cmdHelp}) {
    EXPECT_EQ(other->ToolTipText(), "");
  }
}

}  // namespace
}  // namespace tresmor
