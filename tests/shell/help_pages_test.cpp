// The pages that come with the program, held to their table and to the program.
#include "shell/help_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "shell/frm_options.h"
#include "shell/help_search.h"
#include "shell/main_window_world.h"

namespace tresmor {
namespace {

namespace fs = std::filesystem;

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

std::string ReadPage(const std::string& file) {
  std::ifstream in(TRESMOR_HELP + file, std::ios::binary);
  EXPECT_TRUE(in) << file;
  return {std::istreambuf_iterator<char>(in), {}};
}

// What stands in double quotes behind each `name` and "=".
std::vector<std::string> Attributes(const std::string& html, const std::string& name) {
  std::vector<std::string> values;
  const std::string start = " " + name + "=\"";
  for (std::size_t at = 0; (at = html.find(start, at)) != std::string::npos;) {
    at += start.size();
    values.push_back(html.substr(at, html.find('"', at) - at));
  }
  return values;
}

// A link that isn't to the net leads to a page, and to a place on it if it names one.
void ExpectPlace(const std::string& address, const std::string& from) {
  const std::string file(HelpFileOf(address));
  const std::string page = file.empty() ? from : file;
  EXPECT_TRUE(std::ranges::any_of(HelpPages(), [&](const HelpPage& known) { return known.file == page; }))
      << address << " in " << from;
  const std::size_t mark = address.find('#');
  if (mark == std::string::npos) return;
  EXPECT_THAT(Attributes(ReadPage(page), "name"), Contains(address.substr(mark + 1))) << address << " in " << from;
}

std::set<std::string> FilesWith(const std::string& extension) {
  std::set<std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(TRESMOR_HELP)) {
    if (entry.path().extension() == extension) files.insert(entry.path().filename());
  }
  return files;
}

TEST(HelpPages, AreTheFilesThatThereAre) {
  std::set<std::string> pages;
  for (const HelpPage& page : HelpPages()) EXPECT_TRUE(pages.insert(page.file).second) << page.file;
  EXPECT_EQ(pages, FilesWith(".htm"));
  EXPECT_THAT(pages, Contains("quickstart.htm"));
  EXPECT_THAT(pages, Contains("mark.htm"));
}

TEST(HelpPages, SayTheirTitleAndSomething) {
  for (const HelpPage& page : HelpPages()) {
    const std::string html = ReadPage(page.file);
    EXPECT_THAT(html, HasSubstr("<title>" + std::string(page.title) + "</title>"));
    EXPECT_THAT(html, HasSubstr("<h1>" + std::string(page.title) + "</h1>"));
    EXPECT_GT(PlainText(html).size(), 400U) << page.file;
  }
}

TEST(HelpPages, LinksLeadSomewhere) {
  int places = 0;
  for (const HelpPage& page : HelpPages()) {
    for (const std::string& link : Attributes(ReadPage(page.file), "href")) {
      if (link.starts_with("https://tresmor.example") || link.starts_with("mailto:")) continue;
      ExpectPlace(link, page.file);
      ++places;
    }
  }
  EXPECT_GT(places, 50);
}

TEST(HelpPages, NamePlacesOnce) {
  for (const HelpPage& page : HelpPages()) {
    const std::vector<std::string> names = Attributes(ReadPage(page.file), "name");
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size()) << page.file;
  }
}

