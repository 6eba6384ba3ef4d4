#include "qt/qt_forms.h"

#include <QEvent>
#include <QEventLoop>
#include <QTimer>

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

// Calls once a window has come onto the screen, whenever the program shows it.
class ShownWatch : public QObject {
 public:
  ShownWatch(QWidget& window, std::function<void()> handler) : QObject(&window), handler_(std::move(handler)) {
    window.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    // The desktop hears of the window behind this event only.
    if (event->type() == QEvent::Show && !event->spontaneous()) QTimer::singleShot(0, this, [this] { handler_(); });
    return false;
  }

 private:
  const std::function<void()> handler_;
};

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

template <class Form, class Show>
void QtForms::FollowVisible(Form& form, Show show) {
  form.Listen([this, &form, show](const Notice& notice) {
    if (notice.what != Notice::What::Visible || notice.when != Notice::When::After) return;
    form.Visible() ? show() : WindowOf(form).hide();
  });
}

void QtForms::ShowWhileVisible(FrmFileProgress& form) {
  FollowVisible(form, [this, &form] { WindowOf(form).ShowOver(ModalOwner()); });
}

void QtForms::ShowWhileVisible(FrmHelp& form) {
  FollowVisible(form, [this, &form] { WindowOf(form).ShowOver(nullptr); });
}

// A desktop puts what comes before its owner behind it.
void QtForms::ShowWhileVisible(FrmTip& form, QWidget& owner) {
  const auto show = [this, &form, &owner] {
    if (form.Visible() && owner.isVisible()) WindowOf(form).ShowOver(&owner);
  };
  FollowVisible(form, show);
  new ShownWatch(owner, show);  // the owner's child
}

}  // namespace tresmor
