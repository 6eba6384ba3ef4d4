// The dialog "Options" as data.
#pragma once

#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/label.h"
#include "controls/text_box.h"

namespace tresmor {

// One is made for each use, hidden. Interface thread. Its frame and the Escape key close it by CancelButton.
class FrmOptions : public Control {
 public:
  FrmOptions();

  // Room for controls, twips.
  static constexpr float kWidth = 5016;
  static constexpr float kHeight = 3960;

  Property<std::string> Caption{*this, Notice::What::Text, "Options"};
  CheckBox chkLoadTipsAtStartup{false, "&Show Tips at Startup"};
  CheckBox chkNoTooltips{false, "&Disable Tool tips"};
  Label Label1;  // of txtEditor
  TextBox txtEditor;
  Button cmdBrowse{"&Browse"};
  Button cmdClrHist{"Clear &History"};
  Button cmdResetTips{"Reset Warnings and Tips"};
  Button OKButton{"OK"};  // below a line, as is the next
  Button CancelButton{"Cancel"};
};

}  // namespace tresmor
