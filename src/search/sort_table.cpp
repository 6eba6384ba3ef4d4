#include "search/sort_table.h"

#include "base/text.h"
#include "search/quick_sort.h"

namespace tresmor {

namespace {

int Sign(auto a, auto b) { return a < b ? -1 : (a > b ? 1 : 0); }

// What is moved about while sorting: a key that settles nearly every comparison without touching the record.
struct Keyed {
  std::uint64_t key;
  std::uint32_t record;  // position before the sort, from the start of the stretch
};

std::span<FileProp> Stretch(FileProps& table, std::int32_t l, std::int32_t r) {
  return std::span(table.records).subspan(static_cast<std::size_t>(l), static_cast<std::size_t>(r - l + 1));
}

template <class KeyOf, class Compare>
std::vector<Keyed> SortKeyed(std::span<FileProp> records, std::int32_t first, KeyOf keyOf, Compare onTie) {
  std::vector<Keyed> order(records.size());
  for (std::uint32_t k = 0; k < order.size(); ++k) order[k] = {keyOf(k), k};
  QuickSort(std::span(order), first, [&](const Keyed& a, const Keyed& b) {
    const int sign = Sign(a.key, b.key);
    return sign != 0 ? sign : onTie(records[a.record], records[b.record]);
  });
  std::vector<FileProp> sorted;
  sorted.reserve(records.size());
  for (const Keyed& k : order) sorted.push_back(records[k.record]);
  std::copy(sorted.begin(), sorted.end(), records.begin());
  return order;
}

}  // namespace

int CompareFileProp(const FileProp& a, const FileProp& b, FileKey key) {
  return key == FileKey::Name ? CompareText(a.Name(), b.Name()) : Sign(a.Sz, b.Sz);
}

void QuickSortBySize(FileProps& table, std::int32_t l, std::int32_t r) {
  const auto records = Stretch(table, l, r);
  SortKeyed(
      records, l, [&](std::size_t k) { return static_cast<std::uint64_t>(records[k].Sz); },
      [](const FileProp&, const FileProp&) { return 0; });
}

void QuickSortByName(FileProps& table, std::int32_t l, std::int32_t r) {
  const auto records = Stretch(table, l, r);
  SortKeyed(
      records, l, [&](std::size_t k) { return TextKey(records[k].Name()); },
      [](const FileProp& a, const FileProp& b) { return CompareFileProp(a, b, FileKey::Name); });
}

void QuickSortByHead(FileProps& table, std::int32_t l, std::int32_t r, std::span<std::uint32_t> ranks) {
  const auto records = Stretch(table, l, r);
  const auto order = SortKeyed(
      records, l, [&](std::size_t k) { return std::uint64_t{ranks[k]}; },
      [](const FileProp& a, const FileProp& b) { return CompareFileProp(a, b, FileKey::Size); });
  for (std::size_t k = 0; k < order.size(); ++k) ranks[k] = static_cast<std::uint32_t>(order[k].key);
}

}  // namespace tresmor
