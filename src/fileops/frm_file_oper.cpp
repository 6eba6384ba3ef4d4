#include "fileops/frm_file_oper.h"

#include <array>

namespace tresmor {
namespace {

struct ModeTexts {
  const char* title;
  const char* question;
  // Captions of boxes; empty where one doesn't show.
  const char* dirStruct;
  const char* openDest;
  const char* removeEmpty;
};

constexpr std::array<ModeTexts, 3> kModeTexts = {{
    {"Delete files",
     "WARNING: Delete files at your own risk. You should make sure those files can be deleted safely, if you are not "
     "sure, just leave it here by clicking 'No'.\r\n\r\nAre you sure to delete the marked files?\r\n",
     "", "", "Remove &empty directories after deleting"},
    {"Move files", "Are you sure to move the marked files to destination folder?\r\n", "Move with directory &structure",
     "Open destination folder after moving", "Remove &empty directories after moving"},
    {"Copy files", "Are you sure to copy the marked files to destination folder?\r\n", "Copy with directory &structure",
     "Open destination folder after copying", ""},
}};

void ShowBox(CheckBox& box, const std::string& caption) {
  box.Visible = !caption.empty();
  if (box.Visible()) box.Caption = caption;
}

}  // namespace

FrmFileOper::FrmFileOper() {
  Visible = false;
  lblNotes.Caption =
      "RECOMMENDATION: It is recommended you move files to a temporary folder for keeping some time before deletion.";
  JoinOptions({&optRecycleBin, &optDelPermanently});
}

void FrmFileOper::SetOperMode(std::int32_t mode, const std::string& files) {
  OperMode = mode;
  txtDestination.Text = DestPath;
  const ModeTexts& texts = kModeTexts.at(static_cast<std::size_t>(mode));
  const bool deletes = mode == kDeleteMode;
  Caption = texts.title;
  lblMsg.Caption = texts.question + files;
  imgWarning.Visible = deletes;
  lblNotes.Visible = deletes;
  fraDel.Visible = deletes;
  fraDest.Visible = !deletes;
  ShowBox(chkDirStruct, texts.dirStruct);
  ShowBox(chkOpenDestDir, texts.openDest);
  ShowBox(chkRemoveEmptyDir, texts.removeEmpty);
}

}  // namespace tresmor
