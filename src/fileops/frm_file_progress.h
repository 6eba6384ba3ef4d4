// What shows while files are deleted, moved or copied.
#pragma once

#include <string>

#include "controls/button.h"
#include "controls/label.h"
#include "controls/progress_bar.h"
#include "controls/timer.h"
#include "platform/file_operations.h"

namespace tresmor {

// Shown, over all other windows, while it is Visible. Its frame and the Escape key cancel too. Interface thread.
class FrmFileProgress : public Control {
 public:
  FrmFileProgress() { Visible = false; }

  Property<std::string> Caption{*this, Notice::What::Text};
  Label lblMsg;
  ProgressBar pbDone;
  Button cmdCancel{"Cancel"};
  Timer tmrProgress{100};

  // Fills label and bar.
  void Show(const OperationProgress& progress);
};

}  // namespace tresmor
