#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"

namespace tresmor {
namespace {

QGroupBox* TipFrame(FrmTip& form, const Binder& binder, QWidget* owner) {
  auto* const frame = Bound<QGroupBox>(form.Picture1, binder, owner);
  auto* const heading = Bound<QLabel>(form.Label1, binder, frame);
  MakeBold(*heading);
  auto* const tip = Bound<QLabel>(form.lblTipText, binder, frame);
  tip->setTextInteractionFlags(Qt::TextSelectableByMouse);
  tip->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  auto* const texts = new QVBoxLayout;
  texts->addWidget(heading);
  texts->addWidget(tip, 1);
  auto* const row = new QHBoxLayout(frame);
  row->addWidget(IconLabel(form.imgTip, QStyle::SP_MessageBoxInformation, binder, frame), 0, Qt::AlignTop);
  row->addLayout(texts, 1);
  return frame;
}

}  // namespace

std::unique_ptr<FormDialog> Build(FrmTip& form, const Binder& binder) {
  const auto close = [&form] { form.cmdOK.OnClick(); };
  auto window = std::make_unique<FormDialog>(form, binder, close, close);
  QDialog* const owner = window.get();
  owner->setWindowModality(Qt::NonModal);
  BindCaption(form, *owner);
  auto* const ok = Bound<QPushButton>(form.cmdOK, binder, owner);
  ok->setDefault(true);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(Bound<QCheckBox>(form.chkLoadTipsAtStartup, binder, owner), 1);
  buttons->addWidget(Bound<QPushButton>(form.cmdNextTip, binder, owner));
  buttons->addWidget(ok);
  auto* const layout = new QVBoxLayout(owner);
  layout->addWidget(TipFrame(form, binder, owner), 1);
  layout->addLayout(buttons);
  owner->setMinimumSize(binder.Scale().ToPixels(6600), binder.Scale().ToPixels(3400));
  window->BeginAt(*ok);
  return window;
}

}  // namespace tresmor
