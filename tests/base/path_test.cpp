#include "base/path.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace tresmor {
namespace {

constexpr PathStyle kPosix = PathStyle::Posix();
constexpr PathStyle kWindows = PathStyle::Windows();

TEST(PathStyle, PosixIsExact) {
  EXPECT_TRUE(kPosix.Equal("/a/B", "/a/B"));
  EXPECT_FALSE(kPosix.Equal("/a/B", "/a/b"));
  EXPECT_TRUE(kPosix.StartsWith("/a/b/c", "/a/b/"));
  EXPECT_FALSE(kPosix.StartsWith("/a/b/c", "/A/b/"));
  EXPECT_FALSE(kPosix.StartsWith("/a", "/a/"));
  EXPECT_EQ(kPosix.Key("/A\xFF"), "/A\xFF");
  EXPECT_EQ(kPosix.Tail(), "/");
}

TEST(PathStyle, WindowsHasNoRegardToCase) {
  EXPECT_TRUE(kWindows.Equal("C:\\Ä", "c:\\ä"));
  EXPECT_FALSE(kWindows.Equal("C:\\a", "C:\\b"));
  EXPECT_TRUE(kWindows.StartsWith("C:\\WINDOWS\\x", "c:\\Windows\\"));
  EXPECT_TRUE(kWindows.StartsWith("C:\\\u212A\\x", "c:\\K\\"));  // the longer bytes may be in either
  EXPECT_TRUE(kWindows.StartsWith("C:\\k\\x", "c:\\\u212A\\"));
  EXPECT_FALSE(kWindows.StartsWith("C:\\Win", "c:\\Windows\\"));
  EXPECT_EQ(kWindows.Key("C:\\Ä"), kWindows.Key("c:\\ä"));
  EXPECT_NE(kWindows.Key("C:\\Ä"), kWindows.Key("c:\\a"));
  EXPECT_EQ(kWindows.Tail(), "\\");
}

// Each case is written with '/' and run in both styles.
class PathText : public testing::TestWithParam<PathStyle> {
 protected:
  std::string Styled(std::string text) const {
    for (char& c : text) {
      if (c == '/') c = GetParam().separator;
    }
    return text;
  }
  std::string Split(const std::string& s, unsigned parts) const { return SplitFileSpec(Styled(s), parts, GetParam()); }
  std::string Name(const std::string& s) const { return std::string(GetFileNameOf(Styled(s), GetParam())); }
  std::string Folder(const std::string& s) const { return std::string(GetFolderOf(Styled(s), GetParam())); }
  std::string Ext(const std::string& s) const { return std::string(GetFileExtOf(Styled(s), GetParam())); }
};

INSTANTIATE_TEST_SUITE_P(Styles, PathText, testing::Values(kPosix, kWindows),
                         [](const auto& info) { return info.param.ignoreCase ? "Windows" : "Posix"; });

TEST_P(PathText, SplitsIntoParts) {
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileFolder), Styled("c:/docs/"));
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileName), "a.b");
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileExt), "txt");
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileName | kFileExt), "a.b.txt");
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileFolder | kFileName | kFileExt), Styled("c:/docs/a.b.txt"));
  EXPECT_EQ(Split("c:/docs/a.b.txt", kFileFolder | kFileName), Styled("c:/docs/a.b"));
  EXPECT_EQ(Split("c:/docs/a.b.txt", 0), "");
}

TEST_P(PathText, PutsADotBehindANameWithoutExtension) {
  EXPECT_EQ(Split("c:/docs/report", kFileName | kFileExt), "report.");
  EXPECT_EQ(Split("report", kFileName | kFileExt), "report.");
  EXPECT_EQ(Split("*", kFileName | kFileExt), "*.");
  EXPECT_EQ(Split("c:/docs/report", kFileName), "report");
  EXPECT_EQ(Split("c:/docs/report", kFileExt), "");
  EXPECT_EQ(Split("c:/docs/", kFileName | kFileExt), "");
  EXPECT_EQ(Split("c:/docs/", kFileFolder | kFileExt), Styled("c:/docs/."));
}

TEST_P(PathText, TakesNoDotOfAFolder) {
  EXPECT_EQ(Split("c:/do.cs/report", kFileName), "report");
  EXPECT_EQ(Split("c:/do.cs/report", kFileExt), "");
  EXPECT_EQ(Ext("/a.b/c"), "");
  EXPECT_EQ(Ext("/a.b/"), "");
}

