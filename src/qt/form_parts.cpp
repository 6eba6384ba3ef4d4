#include "qt/form_parts.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>

namespace tresmor {

QLabel* LabelOf(const char* text, QWidget* field, QWidget* owner) {
  auto* const label = new QLabel(text, owner);
  label->setBuddy(field);
  QString name(text);
  field->setAccessibleName(name.remove('&').remove(':'));
  return label;
}

QWidget* PlainFrame(Frame& frame, const Binder& binder, QWidget* owner) {
  auto* const widget = new QWidget(owner);
  binder.BindState(frame, *widget);
  binder.BindPlace(frame, *widget);
  return widget;
}

QWidget* IconLabel(Image& control, QStyle::StandardPixmap pixmap, const Binder& binder, QWidget* owner) {
  auto* const label = new QLabel(owner);
  const int size = owner->style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, owner);
  label->setPixmap(owner->style()->standardIcon(pixmap, nullptr, owner).pixmap(size, size));
  label->setAlignment(Qt::AlignTop);
  binder.BindState(control, *label);
  return label;
}

QWidget* LongText(Label& control, const Binder& binder, QWidget* owner) {
  auto* const text = new QPlainTextEdit(owner);
  text->setReadOnly(true);
  text->setAccessibleName("Message");
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text->setFrameShape(QFrame::NoFrame);
  text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  text->viewport()->setAutoFillBackground(false);
  text->setPlainText(ShownCaption(control.Caption()));
  Follow(control, *text, [text, &control](const Notice& notice) {
    if (notice.what == Notice::What::Text) text->setPlainText(ShownCaption(control.Caption()));
  });
  binder.BindState(control, *text);
  return text;
}

void MakeBold(QWidget& widget) {
  QFont bold = widget.font();
  bold.setBold(true);
  widget.setFont(bold);
}

QHBoxLayout* Centred(std::initializer_list<QWidget*> widgets) {
  auto* const row = new QHBoxLayout;
  row->addStretch();
  for (QWidget* const widget : widgets) row->addWidget(widget);
  row->addStretch();
  return row;
}

}  // namespace tresmor
