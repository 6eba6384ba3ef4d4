// Versions of programs in what the console program prints.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "cli/console_world.h"
#include "support/pe_image.h"

namespace tresmor {
namespace {

using testing::HasSubstr;
using testing::Not;
using tests::PeBytes;

class FindVersionsTest : public tests::ConsoleTest {
 protected:
  FindVersionsTest() {
    Make("/data/a.exe", PeBytes({5, 1, 2600, 1}));
    Make("/data/b.exe", PeBytes({5, 1, 2600, 1}));
    Make("/data/c.txt", "same");
    Make("/data/d.txt", "same");
    Make("/data/e", "");
  }
  void Make(const std::string& path, const std::string& content) {
    files.MakeFile(path, content);
    files.SetModified(path, 1'088'640'000);  // 2004-07-01 00:00:00 UTC
  }
  std::string Print(const char* format) { return Find({"/data", "--versions", "--format", format}).out; }
};

TEST_F(FindVersionsTest, TextHasAColumnForThem) {
  const std::string text = Print("text");
  EXPECT_THAT(text, HasSubstr("2004/07/01 00:00:00      5.01.2600.01  /data/a.exe\n"));
  EXPECT_THAT(text, HasSubstr("2004/07/01 00:00:00                 -  /data/c.txt\n"));
  EXPECT_THAT(text, HasSubstr("     0 Bytes  2004/07/01 00:00:00                 -  /data/e\n"));
}

TEST_F(FindVersionsTest, JsonHasAKeyForThem) {
  const auto document = nlohmann::json::parse(Print("json"));
  const auto& rows = document["lists"]["duplicates"];
  ASSERT_EQ(rows.size(), 4U);
  for (const auto& row : rows) {
    ASSERT_TRUE(row.contains("version"));
    if (row["path"].get<std::string>().ends_with(".exe")) {
      EXPECT_EQ(row["version"], "5.01.2600.01");
    } else {
      EXPECT_TRUE(row["version"].is_null());
    }
  }
  EXPECT_TRUE(document["lists"]["zero"][0]["version"].is_null());
}

TEST_F(FindVersionsTest, CsvHasALastColumnForThem) {
  const std::string csv = Print("csv");
  EXPECT_THAT(csv, testing::StartsWith("list,group,folder,name,size,date,version\r\n"));
  EXPECT_THAT(csv, HasSubstr(",2004-07-01T00:00:00Z,5.01.2600.01\r\n"));
  EXPECT_THAT(csv, HasSubstr("zero,,/data/,e,0,2004-07-01T00:00:00Z,\r\n"));
}

TEST_F(FindVersionsTest, CsvWithoutRowsHasTheColumnToo) {
  files.MakeFolder("/none");
  EXPECT_EQ(Find({"/none", "--versions", "--format", "csv"}).out, "list,group,folder,name,size,date,version\r\n");
}

TEST_F(FindVersionsTest, FormatsOfMerePathsStayAsTheyAre) {
  for (const char* format : {"groups", "groups0"}) EXPECT_EQ(Print(format), Find({"/data", "--format", format}).out);
}

TEST_F(FindVersionsTest, WithoutTheOptionThereAreNone) {
  for (const char* format : {"text", "json", "csv"}) {
    const std::string out = Find({"/data", "--format", format}).out;
    EXPECT_THAT(out, HasSubstr("a.exe"));
    EXPECT_THAT(out, Not(HasSubstr("5.01"))) << format;
    EXPECT_THAT(out, Not(HasSubstr("version"))) << format;
  }
}

TEST_F(FindVersionsTest, HelpTellsOfThem) { EXPECT_THAT(Find({"--help"}).out, HasSubstr("--versions")); }

}  // namespace
}  // namespace tresmor
