// The order in which the table's sort leaves records, equal ones too: numbers of groups follow from it.
#include "search/sort_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "search/quick_sort.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

struct Marked {
  int key;
  char mark;
};

std::string Sorted(std::vector<Marked> records, std::int64_t first) {
  QuickSort(std::span(records), first,
            [](const Marked& a, const Marked& b) { return (a.key > b.key) - (a.key < b.key); });
  std::string marks;
  for (const Marked& record : records) marks += record.mark;
  return marks;
}

// Worked out by hand: equal records change places around the pivot.
TEST(QuickSort, LeavesEqualRecordsInItsOwnOrder) {
  EXPECT_EQ(Sorted({{1, 'a'}, {1, 'b'}}, 0), "ba");
  EXPECT_EQ(Sorted({{1, 'a'}, {1, 'b'}, {1, 'c'}}, 0), "cba");
  EXPECT_EQ(Sorted({{2, 'a'}, {1, 'b'}, {2, 'c'}, {1, 'd'}}, 0), "bdca");
}

// The middle of places 0 and 3 is 1.5 and rounds to 2, that of 1 and 4 is 2.5 and rounds to 2, which is another record.
TEST(QuickSort, RoundsTheMiddleToTheEvenPlaceOfTheTable) {
  const std::vector<Marked> records{{1, 'a'}, {3, 'b'}, {2, 'c'}, {2, 'd'}};
  EXPECT_EQ(Sorted(records, 0), "adcb");
  EXPECT_EQ(Sorted(records, 1), "acdb");
}

TEST(SortTable, MovesTheRanksAlongWithTheRecords) {
  FileProps table;
  table.records.resize(4);
  for (std::size_t k = 0; k < 4; ++k) table.records[k].Sz = static_cast<std::int64_t>(4 - k);
  std::vector<std::uint32_t> ranks{7, 5, 7};
  QuickSortByHead(table, 1, 3, ranks);
  EXPECT_THAT(ranks, ElementsAre(5, 7, 7));
  std::vector<std::int64_t> sizes;
  for (const FileProp& record : table.records) sizes.push_back(record.Sz);
  EXPECT_THAT(sizes, ElementsAre(4, 2, 1, 3));
}

}  // namespace
}  // namespace tresmor
