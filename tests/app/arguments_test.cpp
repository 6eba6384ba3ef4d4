#include "app/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace tresmor {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Arguments Read(const std::vector<const char*>& words) { return ReadArguments(words); }

TEST(Arguments, NoneJustOpenTheWindow) {
  const Arguments none = Read({});
  EXPECT_EQ(none.sessionFile + none.answer, "");
  EXPECT_FALSE(none.areWrong);
}

TEST(Arguments, AFileIsASessionByItsFullPath) {
  EXPECT_EQ(Read({"/data/a b.Tresmor"}).sessionFile, "/data/a b.Tresmor");
  EXPECT_EQ(Read({"s.Tresmor"}).sessionFile, std::filesystem::current_path().string() + "/s.Tresmor");
  EXPECT_EQ(Read({"./-s"}).answer, "");
}

TEST(Arguments, HelpAndVersionAreAnswered) {
  for (const char* const asked : {"--help", "--version"}) {
    const Arguments arguments = Read({asked});
    EXPECT_THAT(arguments.answer, HasSubstr("tresmor")) << asked;
    EXPECT_FALSE(arguments.areWrong) << asked;
  }
  EXPECT_THAT(Read({"--version"}).answer, StartsWith("tresmor 3."));
}

TEST(Arguments, AllElseIsWrong) {
  for (const auto& words :
       std::vector<std::vector<const char*>>{{"a", "b"}, {"--frob"}, {"-h"}, {""}, {"a", "--help"}}) {
    const Arguments arguments = Read(words);
    EXPECT_TRUE(arguments.areWrong) << words.front();
    EXPECT_THAT(arguments.answer, StartsWith("Use: ")) << words.front();
    EXPECT_EQ(arguments.sessionFile, "") << words.front();
  }
}

}  // namespace
}  // namespace tresmor
