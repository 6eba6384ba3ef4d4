#pragma once

#include "marker/frm_smart_del.h"
#include "results/list_tip.h"
#include "shell/frm_options.h"

namespace tresmor {

// The port to dialogs that are made anew for each use.
class ShellForms {
 public:
  virtual ~ShellForms() = default;
  // Interface thread. Each shows a form that is Visible over the main window, pumping events, and returns when it isn't
  // Visible any more. The form may go after that. Throws nothing.
  virtual void ShowModal(FrmOptions& form) = 0;
  // `tips` has the hover texts of the form's list.
  virtual void ShowModal(FrmSmartDel& form, const ListTip& tips) = 0;
};

}  // namespace tresmor
