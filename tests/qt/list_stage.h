// A list with three columns and the widget that shows it.
#pragma once

#include <QHeaderView>
#include <string>
#include <vector>

#include "qt/list_widget.h"
#include "qt/stage.h"

namespace tresmor::tests {

inline ListLook ResultLook() {
  ListLook look;
  look.checkBoxes = true;
  look.multiSelect = true;
  return look;
}

// How long letters may be apart that are typed together.
class Typing {
 public:
  explicit Typing(int milliseconds) { QApplication::setKeyboardInputInterval(milliseconds); }
  ~Typing() { QApplication::setKeyboardInputInterval(usual_); }
  Typing(const Typing&) = delete;
  Typing& operator=(const Typing&) = delete;

 private:
  const int usual_ = QApplication::keyboardInputInterval();
};
inline constexpr int kOneByOne = 0;
inline constexpr int kTogether = 3'600'000;

struct ListStage {
  explicit ListStage(int rows, ListLook look = ResultLook()) {
    list.AddColumn({"Name", 2540});
    list.AddColumn({"Hidden", 0});
    list.AddColumn({"Size", 1764, Alignment::Right});
    for (int row = 0; row < rows; ++row) AddRow("file" + std::to_string(row));
    list.OnClick = [this] { log.push_back("click"); };
    list.OnItemClick = [this] { log.push_back("item " + std::to_string(list.SelectedItem())); };
    list.OnItemCheck = [this] { log.push_back("check"); };
    list.OnDblClick = [this] { log.push_back("double"); };
    list.OnColumnClick = [this](std::int16_t column) { log.push_back("column " + std::to_string(column)); };
    list.OnMouseMove = [this](std::int32_t row) { log.push_back("over " + std::to_string(row)); };
    list.OnMouseUp = [this](MouseButton button) { log.push_back("up " + std::to_string(static_cast<int>(button))); };
    widget = new ListWidget(list, stage.binder, std::move(look), &stage.window);
    stage.room->addWidget(widget);
    stage.window.resize(400, 300);
    stage.Show();
    widget->setFocus();
    log.clear();
  }

  void AddRow(const std::string& name) {
    const std::vector<CellValue> cells = {CellValue("h"), CellValue("12")};
    list.AddRow(name, cells);
  }
  QPoint PointOn(int row) const { return widget->visualRect(widget->model()->index(row - 1, 0)).center(); }
  QPoint BoxOf(int row) const {
    const QRect cell = widget->visualRect(widget->model()->index(row - 1, 0));
    return {cell.left() + 10, cell.center().y()};
  }
  void Click(const QPoint& point, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(widget->viewport(), button, keys, point);
  }
  void ClickRow(int row, Qt::KeyboardModifiers keys = {}) { Click(PointOn(row), keys); }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { QTest::keyClick(widget, key, keys); }
  int CurrentRow() const { return widget->currentIndex().row() + 1; }

  using Rows = std::vector<int>;
  Rows Selected() const { return Where(&ListView::Selected); }
  Rows Marked() const { return Where(&ListView::Checked); }
  Rows Where(bool (ListView::*holds)(std::int32_t) const) const {
    Rows rows;
    for (int row = 1; row <= list.Count(); ++row) {
      if ((list.*holds)(row)) rows.push_back(row);
    }
    return rows;
  }
  std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

  ListView list;
  std::vector<std::string> log;  // what the widget called
  Stage stage;
  ListWidget* widget = nullptr;
};

using Rows = ListStage::Rows;
using Log = std::vector<std::string>;

}  // namespace tresmor::tests
