#include "qt/form_dialog.h"

#include <QCloseEvent>
#include <QScreen>
#include <QWindow>

namespace tresmor {

FormDialog::FormDialog(Control& form, const Binder& binder, std::function<void()> byFrame,
                       std::function<void()> byEscape)
    : binder_(binder), byFrame_(std::move(byFrame)), byEscape_(std::move(byEscape)) {
  setWindowModality(Qt::ApplicationModal);
  binder_.BindHelp(form, *this);
}

void FormDialog::ShowOver(QWidget* owner) {
  if (owner != nullptr && owner != this) {
    // Makes the windows' handles.
    winId();
    owner->window()->winId();
    windowHandle()->setTransientParent(owner->window()->windowHandle());
    adjustSize();
    const QRect around = owner->isVisible() ? owner->frameGeometry() : screen()->availableGeometry();
    move(around.center() - rect().center());
  }
  if (first_ != nullptr) first_->setFocus();
  show();
}

void FormDialog::reject() { binder_.Deliver(byEscape_); }

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  binder_.Deliver(byFrame_);
}

}  // namespace tresmor
