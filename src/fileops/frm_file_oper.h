// The dialog in front of deleting, moving and copying marked files, as data.
#pragma once

#include <cstdint>
#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/frame.h"
#include "controls/image.h"
#include "controls/label.h"
#include "controls/option_button.h"
#include "controls/text_box.h"

namespace tresmor {

enum : std::int32_t { kDeleteMode = 0, kMoveMode = 1, kCopyMode = 2 };

// There is one, which is hidden after each use and keeps the user's ticks and destination for the next. Interface
// thread. Its frame and the Escape key close it by CancelButton.
class FrmFileOper : public Control {
 public:
  FrmFileOper();

  std::int32_t OperMode = kDeleteMode;
  std::string DestPath;

  Property<std::string> Caption{*this, Notice::What::Text};
  Image imgWarning;
  Label lblMsg;
  Label lblNotes;  // in bold
  Frame fraDest;
  TextBox txtDestination;  // in fraDest, as is the next
  Button cmdBrowse;
  CheckBox chkDirStruct;
  CheckBox chkOpenDestDir;
  CheckBox chkRemoveEmptyDir;
  Frame fraDel;
  OptionButton optRecycleBin;  // in fraDel, as is the next
  OptionButton optDelPermanently;
  CheckBox chkYesToAll;
  Button OKButton;
  Button CancelButton;

  // Turns the dialog to a mode: what shows, where, and with which texts. `files` is the list of files under the
  // question. Ticks stay.
  void SetOperMode(std::int32_t mode, const std::string& files);
};

}  // namespace tresmor
