#pragma once

#include <QDialog>
#include <functional>

#include "qt/binder.h"

namespace tresmor {

// A dialog window that only its form opens and closes. Its frame and the Escape key are told to the form. Modal, unless
// whoever builds it says otherwise.
class FormDialog : public QDialog {
 public:
  FormDialog(Control& form, const Binder& binder, std::function<void()> byFrame, std::function<void()> byEscape);

  // Over `owner`, which may not be on the screen yet; none leaves it to the desktop where.
  void ShowOver(QWidget* owner);
  // What has the keys whenever it is shown anew.
  void BeginAt(QWidget& first) { first_ = &first; }
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  // The nearest window on the screen that this one stands or stood over; null for none.
  QWindow* Owner() const;
  void GiveKeys(QWindow* other);

  const Binder& binder_;
  QWidget* first_ = nullptr;
  const std::function<void()> byFrame_;
  const std::function<void()> byEscape_;
};

}  // namespace tresmor
