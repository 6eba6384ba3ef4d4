#include "cli/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

Command ParseAny(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "tresmor-cli");
  return ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

FindOptions Parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "find");
  return std::get<FindOptions>(ParseAny(arguments));
}

std::string Complaint(std::vector<const char*> arguments) {
  try {
    ParseAny(std::move(arguments));
  } catch (const WrongUse& wrong) {
    return wrong.what();
  }
  return "none";
}

std::string FindComplaint(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), {"find", "/data"});
  return Complaint(std::move(arguments));
}

TEST(OptionsTest, Defaults) {
  const FindOptions options = Parse({"/data"});
  EXPECT_THAT(options.paths, ElementsAre("/data"));
  EXPECT_EQ(options.pattern, "*.*");
  EXPECT_THAT(options.types, ElementsAre(true, true, true, false));
  EXPECT_FALSE(options.noSubfolders || options.hidden || options.tolerant || options.noProtect || options.quiet);
  EXPECT_FALSE(options.since.has_value());
  EXPECT_EQ(options.minKb + options.maxKb, "");
  EXPECT_EQ(options.format, OutputFormat::Text);
  EXPECT_EQ(options.progress, ProgressWhen::Auto);
}

TEST(OptionsTest, TakesEveryOption) {
  const FindOptions options = Parse({"a",
                                     "--area",
                                     "b",
                                     "c",
                                     "--area",
                                     "d",
                                     "--exclude",
                                     "e",
                                     "--pattern",
                                     "*.jpg",
                                     "--min-kb",
                                     "0",
                                     "--max-kb",
                                     "2147483647",
                                     "--since",
                                     "2 Jul 2003",
                                     "--no-subfolders",
                                     "--hidden",
                                     "--types",
                                     "zero,names",
                                     "--tolerant",
                                     "--no-protect",
                                     "--format",
                                     "csv",
                                     "--progress",
                                     "never",
                                     "--quiet"});
  EXPECT_THAT(options.paths, ElementsAre("a", "c"));
  EXPECT_THAT(options.areas, ElementsAre("b", "d"));
  EXPECT_THAT(options.excludes, ElementsAre("e"));
  EXPECT_EQ(options.pattern, "*.jpg");
  EXPECT_EQ(options.minKb, "0");
  EXPECT_EQ(options.maxKb, "2147483647");
  EXPECT_EQ(FormatStamp(options.since.value()), "2003/07/02 00:00:00");
  EXPECT_TRUE(options.noSubfolders && options.hidden && options.tolerant && options.noProtect && options.quiet);
  EXPECT_THAT(options.types, ElementsAre(true, false, true, false));
  EXPECT_EQ(options.format, OutputFormat::Csv);
  EXPECT_EQ(options.progress, ProgressWhen::Never);
}

TEST(OptionsTest, PathsWithOddNamesStayWhole) {
  EXPECT_THAT(Parse({"[a,b]", "a,b", "find", "a;b", "++", "--area", "[x,y]", "c", "--", "--help", "-x", "--"}).paths,
              ElementsAre("[a,b]", "a,b", "find", "a;b", "++", "c", "./--help", "./-x", "./--"));
  EXPECT_THAT(Parse({"--", "-x"}).paths, ElementsAre("./-x"));
  EXPECT_THAT(Parse({"p", "--area", "[x,y]"}).areas, ElementsAre("[x,y]"));
  EXPECT_EQ(Parse({"p", "--pattern", "[x]"}).pattern, "[x]");
}

