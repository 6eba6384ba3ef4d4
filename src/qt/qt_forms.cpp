#include "qt/qt_forms.h"

#include <QEventLoop>

#include "qt/form_windows.h"
#include "qt/qt_dialogs.h"

namespace tresmor {
namespace {

void ShowUntilHidden(const Control& form, FormDialog& window) {
  window.ShowOver(ModalOwner());
  QEventLoop loop;
  // Hidden from within an event: seen when that is over.
  while (form.Visible()) loop.processEvents(QEventLoop::WaitForMoreEvents);
  window.hide();
}

}  // namespace

template <class Form>
FormDialog& QtForms::WindowOf(Form& form) {
  std::unique_ptr<FormDialog>& window = windows_[&form];
  if (!window) window = Build(form, binder_);
  return *window;
}

void QtForms::ShowModal(FrmMyMsgBox& form) { ShowUntilHidden(form, WindowOf(form)); }

void QtForms::ShowModal(FrmFileOper& form) { ShowUntilHidden(form, WindowOf(form)); }

void QtForms::ShowModal(FrmOptions& form) { ShowUntilHidden(form, *Build(form, binder_)); }

void QtForms::ShowModal(FrmSmartDel& form, const ListTip& tips) { ShowUntilHidden(form, *Build(form, binder_, tips)); }

template <class Form, class Owner>
void QtForms::Show(Form& form, Owner owner) {
  form.Listen([this, &form, owner](const Notice& notice) {
    if (notice.what != Notice::What::Visible || notice.when != Notice::When::After) return;
    if (form.Visible()) {
      WindowOf(form).ShowOver(owner());
    } else {
      WindowOf(form).hide();
    }
  });
}

void QtForms::ShowWhileVisible(FrmFileProgress& form) { Show(form, ModalOwner); }

void QtForms::ShowWhileVisible(FrmHelp& form) {
  Show(form, [] { return nullptr; });
}

void QtForms::ShowWhileVisible(FrmTip& form, QWidget& owner) {
  Show(form, [&owner] { return &owner; });
}

}  // namespace tresmor
