// The sort of the file table.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "base/number.h"

namespace tresmor {

// Two pointers around a copied middle pivot. It is not stable, and the numbers of groups follow from the order in which
// it leaves records that compare equal: that order is part of what the program promises, so neither the choice of the
// pivot nor the moves of the pointers may be "improved". Only the order in which stretches are sorted is free, as they
// share no record. `compare(a, b)` gives -1, 0 or 1. `first` is the table's index of records[0]: the middle is worked
// out on indexes of the table, where a half goes to the even one.
template <class Record, class Compare>
void QuickSort(std::span<Record> records, std::int64_t first, Compare compare) {
  if (records.size() < 2) return;
  std::vector<std::pair<std::int64_t, std::int64_t>> stretches{{0, static_cast<std::int64_t>(records.size()) - 1}};
  const auto at = [&](std::int64_t k) -> Record& { return records[static_cast<std::size_t>(k)]; };
  while (!stretches.empty()) {
    const auto [l, r] = stretches.back();
    stretches.pop_back();
    std::int64_t i = l;
    std::int64_t j = r;
    const Record pivot = at(DivideRoundEven(l + r + 2 * first, 2) - first);
    while (i <= j) {
      while (i < r && compare(at(i), pivot) < 0) ++i;
      while (j > l && compare(pivot, at(j)) < 0) --j;
      if (i > j) continue;
      std::swap(at(i), at(j));
      ++i;
      --j;
    }
    if (l < j) stretches.emplace_back(l, j);
    if (i < r) stretches.emplace_back(i, r);
  }
}

}  // namespace tresmor
