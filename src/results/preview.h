// The pane beside the result lists that shows the picture of a row's file.
#pragma once

#include "controls/check_box.h"
#include "controls/picture.h"
#include "controls/text_box.h"

namespace tresmor {

struct PreviewPane {
  PreviewPane() { txtFilename.Locked = true; }

  CheckBox chkPreview{true, "Pre&view"};
  Picture imgPreview;
  TextBox txtFilename;  // its text can be selected, not changed
};

// Lets go of the picture on show, whose file may be about to go. Interface thread.
inline void ClrPreview(PreviewPane& pane) {
  pane.imgPreview.File = "";
  pane.imgPreview.Image = nullptr;
  pane.txtFilename.Text = "";
  pane.txtFilename.ToolTipText = "";
}

}  // namespace tresmor