TEST(HelpPages, HaveAllTheirPicturesAndNoOthers) {
  std::set<std::string> used;
  for (const HelpPage& page : HelpPages()) {
    const std::string html = ReadPage(page.file);
    const std::vector<std::string> pictures = Attributes(html, "src");
    used.insert(pictures.begin(), pictures.end());
    EXPECT_EQ(Attributes(html, "alt").size(), pictures.size()) << page.file << ": for those who see no pictures";
  }
  EXPECT_EQ(used, FilesWith(".png"));
  for (const std::string& picture : used) EXPECT_LT(fs::file_size(TRESMOR_HELP + picture), 80'000U) << picture;
}

// They are shown on light and dark grounds.
TEST(HelpPages, HaveNoColoursOfTheirOwn) {
  for (const HelpPage& page : HelpPages()) {
    const std::string html = ReadPage(page.file);
    for (const char* const word : {"color", "style=", "<font", "background"}) EXPECT_THAT(html, Not(HasSubstr(word)));
  }
}

// --- Topics

class HelpTopicsTest : public testing::Test, protected tests::MainWindowWorld {
 protected:
  static bool IsKnown(std::int32_t number) {
    return std::ranges::any_of(HelpContexts(), [&](const HelpContext& context) { return context.number == number; });
  }

  MainWindow window{Ports(), AllHooks()};
  FrmMain& frm = window.frm;
};

TEST_F(HelpTopicsTest, EachIsWrittenAbout) {
  for (const HelpContext& context : HelpContexts()) ExpectPlace(context.address, "");
}

TEST_F(HelpTopicsTest, EveryNumberOfAMenuHasOne) {
  int numbers = 0;
  for (const Menu* const menu : frm.Menus()) {
    for (const MenuItem* const item : menu->Items()) {
      if (item == nullptr || item->HelpContextID == 0) continue;
      EXPECT_TRUE(IsKnown(item->HelpContextID)) << item->Caption();
      ++numbers;
    }
  }
  EXPECT_EQ(numbers, 20);
}

TEST_F(HelpTopicsTest, EveryFormHasANumberWithOne) {
  const FrmOptions options;
  const FrmSmartDel smartDel;
  const FrmMyMsgBox message;
  for (const Control* const form : std::initializer_list<const Control*>{
           &frm, &frm.frmSelPath, &frm.fraSrch, &window.frmTip, &window.Files().frmFileOper,
           &window.Files().frmFileProgress, &window.frmHelp, &options, &smartDel, &message}) {
    EXPECT_TRUE(IsKnown(form->HelpContextID)) << form->HelpContextID;
  }
}

// Those whose page isn't that of the window.
TEST_F(HelpTopicsTest, PartsOfTheWindowHaveTheirOwn) {
  for (const ListView& lst : frm.results.lstResult) EXPECT_EQ(HelpAddress(lst.HelpContextID), "results.htm");
  EXPECT_EQ(HelpAddress(frm.results.tabMain.HelpContextID), "results.htm");
  EXPECT_EQ(HelpAddress(frm.frmFileOp.HelpContextID), "preview.htm");
  for (const Control* const files : std::initializer_list<const Control*>{&frm.cmdTask, &frm.mnuFile}) {
    EXPECT_EQ(HelpAddress(files->HelpContextID), "files.htm");
  }
  EXPECT_EQ(HelpAddress(frm.mnuMainHelp.HelpContextID), "about.htm#links");
}

TEST_F(HelpTopicsTest, LeadToTheirPages) {
  EXPECT_EQ(HelpAddress("any.htm"), "any.htm");
  EXPECT_EQ(HelpAddress(100), "mark.htm");
  EXPECT_EQ(HelpAddress(102), "overview.htm");
  EXPECT_EQ(HelpAddress(104), "files.htm#rename");
  EXPECT_EQ(HelpAddress(116), "fileops.htm");
  EXPECT_EQ(HelpAddress(117), "scope.htm");
  EXPECT_EQ(HelpAddress(118), "search.htm#options");
  EXPECT_EQ(HelpAddress(1), HelpPages().front().file);
  EXPECT_EQ(HelpFileOf("files.htm#rename"), "files.htm");
  EXPECT_EQ(HelpFileOf("files.htm"), "files.htm");
}

// --- What the program says of itself

// The words on buttons, boxes and menus, as the pages spell them.
std::string Spelled(const std::string& caption) {
  return ReplaceAll(ReplaceAll(ReplaceAll(caption, "&", ""), "<", "&lt;"), ">", "&gt;");
}

TEST_F(HelpTopicsTest, PagesSpellCommandsAndKeysAsTheProgramDoes) {
  std::string all;
  for (const HelpPage& page : HelpPages()) all += ReplaceAll(ReadPage(page.file), "\n", " ");
  for (const Menu* const menu : frm.Menus()) {
    for (const MenuItem* const item : menu->Items()) {
      if (item == nullptr || item->HelpContextID == 0 || item->HelpContextID == 107) continue;
      std::string caption = Spelled(item->Caption());
      if (caption.ends_with("!")) caption.pop_back();
      EXPECT_THAT(all, HasSubstr("<b>" + caption + "</b>"));
      EXPECT_THAT(all, HasSubstr(item->Key()));
    }
  }
  const FrmSmartDel smartDel;
  const FrmOptions options;
  for (const std::string& caption :
       {frm.cmdAdd.Caption(), frm.cmdRemove.Caption(), frm.chkExclude.Caption(), frm.chkSubDir.Caption(),
        frm.chkTolerant.Caption(), frm.chkHidden.Caption(), frm.chkProtectWinDir.Caption(), frm.chkVer.Caption(),
        frm.cmdTask.Caption(), frm.cmdNewSrch.Caption(), smartDel.cmdClearMarks.Caption(),
        smartDel.cmdGetSelections.Caption(), options.cmdClrHist.Caption(), options.cmdResetTips.Caption(),
        options.chkNoTooltips.Caption(), options.chkLoadTipsAtStartup.Caption()}) {
    EXPECT_THAT(all, HasSubstr("<b>" + Spelled(caption) + "</b>"));
  }
  for (const ChoiceList* const list :
       {&smartDel.lstDate, &smartDel.lstSize, &smartDel.lstVer, &smartDel.lstLeaveDate, &smartDel.lstLeaveVer}) {
    for (std::int32_t entry = 1; entry < list->ListCount(); ++entry) EXPECT_THAT(all, HasSubstr(list->List(entry)));
  }
  for (const GuardedMessage& message : kGuardedMessages) EXPECT_THAT(all, HasSubstr(message.Title));
}

std::string WordsOfPage(const std::string& file) { return ReplaceAll(ReadPage(file), "\n", " "); }

// By which files can be lost.
TEST(HelpPages, WarnOfTheLastRowWhereverMarksAreMade) {
  const std::string mark = WordsOfPage("mark.htm");
  EXPECT_THAT(mark, HasSubstr("if the last file of the list is alone in its group, it is treated as one of the group "
                              "right before it</b>, as long as that has two files or more"));
  EXPECT_THAT(mark, HasSubstr("all files of the group before it are marked, and deleting takes every copy of them"));
  EXPECT_THAT(mark, HasSubstr("<b>Keep at least one</b> saves nothing in the group before it"));
  EXPECT_THAT(mark, HasSubstr("look at all files of the group before it too"));
  for (const char* const place : {"basic", "keep", "recipes"}) {
    const std::size_t begin = mark.find("name=\"" + std::string(place) + "\"");
    ASSERT_NE(begin, std::string::npos) << place;
    EXPECT_THAT(mark.substr(begin, mark.find("<h", begin) - begin), HasSubstr("href=\"#lastrow\"")) << place;
  }
  for (const char* const page : {"quickstart.htm", "findings.htm"}) {
    EXPECT_THAT(ReadPage(page), HasSubstr("href=\"mark.htm#lastrow\"")) << page;
  }
}

TEST(HelpPages, TellWhatACancelLosesAndWhatIsOverwritten) {
  EXPECT_THAT(WordsOfPage("search.htm"),
              HasSubstr("<b>Duplicates get there only when all of them have been compared, and so do portions: "
                        "cancelled before that, they aren't listed</b>"));
  EXPECT_THAT(WordsOfPage("search.htm"), HasSubstr("tick <b>Show File Version</b>, files whose size nobody shares"));
  const std::string sessions = WordsOfPage("sessions.htm");
  EXPECT_THAT(sessions, HasSubstr("counts as the session that you loaded last, though loading failed"));
  EXPECT_THAT(sessions, HasSubstr("<b>overwrites it without a question</b>"));
}

TEST(HelpPages, TellWhichEqualFilesAreNotListed) {
  EXPECT_THAT(WordsOfPage("findings.htm"), HasSubstr("<b>of more than 510 those in between aren't listed at all</b>"));
  EXPECT_THAT(ReadPage("questions.htm"), HasSubstr("href=\"findings.htm#many\""));
}

TEST(HelpPages, TellTheLimitsOfSixteenBits) {
  const std::string limits = WordsOfPage("mark.htm").substr(WordsOfPage("mark.htm").find("name=\"limits\""));
  for (const char* const words : {"32,767", "Run-time error '6': Overflow", "Keep at least one", "Select All",
                                  "Get selections", "the rules of the tab Basic were not applied"}) {
    EXPECT_THAT(limits, HasSubstr(words));
  }
}

TEST(HelpPages, OwnUpToTheOddRules) {
  const std::string mark = WordsOfPage("mark.htm");
  EXPECT_THAT(mark, HasSubstr("<td><b>Version: Keep Newest Version</b></td><td><b>the lowest version</b>"));
  EXPECT_THAT(mark, HasSubstr("<td><b>Version: Keep Oldest Version!</b></td><td><b>the highest version</b>"));
  EXPECT_THAT(mark, HasSubstr("<b>doesn't mark files without a dot in their names</b>"));
  EXPECT_THAT(mark, HasSubstr("doesn't look at files that are alone: deleting now takes your last copy"));
  EXPECT_THAT(mark, HasSubstr("what the folders and the patterns before it marked stays marked"));
  EXPECT_THAT(mark, HasSubstr("takes the date of a hidden file for a very old one"));
  EXPECT_THAT(WordsOfPage("sessions.htm"), HasSubstr("with the result or without it, as that session was saved"));
  const std::string fileops = WordsOfPage("fileops.htm");
  EXPECT_THAT(fileops, HasSubstr("Sub-folders don't count"));
  EXPECT_THAT(fileops, HasSubstr("<b>With more than 2,000 marked files, one Cancel doesn't stop everything.</b>"));
  EXPECT_THAT(fileops, HasSubstr("<b>A cancel doesn't keep the emptied folders:</b>"));
  EXPECT_THAT(WordsOfPage("search.htm"), HasSubstr("one less than the files that were looked at"));
  EXPECT_THAT(WordsOfPage("console.htm"),
              HasSubstr("With <b>--area</b> or <b>--exclude</b> a file that could not be read may go unreported"));
  EXPECT_THAT(
      WordsOfPage("questions.htm"),
      HasSubstr("If the home disk is <b>full or can't be written to</b>, there is no note, and so every file stays"));
  EXPECT_THAT(WordsOfPage("files.htm"), HasSubstr("Its row shows what you typed, ../letter.txt"));
}

}  // namespace
}  // namespace tresmor
