// The settings' file: its text, what becomes of damage, and failures.
#include "persist/ini_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "persist/ini_text.h"
#include "support/failure_of.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"

namespace tresmor {
namespace {

using tests::FailureOf;

constexpr char kPath[] = "/home/me/.config/tresmor/tresmor.ini";
constexpr IniSection kOptionsSection = {"Tresmor", "Options"};

class IniSettingsTest : public testing::Test {
 protected:
  void Put(const std::string& text) { files.MakeFile(kPath, text); }
  std::string Text() const {
    Errors failure = Errors::None;
    const auto file = files.Open(kPath, failure);
    if (!file) return "no file";
    std::string text(static_cast<std::size_t>(file->Size()), '\0');
    file->ReadAt(0, text);
    return text;
  }
  std::string Get(const std::string& key) const { return store.Get("Tresmor", "Options", key, "none"); }
  void Save(const std::string& key, const std::string& value) { store.Save("Tresmor", "Options", key, value); }

  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  IniSettings store{files, writer, kPath};
};

TEST_F(IniSettingsTest, IsATextForPeople) {
  store.Save("Tresmor", "Options", "DefaultEditor", "/usr/bin/my editor");
  store.Save("Tresmor", "PathHistory", "0", "/home/Jürgen");
  store.Save("Tresmor", "Options", "Show Tips at Startup", "1");
  store.Save("Tresmor", "PathHistory", "1", " a\\b\n\xff ");
  EXPECT_EQ(Text(),
            "[Tresmor/Options]\n"
            "DefaultEditor=/usr/bin/my editor\n"
            "Show Tips at Startup=1\n"
            "\n"
            "[Tresmor/PathHistory]\n"
            "0=/home/Jürgen\n"
            "1=\\x20a\\\\b\\x0A\\xFF\\x20\n");
}

TEST_F(IniSettingsTest, ReadsWhatPeopleWrite) {
  Put("\xef\xbb\xbf[ tresmor / options ]\r\n"
      "  DefaultEditor = C:\\xedit\\new \\x4 \t\r\n"
      ";NoTooltips=1\n#NoTooltips=2\nNoTooltips=3\nNoTooltips=4\n"
      "[Tresmor/Other]\nShow Tips at Startup=0\n"
      "[Tresmor/Options\nShow Tips at Startup=1");
  EXPECT_EQ(Get("DefaultEditor"),
            "C:\xed"
            "it\\new \\x4");
  EXPECT_EQ(Get("NoTooltips"), "3");
  EXPECT_EQ(Get("Show Tips at Startup"), "1");
}

TEST_F(IniSettingsTest, LeavesEveryOtherLineAsItIs) {
  const std::string head = "; mine\r\n\r\n[Tresmor/Options]\r\nno key\r\n";
  const std::string tail = "\r\n=\n# more\n[What]\nNoTooltips=9\n\x01\xfe";
  Put(head + "notooltips = 0 \r\n" + tail);
  Save("NoTooltips", "1");
  EXPECT_EQ(Text(), head + "NoTooltips=1\r\n" + tail);
  Save("New", "2");
  EXPECT_EQ(Text(), head + "NoTooltips=1\r\n\r\n=\nNew=2\n# more\n[What]\nNoTooltips=9\n\x01\xfe\n");
  store.DeleteSection("Tresmor", "Options");
  EXPECT_EQ(Text(), head + "\r\n# more\n[What]\nNoTooltips=9\n\x01\xfe\n");
}

TEST_F(IniSettingsTest, KeysBelowAnUnknownHeadingAreNobodys) {
  Put("[Tresmor/Options]\nA=1\n[###\nB=2\n[Tresmor]\nC=3\n");
  EXPECT_EQ(Get("A") + Get("B") + Get("C"), "1nonenone");
}

TEST_F(IniSettingsTest, EndsALastLineThatHasNoEnd) {
  Put("[Tresmor/Options]\nA=1");
  Save("B", "2");
  EXPECT_EQ(Text(), "[Tresmor/Options]\nA=1\nB=2\n");
}

TEST_F(IniSettingsTest, WritesNothingThatStandsThereAlready) {
  Put("[Tresmor/Options]\nA=1");
  writer.Fail(Errors::DiskFull);
  EXPECT_NO_THROW(Save("A", "1"));
  EXPECT_NO_THROW(store.DeleteSection("Tresmor", "Other"));
  EXPECT_EQ(FailureOf([&] { Save("A", "2"); }), Errors::DiskFull);
}

TEST_F(IniSettingsTest, AFailedWriteIsToldAndLeavesTheFile) {
  Save("A", "1");
  const std::string before = Text();
  writer.Fail(Errors::DiskFull);
  EXPECT_EQ(FailureOf([&] { Save("A", "2"); }), Errors::DiskFull);
  EXPECT_EQ(FailureOf([&] { store.DeleteSection("Tresmor", "Options"); }), Errors::DiskFull);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(Get("A"), "1");
}

TEST_F(IniSettingsTest, WhatCannotBeReadIsNotWrittenOver) {
  Put("[Tresmor/Options]\nA=1\n");
  const std::string before = Text();
  files.FailOpen(kPath, Errors::PermissionDenied);
  EXPECT_EQ(Get("A"), "none");
  EXPECT_EQ(FailureOf([&] { Save("B", "2"); }), Errors::PermissionDenied);
  files.FailOpen(kPath, Errors::None);
  files.FailRead(kPath, 5, Errors::Device);
  EXPECT_EQ(Get("A"), "none");
  EXPECT_EQ(FailureOf([&] { Save("B", "2"); }), Errors::Device);
  EXPECT_EQ(FailureOf([&] { store.DeleteSection("Tresmor", "Options"); }), Errors::Device);
  files.FailRead(kPath, 0, Errors::None);
  EXPECT_EQ(Text(), before);
}

// What the program holds since then may be defaults.
TEST_F(IniSettingsTest, AfterAReadThatFailedNothingIsSaved) {
  Put("[Tresmor/Options]\nA=1\n");
  const std::string before = Text();
  IniSettings other(files, writer, kPath);
  files.FailOpen(kPath, Errors::TooManyFiles);
  EXPECT_EQ(Get("A"), "none");
  files.FailOpen(kPath, Errors::None);
  EXPECT_EQ(Get("A"), "1");
  EXPECT_EQ(FailureOf([&] { Save("A", "none"); }), Errors::TooManyFiles);
  EXPECT_EQ(FailureOf([&] { Save("B", "2"); }), Errors::TooManyFiles);
  EXPECT_EQ(Text(), before);
  store.DeleteSection("Tresmor", "Options");
  EXPECT_EQ(Get("A"), "none");
  other.Save("Tresmor", "Options", "B", "2");
  EXPECT_EQ(Get("B"), "2");
}

TEST_F(IniSettingsTest, AnEnormousFileIsNoSettingsFile) {
  files.MakeFile(kPath, std::int64_t{1} << 40,
                 [](std::int64_t, std::span<char> into) { std::fill(into.begin(), into.end(), 'x'); });
  EXPECT_EQ(Get("A"), "none");
  EXPECT_EQ(FailureOf([&] { Save("A", "1"); }), Errors::Overflow);
}

TEST_F(IniSettingsTest, NoFileIsWrittenThatCouldNotBeRead) {
  Save("A", "1");
  EXPECT_EQ(FailureOf([&] { Save("B", std::string(16 * 1024 * 1024, 'x')); }), Errors::Overflow);
  EXPECT_EQ(Get("A"), "1");
}

TEST_F(IniSettingsTest, TwoProgramsKeepEachOthersKeys) {
  IniSettings other(files, writer, kPath);
  Save("A", "1");
  other.Save("Tresmor", "Options", "B", "2");
  Save("C", "3");
  other.DeleteSection("Tresmor", "PathHistory");
  EXPECT_EQ(Get("A") + Get("B") + Get("C"), "123");
  EXPECT_EQ(other.Get("Tresmor", "Options", "C", "none"), "3");
}

// --- Damage

// No value holds "[": torn in front of it, the line would end in a heading.
const std::vector<std::pair<std::string, std::string>> kKept = {
    {"NoTooltips", "1"}, {"DefaultEditor", "/usr/bin/édit =x]"}, {"Odd\n=key", "\xff\\ "}, {"Last", "0"}};

std::string GoodFile() {
  std::string ini;
  for (const auto& [key, value] : kKept) SetIniValue(ini, kOptionsSection, key, value);
  return ini;
}

// Lines that begin before the place of the damage and end before it are as they were.
void ExpectReadUpTo(const std::string& ini, std::size_t place) {
  std::size_t end = ini.find('\n') + 1;  // the heading's
  for (const auto& [key, value] : kKept) {
    end = GoodFile().find('\n', end) + 1;
    if (end > place) return;
    EXPECT_EQ(FindIniValue(ini, kOptionsSection, key), value);
  }
}

TEST(IniDamage, ATruncatedFileKeepsItsWholeLines) {
  const std::string good = GoodFile();
  for (std::size_t size = 0; size <= good.size(); ++size) {
    std::string cut = good.substr(0, size);
    ExpectReadUpTo(cut, size);
    const std::string before = cut;
    EXPECT_TRUE(SetIniValue(cut, kOptionsSection, "New", "value"));
    EXPECT_EQ(FindIniValue(cut, kOptionsSection, "New"), "value");
    EXPECT_TRUE(ReplaceAll(cut, "New=value\n", "").starts_with(before));
    ExpectReadUpTo(cut, size);
  }
}

TEST(IniDamage, AChangedByteCostsOneLineAtMost) {
  const std::string good = GoodFile();
  const std::size_t heading = good.find('\n');
  for (std::size_t at = heading + 1; at < good.size(); ++at) {
    for (const char byte : {'\0', '\n', '\xff', '=', ';', '\\', 'x'}) {
      std::string bad = good;
      bad[at] = byte;
      std::size_t begin = heading + 1;
      for (const auto& [key, value] : kKept) {
        const std::size_t end = good.find('\n', begin) + 1;
        // The line itself, and the one that a lost line end draws to it.
        const bool hurt = at + 1 >= begin && at < end;
        if (!hurt) {
          EXPECT_EQ(FindIniValue(bad, kOptionsSection, key), value) << at << " " << int{byte};
        }
        begin = end;
      }
    }
  }
}

std::string RandomBytes(std::mt19937& random, std::size_t most) {
  constexpr std::string_view kLikely = "[]=/\\x\n\r;# TresmorOptions0";
  std::string bytes(random() % most, '\0');
  for (char& byte : bytes) byte = random() % 2 == 0 ? kLikely[random() % kLikely.size()] : static_cast<char>(random());
  return bytes;
}

TEST(IniDamage, RandomBytesAreKeptAndWrittenBeside) {
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i) {
    const std::string before = (i % 2 == 0 ? "" : "[Tresmor/Options]\n") + RandomBytes(random, 200);
    const std::string key = "Key" + RandomBytes(random, 20);
    const std::string value = RandomBytes(random, 20);
    const auto tips = FindIniValue(before, kOptionsSection, "T");
    std::string ini = before;
    if (!FindIniValue(before, kOptionsSection, key)) {
      ASSERT_TRUE(SetIniValue(ini, kOptionsSection, key, value));
      EXPECT_GE(ini.size(), before.size() + key.size() + value.size() + 2);
    }
    SetIniValue(ini, kOptionsSection, key, value);
    ASSERT_EQ(FindIniValue(ini, kOptionsSection, key), value);
    EXPECT_FALSE(SetIniValue(ini, kOptionsSection, key, value));
    EXPECT_EQ(FindIniValue(ini, kOptionsSection, "T"), tips);
    EXPECT_TRUE(RemoveIniKeys(ini, kOptionsSection));
    EXPECT_FALSE(FindIniValue(ini, kOptionsSection, key));
    EXPECT_FALSE(RemoveIniKeys(ini, kOptionsSection));
  }
}

TEST(IniDamage, TheFileOfAnyValueIsUtf8) {
  std::mt19937 random(2);
  for (int i = 0; i < 1000; ++i) {
    std::string ini;
    SetIniValue(ini, kOptionsSection, RandomBytes(random, 40), RandomBytes(random, 40));
    EXPECT_TRUE(IsUtf8(ini));
  }
}

}  // namespace
}  // namespace tresmor
