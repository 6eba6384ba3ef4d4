#include "fileops/frm_file_oper.h"

#include <gtest/gtest.h>

namespace tresmor {
namespace {

TEST(FrmFileOper, StartsHiddenWithNothingTicked) {
  const FrmFileOper frm;
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.DestPath, "");
  EXPECT_FALSE(frm.chkDirStruct.Ticked() || frm.chkOpenDestDir.Ticked() || frm.chkRemoveEmptyDir.Ticked() ||
               frm.chkYesToAll.Ticked());
  EXPECT_TRUE(frm.optRecycleBin.Value());
  EXPECT_FALSE(frm.optDelPermanently.Value());
  EXPECT_EQ(frm.fraDest.Caption(), "Destination");
  EXPECT_EQ(frm.cmdBrowse.Caption(), "&Browse...");
  EXPECT_EQ(frm.chkDirStruct.Caption(), "directory structure");
  EXPECT_EQ(frm.chkOpenDestDir.Caption(), "Open destination folder after ");
  EXPECT_EQ(frm.chkRemoveEmptyDir.Caption(), "Remove empty directories after ");
  EXPECT_EQ(frm.chkYesToAll.Caption(), "Respond with Yes to All for any dialog box that is displayed. ");
  EXPECT_EQ(frm.optRecycleBin.Caption(),
            "Move to recycle bin (*If the property of recycle bin is set to 'do not move file to recycle bin', files "
            "will be deleted permanently at any rate.)");
  EXPECT_EQ(frm.optDelPermanently.Caption(), "Delete permanently");
  EXPECT_EQ(frm.OKButton.Caption(), "&Yes");
  EXPECT_EQ(frm.CancelButton.Caption(), "&No");
}

TEST(FrmFileOper, ForADelete) {
  FrmFileOper frm;
  frm.SetOperMode(kMoveMode, "");
  frm.SetOperMode(kDeleteMode, "/a\r\n");
  EXPECT_EQ(frm.OperMode, 0);
  EXPECT_EQ(frm.Caption(), "Delete files");
  EXPECT_EQ(frm.lblMsg.Caption(),
            "WARNING: Delete files at your own risk. You should make sure those files can be deleted safely, if you "
            "are not sure, just leave it here by clicking 'No'.\r\n\r\nAre you sure to delete the marked "
            "files?\r\n/a\r\n");
  EXPECT_TRUE(frm.imgWarning.Visible() && frm.lblNotes.Visible() && frm.fraDel.Visible() && frm.chkYesToAll.Visible());
  EXPECT_FALSE(frm.fraDest.Visible() || frm.chkDirStruct.Visible() || frm.chkOpenDestDir.Visible());
  EXPECT_EQ(frm.lblNotes.Caption(),
            "RECOMMENDATION: It is recommended you move files to a temporary folder for keeping some time before "
            "deletion.");
  EXPECT_TRUE(frm.chkRemoveEmptyDir.Visible());
  EXPECT_EQ(frm.chkRemoveEmptyDir.Caption(), "Remove &empty directories after deleting");
}

TEST(FrmFileOper, ForAMove) {
  FrmFileOper frm;
  frm.SetOperMode(kDeleteMode, "");
  frm.SetOperMode(kMoveMode, "/a\r\n");
  EXPECT_EQ(frm.OperMode, 1);
  EXPECT_EQ(frm.Caption(), "Move files");
  EXPECT_EQ(frm.lblMsg.Caption(), "Are you sure to move the marked files to destination folder?\r\n/a\r\n");
  EXPECT_FALSE(frm.imgWarning.Visible() || frm.lblNotes.Visible() || frm.fraDel.Visible());
  EXPECT_TRUE(frm.fraDest.Visible() && frm.chkDirStruct.Visible() && frm.chkOpenDestDir.Visible() &&
              frm.chkRemoveEmptyDir.Visible() && frm.chkYesToAll.Visible());
  EXPECT_EQ(frm.chkDirStruct.Caption(), "Move with directory &structure");
  EXPECT_EQ(frm.chkOpenDestDir.Caption(), "Open destination folder after moving");
  EXPECT_EQ(frm.chkRemoveEmptyDir.Caption(), "Remove &empty directories after moving");
}

TEST(FrmFileOper, ForACopy) {
  FrmFileOper frm;
  frm.SetOperMode(kDeleteMode, "");
  frm.SetOperMode(kCopyMode, "/a\r\n");
  EXPECT_EQ(frm.OperMode, 2);
  EXPECT_EQ(frm.Caption(), "Copy files");
  EXPECT_EQ(frm.lblMsg.Caption(), "Are you sure to copy the marked files to destination folder?\r\n/a\r\n");
  EXPECT_FALSE(frm.imgWarning.Visible() || frm.lblNotes.Visible() || frm.fraDel.Visible() ||
               frm.chkRemoveEmptyDir.Visible());
  EXPECT_TRUE(frm.fraDest.Visible() && frm.chkDirStruct.Visible() && frm.chkOpenDestDir.Visible() &&
              frm.chkYesToAll.Visible());
  EXPECT_EQ(frm.chkDirStruct.Caption(), "Copy with directory &structure");
  EXPECT_EQ(frm.chkOpenDestDir.Caption(), "Open destination folder after copying");
}

TEST(FrmFileOper, EachModeShowsTheDestinationAgain) {
  FrmFileOper frm;
  frm.DestPath = "/keep";
  for (const std::int32_t mode : {kDeleteMode, kMoveMode, kCopyMode}) {
    frm.txtDestination.Text = "typed";
    frm.SetOperMode(mode, "");
    EXPECT_EQ(frm.txtDestination.Text(), "/keep");
  }
}

TEST(FrmFileOper, OneWayOfDeletingIsChosenAtATime) {
  FrmFileOper frm;
  frm.optDelPermanently.Value = true;
  EXPECT_FALSE(frm.optRecycleBin.Value());
  frm.optRecycleBin.Value = true;
  EXPECT_FALSE(frm.optDelPermanently.Value());
}

}  // namespace
}  // namespace tresmor
