// The help's page about the console program names what the program itself offers, no less and no more.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "cli/options.h"

namespace tresmor {
namespace {

const std::set<std::string> kCommands = {"find",  "run",    "show", "mark", "export",
                                         "trash", "delete", "move", "copy", "undo"};

std::string HelpOf(const std::vector<const char*>& arguments) {
  return std::get<std::string>(ParseCommandLine(static_cast<int>(arguments.size()), arguments.data()));
}

// The options at the beginnings of lines and behind a comma there.
std::set<std::string> OptionsIn(const std::string& help) {
  std::set<std::string> options;
  const std::regex line("\n  (?:(-[a-z]),)?(--[a-z-]+)");
  for (std::sregex_iterator found(help.begin(), help.end(), line); found != std::sregex_iterator(); ++found) {
    if ((*found)[1].matched) options.insert((*found)[1]);
    options.insert((*found)[2]);
  }
  return options;
}

std::set<std::string> CommandsIn(const std::string& help) {
  std::set<std::string> commands;
  const std::string list = help.substr(help.find("Commands:"));
  const std::regex line("\n  ([a-z]+) ");
  for (std::sregex_iterator found(list.begin(), list.end(), line); found != std::sregex_iterator(); ++found) {
    commands.insert((*found)[1]);
  }
  return commands;
}

// What the page explains.
std::set<std::string> Explained(const std::regex& what) {
  std::ifstream in(TRESMOR_HELP "console.htm");
  const std::string page(std::istreambuf_iterator<char>(in), {});
  std::set<std::string> explained;
  const std::regex entry("<dt>(.*)</dt>");
  for (std::sregex_iterator found(page.begin(), page.end(), entry); found != std::sregex_iterator(); ++found) {
    const std::string words = (*found)[1];
    for (std::sregex_iterator word(words.begin(), words.end(), what); word != std::sregex_iterator(); ++word) {
      explained.insert((*word)[1]);
    }
  }
  return explained;
}

TEST(HelpPage, ExplainsEveryCommandAndNoOther) {
  const std::set<std::string> offered = CommandsIn(HelpOf({"tresmor-cli", "--help"}));
  EXPECT_EQ(offered, kCommands);
  EXPECT_EQ(Explained(std::regex("<b>([a-z]+)</b>")), offered);
}

TEST(HelpPage, ExplainsEveryOptionAndNoOther) {
  std::set<std::string> offered = OptionsIn(HelpOf({"tresmor-cli", "--help"}));
  for (const std::string& command : kCommands) {
    offered.merge(OptionsIn(HelpOf({"tresmor-cli", command.c_str(), "--help"})));
  }
  EXPECT_GT(offered.size(), 25U);
  EXPECT_EQ(Explained(std::regex("<b>(--?[a-z-]+)</b>")), offered);
}

}  // namespace
}  // namespace tresmor
