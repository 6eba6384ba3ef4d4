// What the shells are told while a command line is typed.
#include "cli/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "cli/options.h"

namespace tresmor {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::string Answer(std::vector<const char*> words) {
  words.insert(words.begin(), {"tresmor-cli", kComplete});
  return std::get<std::string>(ParseCommandLine(static_cast<int>(words.size()), words.data()));
}

// The words that are offered, each of which has to have its tab.
std::vector<std::string> Offers(std::vector<const char*> words) {
  std::istringstream lines(Answer(std::move(words)));
  std::vector<std::string> offers;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    EXPECT_NE(tab, std::string::npos) << line;
    offers.push_back(line.substr(0, tab));
  }
  return offers;
}

TEST(Completion, OffersTheCommandsWithWhatTheyDo) {
  EXPECT_THAT(Offers({""}),
              ElementsAre("find", "run", "show", "mark", "export", "trash", "delete", "move", "copy", "undo"));
  EXPECT_EQ(Answer({"fi"}), "find\tSearch folders\n");
  EXPECT_THAT(Offers({"m"}), ElementsAre("mark", "move"));
  EXPECT_THAT(Offers({"--"}), ElementsAre("--help", "--version"));
}

TEST(Completion, OffersTheOptionsOfTheCommandThatItsHelpNames) {
  EXPECT_THAT(Answer({"find", "--hid"}), "--hidden\tHidden files and folders too\n");
  EXPECT_THAT(Offers({"show", "a.Tresmor", "--"}), ElementsAre("--help", "--types", "--format", "--version"));
  EXPECT_THAT(Offers({"trash", "--remove"}), ElementsAre("--remove-empty"));
  EXPECT_THAT(Offers({"copy", "--remove"}), IsEmpty());
  EXPECT_THAT(Offers({"undo", "--s"}), IsEmpty());
}

TEST(Completion, OffersTheNamesThatAnOptionTakes) {
  EXPECT_THAT(Offers({"find", ".", "--format", ""}), ElementsAre("csv", "groups", "groups0", "json", "text"));
  EXPECT_THAT(Offers({"mark", "--keep", "o"}), ElementsAre("oldest"));
  EXPECT_THAT(Offers({"mark", "a.Tresmor", "--list", "--"}), IsEmpty());
  EXPECT_THAT(Offers({"find", "--min-kb", ""}), IsEmpty());
}

TEST(Completion, OffersMoreNamesBehindACommaWhereSeveralMayStand) {
  EXPECT_THAT(Offers({"find", "--types", "zero,d"}), ElementsAre("zero,duplicates"));
  EXPECT_THAT(Offers({"find", "--types", "zero,names,"}), Each(StartsWith("zero,names,")));
  EXPECT_THAT(Offers({"mark", "--list", "zero,"}), IsEmpty());
}

TEST(Completion, AsksForFilesAndFoldersWherePathsStand) {
  for (const auto& words : std::vector<std::vector<const char*>>{
           {"find", ""}, {"find", "a", "--hidden", "b"}, {"find", "--area", ""}, {"move", "a.Tresmor", ""}}) {
    EXPECT_EQ(Answer(words), kOfferFolders) << words.back();
  }
  for (const auto& words : std::vector<std::vector<const char*>>{
           {"run", ""}, {"mark", "--list", "zero", ""}, {"export", "a.Tresmor", ""}, {"find", ".", "--save", "x"}}) {
    EXPECT_EQ(Answer(words), kOfferFiles) << words.back();
  }
}

// So that a name that comes new isn't forgotten.
TEST(Completion, EveryPositionalIsAPath) {
  for (const std::string& command : Offers({""})) {
    if (command == "undo") continue;
    EXPECT_THAT(Answer({command.c_str(), ""}), testing::AnyOf(kOfferFiles, kOfferFolders)) << command;
  }
}

TEST(Completion, OffersNothingElse) {
  EXPECT_EQ(Answer({}), "");
  EXPECT_EQ(Answer({"seek", ""}), "");
  EXPECT_EQ(Answer({"undo", ""}), "");
  EXPECT_EQ(Answer({"run", "a.Tresmor", ""}), "");
  EXPECT_EQ(Answer({"move", "a.Tresmor", "b", ""}), "");
}

}  // namespace
}  // namespace tresmor
