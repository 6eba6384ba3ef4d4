#include "base/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace tresmor {
namespace {

TEST(FoldCase, FoldsAscii) {
  EXPECT_EQ(FoldCase("ABCXYZ abcxyz @[`{ 019"), "abcxyz abcxyz @[`{ 019");
  EXPECT_EQ(FoldCase(""), "");
}

TEST(FoldCase, FoldsOneCharacterToOne) {
  EXPECT_EQ(FoldCase("ÀÉÎÕÜ"), "àéîõü");
  EXPECT_EQ(FoldCase("ΑΣς"), "ασσ");
  EXPECT_EQ(FoldCase("ЖЯЁ"), "жяё");
  EXPECT_EQ(FoldCase("\u017F"), "s");         // long s
  EXPECT_EQ(FoldCase("\u212A\u212B"), "kå");  // signs of Kelvin and Angstrom
  EXPECT_EQ(FoldCase("\u00B5"), "\u03BC");    // micro sign
  EXPECT_EQ(FoldCase("\u01C4\u01C5"), "\u01C6\u01C6");
  EXPECT_EQ(FoldCase("\u1F88\u1FBE"), "\u1F80\u03B9");
  EXPECT_EQ(FoldCase("\U00010400"), "\U00010428");
}

TEST(FoldCase, KeepsWhatOnlyTheFullFoldingWouldChange) {
  EXPECT_EQ(FoldCase("ß"), "ß");
  EXPECT_EQ(FoldCase("\u1E9E"), "ß");  // capital sharp s
  EXPECT_EQ(FoldCase("\u0149\uFB01"), "\u0149\uFB01");
}

TEST(FoldCase, KeepsTurkishLetters) {
  EXPECT_EQ(FoldCase("\u0130"), "\u0130");
  EXPECT_EQ(FoldCase("\u0131"), "\u0131");
  EXPECT_FALSE(EqualText("\u0130", "i"));
  EXPECT_FALSE(EqualText("\u0131", "I"));
}

TEST(FoldCase, FoldsCherokeeToItsCapitals) {
  EXPECT_EQ(FoldCase("\uAB70"), "\u13A0");
  EXPECT_EQ(FoldCase("\u13A0"), "\u13A0");
  EXPECT_EQ(FoldCase("\u13F8"), "\u13F0");
}

TEST(FoldCase, InvalidBytesStandForThemselves) {
  EXPECT_EQ(FoldCase("A\xFF\xC3"), "a\xFF\xC3");
  EXPECT_EQ(FoldCase("\xC0\xC1Z"), "\xC0\xC1z");
  EXPECT_EQ(FoldCase("\xED\xA0\x80\xC3\x89"), "\xED\xA0\x80\xC3\xA9");  // a surrogate, then a letter
  EXPECT_EQ(FoldCase("A\0B"s), "a\0b"s);
}

TEST(NextFoldedChar, MovesBehindTheCharacter) {
  const std::string text = "A\u212A\xE2\x84";
  std::size_t at = 0;
  EXPECT_EQ(NextFoldedChar(text, at), U'a');
  EXPECT_EQ(at, 1u);
  EXPECT_EQ(NextFoldedChar(text, at), U'k');
  EXPECT_EQ(at, 4u);
  EXPECT_EQ(NextFoldedChar(text, at), char32_t{0x1100E2});
  EXPECT_EQ(NextFoldedChar(text, at), char32_t{0x110084});
  EXPECT_EQ(at, text.size());
}

TEST(CompareText, OrdersWithoutRegardToCase) {
  EXPECT_EQ(CompareText("readme.TXT", "README.txt"), 0);
  EXPECT_EQ(CompareText("", ""), 0);
  EXPECT_EQ(CompareText("a", "B"), -1);
  EXPECT_EQ(CompareText("B", "a"), 1);
  EXPECT_EQ(CompareText("a", "ab"), -1);
  EXPECT_EQ(CompareText("Z", "_"), 1);  // folded to small letters, not to capitals
  EXPECT_EQ(CompareText("Éa", "éB"), -1);
  EXPECT_EQ(CompareText("z", "é"), -1);
}

// All texts of up to three of some awkward pieces.
std::vector<std::string> AwkwardTexts() {
  const std::vector<std::string> pieces = {"a", "A", "k", "\u212A", "É", "é", "\xE2", "\x84", "\xC3", "\0"s};
  std::vector<std::string> texts = {""};
  std::size_t from = 0;
  for (int length = 1; length <= 3; ++length) {
    const std::size_t end = texts.size();
    for (; from < end; ++from) {
      for (const std::string& piece : pieces) texts.push_back(texts[from] + piece);
    }
  }
  return texts;
}

TEST(CompareText, IsTheOrderOfTheFoldedBytes) {
  const std::vector<std::string> texts = AwkwardTexts();
  std::vector<std::string> folded;
  for (const std::string& text : texts) folded.push_back(FoldCase(text));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < texts.size(); ++j) {
      const int order = folded[i].compare(folded[j]);
      ASSERT_EQ(CompareText(texts[i], texts[j]), (order > 0) - (order < 0)) << i << ' ' << j;
    }
  }
}

