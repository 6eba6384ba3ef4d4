// A list of rows under column headers, made for a million rows: about 70 bytes a row of the result lists with its name.
//
// Rows and columns count from 1. A row's own text is the cell of column 1, its sub-item 0; columns 2 and up are its
// sub-items 1 and up. A position where nothing stands fails with Subscript. Cells are texts and come back byte for
// byte; a cell that was never written is missing and reads as empty.
//
// A list that is hidden tells nothing of its rows and headers: who shows them reads all anew when Visible becomes true.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/cell_store.h"
#include "controls/list_sort.h"
#include "controls/placed_control.h"

namespace tresmor {

// A right-aligned column is one of numbers, which sorting has to know.
enum class Alignment { Left, Right };

struct ColumnHeader {
  std::string text;
  int width = 0;  // 1/2540 inch; 0 hides the column
  Alignment alignment = Alignment::Left;
};

// Colours are 0x00BBGGRR, or this one, the desktop's colour of text in windows.
inline constexpr std::uint32_t kWindowText = 0x80000008;

enum : std::int16_t { kAscending = 0, kDescending = 1 };

enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

class ListView : public PlacedControl {
 public:
  explicit ListView(Place place = {}) : PlacedControl(place) {}

  void AddColumn(ColumnHeader header);
  std::int32_t Columns() const { return static_cast<std::int32_t>(columns_.size()); }
  const ColumnHeader& Column(std::int32_t column) const { return columns_[ColumnAt(column)].header; }
  void SetColumnText(std::int32_t column, std::string text);

  std::int32_t Count() const { return static_cast<std::int32_t>(flags_.size()); }
  // Adds a row at the end and gives its position. New rows are neither marked nor selected.
  std::int32_t AddRow(std::string_view text, std::span<const CellValue> subItems = {});
  void RemoveRow(std::int32_t row);
  // `rows` ascend, each named once. One pass over the list, however many they are.
  void RemoveRows(std::span<const std::int32_t> rows);
  // Removes all rows. Headers, Tag and how the list is sorted stay as they are.
  void Clear();

  std::string Cell(std::int32_t row, std::int32_t subItem) const;
  // The same without a copy where the cell is kept as text; valid until the list or `scratch` changes.
  std::string_view CellView(std::int32_t row, std::int32_t subItem, std::string& scratch) const;
  // The number of a cell whose text is that number padded.
  std::optional<std::int64_t> CellNumber(std::int32_t row, std::int32_t subItem) const;
  // Whether two rows have the same bytes in a cell.
  bool SameCell(std::int32_t a, std::int32_t b, std::int32_t subItem) const;
  // The order of two rows by the bytes of a cell: negative, 0 or positive. In a column of numbers a decimal number of
  // more than ten digits is greater than all that is shorter.
  int CompareCells(std::int32_t a, std::int32_t b, std::int32_t subItem) const;
  void SetCell(std::int32_t row, std::int32_t subItem, const CellValue& value);
  // How many sub-items a row has: up to its last one that was written.
  std::int32_t SubItems(std::int32_t row) const;

  // A second text of a cell, not shown.
  std::string CellTag(std::int32_t row, std::int32_t subItem) const;
  void SetCellTag(std::int32_t row, std::int32_t subItem, std::string_view tag);
  // The order of two rows by the bytes of a tag.
  int CompareTags(std::int32_t a, std::int32_t b, std::int32_t subItem) const;

  bool Checked(std::int32_t row) const { return (flags_[At(row)] & kChecked) != 0; }
  void SetChecked(std::int32_t row, bool checked) { SetFlags(row, kChecked, checked ? kChecked : 0U); }
  bool Selected(std::int32_t row) const { return (flags_[At(row)] & kSelected) != 0; }
  void SetSelected(std::int32_t row, bool selected);
  // The row with the focus, selected or not: the one that the user or the program selected or gave the focus last,
  // wherever it has moved since; 0 before the first, and once it is gone.
  std::int32_t SelectedItem() const;
  // Selects nothing.
  void GiveFocus(std::int32_t row);
  // The number of the row's picture, 0 (none) to 63.
  int SmallIcon(std::int32_t row) const { return flags_[At(row)] >> kIconShift; }
  void SetSmallIcon(std::int32_t row, int icon);
  // Of the text in the first column; the others keep the list's own colour.
  std::uint32_t ForeColor(std::int32_t row) const;
  void SetForeColor(std::int32_t row, std::uint32_t color);

