#include "qt/qt_forms.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QEventLoop>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

#include "qt/display_text.h"
#include "qt/qt_dialogs.h"

namespace tresmor {
namespace {

QWidget* IconLabel(Image& control, QStyle::StandardPixmap pixmap, const Binder& binder, QWidget* owner) {
  auto* const label = new QLabel(owner);
  const int size = owner->style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, owner);
  label->setPixmap(owner->style()->standardIcon(pixmap, nullptr, owner).pixmap(size, size));
  label->setAlignment(Qt::AlignTop);
  binder.BindState(control, *label);
  return label;
}

// Tab goes through widgets in the order in which they are made.
template <class Widget, class Control>
Widget* Bound(Control& control, const Binder& binder, QWidget* owner) {
  auto* const widget = new Widget(owner);
  binder.Bind(control, *widget);
  return widget;
}

// A text that may hold long paths: it breaks them anywhere, and scrolls where it has no room.
QWidget* LongText(Label& control, const Binder& binder, QWidget* owner) {
  auto* const text = new QPlainTextEdit(owner);
  text->setReadOnly(true);
  text->setAccessibleName("Message");
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text->setFrameShape(QFrame::NoFrame);
  text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  text->viewport()->setAutoFillBackground(false);
  text->setPlainText(ShownLines(control.Caption()));
  Follow(control, *text, [text, &control](const Notice& notice) {
    if (notice.what == Notice::What::Text) text->setPlainText(ShownLines(control.Caption()));
  });
  binder.BindState(control, *text);
  return text;
}

template <class Form>
void BindCaption(Form& form, QWidget& window) {
  window.setWindowTitle(ShownLine(form.Caption()));
  Follow(form, window, [&form, &window](const Notice& notice) {
    if (notice.what == Notice::What::Text) window.setWindowTitle(ShownLine(form.Caption()));
  });
}

QHBoxLayout* Centred(std::initializer_list<QWidget*> widgets) {
  auto* const row = new QHBoxLayout;
  row->addStretch();
  for (QWidget* const widget : widgets) row->addWidget(widget);
  row->addStretch();
  return row;
}

std::unique_ptr<FormDialog> Build(FrmMyMsgBox& form, const Binder& binder) {
  auto window = std::make_unique<FormDialog>(
      binder, [&form] { form.Unload(); }, [&form] { form.Escape(); });
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const message = Bound<QLabel>(form.lblMsg, binder, owner);
  message->setMinimumWidth(binder.Scale().ToPixels(4335));

  auto* const body = new QHBoxLayout;
  body->addWidget(IconLabel(form.imgWarning, QStyle::SP_MessageBoxWarning, binder, owner), 0, Qt::AlignTop);
  body->addWidget(IconLabel(form.imgTips, QStyle::SP_MessageBoxInformation, binder, owner), 0, Qt::AlignTop);
  body->addWidget(message, 1);
  auto* const layout = new QVBoxLayout(owner);
  layout->addLayout(body, 1);
  layout->addWidget(Bound<QCheckBox>(form.chkDontShow, binder, owner));
  auto* const ok = Bound<QPushButton>(form.OKButton, binder, owner);
  ok->setDefault(true);
  layout->addLayout(Centred({ok, Bound<QPushButton>(form.cmdCancel, binder, owner)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
  window->BeginAt(*ok);
  return window;
}

QGroupBox* DestinationFrame(FrmFileOper& form, const Binder& binder, QWidget* owner) {
  auto* const frame = Bound<QGroupBox>(form.fraDest, binder, owner);
  auto* const text = Bound<QLineEdit>(form.txtDestination, binder, frame);
  text->setAccessibleName("Destination");
  auto* const row = new QHBoxLayout(frame);
  row->addWidget(text, 1);
  row->addWidget(Bound<QPushButton>(form.cmdBrowse, binder, frame));
  return frame;
}

// A choice whose caption is longer than any window: its words stand beside it and wrap.
QWidget* WrappedOption(OptionButton& control, const Binder& binder, QWidget* owner) {
  auto* const box = new QWidget(owner);
  auto* const button = Bound<QRadioButton>(control, binder, box);
  auto* const words = new QLabel(button->text(), box);
  words->setWordWrap(true);
  words->setBuddy(button);
  button->setAccessibleName(button->text());
  button->setText("");
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(button, 0, Qt::AlignTop);
  row->addWidget(words, 1);
  return box;
}

QGroupBox* DeleteFrame(FrmFileOper& form, const Binder& binder, QWidget* owner) {
  auto* const frame = Bound<QGroupBox>(form.fraDel, binder, owner);
  auto* const column = new QVBoxLayout(frame);
  column->addWidget(WrappedOption(form.optRecycleBin, binder, frame));
  column->addWidget(WrappedOption(form.optDelPermanently, binder, frame));
  return frame;
}

std::unique_ptr<FormDialog> Build(FrmFileOper& form, const Binder& binder) {
  const auto cancel = [&form] {
    if (form.CancelButton.OnClick) form.CancelButton.OnClick();
  };
  auto window = std::make_unique<FormDialog>(binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const notes = Bound<QLabel>(form.lblNotes, binder, owner);
  QFont bold = notes->font();
  bold.setBold(true);
  notes->setFont(bold);

  auto* const body = new QHBoxLayout;
  body->addWidget(IconLabel(form.imgWarning, QStyle::SP_MessageBoxWarning, binder, owner), 0, Qt::AlignTop);
  body->addWidget(LongText(form.lblMsg, binder, owner), 1);
  auto* const layout = new QVBoxLayout(owner);
  layout->addLayout(body, 1);
  layout->addWidget(notes);
  layout->addWidget(DestinationFrame(form, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkDirStruct, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkOpenDestDir, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkRemoveEmptyDir, binder, owner));
  layout->addWidget(DeleteFrame(form, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkYesToAll, binder, owner));
  auto* const yes = Bound<QPushButton>(form.OKButton, binder, owner);
  auto* const no = Bound<QPushButton>(form.CancelButton, binder, owner);
  layout->addLayout(Centred({yes, no}));
  owner->resize(binder.Scale().ToPixels(7440), binder.Scale().ToPixels(6200));
  window->BeginAt(*no);
  return window;
}

std::unique_ptr<FormDialog> Build(FrmFileProgress& form, const Binder& binder) {
  const auto cancel = [&form] {
    if (form.cmdCancel.OnClick) form.cmdCancel.OnClick();
  };
  auto window = std::make_unique<FormDialog>(binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const layout = new QVBoxLayout(owner);
  layout->addWidget(LongText(form.lblMsg, binder, owner), 1);
  layout->addWidget(Bound<QProgressBar>(form.pbDone, binder, owner));
  layout->addLayout(Centred({Bound<QPushButton>(form.cmdCancel, binder, owner)}));
  owner->resize(binder.Scale().ToPixels(6000), binder.Scale().ToPixels(2200));
  return window;
}

}  // namespace

FormDialog::FormDialog(const Binder& binder, std::function<void()> byFrame, std::function<void()> byEscape)
    : binder_(binder), byFrame_(std::move(byFrame)), byEscape_(std::move(byEscape)) {
  setWindowModality(Qt::ApplicationModal);
}

void FormDialog::ShowOverActive() {
  if (const QWidget* const owner = ModalOwner(); owner != nullptr && owner != this) {
    winId();  // makes the window's handle
    windowHandle()->setTransientParent(owner->window()->windowHandle());
    adjustSize();
    move(owner->frameGeometry().center() - rect().center());
  }
  if (first_ != nullptr) first_->setFocus();
  show();
}

void FormDialog::reject() { binder_.Deliver(byEscape_); }

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  binder_.Deliver(byFrame_);
}

template <class Form>
FormDialog& QtForms::WindowOf(Form& form) {
  std::unique_ptr<FormDialog>& window = windows_[&form];
  if (!window) window = Build(form, binder_);
  return *window;
}

template <class Form>
void QtForms::ShowUntilHidden(Form& form) {
  FormDialog& window = WindowOf(form);
  window.ShowOverActive();
  QEventLoop loop;
  // Hidden from within an event: seen when that is over.
  while (form.Visible()) loop.processEvents(QEventLoop::WaitForMoreEvents);
  window.hide();
}

void QtForms::ShowModal(FrmMyMsgBox& form) { ShowUntilHidden(form); }

void QtForms::ShowModal(FrmFileOper& form) { ShowUntilHidden(form); }

void QtForms::ShowWhileVisible(FrmFileProgress& form) {
  form.Listen([this, &form](const Notice& notice) {
    if (notice.what != Notice::What::Visible || notice.when != Notice::When::After) return;
    if (form.Visible()) {
      WindowOf(form).ShowOverActive();
    } else {
      WindowOf(form).hide();
    }
  });
}

}  // namespace tresmor