TEST(TextKey, OrdersAsCompareTextDoes) {
  const std::vector<std::string> texts = AwkwardTexts();
  for (const std::string& a : texts) {
    for (const std::string& b : texts) {
      const std::uint64_t x = TextKey(a);
      const std::uint64_t y = TextKey(b);
      if (x == y) continue;
      ASSERT_EQ(CompareText(a, b), x < y ? -1 : 1);
    }
  }
}

TEST(TextKey, IsTheFirstEightFoldedBytes) {
  EXPECT_EQ(TextKey("ABCDEFGHIJ"), 0x6162636465666768u);
  EXPECT_EQ(TextKey("\u212Ab"), 0x6B62000000000000u);
  EXPECT_EQ(TextKey("\xFF"), 0xFF00000000000000u);
  EXPECT_EQ(TextKey("1234567É"), 0x31323334353637C3u);
  EXPECT_EQ(TextKey(""), 0u);
}

TEST(CommandsText, IsOfWhatActsOnTheTextAboutItAndShowsNothing) {
  for (const char* const command :
       {"\u0080", "\u009f", "\u2028", "\u2029", "\u202a", "\u202e", "\u2066", "\u2069", "\u061c", "\u200e", "\u200f"})
    EXPECT_TRUE(CommandsText(command)) << testing::PrintToString(command);
  for (const char* const plain :
       {"a", "\x7f", "\u00a0", "\u2027", "\u202f", "\u2065", "\u206a", "\u20ac", "\U0001F400"})
    EXPECT_FALSE(CommandsText(plain)) << testing::PrintToString(plain);
  EXPECT_FALSE(CommandsText("\xc2")) << "no character at all";
}

TEST(CharLength, CountsTheBytesOfOneCharacter) {
  const std::string text = "aé\u20AC\U0001F600\xC3";
  EXPECT_EQ(CharLength(text, 0), 1u);
  EXPECT_EQ(CharLength(text, 1), 2u);
  EXPECT_EQ(CharLength(text, 2), 1u);  // in the middle of a character
  EXPECT_EQ(CharLength(text, 3), 3u);
  EXPECT_EQ(CharLength(text, 6), 4u);
  EXPECT_EQ(CharLength(text, 10), 1u);  // cut off
}

TEST(IsUtf8, TellsValidFromInvalid) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("aé\u20AC\U0010FFFF\uFFFE"));
  EXPECT_FALSE(IsUtf8("a\xC3"));
  EXPECT_FALSE(IsUtf8("\xC0\xAF"));          // too long a form
  EXPECT_FALSE(IsUtf8("\xED\xA0\x80"));      // surrogate
  EXPECT_FALSE(IsUtf8("\xF4\x90\x80\x80"));  // behind the last character
  EXPECT_FALSE(IsUtf8("\x80"));
}

TEST(PadNumber, FillsToTenCharacters) {
  EXPECT_EQ(PadNumber(0), "         0");
  EXPECT_EQ(PadNumber(-3), "        -3");
  EXPECT_EQ(PadNumber(2147483647), "2147483647");
  EXPECT_EQ(PadNumber(999999999), " 999999999");
  EXPECT_EQ(PadNumber(12345678901), "12345678901");
  EXPECT_EQ(PadNumber(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(ReplaceAll, ReplacesEachFromTheLeft) {
  EXPECT_EQ(ReplaceAll("a[value]b[value]", "[value]", "12"), "a12b12");
  EXPECT_EQ(ReplaceAll("[value]", "[value]", "[value][value]"), "[value][value]");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
  EXPECT_EQ(ReplaceAll("a-b-", "-", ""), "ab");
  EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

TEST(AsciiDigits, KnowsThoseOfEveryScript) {
  EXPECT_EQ(AsciiDigits("٠١٩ ۰۵۹ ०९ ༠༩ ０９ 09"), "019 059 09 09 09 09");
  EXPECT_EQ(AsciiDigits("𝟎𝟗𝟘𝟡𝟢𝟿"), "090909");  // rows of ten without a gap
  EXPECT_EQ(AsciiDigits("a½²Ⅷ年\xff\xd9 \xe0\xa5"), "a½²Ⅷ年\xff\xd9 \xe0\xa5");
  EXPECT_EQ(AsciiDigits(""), "");
}

TEST(PercentEncoded, LeavesLettersDigitsAndMarks) {
  EXPECT_EQ(PercentEncoded("/a Z9~.txt", "/~."), "/a%20Z9~.txt");
  EXPECT_EQ(PercentEncoded("\xC3\xA4%\n\x7F", ""), "%C3%A4%25%0A%7F");
  EXPECT_EQ(PercentEncoded(std::string_view("\0", 1), ""), "%00");
}

TEST(TrimBlanks, CutsBlanksOnly) {
  EXPECT_EQ(TrimBlanks("  a b "), "a b");
  EXPECT_EQ(TrimBlanks("a"), "a");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(TrimBlanks(""), "");
  EXPECT_EQ(TrimBlanks("\ta\u00A0 "), "\ta\u00A0");
}

}  // namespace
}  // namespace tresmor
