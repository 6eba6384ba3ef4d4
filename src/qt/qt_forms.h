// The dialogs that are forms of the program's own.
#pragma once

#include <QDialog>
#include <functional>
#include <map>
#include <memory>

#include "desk/guarded_msg.h"
#include "fileops/file_commands.h"
#include "qt/binder.h"

namespace tresmor {

// A dialog window that only its form opens and closes. Its frame and the Escape key are told to the form.
class FormDialog : public QDialog {
 public:
  FormDialog(const Binder& binder, std::function<void()> byFrame, std::function<void()> byEscape);

  // Over the window that is active now, which gets no keys and clicks until this one is hidden.
  void ShowOverActive();
  // What has the keys whenever it is shown anew.
  void BeginAt(QWidget& first) { first_ = &first; }
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  const Binder& binder_;
  QWidget* first_ = nullptr;
  const std::function<void()> byFrame_;
  const std::function<void()> byEscape_;
};

// Interface thread.
class QtForms : public ModalForms, public FileForms {
 public:
  // Forms outlive this.
  explicit QtForms(const Binder& binder) : binder_(binder) {}

  void ShowModal(FrmMyMsgBox& form) override;
  void ShowModal(FrmFileOper& form) override;

  // From now on the form's window is on the screen while the form is Visible, over all others.
  void ShowWhileVisible(FrmFileProgress& form);

 private:
  template <class Form>
  void ShowUntilHidden(Form& form);
  // Made when it is first needed, and kept: the form's controls hear of nothing twice.
  template <class Form>
  FormDialog& WindowOf(Form& form);

  const Binder& binder_;
  std::map<const Control*, std::unique_ptr<FormDialog>> windows_;
};

}  // namespace tresmor
