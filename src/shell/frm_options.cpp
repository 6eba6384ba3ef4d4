#include "shell/frm_options.h"

#include "desk/options.h"

namespace tresmor {

FrmOptions::FrmOptions() {
  Visible = false;
  HelpContextID = kOptionsHelp;
  Label1.Caption = "Default Editor:";
}

}  // namespace tresmor
