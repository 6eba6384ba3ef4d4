// The order of a list's rows by one column, and of two of its cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "controls/cell_store.h"

namespace tresmor {

enum class ColumnOf { Texts, Numbers };
enum class Direction { Ascending, Descending };

// The indexes (from 0) of `rows` rows in their new order; cells past the end of `cells` are missing ones. Texts stand
// in the order of CompareText. In a column of numbers a decimal number of more than ten digits is greater than all that
// is shorter, so that numbers too long for the padding still stand in their order. Rows that tie keep their order in
// both directions.
std::vector<std::uint32_t> SortedOrder(const CellStore& store, const std::vector<CellStore::Cell>& cells,
                                       std::size_t rows, ColumnOf column, Direction direction);

// The order of two cells by their bytes, with regard to case: negative, 0 or positive. Long numbers in a column of
// numbers are greater here too.
int CompareCells(const CellStore& store, CellStore::Cell a, CellStore::Cell b, ColumnOf column);

}  // namespace tresmor
