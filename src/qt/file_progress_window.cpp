#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

#include "qt/form_parts.h"
#include "qt/form_windows.h"

namespace tresmor {

std::unique_ptr<FormDialog> Build(FrmFileProgress& form, const Binder& binder) {
  const auto cancel = [&form] {
    if (form.cmdCancel.OnClick) form.cmdCancel.OnClick();
  };
  auto window = std::make_unique<FormDialog>(form, binder, cancel, cancel);
  QDialog* const owner = window.get();
  BindCaption(form, *owner);
  auto* const layout = new QVBoxLayout(owner);
  layout->addWidget(LongText(form.lblMsg, binder, owner), 1);
  layout->addWidget(Bound<QProgressBar>(form.pbDone, binder, owner, "Progress"));
  layout->addLayout(Centred({Bound<QPushButton>(form.cmdCancel, binder, owner)}));
  owner->resize(binder.Scale().ToPixels(6000), binder.Scale().ToPixels(2200));
  return window;
}

}  // namespace tresmor
