#include "desk/guarded_msg.h"

#include "base/number.h"

namespace tresmor {

namespace {

constexpr float kOkLeft = 1440;

}  // namespace

const std::array<GuardedMessage, kGuardedIds> kGuardedMessages = {{
    {"DontShowWarmProtWin", &Options::DontShowWarmProtWin, kWarningIcon, "Protect System Folders",
     "It is risky if you don't protect system directories."},
    {"DontShowTipOrgNDup", &Options::DontShowTipOrgNDup, kTipsIcon, "",
     "Both original and duplicate files are included in the result list, it is recommended to keep at least one "
     "duplicate file."},
    {"DontShowTipOrgNDupSM", &Options::DontShowTipOrgNDupSM, kTipsIcon, "Smart Marker",
     "Both original and duplicate files are included in the result list, it is recommended to keep at least one "
     "duplicate file. To do this automatically, select 'Keep at least one'."},
    {"DontShowTipSmartMark", &Options::DontShowTipSmartMark, kTipsIcon, "Smart Marker",
     "You can now mark those files you want to delete or move by putting a tick to the box of the file. To mark files "
     "automatically, you can use 'Smart Marker' to mark duplicate files by date, folder, pattern, size and version. To "
     "do this, select menu 'Result Files' and then 'Smart Marker'."},
    {"DontShowSrchPersonal", &Options::DontShowSrchPersonal, kTipsIcon, "Personal data",
     "Searching the whole hard drive is only recommended for advanced user. It is recommended to search personal data "
     "for duplicate files as you know what the files are. You can select 'My documents' in the path list or add path "
     "containing your persoanl data. "},
    {"DontShowTipLongSrch", &Options::DontShowTipLongSrch, kTipsIcon, "Be patient",
     "The search can be a lengthy process, the more files to search, the longer the search time is. It may require "
     "hours of search time and may not response for a few minutes for very large files. Please be patient and wait for "
     "completion."},
}};

FrmMyMsgBox::FrmMyMsgBox()
    : OKButton("OK", {.left = kOkLeft, .width = 1215}), cmdCancel("Cancel", {.left = 2760, .width = 1215}) {
  Visible = false;
  HelpContextID = kOptionsHelp;
  imgWarning.Visible = false;
  imgTips.Visible = false;
  chkDontShow.Caption = kDontShowCaption;
  Listen([this](const Notice& notice) {
    if (notice.what == Notice::What::Place && notice.when == Notice::When::After) PlaceOk();
  });
  OKButton.OnClick = [this] { Answer(chkDontShow.Ticked() ? kOkDontShow : kOk); };
  cmdCancel.OnClick = [this] { Answer(kCancel); };
}

void FrmMyMsgBox::Load() {
  lblMsg.Caption = Message;
  Caption = Title.empty() ? kAppTitle : Title;
  chkDontShow.Value = false;
  imgWarning.Visible = IconType == kWarningIcon;
  imgTips.Visible = IconType == kTipsIcon;
  cmdCancel.Visible = IconType != kTipsIcon;
  PlaceOk();
  Visible = true;
}

// In the middle where it is alone.
void FrmMyMsgBox::PlaceOk() { OKButton.Left = cmdCancel.Visible() ? kOkLeft : (Width() - OKButton.Width()) / 2; }

void FrmMyMsgBox::Unload() { Visible = false; }

void FrmMyMsgBox::Escape() {
  if (cmdCancel.Visible()) {
    cmdCancel.OnClick();
  } else {
    Unload();
  }
}

void FrmMyMsgBox::Answer(std::int32_t answer) {
  Rtn = answer;
  Unload();
}

std::int32_t GuardedMessages::MyMsgBox(const std::string& Message, const std::string& Title, std::int32_t IconType) {
  frmMyMsgBox_.Message = Message;
  frmMyMsgBox_.Title = Title;
  frmMyMsgBox_.IconType = IconType;
  frmMyMsgBox_.Load();
  forms_.ShowModal(frmMyMsgBox_);
  frmMyMsgBox_.Unload();
  return frmMyMsgBox_.Rtn;
}

bool GuardedMessages::GuardedMsg(std::int16_t& flag, const std::string& Message, const std::string& Title,
                                 std::int32_t IconType) {
  if (flag == 1) return true;
  const std::int32_t answer = MyMsgBox(Message, Title, IconType);
  if (answer == FrmMyMsgBox::kCancel) return false;
  flag = CheckedInt16(answer);
  return true;
}

bool GuardedMessages::GuardedMsg(Options& options, GuardedId id) {
  const GuardedMessage& message = kGuardedMessages[id];
  return GuardedMsg(options.*message.Flag, message.Message, message.Title, message.IconType);
}

}  // namespace tresmor
