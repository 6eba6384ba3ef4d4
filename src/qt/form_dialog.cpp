#include "qt/form_dialog.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include "qt/qt_dialogs.h"

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

// A window that comes and goes in a moment may be told that it has the keys when it has gone.
bool FormDialog::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && !isVisible()) {
    const QWidget* const other = Owner() == nullptr ? ModalOwner() : nullptr;
    GiveKeys(other == nullptr ? Owner() : other->windowHandle());
  }
  return QDialog::event(event);
}

// The desktop may give the keys to none. Whoever has gone on to another program isn't called back.
void FormDialog::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  if (!event->spontaneous() && QGuiApplication::focusWindow() != nullptr) GiveKeys(Owner());
}

QWindow* FormDialog::Owner() const {
  QWindow* owner = windowHandle()->transientParent();
  while (owner != nullptr && !owner->isVisible()) owner = owner->transientParent();
  return owner;
}

// The toolkit doesn't ask the desktop for the keys while a window that belongs to the other seems to have them.
void FormDialog::GiveKeys(QWindow* other) {
  if (other == nullptr) return;
  QWindow* const before = windowHandle()->transientParent();
  windowHandle()->setTransientParent(nullptr);
  other->requestActivate();
  windowHandle()->setTransientParent(before);
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  binder_.Deliver(byFrame_);
}

}  // namespace tresmor
