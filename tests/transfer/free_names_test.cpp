#include "transfer/free_names.h"

#include <gtest/gtest.h>

#include <set>

namespace tresmor {

namespace {

TEST(FreeNamesTest, TheNumberStandsInFrontOfTheExtension) {
  const auto second = [](const char* name) { return NumberedName(name, 2, kLongestName); };
  EXPECT_EQ(second("name.ext"), "name (2).ext");
  EXPECT_EQ(second("name.tar.gz"), "name.tar (2).gz");
  EXPECT_EQ(second("name"), "name (2)");
  EXPECT_EQ(second(".profile"), ".profile (2)");
  EXPECT_EQ(second("name."), "name (2).");
  EXPECT_EQ(NumberedName("name.ext", 1, kLongestName), "name.ext");
  EXPECT_EQ(NumberedName("name.ext", 1234, kLongestName), "name (1234).ext");
}

TEST(FreeNamesTest, LongNamesLoseWholeCharacters) {
  EXPECT_EQ(NumberedName("\xC3\xA4\xC3\xA4\xC3\xA4.x", 2, 11), "\xC3\xA4\xC3\xA4 (2).x");
  EXPECT_EQ(NumberedName("\xC3\xA4\xC3\xA4\xC3\xA4.x", 2, 10), "\xC3\xA4\xC3\xA4 (2).x");
  EXPECT_EQ(NumberedName("\xC3\xA4\xC3\xA4\xC3\xA4.x", 2, 9), "\xC3\xA4 (2).x");
  EXPECT_EQ(NumberedName("a.extension", 2, 10), "a.exte (2)");
  EXPECT_EQ(NumberedName("a.extension", 1, 8), "a.extens");
}

TEST(FreeNamesTest, PicksWhatIsNeitherTakenNorPromised) {
  FreeNames names(PathStyle::Posix());
  const std::set<std::string> there = {"x", "x (2)"};
  const auto taken = [&](const std::string& name) { return there.contains(name); };
  EXPECT_EQ(names.Pick({"/d", "x"}, taken), "x (3)");
  EXPECT_EQ(names.Pick({"/d", "x"}, taken), "x (4)");
  EXPECT_EQ(names.Pick({"/d", "y"}, taken), "y");
  EXPECT_EQ(names.Pick({"/d", "y"}, taken), "y (2)");
  EXPECT_EQ(names.Next({"/d", "y"}, taken), "y (3)");
  EXPECT_EQ(names.Pick({"/e", "y"}, taken), "y");
  EXPECT_EQ(names.Pick({"/d", "x (3)"}, taken), "x (3) (2)");
}

TEST(FreeNamesTest, WithoutANumberANameIsTriedAsItIs) {
  FreeNames names(PathStyle::Posix());
  const auto free = [](const std::string&) { return false; };
  EXPECT_EQ(names.Pick({"/d", "longer.x", 7}, free), "longer.x");
  EXPECT_EQ(names.Pick({"/d", "longer.x", 7}, free), "l (2).x");
}

TEST(FreeNamesTest, ANameComesBackWhenItIsFreeAgainButNumbersGoOn) {
  FreeNames names(PathStyle::Posix());
  const auto free = [](const std::string&) { return false; };
  names.Pick({"/d", "x"}, free);
  names.Pick({"/d", "x"}, free);
  names.ForgetPromises();
  EXPECT_EQ(names.Pick({"/d", "x"}, free), "x");
  EXPECT_EQ(names.Pick({"/d", "x"}, free), "x (3)");
}

TEST(FreeNamesTest, FollowsTheStylesRuleOfEqualNames) {
  FreeNames names(PathStyle::Windows());
  const auto free = [](const std::string&) { return false; };
  EXPECT_EQ(names.Pick({"C:\\d", "x"}, free), "x");
  EXPECT_EQ(names.Pick({"c:\\D", "X"}, free), "X (2)");
}

}  // namespace

}  // namespace tresmor
