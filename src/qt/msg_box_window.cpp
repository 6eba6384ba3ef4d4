#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"

namespace tresmor {

std::unique_ptr<FormDialog> Build(FrmMyMsgBox& form, const Binder& binder) {
  auto window = std::make_unique<FormDialog>(
      form, binder, [&form] { form.Unload(); }, [&form] { form.Escape(); });
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

}  // namespace tresmor
