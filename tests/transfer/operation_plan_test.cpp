#include "transfer/operation_plan.h"

#include <gtest/gtest.h>

#include "transfer/transfer_world.h"

namespace tresmor {

namespace {

constexpr PathStyle kPosix = PathStyle::Posix();
constexpr PathStyle kWindows = PathStyle::Windows();

TEST(OperationPlanTest, NamesEachPathOnce) {
  const OperationPlan plan = MakePlan(PutThese(FO_MOVE, {"/a/x", "/a/X", "/a/x", "/b/in/"}, "/d//"), kPosix);
  ASSERT_EQ(plan.items.size(), 3U);
  EXPECT_EQ(plan.base, "/d");
  EXPECT_EQ(plan.items[1].from, "/a/X");
  EXPECT_EQ(plan.items[2].from, "/b/in");
  EXPECT_EQ(plan.items[2].folder, "/d");
  EXPECT_EQ(plan.items[2].name, "in");
  EXPECT_EQ(MakePlan(DeleteThese({"C:\\a\\x", "c:\\A\\X"}), kWindows).items.size(), 1U);
}

TEST(OperationPlanTest, AnEmptyPathFailsAloneAndEndsNoList) {
  const OperationPlan plan = MakePlan(PutTheseAt(FO_MOVE, {"/a/x", "", "/a/y"}, {"/d/x", "", "/d/y"}, "/d"), kPosix);
  ASSERT_EQ(plan.items.size(), 3U);
  EXPECT_FALSE(plan.items[0].trouble);
  EXPECT_EQ(plan.items[1].trouble.code, OperationCode::BadName);
  EXPECT_FALSE(plan.items[2].trouble);
  EXPECT_EQ(plan.items[2].name, "y");
}

TEST(OperationPlanTest, ListsMayLackTheirEnds) {
  const std::string both("/a\0/b\0\0", 7);
  const Paths paths = {"/a", "/b"};
  for (const std::size_t length : {7U, 6U, 5U}) EXPECT_EQ(ListedPaths(both.substr(0, length)), paths) << length;
  EXPECT_EQ(ListedPaths(""), Paths());
  EXPECT_EQ(ListedPaths(std::string(1, '\0')), Paths());
  EXPECT_EQ(ListedPaths(std::string(2, '\0')), Paths{""});
}

TEST(OperationPlanTest, APathThatStandsTwiceKeepsItsOwnPlace) {
  const OperationPlan plan =
      MakePlan(PutTheseAt(FO_MOVE, {"/a/x", "/a/x", "/a/y"}, {"/d/1", "/d/2", "/d/3/y"}, "/d"), kPosix);
  ASSERT_EQ(plan.items.size(), 2U);
  EXPECT_EQ(plan.items[0].name, "1");
  EXPECT_EQ(plan.items[1].folder, "/d/3");
  EXPECT_EQ(plan.items[1].name, "y");
}

TEST(OperationPlanTest, DoubledSeparatorsCountOnce) {
  const OperationPlan plan =
      MakePlan(PutTheseAt(FO_COPY, {"\\\\srv\\share\\d\\f"}, {"D:\\keep\\\\srv\\share\\d\\f"}, "D:\\keep"), kWindows);
  ASSERT_EQ(plan.items.size(), 1U);
  EXPECT_FALSE(plan.items[0].trouble);
  EXPECT_EQ(plan.items[0].folder, "D:\\keep\\srv\\share\\d");
}

TEST(OperationPlanTest, AWayBackThatStaysBelowTheDestinationIsTaken) {
  const OperationPlan plan = MakePlan(PutTheseAt(FO_MOVE, {"/a/b/../c/f", "/a/../f", "/a/./b/../../g"},
                                                 {"/d/a/b/../c/f", "/d/a/../f", "/d/a/./b/../../g"}, "/d"),
                                      kPosix);
  ASSERT_EQ(plan.items.size(), 3U);
  for (const PlanItem& item : plan.items) EXPECT_FALSE(item.trouble) << item.from;
  EXPECT_EQ(plan.items[0].folder, "/d/a/c");
  EXPECT_EQ(plan.items[0].name, "f");
  EXPECT_EQ(plan.items[1].folder, "/d");
  EXPECT_EQ(plan.items[1].name, "f");
  EXPECT_EQ(plan.items[2].folder, "/d");
  EXPECT_EQ(MakePlan(PutTheseAt(FO_COPY, {"C:\\a\\..\\f"}, {"D:\\k\\a\\..\\f"}, "D:\\k"), kWindows).items[0].folder,
            "D:\\k");
}

TEST(OperationPlanTest, TheRootIsADestinationToo) {
  const OperationPlan plan = MakePlan(PutThese(FO_MOVE, {"/a/x"}, "/"), kPosix);
  ASSERT_EQ(plan.items.size(), 1U);
  EXPECT_EQ(plan.items[0].folder, "/");
  EXPECT_FALSE(plan.items[0].trouble);
}

TEST(OperationPlanTest, APlaceThatIsNoneIsTold) {
  for (const char* place :
       {"/d", "/d/", "/d/.", "/dx/y", "/d/x/..", "/d/../d/x", "/d/x/../../y", "/d/x/../../d/y", "/d/../x", "d/x"}) {
    const OperationPlan plan = MakePlan(PutTheseAt(FO_MOVE, {"/a/x"}, {place}, "/d"), kPosix);
    ASSERT_EQ(plan.items.size(), 1U);
    EXPECT_EQ(plan.items[0].trouble.code, OperationCode::BadName) << place;
  }
}

}  // namespace

}  // namespace tresmor
