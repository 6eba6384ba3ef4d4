// The dialogs that are forms of the program's own.
#pragma once

#include <map>
#include <memory>

#include "desk/guarded_msg.h"
#include "fileops/file_commands.h"
#include "qt/form_dialog.h"
#include "shell/frm_help.h"
#include "shell/frm_tip.h"
#include "shell/shell_forms.h"

namespace tresmor {

// Interface thread.
class QtForms : public ModalForms, public FileForms, public ShellForms {
 public:
  explicit QtForms(const Binder& binder) : binder_(binder) {}

  // These forms outlive this.
  void ShowModal(FrmMyMsgBox& form) override;
  void ShowModal(FrmFileOper& form) override;
  // From now on the form's window is on the screen while the form is Visible: over all others; or over `owner`, and
  // with it alone.
  void ShowWhileVisible(FrmFileProgress& form);
  void ShowWhileVisible(FrmTip& form, QWidget& owner);
  void ShowWhileVisible(FrmHelp& form);  // where the desktop likes

  void ShowModal(FrmOptions& form) override;
  void ShowModal(FrmSmartDel& form, const ListTip& tips) override;

 private:
  // Made when it is first needed, and kept: the form's controls hear of nothing twice.
  template <class Form>
  FormDialog& WindowOf(Form& form);
  // `show` brings the form's window onto the screen.
  template <class Form, class Show>
  void FollowVisible(Form& form, Show show);

  const Binder& binder_;
  std::map<const Control*, std::unique_ptr<FormDialog>> windows_;
};

}  // namespace tresmor
