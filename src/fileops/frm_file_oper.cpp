#include "fileops/frm_file_oper.h"

#include <array>

namespace tresmor {
namespace {

constexpr float kLeft = 240;
constexpr float kWide = 6960;
constexpr float kLine = 255;
constexpr float kDestTop = 2640;
constexpr float kStructTop = 3600;
constexpr float kOpenTop = 3885;
constexpr float kYesTop = 4950;
constexpr float kButtonsTop = 5340;
constexpr float kButtonWidth = 1215;
constexpr float kButtonHeight = 375;
// Gaps that the arrangement of a mode makes.
constexpr float kBesideWarning = 20;
constexpr float kBelowOpenDest = 10;

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

float Below(const PlacedControl& control) { return control.Top() + control.Height(); }

}  // namespace

FrmFileOper::FrmFileOper()
    : imgWarning({kLeft, 240, 480, 480}),
      lblMsg({kLeft, 240, kWide - 500, 2280}),
      lblNotes({kLeft, kDestTop, kWide, 2 * kLine}),
      fraDest("Destination", {kLeft, kDestTop, kWide, 855}),
      txtDestination({120, 360, 5400, 315}),
      cmdBrowse("&Browse...", {5640, 330, kButtonWidth, kButtonHeight}),
      chkDirStruct(false, "directory structure", {kLeft, kStructTop, kWide, kLine}),
      chkOpenDestDir(false, "Open destination folder after ", {kLeft, kOpenTop, kWide, kLine}),
      chkRemoveEmptyDir(false, "Remove empty directories after ", {kLeft, kStructTop, kWide, kLine}),
      fraDel("", {kLeft, kOpenTop, kWide, 975}),
      optRecycleBin(
          "Move to recycle bin (*If the property of recycle bin is set to 'do not move file to recycle bin', "
          "files will be deleted permanently at any rate.)",
          true, {120, 120, kWide - 240, 2 * kLine}),
      optDelPermanently("Delete permanently", false, {120, 660, kWide - 240, kLine}),
      chkYesToAll(false, "Respond with Yes to All for any dialog box that is displayed. ",
                  {kLeft, kYesTop, kWide, kLine}),
      OKButton("&Yes", {2400, kButtonsTop, kButtonWidth, kButtonHeight}),
      CancelButton("&No", {3825, kButtonsTop, kButtonWidth, kButtonHeight}) {
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
  lblMsg.Left = deletes ? imgWarning.Left() + imgWarning.Width() + kBesideWarning : imgWarning.Left();
  lblNotes.Visible = deletes;
  fraDel.Visible = deletes;
  fraDel.Top = chkOpenDestDir.Top();
  fraDest.Visible = !deletes;
  ShowBox(chkDirStruct, texts.dirStruct);
  ShowBox(chkOpenDestDir, texts.openDest);
  ShowBox(chkRemoveEmptyDir, texts.removeEmpty);
  chkRemoveEmptyDir.Top = deletes ? chkDirStruct.Top() : Below(chkOpenDestDir) + kBelowOpenDest;
}

}  // namespace tresmor
