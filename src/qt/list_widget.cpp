#include "qt/list_widget.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "base/text.h"
#include "qt/display_text.h"

namespace tresmor {
namespace {

// Paints the control's own selection.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(const ListView& list, QObject* parent) : QStyledItemDelegate(parent), list_(list) {}

  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const std::int32_t row = index.row() + 1;
    if (row > list_.Count() || !list_.Selected(row)) return;
    option->state |= QStyle::State_Selected;
    // A colour of the row's own would be unreadable on the ground of a selection.
    option->palette.setBrush(QPalette::Text, option->palette.text());
  }

 private:
  const ListView& list_;
};

}  // namespace

ListWidget::ListWidget(ListView& list, const Binder& binder, ListLook look, QWidget* parent)
    : QTreeView(parent), list_(list), binder_(binder), look_(std::move(look)) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(NoSelection);
  setEditTriggers(NoEditTriggers);
  setMouseTracking(true);
  setTextElideMode(Qt::ElideMiddle);
  setItemDelegate(new RowDelegate(list_, this));
  setModel(new ListModel(list_, look_.checkBoxes, look_.icons, this));
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
  header()->setSectionsClickable(true);
  connect(header(), &QHeaderView::sectionClicked, this, [this](int section) { SortBy(section); });
  ShowColumns();
  Follow(list_, *this, [this](const Notice& notice) { Hear(notice); });
  binder_.BindState(list_, *this);
}

void ListWidget::Hear(const Notice& notice) {
  switch (notice.what) {
    case Notice::What::RowsChanged:
      GoWithSelectedItem();
      viewport()->update();
      break;
    case Notice::What::RowsReset:
    case Notice::What::RowsRemoved:
    case Notice::What::Visible:
      anchor_ = 0;
      GoWithSelectedItem();
      break;
    case Notice::What::Frozen:
      setUpdatesEnabled(!list_.Frozen());
      break;
    default:
      break;
  }
}

// Where the list is scrolled to stays.
void ListWidget::GoWithSelectedItem() {
  const std::int32_t row = list_.SelectedItem();
  if (row == 0 || row == CurrentRow()) return;
  setAutoScroll(false);
  setCurrentIndex(model()->index(row - 1, 0));
  setAutoScroll(true);
}

void ListWidget::ShowColumns() {
  for (int i = 0; i < list_.Columns(); ++i) {
    const int width = list_.Column(i + 1).width;
    setColumnHidden(i, width == 0);
    if (width > 0) setColumnWidth(i, binder_.Scale().ColumnPixels(width));
  }
}

void ListWidget::SortBy(int section) {
  binder_.Deliver([&] {
    if (list_.OnColumnClick) list_.OnColumnClick(static_cast<std::int16_t>(section + 1));
  });
}

int ListWidget::ShownSection(int number) const {
  for (int section = 0; section < list_.Columns(); ++section) {
    if (!isColumnHidden(section) && --number == 0) return section;
  }
  return -1;
}

std::int32_t ListWidget::RowAt(const QPoint& point) const { return indexAt(point).row() + 1; }

bool ListWidget::IsOnCheckBox(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!look_.checkBoxes || !index.isValid() || index.column() != 0) return false;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  const QRect box = style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
  // All that lies beside it counts: there is nothing else to hit.
  return point.x() >= option.rect.left() && point.x() <= box.right() + box.width() / 4;
}

void ListWidget::GoTo(std::int32_t row) {
  list_.GiveFocus(row);
  scrollTo(currentIndex());
}

void ListWidget::SelectOnly(std::int32_t first, std::int32_t last) {
  for (std::int32_t row = 1; row <= list_.Count(); ++row) {
    const bool wanted = row >= first && row <= last;
    if (wanted != list_.Selected(row)) list_.SetSelected(row, wanted);
  }
}

void ListWidget::PickRow(std::int32_t row, Qt::KeyboardModifiers keys) {
  const bool isRange = look_.multiSelect && keys.testFlag(Qt::ShiftModifier) && anchor_ != 0;
  if (!isRange) anchor_ = row;
  list_.ChangeMany([&] {
    if (!isRange && look_.multiSelect && keys.testFlag(Qt::ControlModifier)) {
      list_.SetSelected(row, !list_.Selected(row));
    } else {
      SelectOnly(std::min(row, anchor_), std::max(row, anchor_));
    }
    list_.GiveFocus(row);
  });
  GoTo(row);
  if (list_.OnItemClick) list_.OnItemClick();
}

void ListWidget::ToggleMark(std::int32_t row) {
  list_.SetChecked(row, !list_.Checked(row));
  if (list_.OnItemCheck) list_.OnItemCheck();
}

// The selected rows follow the one that has the keys; where it isn't among them, it goes alone.
void ListWidget::ToggleMarks(std::int32_t row) {
  const bool marked = !list_.Checked(row);
  if (list_.Selected(row)) {
    list_.ChangeMany([&] {
      for (std::int32_t other = 1; other <= list_.Count(); ++other) {
        if (list_.Selected(other)) list_.SetChecked(other, marked);
      }
    });
  } else {
    list_.SetChecked(row, marked);
  }
  if (list_.OnItemCheck) list_.OnItemCheck();
}

