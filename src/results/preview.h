// The pane beside the result lists that shows the picture of a row's file.
#pragma once

#include "controls/picture.h"
#include "controls/text_box.h"

namespace tresmor {

struct PreviewPane {
  Picture imgPreview;
  TextBox txtFilename;  // takes no typing
};

// Lets go of the picture on show, whose file may be about to go. Interface thread.
inline void ClrPreview(PreviewPane& pane) {
  pane.imgPreview.File = "";
  pane.txtFilename.Text = "";
  pane.txtFilename.ToolTipText = "";
}

}  // namespace tresmor
