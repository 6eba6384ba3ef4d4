#include "controls/list_view.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <utility>

#include "base/failure.h"

namespace tresmor {
namespace {

template <class T>
void Put(std::vector<T>& values, std::size_t at, T value, T missing) {
  if (values.size() <= at) values.resize(at + 1, missing);
  values[at] = value;
}

ColumnOf KindOf(const ColumnHeader& header) {
  return header.alignment == Alignment::Right ? ColumnOf::Numbers : ColumnOf::Texts;
}

}  // namespace

std::size_t ListView::At(std::int32_t row) const {
  CheckThread();
  if (row < 1 || row > Count()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(row - 1);
}

std::size_t ListView::ColumnAt(std::int32_t column) const {
  CheckThread();
  if (column < 1 || column > Columns()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(column - 1);
}

std::uint64_t ListView::NextArrangement() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

template <class Change>
void ListView::ChangeRows(Notice::What what, std::int32_t first, std::int32_t last, Change&& change) {
  if (what == Notice::What::RowsRemoved || what == Notice::What::RowsReset) arrangement_ = NextArrangement();
  if (!Visible()) return change();
  if (batch_ == Batch::None) return Announce(what, first, last, change);
  assert(what == Notice::What::RowsChanged);
  if (std::exchange(batch_, Batch::Told) == Batch::Begun) Tell(what, Notice::When::Before, 1, Count());
  change();
}

// Calls edit(vector, missing value) for all that is kept by row.
template <class Edit>
void ListView::ForEachVector(Edit&& edit) {
  for (ColumnData& column : columns_) {
    edit(column.cells, CellStore::kAbsent);
    edit(column.tags, CellStore::kAbsent);
  }
  edit(flags_, std::uint8_t{0});
  edit(colors_, kWindowText);
}

void ListView::AddColumn(ColumnHeader header) {
  const std::int32_t column = Columns() + 1;
  ChangeRows(Notice::What::Columns, column, column, [&] { columns_.push_back({std::move(header), {}, {}}); });
}

void ListView::SetColumnText(std::int32_t column, std::string text) {
  std::string& held = columns_[ColumnAt(column)].header.text;
  ChangeRows(Notice::What::Columns, column, column, [&] { held = std::move(text); });
}

CellStore::Cell ListView::PackFor(std::size_t column, const CellValue& value) {
  return store_.Pack(value, column == 0 ? CellStore::Texts::Own : CellStore::Texts::Shared);
}

std::int32_t ListView::AddRow(std::string_view text, std::span<const CellValue> subItems) {
  ColumnAt(static_cast<std::int32_t>(subItems.size()) + 1);
  const std::size_t at = flags_.size();
  const std::int32_t row = Count() + 1;
  ChangeRows(Notice::What::RowsAdded, row, row, [&] {
    flags_.push_back(0);
    Put(columns_[0].cells, at, PackFor(0, text), CellStore::kAbsent);
    for (std::size_t i = 1; i <= subItems.size(); ++i) {
      Put(columns_[i].cells, at, PackFor(i, subItems[i - 1]), CellStore::kAbsent);
    }
  });
  return row;
}

void ListView::RemoveRow(std::int32_t row) {
  const std::size_t at = At(row);
  ChangeRows(Notice::What::RowsRemoved, row, row, [&] {
    focus_ = FocusWithout({&row, 1});
    ForEachVector([&](auto& values, auto) {
      if (at < values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(at));
    });
  });
}

void ListView::RemoveRows(std::span<const std::int32_t> rows) {
  if (rows.empty()) return;
  assert(std::is_sorted(rows.begin(), rows.end(), std::less_equal<>()));
  const std::size_t start = At(rows.front());
  At(rows.back());
  ChangeRows(Notice::What::RowsReset, 1, Count(), [&] {
    focus_ = FocusWithout(rows);
    ForEachVector([&](auto& values, auto) {
      auto gone = rows.begin();
      std::size_t kept = std::min(start, values.size());
      for (std::size_t i = kept; i < values.size(); ++i) {
        if (gone != rows.end() && static_cast<std::size_t>(*gone - 1) == i) {
          ++gone;
        } else {
          values[kept++] = values[i];
        }
      }
      values.resize(kept);
    });
  });
}

void ListView::Clear() {
  CheckThread();
  if (flags_.empty()) return;
  ChangeRows(Notice::What::RowsReset, 1, Count(), [&] {
    ForEachVector([](auto& values, auto) { values = {}; });
    store_.Clear();
    focus_ = 0;
  });
}

CellStore::Cell ListView::At(const Cells& cells, std::size_t at) {
  return at < cells.size() ? cells[at] : CellStore::kAbsent;
}

CellStore::Cell ListView::CellAt(std::int32_t row, std::int32_t subItem) const {
  return At(columns_[ColumnAt(subItem + 1)].cells, At(row));
}

CellStore::Cell ListView::TagAt(std::int32_t row, std::int32_t subItem) const {
  return At(columns_[ColumnAt(subItem + 1)].tags, At(row));
}

std::string ListView::Cell(std::int32_t row, std::int32_t subItem) const {
  std::string scratch;
  return std::string(CellView(row, subItem, scratch));
}

std::string_view ListView::CellView(std::int32_t row, std::int32_t subItem, std::string& scratch) const {
  return store_.View(CellAt(row, subItem), scratch);
}

std::optional<std::int64_t> ListView::CellNumber(std::int32_t row, std::int32_t subItem) const {
  return store_.Number(CellAt(row, subItem));
}

bool ListView::SameCell(std::int32_t a, std::int32_t b, std::int32_t subItem) const {
  return store_.Same(CellAt(a, subItem), CellAt(b, subItem));
}

int ListView::CompareCells(std::int32_t a, std::int32_t b, std::int32_t subItem) const {
  return tresmor::CompareCells(store_, CellAt(a, subItem), CellAt(b, subItem),
                               KindOf(columns_[ColumnAt(subItem + 1)].header));
}

int ListView::CompareTags(std::int32_t a, std::int32_t b, std::int32_t subItem) const {
  return tresmor::CompareCells(store_, TagAt(a, subItem), TagAt(b, subItem), ColumnOf::Texts);
}

void ListView::SetCell(std::int32_t row, std::int32_t subItem, const CellValue& value) {
  const std::size_t column = ColumnAt(subItem + 1);
  const std::size_t at = At(row);
  ChangeRows(Notice::What::RowsChanged, row, row,
             [&] { Put(columns_[column].cells, at, PackFor(column, value), CellStore::kAbsent); });
}

std::int32_t ListView::SubItems(std::int32_t row) const {
  std::int32_t last = Columns() - 1;
  while (last > 0 && CellAt(row, last) == CellStore::kAbsent) --last;
  return std::max(last, 0);
}

std::string ListView::CellTag(std::int32_t row, std::int32_t subItem) const {
  std::string scratch;
  return std::string(store_.View(TagAt(row, subItem), scratch));
}

void ListView::SetCellTag(std::int32_t row, std::int32_t subItem, std::string_view tag) {
  const std::size_t column = ColumnAt(subItem + 1);
  Put(columns_[column].tags, At(row), store_.Pack(tag, CellStore::Texts::Shared), CellStore::kAbsent);
}

void ListView::SetFlags(std::int32_t row, unsigned mask, unsigned flags) {
  std::uint8_t& held = flags_[At(row)];
  if ((held & mask) == flags) return;
  ChangeRows(Notice::What::RowsChanged, row, row, [&] { held = static_cast<std::uint8_t>((held & ~mask) | flags); });
}

void ListView::SetSelected(std::int32_t row, bool selected) {
  if (selected) GiveFocus(row);
  SetFlags(row, kSelected, selected ? kSelected : 0U);
}

std::int32_t ListView::SelectedItem() const {
  CheckThread();
  return focus_;
}

void ListView::GiveFocus(std::int32_t row) {
  At(row);
  if (focus_ != row) ChangeRows(Notice::What::RowsChanged, row, row, [&] { focus_ = row; });
}

std::int32_t ListView::FocusWithout(std::span<const std::int32_t> rows) const {
  const auto next = std::lower_bound(rows.begin(), rows.end(), focus_);
  if (next != rows.end() && *next == focus_) return 0;
  return focus_ - static_cast<std::int32_t>(next - rows.begin());
}

void ListView::SetSmallIcon(std::int32_t row, int icon) {
  assert(icon >= 0 && icon < 64);
  SetFlags(row, ~(kChecked | kSelected) & 0xFFU, static_cast<unsigned>(icon) << kIconShift);
}

std::uint32_t ListView::ForeColor(std::int32_t row) const {
  const std::size_t at = At(row);
  return at < colors_.size() ? colors_[at] : kWindowText;
}

void ListView::SetForeColor(std::int32_t row, std::uint32_t color) {
  if (ForeColor(row) == color) return;
  ChangeRows(Notice::What::RowsChanged, row, row, [&] { Put(colors_, At(row), color, kWindowText); });
}

void ListView::ChangeMany(const std::function<void()>& changes) {
  assert(batch_ == Batch::None);
  batch_ = Batch::Begun;
  const auto end = [this] {
    if (std::exchange(batch_, Batch::None) == Batch::Told)
      Tell(Notice::What::RowsChanged, Notice::When::After, 1, Count());
  };
  try {
    changes();
  } catch (...) {
    end();
    throw;
  }
  end();
}

bool ListView::Sorted() const {
  CheckThread();
  return sorted_;
}

void ListView::SetSorted(bool sorted) {
  CheckThread();
  sorted_ = sorted;
  if (sorted) Sort(&ColumnData::cells);
}

void ListView::SortByTags() {
  CheckThread();
  sorted_ = true;
  Sort(&ColumnData::tags);
}

void ListView::Sort(Cells ColumnData::*what) {
  const ColumnData& key = columns_[ColumnAt(SortKey() + 1)];
  const std::size_t rows = flags_.size();
  const std::vector<std::uint32_t> order =
      SortedOrder(store_, key.*what, rows, KindOf(key.header),
                  SortOrder() == kDescending ? Direction::Descending : Direction::Ascending);
  if (std::is_sorted(order.begin(), order.end())) return;
  ChangeRows(Notice::What::RowsReset, 1, Count(), [&] {
    if (focus_ != 0) {
      const auto moved = std::find(order.begin(), order.end(), static_cast<std::uint32_t>(focus_ - 1));
      focus_ = static_cast<std::int32_t>(moved - order.begin()) + 1;
    }
    ForEachVector([&](auto& values, auto missing) {
      if (values.empty()) return;
      values.resize(rows, missing);
      std::remove_reference_t<decltype(values)> moved(rows);
      for (std::size_t i = 0; i < rows; ++i) moved[i] = values[order[i]];
      values = std::move(moved);
    });
  });
}

}  // namespace tresmor
