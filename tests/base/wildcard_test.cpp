#include "base/wildcard.h"

#include <gtest/gtest.h>

#include <string>

namespace tresmor {
namespace {

bool Match(const char* pattern, const std::string& name) { return Wildcard(pattern).Matches(name); }

TEST(Wildcard, StarDotStarIsEveryName) {
  for (const char* pattern : {"*.*", "*"}) {
    for (const char* name : {"a", "a.txt", "a.", ".a", "a.b.c", "\xFF"}) EXPECT_TRUE(Match(pattern, name)) << name;
  }
}

TEST(Wildcard, MatchesPlainNamesWithoutRegardToCase) {
  EXPECT_TRUE(Match("report.TXT", "Report.txt"));
  EXPECT_TRUE(Match("*.txt", "x.TXT"));
  EXPECT_TRUE(Match("É*", "école"));
  EXPECT_FALSE(Match("report.txt", "report.txt2"));
  EXPECT_FALSE(Match("report.txt", "areport.txt"));
  EXPECT_FALSE(Match("report", "report.txt"));
}

TEST(Wildcard, StarTakesAnyRun) {
  EXPECT_TRUE(Match("*.txt", "a.b.txt"));
  EXPECT_TRUE(Match("*.txt", ".txt"));
  EXPECT_FALSE(Match("*.txt", "a.txt.bak"));
  EXPECT_FALSE(Match("*.txt", "atxt"));
  EXPECT_TRUE(Match("a*c", "ac"));
  EXPECT_TRUE(Match("a*c", "a.b.c"));
  EXPECT_FALSE(Match("a*c", "a.b.cd"));
  EXPECT_TRUE(Match("*a*b*", "xxaxxbxx"));
  EXPECT_FALSE(Match("*a*b*", "xxbxxaxx"));
  EXPECT_TRUE(Match("*ab", "aab"));
  EXPECT_TRUE(Match("a**b", "ab"));
}

TEST(Wildcard, DotAtTheEndMeansNoExtension) {
  EXPECT_TRUE(Match("report.", "report"));
  EXPECT_TRUE(Match("report.", "REPORT"));
  EXPECT_FALSE(Match("report.", "report.txt"));
  EXPECT_FALSE(Match("report.", "report."));
  EXPECT_FALSE(Match("report.", "reports"));
  EXPECT_TRUE(Match("*.", "report"));
  EXPECT_FALSE(Match("*.", "report.txt"));
  EXPECT_FALSE(Match("*.", ".profile"));
  EXPECT_TRUE(Match("r*.", "report"));
  EXPECT_FALSE(Match("r*.", "report.txt"));
  EXPECT_FALSE(Match("r*.", "report.a.txt"));
  EXPECT_TRUE(Match("*r*.", "r.r"));  // the first star takes "r."
  EXPECT_FALSE(Match("*r*.", "r.t"));
}

TEST(Wildcard, QuestionTakesOneCharacterAndNoDot) {
  EXPECT_TRUE(Match("a?c", "abc"));
  EXPECT_FALSE(Match("a?c", "ac"));
  EXPECT_FALSE(Match("a?c", "abbc"));
  EXPECT_FALSE(Match("a?c", "a.c"));
  EXPECT_TRUE(Match("?", "é"));
  EXPECT_TRUE(Match("?", "\u20AC"));
  EXPECT_FALSE(Match("?", "ab"));
}

TEST(Wildcard, QuestionTakesNothingBeforeADotOrAtTheEnd) {
  EXPECT_TRUE(Match("a?", "a"));
  EXPECT_TRUE(Match("a?", "ab"));
  EXPECT_FALSE(Match("a?", "abc"));
  EXPECT_TRUE(Match("a???", "ab"));
  EXPECT_TRUE(Match("a?.txt", "a.txt"));
  EXPECT_TRUE(Match("a?.txt", "ab.txt"));
  EXPECT_FALSE(Match("a?.txt", "abc.txt"));
  EXPECT_TRUE(Match("????.t?", "ab.t"));
  EXPECT_FALSE(Match("a?", "a.b"));
}

TEST(Wildcard, DotBeforeAWildcardAlsoMatchesTheEnd) {
  EXPECT_TRUE(Match("a.*", "a"));
  EXPECT_TRUE(Match("a.*", "a."));
  EXPECT_TRUE(Match("a.*", "a.b.c"));
  EXPECT_FALSE(Match("a.*", "ab"));
  EXPECT_TRUE(Match("a.?", "a"));
  EXPECT_TRUE(Match("a.?", "a.b"));
  EXPECT_FALSE(Match("a.?", "a.bc"));
  EXPECT_TRUE(Match("*.?", "abc"));
  EXPECT_TRUE(Match("*.?", "abc.d"));
  EXPECT_FALSE(Match("*.?", "abc.de"));
  EXPECT_FALSE(Match("a.b*", "a"));
}

TEST(Wildcard, StarBeforeADotStopsShortOfTheLastOne) {
  EXPECT_TRUE(Match("*.tar*", "x.tar.gz"));
  EXPECT_TRUE(Match("*.b.*", "a.b.c"));
  EXPECT_TRUE(Match("*.b*", "a.b.b"));
  EXPECT_FALSE(Match("*.*x", "fox"));
}

TEST(Wildcard, EmptyPatternsMatchNothing) {
  for (const char* pattern : {"", ".", ".."}) {
    for (const char* name : {"", "a", ".", ".a"}) EXPECT_FALSE(Match(pattern, name)) << pattern << ' ' << name;
  }
}

TEST(Wildcard, InvalidBytesCountAsCharacters) {
  EXPECT_TRUE(Match("a?z", "a\xFFz"));
  EXPECT_FALSE(Match("a?z", "a\xC3\xFFz"));
  EXPECT_TRUE(Match("a??z", "a\xC3\xFFz"));
  EXPECT_TRUE(Match("*.txt", "\xE9t\xE9.TXT"));
  EXPECT_TRUE(Match("\xE9*", "\xE9t\xE9"));
  EXPECT_FALSE(Match("\xE9*", "\u00E9t"));
}

TEST(Wildcard, ManyStarsNeedNoManyTries) {
  std::string pattern;
  for (int i = 0; i < 100; ++i) pattern += "*a";
  pattern += "*b";
  const std::string name(5000, 'a');
  EXPECT_FALSE(Wildcard(pattern).Matches(name));
  EXPECT_TRUE(Wildcard(pattern).Matches(name + "b"));
}

TEST(Wildcard, OtherCharactersStandForThemselves) {
  EXPECT_TRUE(Match("a[1]#<>\"", "A[1]#<>\""));
  EXPECT_FALSE(Match("a[1]", "a1"));
  EXPECT_FALSE(Match("a<", "ab"));
  EXPECT_FALSE(Match("a>", "ab"));
  EXPECT_TRUE(Match("a\\*", "a\\b"));
}

}  // namespace
}  // namespace tresmor
