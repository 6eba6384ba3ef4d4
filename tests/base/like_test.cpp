#include "base/like.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

bool Match(const std::string& pattern, const std::string& name) { return Like(pattern).Matches(name); }

Errors FailureOf(const std::string& pattern) {
  return tests::FailureOf([&] { const Like like(pattern); });
}

TEST(Like, PlainTextsMatchWhollyAndInEitherCase) {
  EXPECT_TRUE(Match("Report.TXT", "rEPORT.txt"));
  EXPECT_TRUE(Match("\u00C9cole", "\u00E9COLE"));
  EXPECT_FALSE(Match("report", "report.txt"));
  EXPECT_FALSE(Match("report", "my report"));
  EXPECT_FALSE(Match("report", "repor"));
  EXPECT_TRUE(Match("", ""));
  EXPECT_FALSE(Match("", "a"));
}

TEST(Like, QuestionIsOneCharacterAlways) {
  EXPECT_TRUE(Match("a?c", "abc"));
  EXPECT_TRUE(Match("a?c", "a.c"));
  EXPECT_FALSE(Match("a?c", "ac"));
  EXPECT_FALSE(Match("a?", "a"));
  EXPECT_TRUE(Match("?", "\u20AC"));
  EXPECT_FALSE(Match("?", "\u20AC\u20AC"));
}

TEST(Like, StarIsAnyRun) {
  EXPECT_TRUE(Match("*", ""));
  EXPECT_TRUE(Match("*.jpg", ".JPG"));
  EXPECT_TRUE(Match("*.jpg", "a.jpg.jpg"));
  EXPECT_FALSE(Match("*.jpg", "a.jpg.bak"));
  EXPECT_FALSE(Match("*.*", "no dot"));
  EXPECT_TRUE(Match("a*c", "ac"));
  EXPECT_TRUE(Match("*a*b*", "xxaxxbxx"));
  EXPECT_FALSE(Match("*a*b*", "xxbxxaxx"));
  EXPECT_TRUE(Match("*ab", "aab"));
  EXPECT_TRUE(Match("a**", "a"));
  EXPECT_TRUE(Match("*?b*c", "abbcc"));
  EXPECT_TRUE(Match("*\u00E9", "\u20AC\u20AC\u00E9"));
}

TEST(Like, HashIsOneDigit) {
  EXPECT_TRUE(Match("img##.png", "img09.png"));
  EXPECT_FALSE(Match("img##.png", "img9.png"));
  EXPECT_FALSE(Match("#", "a"));
  EXPECT_FALSE(Match("#", "/"));
  EXPECT_FALSE(Match("#", ":"));
  EXPECT_FALSE(Match("#", "\u0664"));  // a digit, but none of these ten
}

TEST(Like, SetsAreOneOfTheirCharacters) {
  EXPECT_TRUE(Match("[abc]x", "Bx"));
  EXPECT_TRUE(Match("[ABC]x", "bx"));
  EXPECT_FALSE(Match("[abc]x", "dx"));
  EXPECT_FALSE(Match("[abc]x", "x"));
  EXPECT_FALSE(Match("[abc]", "ab"));
  EXPECT_TRUE(Match("[\u00E9\u20AC]", "\u20AC"));
}

TEST(Like, RangesAreByCodePoint) {
  EXPECT_TRUE(Match("[a-c]", "b"));
  EXPECT_TRUE(Match("[a-c]", "a"));
  EXPECT_TRUE(Match("[A-C]", "c"));
  EXPECT_FALSE(Match("[a-c]", "d"));
  EXPECT_TRUE(Match("[0-9a-f_]", "E"));
  EXPECT_TRUE(Match("[0-9a-f_]", "_"));
  EXPECT_FALSE(Match("[0-9a-f_]", "g"));
  EXPECT_TRUE(Match("[\u00E0-\u00FC]", "\u00C9"));
  EXPECT_FALSE(Match("[\u00E0-\u00FC]", "z"));
  EXPECT_TRUE(Match("[b-b]", "b"));
}

TEST(Like, NegatedSetsAreOneOfAllOthers) {
  EXPECT_TRUE(Match("[!abc]", "d"));
  EXPECT_FALSE(Match("[!abc]", "B"));
  EXPECT_FALSE(Match("[!abc]", ""));
  EXPECT_FALSE(Match("[!a-c]", "b"));
  EXPECT_TRUE(Match("[!a-c]", "\u20AC"));
  EXPECT_TRUE(Match("x[!0-9]*", "xy1"));
  EXPECT_FALSE(Match("x[!0-9]*", "x1y"));
}

TEST(Like, MarksInASetStandForThemselves) {
  EXPECT_TRUE(Match("[*]", "*"));
  EXPECT_FALSE(Match("[*]", "a"));
  EXPECT_TRUE(Match("[?]x", "?x"));
  EXPECT_TRUE(Match("[#]1", "#1"));
  EXPECT_FALSE(Match("[#]1", "11"));
  EXPECT_TRUE(Match("[[]a]", "[a]"));
  EXPECT_TRUE(Match("[a!]", "!"));
  EXPECT_TRUE(Match("a]", "a]"));
  EXPECT_TRUE(Match("a!-", "a!-"));
}

TEST(Like, AHyphenWithoutTwoNeighboursStandsForItself) {
  for (const char* pattern : {"[-a]", "[a-]", "[-]", "[a-c-]", "[a-c-e]"}) EXPECT_TRUE(Match(pattern, "-")) << pattern;
  EXPECT_TRUE(Match("[a-c-e]", "e"));
  EXPECT_FALSE(Match("[a-c-e]", "d"));
  EXPECT_FALSE(Match("[!-a]", "-"));
  EXPECT_TRUE(Match("[--/]", "."));
}

TEST(Like, AnEmptySetIsNothingAndALoneMarkOfNegationIsItself) {
  EXPECT_TRUE(Match("a[]b", "ab"));
  EXPECT_FALSE(Match("a[]b", "axb"));
  EXPECT_TRUE(Match("[!]", "!"));
  EXPECT_FALSE(Match("[!]", "a"));
}

TEST(Like, IllFormedSetsFail) {
  for (const char* pattern : {"[", "a[", "[abc", "[!", "*[a-z", "[a]["}) {
    EXPECT_EQ(FailureOf(pattern), Errors::BadPattern) << pattern;
  }
  EXPECT_EQ(FailureOf("[z-a]"), Errors::BadPattern);
  EXPECT_EQ(FailureOf("[!9-0]"), Errors::BadPattern);
  EXPECT_EQ(FailureOf("[A-_]"), Errors::BadPattern);  // backwards in lower case
  EXPECT_EQ(FailureOf("]"), Errors::None);
}

TEST(Like, InvalidBytesCountAsCharacters) {
  EXPECT_TRUE(Match("a?z", "a\xFFz"));
  EXPECT_FALSE(Match("a?z", "a\xC3\xFFz"));
  EXPECT_TRUE(Match("a??z", "a\xC3\xFFz"));
  EXPECT_TRUE(Match("*[\xE9]", "t\xE9"));
  EXPECT_FALSE(Match("*[\xE9]", "t\u00E9"));
  EXPECT_TRUE(Match("[!a]", "\xE9"));
  EXPECT_FALSE(Match("#", "\xB2"));
}

TEST(Like, ManyStarsNeedNoManyTries) {
  std::string pattern;
  for (int i = 0; i < 100; ++i) pattern += "*a";
  pattern += "*b";
  const std::string name(5000, 'a');
  EXPECT_FALSE(Match(pattern, name));
  EXPECT_TRUE(Match(pattern, name + "b"));
}

}  // namespace
}  // namespace tresmor