void ListWidget::mousePressEvent(QMouseEvent* event) {
  const std::int32_t row = RowAt(event->pos());
  const bool left = event->button() == Qt::LeftButton;
  binder_.Deliver([&] {
    if (row == 0) {
      list_.ChangeMany([this] { SelectOnly(0, 0); });
    } else if (left && IsOnCheckBox(event->pos())) {
      GoTo(row);
      ToggleMark(row);
    } else if (left || !list_.Selected(row)) {
      PickRow(row, left ? event->modifiers() : Qt::NoModifier);
    } else {
      GoTo(row);  // a menu over many rows is about the one that was hit
      if (list_.OnItemClick) list_.OnItemClick();
    }
  });
}

void ListWidget::mouseReleaseEvent(QMouseEvent* event) {
  const auto button = event->button() == Qt::LeftButton    ? MouseButton::Left
                      : event->button() == Qt::RightButton ? MouseButton::Right
                                                           : MouseButton::Middle;
  binder_.Deliver([&] {
    if (button == MouseButton::Left && list_.OnClick) list_.OnClick();
    if (list_.OnMouseUp) list_.OnMouseUp(button);
  });
}

void ListWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || IsOnCheckBox(event->pos())) return mousePressEvent(event);
  if (RowAt(event->pos()) != 0) binder_.Deliver(list_.OnDblClick);
}

void ListWidget::mouseMoveEvent(QMouseEvent* event) {
  binder_.Deliver([&] {
    if (list_.OnMouseMove) list_.OnMouseMove(RowAt(event->pos()));
  });
}

// The menu opens when the button is let go, by OnMouseUp.
void ListWidget::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard || !list_.OnMouseUp) return;
  binder_.Deliver([&] { list_.OnMouseUp(MouseButton::Right); });
}

std::int32_t ListWidget::RowOfKey(int key) const {
  const std::int32_t row = CurrentRow();
  const std::int32_t last = list_.Count();
  const int height = std::max(1, rowHeight(model()->index(0, 0)));
  const std::int32_t page = std::max(1, viewport()->height() / height - 1);
  switch (key) {
    case Qt::Key_Up:
      return std::max(1, row - 1);
    case Qt::Key_Down:
      return std::min(last, row + 1);
    case Qt::Key_PageUp:
      return std::max(1, row - page);
    case Qt::Key_PageDown:
      return std::min(last, row + page);
    case Qt::Key_Home:
      return 1;
    case Qt::Key_End:
      return last;
    default:
      return 0;
  }
}

void ListWidget::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  if (control && key >= Qt::Key_1 && key <= Qt::Key_9) {
    const int section = ShownSection(key - Qt::Key_0);
    if (section >= 0) SortBy(section);
    return;
  }
  if (model()->rowCount() == 0) return event->ignore();
  if (const std::int32_t row = RowOfKey(key)) {
    if (control && !event->modifiers().testFlag(Qt::ShiftModifier)) return binder_.Deliver([&] { GoTo(row); });
    return binder_.Deliver([&] { PickRow(row, event->modifiers()); });
  }
  const std::int32_t current = CurrentRow();
  if (key == Qt::Key_Space && current != 0) {
    return binder_.Deliver([&] {
      if (control || !look_.checkBoxes) return PickRow(current, event->modifiers());
      ToggleMarks(current);
    });
  }
  if (look_.openingKeys.contains(static_cast<Qt::Key>(key)) && current != 0) return binder_.Deliver(list_.OnDblClick);
  if (!control && !event->text().isEmpty() && event->text().front().isPrint()) return keyboardSearch(event->text());
  event->ignore();
}

void ListWidget::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  // Merely shown where the keys begin: no row was chosen yet.
  if (CurrentRow() == 0 && model()->rowCount() > 0) setCurrentIndex(model()->index(0, 0));
}

// To the next row whose name begins so, around the end. A longer beginning may be that of the current row too.
void ListWidget::keyboardSearch(const QString& search) {
  const bool isLate = !sinceTyped_.isValid() || sinceTyped_.elapsed() >= QApplication::keyboardInputInterval();
  sinceTyped_.start();
  typed_ = isLate ? search : typed_ + search;
  if (typed_.isEmpty()) return;
  const bool isOneLetter = typed_.count(typed_.front(), Qt::CaseInsensitive) == typed_.size();
  const std::string start = (isOneLetter ? typed_.left(1) : typed_).toStdString();
  const std::int32_t count = list_.Count();
  const std::int32_t first = CurrentRow() + (isOneLetter ? 1 : 0);
  std::string scratch;
  for (std::int32_t step = 0; step < count; ++step) {
    const std::int32_t row = (first - 1 + step + count) % count + 1;
    if (!EqualText(list_.CellView(row, 0, scratch).substr(0, start.size()), start)) continue;
    return binder_.Deliver([&] { PickRow(row, Qt::NoModifier); });
  }
}

bool ListWidget::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !look_.hoverText) return QTreeView::viewportEvent(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainToolTip(look_.hoverText()), viewport(), {},
                     kToolTipMilliseconds);
  return true;
}

}  // namespace tresmor
