#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"

namespace tresmor {

namespace {

QGroupBox* DestinationFrame(FrmFileOper& form, const Binder& binder, QWidget* owner) {
  auto* const frame = Bound<QGroupBox>(form.fraDest, binder, owner);
  auto* const text = Bound<QLineEdit>(form.txtDestination, binder, frame);
  text->setAccessibleName("Destination");
  auto* const row = new QHBoxLayout(frame);
  row->addWidget(text, 1);
  row->addWidget(Bound<QPushButton>(form.cmdBrowse, binder, frame));
  return frame;
}

// Words that stand for a button: a click on them is one on it.
class WordsOf : public QLabel {
 public:
  WordsOf(QRadioButton& button, QWidget* owner) : QLabel(button.text(), owner), button_(button) {
    setWordWrap(true);
    setBuddy(&button);
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (rect().contains(event->pos())) button_.click();
  }

 private:
  QRadioButton& button_;
};

// A choice whose caption is longer than any window: its words stand beside it and wrap.
QWidget* WrappedOption(OptionButton& control, const Binder& binder, QWidget* owner) {
  auto* const box = new QWidget(owner);
  auto* const button = Bound<QRadioButton>(control, binder, box);
  auto* const words = new WordsOf(*button, box);
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

}  // namespace

std::unique_ptr<FormDialog> Build(FrmFileOper& form, const Binder& binder) {
  const auto cancel = [&form] {
    if (form.CancelButton.OnClick) form.CancelButton.OnClick();
  };
  auto window = std::make_unique<FormDialog>(form, binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const notes = Bound<QLabel>(form.lblNotes, binder, owner);
  MakeBold(*notes);

  auto* const body = new QHBoxLayout;
  body->setSpacing(binder.Scale().ToPixels(FrmFileOper::kBesideWarning));
  body->addWidget(IconLabel(form.imgWarning, QStyle::SP_MessageBoxWarning, binder, owner), 0, Qt::AlignTop);
  body->addWidget(LongText(form.lblMsg, binder, owner), 1);
  auto* const layout = new QVBoxLayout(owner);
  layout->addLayout(body, 1);
  layout->addWidget(notes);
  layout->addWidget(DestinationFrame(form, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkDirStruct, binder, owner));
  auto* const afterwards = new QVBoxLayout;
  afterwards->setSpacing(binder.Scale().ToPixels(FrmFileOper::kBelowOpenDest));
  afterwards->addWidget(Bound<QCheckBox>(form.chkOpenDestDir, binder, owner));
  afterwards->addWidget(Bound<QCheckBox>(form.chkRemoveEmptyDir, binder, owner));
  layout->addLayout(afterwards);
  layout->addWidget(DeleteFrame(form, binder, owner));
  layout->addWidget(Bound<QCheckBox>(form.chkYesToAll, binder, owner));
  auto* const yes = Bound<QPushButton>(form.OKButton, binder, owner);
  auto* const no = Bound<QPushButton>(form.CancelButton, binder, owner);
  layout->addLayout(Centred({yes, no}));
  owner->resize(binder.Scale().ToPixels(7440), binder.Scale().ToPixels(6200));
  window->BeginAt(*no);
  return window;
}

}  // namespace tresmor