  // Runs `changes`, which write marks, selection, cells and colours of any rows, and tells of them all, if there are
  // any, by one notice of RowsChanged, also where they fail midway. They neither add, remove nor move rows, and let no
  // events in.
  void ChangeMany(const std::function<void()>& changes);

  bool Sorted() const;
  // Writing true sorts the rows now, every time, by the text of sub-item SortKey in the direction SortOrder; rows that
  // tie keep their order. Rows that are added later stay at the end.
  void SetSorted(bool sorted);
  // The same by the tags of the cells.
  void SortByTags();

  // Another number whenever a row may have left its position, and never one that any other list has had: with it and a
  // position a row can be known again.
  std::uint64_t Arrangement() const { return arrangement_; }

  Property<std::int16_t> SortKey{*this, Notice::What::SortKey};
  Property<std::int16_t> SortOrder{*this, Notice::What::SortOrder, kAscending};
  Property<std::string> Tag{*this, Notice::What::Tag};
  // Who shows a frozen list leaves it as it is painted; it still hears of every change and paints anew when it thaws.
  Property<bool> Frozen{*this, Notice::What::Frozen};

  // What the user does. Whoever shows the list calls those that are set, after the change of the rows that comes with
  // it; no change by the program calls any.
  std::function<void()> OnClick;      // anywhere in the list
  std::function<void()> OnItemClick;  // on a row, which is SelectedItem by then
  std::function<void()> OnItemCheck;  // a mark was set or cleared
  std::function<void()> OnDblClick;
  std::function<void(std::int16_t column)> OnColumnClick;
  std::function<void(std::int32_t row)> OnMouseMove;  // over the row, or over none if 0
  std::function<void(MouseButton button)> OnMouseUp;  // anywhere in the list
  // Paths that another program dropped on the list or around it.
  std::function<void(const std::vector<std::string>& paths)> OnDrop;

 private:
  enum : unsigned { kChecked = 1, kSelected = 2 };
  enum class Batch { None, Begun, Told };  // of changes by ChangeMany
  static constexpr int kIconShift = 2;
  using Cells = std::vector<CellStore::Cell>;
  // Cells past the end of a vector are missing ones, so that a column nobody writes costs nothing.
  struct ColumnData {
    ColumnHeader header;
    Cells cells;
    Cells tags;
  };

  static std::uint64_t NextArrangement();
  std::size_t At(std::int32_t row) const;
  std::size_t ColumnAt(std::int32_t column) const;
  static CellStore::Cell At(const Cells& cells, std::size_t at);
  CellStore::Cell CellAt(std::int32_t row, std::int32_t subItem) const;
  CellStore::Cell TagAt(std::int32_t row, std::int32_t subItem) const;
  CellStore::Cell PackFor(std::size_t column, const CellValue& value);
  void SetFlags(std::int32_t row, unsigned mask, unsigned flags);
  // Where the row with the focus stands once these, which ascend, are gone.
  std::int32_t FocusWithout(std::span<const std::int32_t> rows) const;
  void Sort(Cells ColumnData::*what);
  template <class Change>
  void ChangeRows(Notice::What what, std::int32_t first, std::int32_t last, Change&& change);
  template <class Edit>
  void ForEachVector(Edit&& edit);

  CellStore store_;
  std::vector<ColumnData> columns_;
  std::vector<std::uint8_t> flags_;    // one a row, always
  std::vector<std::uint32_t> colors_;  // rows past its end have the default
  bool sorted_ = false;
  Batch batch_ = Batch::None;
  std::int32_t focus_ = 0;
  std::uint64_t arrangement_ = NextArrangement();
};

}  // namespace tresmor
