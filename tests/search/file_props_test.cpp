#include "search/file_props.h"

#include <gtest/gtest.h>

namespace tresmor {

namespace {

TEST(FilePropsDeathTest, IndexOutsideTheTableEndsTheProgram) {
  FileProps table;
  table.records.resize(2);
  EXPECT_EQ(table[1].DupGrp, kNoGroup);
  EXPECT_DEATH(table[2].DupGrp = 0, "");
  EXPECT_DEATH(table[-1].DupGrp = 0, "");
}

}  // namespace

}  // namespace tresmor
