#include "marker/frm_smart_del.h"

#include <gtest/gtest.h>

namespace tresmor {
namespace {

TEST(FrmSmartDel, ControlsHaveTheirTexts) {
  const FrmSmartDel frm;
  EXPECT_FALSE(frm.Visible());
  EXPECT_EQ(frm.HelpContextID, 100);
  EXPECT_EQ(frm.Caption(), "Smart Marking");
  EXPECT_EQ(frm.TabOptions.Caption(1), "&Basic");
  EXPECT_EQ(frm.TabOptions.Caption(2), "&More");
  EXPECT_EQ(frm.lblCriteria.Caption(), "Marking Criteria");
  EXPECT_EQ(frm.lblRequirement.Caption(), "Mark those files fulfilling the following requirement:");
  EXPECT_EQ(frm.lblFolderNote.Caption(), "For multiple selection, hold Ctrl / Shift and click desired items.");
  EXPECT_EQ(frm.lblToDo.Caption(),
            "To Do: Choose Delete/Move from [Result file] menu/[Task] button after marking files to clean up files.");
  EXPECT_EQ(frm.cmdSelAll.Caption(), "Select All");
  EXPECT_EQ(frm.cmdClrAll.Caption(), "Clear All");
  EXPECT_EQ(frm.cmdGetSelections.Caption(), "Get selections");
  EXPECT_EQ(frm.cmdMark.Caption(), "Mark");
  EXPECT_EQ(frm.cmdClearMarks.Caption(), "&Clear Marks");
  EXPECT_EQ(frm.CancelButton.Caption(), "Close");
  EXPECT_EQ(frm.cmdHelp.Caption(), "&Help (F1)");
}

TEST(FrmSmartDel, ATabBringsItsFrameOnShow) {
  FrmSmartDel frm;
  for (const std::int32_t tab : {1, 2, 1}) {
    frm.TabOptions.Select(tab);
    EXPECT_EQ(frm.CurFrame, tab - 1);
    EXPECT_EQ(frm.frmOptions[0].Visible(), tab == 1);
    EXPECT_EQ(frm.frmOptions[1].Visible(), tab == 2);
  }
}

TEST(FrmSmartDel, FramesFillTheRoomBelowTheTabs) {
  FrmSmartDel frm;
  frm.TabOptions.Client = {30, 330, 5000, 4000};
  for (const Frame& frame : frm.frmOptions) {
    EXPECT_EQ(frame.Left(), 30);
    EXPECT_EQ(frame.Top(), 330);
    EXPECT_EQ(frame.Width(), 5000);
    EXPECT_EQ(frame.Height(), 4000);
  }
}

}  // namespace
}  // namespace tresmor
