#include "marker/frm_smart_del.h"

#include "base/number.h"

namespace tresmor {
namespace {

constexpr std::int32_t kMarkHelp = 100;   // topic of the help
constexpr int kFolderColumnWidth = 7000;  // fits beside the buttons

}  // namespace

FrmSmartDel::FrmSmartDel() {
  Visible = false;
  HelpContextID = kMarkHelp;
  lblCriteria.Caption = "Marking Criteria";
  lblRequirement.Caption = "Mark those files fulfilling the following requirement:";
  lblFolderNote.Caption = "For multiple selection, hold Ctrl / Shift and click desired items.";
  lblToDo.Caption =
      "To Do: Choose Delete/Move from [Result file] menu/[Task] button after marking files to clean up files.";
  lstFolder.AddColumn({"Folders", kFolderColumnWidth});
  frmOptions[1].Visible = false;
  PlaceFrames();
  TabOptions.Listen([this](const Notice& notice) {
    if (notice.when != Notice::When::After) return;
    if (notice.what == Notice::What::SelectedTab) ShowFrame();
    if (notice.what == Notice::What::Client) PlaceFrames();
  });
}

void FrmSmartDel::ShowFrame() {
  frmOptions.at(static_cast<std::size_t>(CurFrame)).Visible = false;
  CurFrame = CheckedInt16(TabOptions.SelectedTab() - 1);
  frmOptions.at(static_cast<std::size_t>(CurFrame)).Visible = true;
}

void FrmSmartDel::PlaceFrames() {
  const Place room = TabOptions.Client();
  for (Frame& frame : frmOptions) {
    frame.Left = room.left;
    frame.Top = room.top;
    frame.Width = room.width;
    frame.Height = room.height;
  }
}

}  // namespace tresmor
