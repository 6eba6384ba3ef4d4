// What windows are built of.
#pragma once

#include <QLabel>
#include <QStyle>
#include <initializer_list>

#include "qt/binder.h"
#include "qt/display_text.h"

class QHBoxLayout;

namespace tresmor {

// Tab goes through widgets in the order in which they are made.
template <class Widget, class Control>
Widget* Bound(Control& control, const Binder& binder, QWidget* owner, const char* accessibleName = nullptr) {
  auto* const widget = new Widget(owner);
  binder.Bind(control, *widget);
  if (accessibleName != nullptr) widget->setAccessibleName(accessibleName);
  return widget;
}

// A fixed text in front of a field, which takes its name from it.
QLabel* LabelOf(const char* text, QWidget* field, QWidget* owner);

// A placed frame without a border.
QWidget* PlainFrame(Frame& frame, const Binder& binder, QWidget* owner);

QWidget* IconLabel(Image& control, QStyle::StandardPixmap pixmap, const Binder& binder, QWidget* owner);

// A text that may hold long paths: it breaks them anywhere, and scrolls where it has no room.
QWidget* LongText(Label& control, const Binder& binder, QWidget* owner);

void MakeBold(QWidget& widget);

QHBoxLayout* Centred(std::initializer_list<QWidget*> widgets);

// Shows a form's caption as the title of its window.
template <class Form>
void BindCaption(Form& form, QWidget& window) {
  window.setWindowTitle(ShownLine(form.Caption()));
  Follow(form, window, [&form, &window](const Notice& notice) {
    if (notice.what == Notice::What::Text) window.setWindowTitle(ShownLine(form.Caption()));
  });
}

}  // namespace tresmor
