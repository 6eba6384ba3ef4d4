#include "controls/list_sort.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/text.h"

namespace tresmor {
namespace {

using Cell = CellStore::Cell;

struct Entry {
  std::uint64_t key = 0;
  std::uint32_t row = 0;
};

// Entries first to last - 1.
struct Range {
  std::size_t first = 0;
  std::size_t last = 0;
};

// Rows with one key keep their order. A range that stands in order already costs one pass.
void SortByKey(std::vector<Entry>& entries, Range range, Direction direction) {
  const auto begin = entries.begin() + static_cast<std::ptrdiff_t>(range.first);
  const auto end = entries.begin() + static_cast<std::ptrdiff_t>(range.last);
  const auto sortBy = [&](auto before) {
    if (!std::is_sorted(begin, end, before)) std::sort(begin, end, before);
  };
  if (direction == Direction::Ascending) {
    sortBy([](const Entry& a, const Entry& b) { return a.key != b.key ? a.key < b.key : a.row < b.row; });
  } else {
    sortBy([](const Entry& a, const Entry& b) { return a.key != b.key ? a.key > b.key : a.row < b.row; });
  }
}

constexpr std::size_t kPadded = 10;

bool IsLongNumber(std::string_view text) {
  return text.size() > kPadded && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// A text whose byte order is the order wanted. In a column of numbers a first byte tells long numbers from all else,
// and their lengths follow it.
std::string SortText(std::string_view text, ColumnOf column) {
  if (column == ColumnOf::Texts) return FoldCase(text);
  if (!IsLongNumber(text)) return '\0' + FoldCase(text);
  std::string sortText(1, '\1');
  for (int shift = 56; shift >= 0; shift -= 8) sortText += static_cast<char>(text.size() >> shift & 0xFF);
  return sortText.append(text);
}

// The sort texts of all rows, worked out once; equal shared cells have one between them.
class SortTexts {
 public:
  SortTexts(const CellStore& store, ColumnOf column) : store_(store), column_(column) {}

  void Add(Cell cell) {
    if (!CellStore::IsShared(cell)) {
      places_.push_back(Append(cell));
      return;
    }
    const auto [known, isNew] = shared_.try_emplace(cell);
    if (isNew) known->second = Append(cell);
    places_.push_back(known->second);
  }

  // Sorts all entries, by a piece of their texts at a time: comparing then never leaves the entries.
  void Sort(std::vector<Entry>& entries, Direction direction) const {
    struct Work {
      Range range;
      std::size_t depth;  // bytes that all texts of the range have in common
    };
    std::vector<Work> open = {{{0, entries.size()}, 0}};
    while (!open.empty()) {
      const Work work = open.back();
      open.pop_back();
      for (std::size_t i = work.range.first; i < work.range.last; ++i) {
        entries[i].key = PieceKey(entries[i].row, work.depth);
      }
      SortByKey(entries, work.range, direction);
      Range run{work.range.first, work.range.first};
      for (; run.first < work.range.last; run.first = run.last) {
        while (run.last < work.range.last && entries[run.last].key == entries[run.first].key) ++run.last;
        const bool more = (entries[run.first].key & 0xFF) == kMore;
        if (more && !IsOneText(entries, run)) open.push_back({run, work.depth + kPiece});
      }
    }
  }

 private:
  static constexpr std::size_t kPiece = 7;
  static constexpr std::uint64_t kMore = kPiece + 1;
  struct Place {
    std::size_t offset = 0;
    std::size_t length = 0;
  };

  // The next seven bytes of a text, filled with zeros, and below them how many there were, or kMore: of two texts that
  // differ in zeros alone the shorter comes first.
  std::uint64_t PieceKey(std::uint32_t row, std::size_t depth) const {
    const Place place = places_[row];
    const std::size_t left = place.length - depth;
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < kPiece; ++i) {
      key = key << 8 | (i < left ? static_cast<unsigned char>(bytes_[place.offset + depth + i]) : 0U);
    }
    return key << 8 | std::min<std::uint64_t>(left, kMore);
  }
  bool IsOneText(const std::vector<Entry>& entries, Range run) const {
    for (std::size_t i = run.first + 1; i < run.last; ++i) {
      if (places_[entries[i].row].offset != places_[entries[run.first].row].offset) return false;
    }
    return true;
  }
  Place Append(Cell cell) {
    const std::string text = SortText(store_.View(cell, scratch_), column_);
    const Place place{bytes_.size(), text.size()};
    bytes_ += text;
    bytes_ += '\0';  // so that no two places have one offset
    return place;
  }

  const CellStore& store_;
  ColumnOf column_;
  std::string scratch_;
  std::string bytes_;
  std::vector<Place> places_;
  std::unordered_map<Cell, Place> shared_;
};

// Keys that tell the whole order: where all cells are dates, or, in a column of numbers, numbers that are not negative
// (a minus sign would not sort as text does).
bool NumericKeys(const CellStore& store, const std::vector<Cell>& cells, ColumnOf column, std::vector<Entry>& entries) {
  constexpr std::uint64_t bias = std::uint64_t{1} << 60;  // dates before the zero date are negative
  const bool dates = !cells.empty() && CellStore::Stamp(cells[0]).has_value();
  if (!dates && column == ColumnOf::Texts) return false;
  for (Entry& entry : entries) {
    const Cell cell = entry.row < cells.size() ? cells[entry.row] : CellStore::kAbsent;
    const std::optional<std::int64_t> value = dates ? CellStore::Stamp(cell) : store.Number(cell);
    if (!value || (!dates && *value < 0)) return false;
    entry.key = static_cast<std::uint64_t>(*value) + bias;
  }
  return true;
}

int Order(std::int64_t a, std::int64_t b) { return a < b ? -1 : a > b ? 1 : 0; }

// The order of two dates, or of two numbers that are in the order of their texts.
std::optional<int> CompareKept(Cell a, Cell b, ColumnOf column) {
  constexpr std::int64_t largestPadded = 9'999'999'999;
  const auto stampA = CellStore::Stamp(a);
  const auto stampB = CellStore::Stamp(b);
  if (stampA && stampB) return Order(*stampA, *stampB);
  const auto numberA = CellStore::KeptNumber(a);
  const auto numberB = CellStore::KeptNumber(b);
  if (!numberA || !numberB || *numberA < 0 || *numberB < 0) return std::nullopt;
  if (column == ColumnOf::Texts && std::max(*numberA, *numberB) > largestPadded) return std::nullopt;
  return Order(*numberA, *numberB);
}

}  // namespace

int CompareCells(const CellStore& store, Cell a, Cell b, ColumnOf column) {
  if (a == b) return 0;
  if (const std::optional<int> order = CompareKept(a, b, column)) return *order;
  std::string scratchA;
  std::string scratchB;
  const std::string_view textA = store.View(a, scratchA);
  const std::string_view textB = store.View(b, scratchB);
  const bool longA = column == ColumnOf::Numbers && IsLongNumber(textA);
  const bool longB = column == ColumnOf::Numbers && IsLongNumber(textB);
  if (longA != longB) return longA ? 1 : -1;
  if (longA && textA.size() != textB.size()) return textA.size() < textB.size() ? -1 : 1;
  return textA.compare(textB);
}

std::vector<std::uint32_t> SortedOrder(const CellStore& store, const std::vector<Cell>& cells, std::size_t rows,
                                       ColumnOf column, Direction direction) {
  std::vector<Entry> entries(rows);
  for (std::size_t i = 0; i < rows; ++i) entries[i].row = static_cast<std::uint32_t>(i);
  if (NumericKeys(store, cells, column, entries)) {
    SortByKey(entries, {0, rows}, direction);
  } else {
    SortTexts texts(store, column);
    for (std::size_t i = 0; i < rows; ++i) texts.Add(i < cells.size() ? cells[i] : CellStore::kAbsent);
    texts.Sort(entries, direction);
  }
  std::vector<std::uint32_t> order(rows);
  for (std::size_t i = 0; i < rows; ++i) order[i] = entries[i].row;
  return order;
}

}  // namespace tresmor