TEST(OptionsTest, HelpAndVersionAreTexts) {
  EXPECT_EQ(std::get<std::string>(ParseAny({"--version"})), "tresmor-cli 3.1.0\n");
  EXPECT_EQ(std::get<std::string>(ParseAny({"find", "--version"})), "tresmor-cli 3.1.0\n");
  EXPECT_THAT(std::get<std::string>(ParseAny({"--help"})), HasSubstr("find"));
  const std::string help = std::get<std::string>(ParseAny({"find", "--help"}));
  for (const char* option :
       {"--area", "--exclude", "--pattern", "--min-kb", "--max-kb", "--since", "--no-subfolders", "--hidden", "--types",
        "--tolerant", "--no-protect", "--format", "--progress", "--quiet", "groups0", "Exit status"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

TEST(OptionsTest, HelpShowsTheOneValueOfARepeatableOption) {
  const std::string help = std::get<std::string>(ParseAny({"find", "--help"}));
  for (const char* line :
       {"  --area DIR                  Also search DIR, only for something to compare with (repeatable)",
        "  --exclude DIR               Keep out of DIR (repeatable)",
        "  --types TYPE,...            Of zero, duplicates, names, portions; by default the first three"}) {
    EXPECT_THAT(help, HasSubstr("\n" + std::string(line) + "\n"));
  }
}

TEST(OptionsTest, RepeatableOptionsTakeOneValueEachTime) {
  const FindOptions options = Parse({"--exclude", "a", "b", "--exclude=c", "--types", "zero", "d", "--types=names"});
  EXPECT_THAT(options.excludes, ElementsAre("a", "c"));
  EXPECT_THAT(options.paths, ElementsAre("b", "d"));
  EXPECT_THAT(options.types, ElementsAre(true, false, true, false));
  EXPECT_THAT(FindComplaint({"--area"}), StartsWith("--area: 1 required DIR missing"));
}

TEST(OptionsTest, WrongUseIsTold) {
  EXPECT_EQ(Complaint({}), "Tell what to do, such as 'tresmor-cli find FOLDER'. Try 'tresmor-cli --help'.");
  EXPECT_EQ(Complaint({"seek"}), "'seek' is no command. Try 'tresmor-cli --help'.");
  EXPECT_EQ(Complaint({"--seek"}), "'--seek' is no command. Try 'tresmor-cli --help'.");
  EXPECT_THAT(FindComplaint({"--min-kb", "5x"}), HasSubstr(" from 0 to 2147483647. Try "));
  EXPECT_THAT(Complaint({"find"}), HasSubstr("PATH"));
  EXPECT_THAT(FindComplaint({"--bogus"}), HasSubstr("--bogus"));
  EXPECT_THAT(FindComplaint({"--format", "xml"}), StartsWith("--format: xml"));
  EXPECT_THAT(FindComplaint({"--progress", "2"}), StartsWith("--progress: 2"));
  EXPECT_THAT(FindComplaint({"--types", "zero,odd"}), StartsWith("--types: odd"));
  EXPECT_THAT(FindComplaint({"--types", "1"}), StartsWith("--types: 1"));
  EXPECT_THAT(FindComplaint({"--types", ""}), StartsWith("--types"));
  EXPECT_THAT(FindComplaint({"--since", "soon"}), HasSubstr("'soon' is no date"));
  EXPECT_THAT(FindComplaint({"--since", ""}), HasSubstr("'' is no date"));
  EXPECT_EQ(FindComplaint({"--pattern", ""}), "Please input file type.");
  EXPECT_THAT(FindComplaint({"--pattern", "a/*.jpg"}), HasSubstr("must not contain '/'"));
}

TEST(OptionsTest, SizesAreWholeNumbersInTheirBounds) {
  for (const char* size : {"-1", "1.5", "2147483648", "0x10", "", "5k", " 5"}) {
    EXPECT_THAT(FindComplaint({"--min-kb", size}), HasSubstr("no whole number from 0 to 2147483647")) << size;
    EXPECT_THAT(FindComplaint({"--max-kb", size}), HasSubstr("no whole number from 0 to 2147483647")) << size;
  }
  EXPECT_EQ(Parse({"p", "--min-kb", "010"}).minKb, "010");
}

TEST(OptionsTest, TheMaximumMayEqualTheMinimumButNotBeLess) {
  EXPECT_EQ(Parse({"p", "--min-kb", "10", "--max-kb", "10"}).maxKb, "10");
  EXPECT_EQ(FindComplaint({"--min-kb", "11", "--max-kb", "10"}),
            "Max File Size(10) must be greater than Min File Size(11).");
}

TEST(OptionsTest, GroupsPrintOneType) {
  EXPECT_EQ(Parse({"p", "--format", "groups"}).ListOfGroups(), ResultList::Duplicates);
  EXPECT_EQ(Parse({"p", "--format", "groups0", "--types", "names"}).ListOfGroups(), ResultList::SameName);
  EXPECT_THAT(Parse({"p", "--format", "groups", "--types", "names"}).types, ElementsAre(false, false, true, false));
  EXPECT_THAT(FindComplaint({"--format", "groups", "--types", "names,portions"}), HasSubstr("only one"));
  EXPECT_THAT(FindComplaint({"--format", "groups0", "--types", "zero,names"}), HasSubstr("only one"));
}

}  // namespace
}  // namespace tresmor
