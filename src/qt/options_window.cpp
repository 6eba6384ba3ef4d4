#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"

namespace tresmor {
namespace {

QHBoxLayout* EditorRow(FrmOptions& form, const Binder& binder, QWidget* owner) {
  auto* const label = Bound<QLabel>(form.Label1, binder, owner);
  auto* const text = Bound<QLineEdit>(form.txtEditor, binder, owner, "Default Editor");
  label->setBuddy(text);
  label->setWordWrap(false);
  auto* const row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(text, 1);
  row->addWidget(Bound<QPushButton>(form.cmdBrowse, binder, owner));
  return row;
}

}  // namespace

std::unique_ptr<FormDialog> Build(FrmOptions& form, const Binder& binder) {
  const auto cancel = [&form] { form.CancelButton.OnClick(); };
  auto window = std::make_unique<FormDialog>(form, binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const tips = Bound<QCheckBox>(form.chkLoadTipsAtStartup, binder, owner);
  auto* const line = new QFrame(owner);
  line->setFrameStyle(QFrame::HLine | QFrame::Sunken);

  auto* const layout = new QVBoxLayout(owner);
  layout->addWidget(tips);
  layout->addWidget(Bound<QCheckBox>(form.chkNoTooltips, binder, owner));
  layout->addLayout(EditorRow(form, binder, owner));
  layout->addStretch();
  layout->addLayout(Centred(
      {Bound<QPushButton>(form.cmdClrHist, binder, owner), Bound<QPushButton>(form.cmdResetTips, binder, owner)}));
  layout->addWidget(line);
  auto* const ok = Bound<QPushButton>(form.OKButton, binder, owner);
  ok->setDefault(true);
  layout->addLayout(Centred({ok, Bound<QPushButton>(form.CancelButton, binder, owner)}));
  const Twips& twips = binder.Scale();
  owner->setFixedSize(
      QSize(twips.ToPixels(FrmOptions::kWidth), twips.ToPixels(FrmOptions::kHeight)).expandedTo(layout->minimumSize()));
  window->BeginAt(*tips);
  return window;
}

}  // namespace tresmor
