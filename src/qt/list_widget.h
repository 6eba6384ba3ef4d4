#pragma once

#include <QElapsedTimer>
#include <QTreeView>
#include <functional>
#include <string>

#include "qt/binder.h"
#include "qt/list_model.h"

namespace tresmor {

// How a list shows and takes the user's hand.
struct ListLook {
  bool checkBoxes = false;
  bool multiSelect = false;
  QList<Qt::Key> openingKeys = {Qt::Key_Return, Qt::Key_Enter};  // that are a double click
  std::vector<QIcon> icons;                                      // of SmallIcon, by its number
  std::function<std::string()> hoverText;                        // of the row that the pointer was moved over last
};

// Shows a list. What is selected are bits of the control's rows, however many: the toolkit knows only the current row.
//
// Keys besides the usual: Space marks, or unmarks, all selected rows like the current one; Enter, or what the look
// names, is a double click; Ctrl and a digit sorts by the column of that number, hidden ones not counted; Menu or
// Shift+F10 is the right button. Letters typed quickly go to the next name that begins with them; one letter over and
// over goes from name to name.
class ListWidget : public QTreeView {
 public:
  ListWidget(ListView& list, const Binder& binder, ListLook look, QWidget* parent);

  // `search` goes on from what was typed just before.
  void keyboardSearch(const QString& search) override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  void Hear(const Notice& notice);
  void ShowColumns();
  std::int32_t RowAt(const QPoint& point) const;
  std::int32_t CurrentRow() const { return currentIndex().row() + 1; }
  bool IsOnCheckBox(const QPoint& point) const;
  // Makes a row the current one and selects as these keys tell, then tells of a click on the row.
  void PickRow(std::int32_t row, Qt::KeyboardModifiers keys);
  void SelectOnly(std::int32_t first, std::int32_t last);
  // Gives a row the focus and brings it into sight.
  void GoTo(std::int32_t row);
  void GoWithSelectedItem();
  void ToggleMarks(std::int32_t row);
  void ToggleMark(std::int32_t row);
  void SortBy(int section);
  // The section of the column of that number among those that show, -1 if there are fewer.
  int ShownSection(int number) const;
  // The row that a key goes to from the current one, 0 for no such key.
  std::int32_t RowOfKey(int key) const;

  ListView& list_;
  const Binder& binder_;
  const ListLook look_;
  std::int32_t anchor_ = 0;  // where a range began, 0 for nowhere
  QString typed_;            // the beginning of a name, letter by letter
  QElapsedTimer sinceTyped_;
};

}  // namespace tresmor