TEST_P(PathText, ANameMayBeginOrEndWithADot) {
  EXPECT_EQ(Split("/a/.profile", kFileName), "");
  EXPECT_EQ(Split("/a/.profile", kFileExt), "profile");
  EXPECT_EQ(Split("/a/.profile", kFileName | kFileExt), "profile");
  EXPECT_EQ(Split("/a/.profile", kFileFolder | kFileName | kFileExt), Styled("/a/.profile"));
  EXPECT_EQ(Split("/a/b.", kFileName), "b");
  EXPECT_EQ(Ext("/a/b."), "");
}

TEST_P(PathText, FindsNameFolderAndExtension) {
  EXPECT_EQ(Name("c:/a.txt"), "a.txt");
  EXPECT_EQ(Folder("c:/a.txt"), Styled("c:/"));
  EXPECT_EQ(Name("/a"), "a");
  EXPECT_EQ(Folder("/a"), Styled("/"));
  EXPECT_EQ(Name("a.txt"), "a.txt");
  EXPECT_EQ(Folder("a.txt"), "");
  EXPECT_EQ(Name("/a/b/"), "");
  EXPECT_EQ(Folder("/a/b/"), Styled("/a/b/"));
  EXPECT_EQ(Folder("/"), Styled("/"));
  EXPECT_EQ(Name(""), "");
  EXPECT_EQ(Ext("/a/b.tar.gz"), "gz");
  EXPECT_EQ(Ext("b"), "");
}

TEST(PathTextOfOneStyle, TheOtherSeparatorIsAnOrdinaryCharacter) {
  EXPECT_EQ(GetFileNameOf("/a\\b", kPosix), "a\\b");
  EXPECT_EQ(GetFileNameOf("\\a/b", kWindows), "a/b");
}

TEST(AddTail, AddsOnlyWhatIsMissing) {
  EXPECT_EQ(AddTail("/a", "/"), "/a/");
  EXPECT_EQ(AddTail("/a/", "/"), "/a/");
  EXPECT_EQ(AddTail("", "\\"), "\\");
  EXPECT_EQ(AddTail("xAB", "ab"), "xABab");
  EXPECT_EQ(AddTail("x", ""), "x");
}

TEST(HasNul, WhereverItStands) {
  EXPECT_TRUE(HasNul("\0"s));
  EXPECT_TRUE(HasNul("a\0"s));
  EXPECT_FALSE(HasNul("abc"));
  EXPECT_FALSE(HasNul(""));
}

TEST(StripNul, EndsAtTheFirstNul) {
  const std::string buffer = "ab\0cd\0"s;
  EXPECT_EQ(StripNul(buffer), "ab");
  EXPECT_EQ(StripNul("abc"), "abc");
  EXPECT_EQ(StripNul("\0a"s), "");
  EXPECT_EQ(StripNul(""), "");
}

TEST_P(PathText, WithoutTailKeepsTheRoot) {
  EXPECT_EQ(WithoutTail(Styled("/a/b//"), GetParam()), Styled("/a/b"));
  EXPECT_EQ(WithoutTail(Styled("/a"), GetParam()), Styled("/a"));
  EXPECT_EQ(WithoutTail(Styled("//"), GetParam()), Styled("/"));
  EXPECT_EQ(WithoutTail("", GetParam()), "");
}

TEST_P(PathText, JoinsAndFindsParents) {
  EXPECT_EQ(JoinPath(Styled("/d"), "n", GetParam()), Styled("/d/n"));
  EXPECT_EQ(JoinPath(Styled("/"), "n", GetParam()), Styled("/n"));
  EXPECT_EQ(ParentOf(Styled("/d/n"), GetParam()), Styled("/d"));
  EXPECT_EQ(ParentOf(Styled("/d"), GetParam()), Styled("/"));
  EXPECT_EQ(ParentOf("n", GetParam()), "");
}

TEST_P(PathText, KnowsWhatLiesBelow) {
  const auto below = [&](const std::string& path) { return LiesBelow(Styled(path), Styled("/d/e"), GetParam()); };
  const auto isOrBelow = [&](const std::string& path) {
    return IsOrLiesBelow(Styled(path), Styled("/d/e"), GetParam());
  };
  EXPECT_TRUE(below("/d/e/f") && isOrBelow("/d/e/f"));
  EXPECT_TRUE(!below("/d/e") && isOrBelow("/d/e"));
  EXPECT_FALSE(below("/d/ef") || isOrBelow("/d/ef") || below("/d") || isOrBelow("/d"));
  EXPECT_EQ(below("/D/E/f"), GetParam().ignoreCase);
  EXPECT_EQ(isOrBelow("/D/E"), GetParam().ignoreCase);
}

}  // namespace
}  // namespace tresmor
