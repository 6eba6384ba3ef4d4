// Messages with a box to tick that silences them from then on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/image.h"
#include "controls/label.h"
#include "desk/options.h"

namespace tresmor {

// Any other number shows no picture.
enum : std::int32_t { kWarningIcon = 1, kTipsIcon = 2 };

// The box of such a message. There is one, which keeps its fields from one showing to the next; its controls start
// afresh each time. Visible while it is loaded. Interface thread.
class FrmMyMsgBox : public Control {
 public:
  enum : std::int32_t { kOk = 0, kOkDontShow = 1, kCancel = 2 };

  FrmMyMsgBox();

  std::int32_t IconType = 0;
  std::string Message;
  std::string Title;       // empty for the application's
  std::int32_t Rtn = kOk;  // what the last button said; a box that no button closed leaves it as it was

  Property<std::string> Caption{*this, Notice::What::Text};
  // Twips with the frame, as whoever shows it has measured, before or after it is loaded.
  Property<float> Width{*this, Notice::What::Place, 5352};
  Label lblMsg;
  Image imgWarning;
  Image imgTips;
  CheckBox chkDontShow;
  Button OKButton;
  Button cmdCancel;

  // Fills the controls from the fields and makes the box visible.
  void Load();
  // Closes it, as its frame does.
  void Unload();
  // The Escape key: Cancel where that button shows, else as the frame.
  void Escape();

 private:
  void PlaceOk();
  void Answer(std::int32_t answer);
};

inline constexpr char kDontShowCaption[] = "Don't show this dialog again.";

// The port to boxes that are forms of the program's own.
class ModalForms {
 public:
  virtual ~ModalForms() = default;
  // Interface thread. Shows a loaded form over the main window and returns when it isn't Visible any more or was closed
  // by its frame. Throws nothing.
  virtual void ShowModal(FrmMyMsgBox& form) = 0;
};

// One message and its flag.
struct GuardedMessage {
  const char* Key;  // of the flag, in the settings
  std::int16_t Options::*Flag;
  std::int32_t IconType;
  const char* Title;
  const char* Message;
};

// All of them, in the order in which the settings are written.
enum GuardedId : std::size_t {
  kWarmProtWin,
  kTipOrgNDup,
  kTipOrgNDupSM,
  kTipSmartMark,
  kSrchPersonal,
  kTipLongSrch,
  kGuardedIds,
};
extern const std::array<GuardedMessage, kGuardedIds> kGuardedMessages;

// Interface thread.
class GuardedMessages {
 public:
  explicit GuardedMessages(ModalForms& forms) : forms_(forms) {}

  // Shows the box and gives its Rtn.
  std::int32_t MyMsgBox(const std::string& Message, const std::string& Title, std::int32_t IconType);

  // Shows the message unless `flag` is 1, and keeps in it whether to show it again. False if the user cancelled.
  bool GuardedMsg(std::int16_t& flag, const std::string& Message, const std::string& Title, std::int32_t IconType);
  bool GuardedMsg(Options& options, GuardedId id);

 private:
  ModalForms& forms_;
  FrmMyMsgBox frmMyMsgBox_;
};

}  // namespace tresmor
