// The help's form over pages in memory.
#include "shell/frm_help.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fake_shell.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FrmHelpTest : public testing::Test {
 protected:
  FrmHelpTest() {
    for (const HelpPage& page : HelpPages()) {
      const std::string title = page.title;
      files.MakeFile(std::string("/opt/help/") + page.file, "<p>about " + title + "</p>");
    }
    form.Listen([this](const Notice& notice) {
      if (notice.when != Notice::When::After) return;
      if (notice.what == Notice::What::Value) log.push_back(form.Address());
      if (notice.what == Notice::What::ToFront) log.push_back("front");
    });
  }

  std::vector<std::string> Titles() const {
    std::vector<std::string> titles;
    for (std::int32_t row = 1; row <= form.lstPages.Count(); ++row) titles.push_back(form.lstPages.Cell(row, 0));
    return titles;
  }
  std::string Selected() const {
    std::string selected;
    for (std::int32_t row = 1; row <= form.lstPages.Count(); ++row) {
      if (form.lstPages.Selected(row)) selected += form.lstPages.Cell(row, 0);
    }
    return selected;
  }

  MemoryFileSystem files;
  FakeShell shell;
  ScriptedDialogs dialogs;
  FrmHelp form{{files, shell, dialogs}, "/opt/help"};
  std::vector<std::string> log;
};

TEST_F(FrmHelpTest, ShowsATopicAndTheContents) {
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.Caption(), "Tresmor Help");
  form.Show(104);
  EXPECT_TRUE(form.Visible());
  EXPECT_THAT(log, ElementsAre("files.htm#rename", "front"));
  EXPECT_EQ(Selected(), "Opening and renaming files");
  EXPECT_EQ(form.lstPages.Count(), std::ssize(HelpPages()));
  EXPECT_EQ(form.lblFound.Caption(), "Contents");
  form.Show("mark.htm");
  EXPECT_EQ(Selected(), "Marks and Smart Marker");
  EXPECT_EQ(form.lstPages.Count(), std::ssize(HelpPages())) << "pages are loaded once";
}

TEST_F(FrmHelpTest, TheSameTopicAgainComesUpAgain) {
  form.Show(112);
  form.Show(112);
  EXPECT_THAT(log, ElementsAre("options.htm", "front", "options.htm", "front"));
}

TEST_F(FrmHelpTest, FindsWordsAndOpensWhatIsFound) {
  form.Show(102);
  form.txtFind.Text = "quick";
  EXPECT_THAT(Titles(), ElementsAre("Quick start"));
  EXPECT_EQ(form.lblFound.Caption(), "1 page found");
  EXPECT_EQ(Selected(), "") << "the page on show isn't among them";
  form.OpenFirst();
  EXPECT_EQ(form.Address(), "quickstart.htm");
  EXPECT_EQ(Selected(), "Quick start");
  form.txtFind.Text = "nowhere at all";
  EXPECT_THAT(Titles(), IsEmpty());
  EXPECT_EQ(form.lblFound.Caption(), "0 pages found");
  form.OpenFirst();
  EXPECT_EQ(form.Address(), "quickstart.htm");
  form.txtFind.Text = "";
  EXPECT_THAT(Titles(), SizeIs(HelpPages().size()));
  EXPECT_EQ(Selected(), "Quick start");
}

TEST_F(FrmHelpTest, WithoutAWordTheContentsStay) {
  form.Show(102);
  for (const char* const query : {"?", " *.; ", " "}) {
    form.txtFind.Text = query;
    EXPECT_THAT(Titles(), SizeIs(HelpPages().size()));
    EXPECT_EQ(form.lblFound.Caption(), "Contents") << query;
  }
}

TEST_F(FrmHelpTest, ANewTopicBringsTheContentsBack) {
  form.Show(102);
  form.txtFind.Text = "nowhere at all";
  form.Close();
  EXPECT_FALSE(form.Visible());
  form.Show(100);
  EXPECT_EQ(form.txtFind.Text(), "");
  EXPECT_THAT(Titles(), SizeIs(HelpPages().size()));
}

TEST_F(FrmHelpTest, AClickOnATitleOpensItsPage) {
  form.Show(102);
  form.txtFind.Text = "start";
  form.lstPages.SetSelected(1, true);
  form.lstPages.OnItemClick();
  EXPECT_EQ(form.Address(), "quickstart.htm");
}

TEST_F(FrmHelpTest, AClickBesideTheTitlesChangesNothing) {
  form.Show(100);
  for (std::int32_t row = 1; row <= form.lstPages.Count(); ++row) form.lstPages.SetSelected(row, false);
  form.lstPages.OnClick();
  EXPECT_EQ(Selected(), "Marks and Smart Marker");
  EXPECT_EQ(form.Address(), "mark.htm");
}

TEST_F(FrmHelpTest, LinksLeadToPagesOrToTheNet) {
  form.Show(102);
  form.Follow("mark.htm#keep");
  EXPECT_EQ(form.Address(), "mark.htm#keep");
  EXPECT_EQ(Selected(), "Marks and Smart Marker");
  for (const char* const link : {"https://tresmor.example", "http://tresmor.example", "mailto:me@tresmor.example"}) {
    form.Follow(link);
    EXPECT_EQ(shell.opened.back(), link);
  }
  EXPECT_THAT(shell.opened, SizeIs(3));
  EXPECT_EQ(form.Address(), "mark.htm#keep");
}

TEST_F(FrmHelpTest, TheListFollowsTheView) {
  form.Show(102);
  log.clear();
  form.Arrived("keys.htm#x");
  EXPECT_EQ(Selected(), "Keys");
  EXPECT_EQ(form.Address(), "keys.htm#x");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(FrmHelpTest, AMissingPageIsTold) {
  files.Remove("/opt/help/mark.htm");
  dialogs.boxes = {{"The help can't be shown, since this file of it is missing:\r\n\r\n/opt/help/mark.htm", "Help",
                    BoxIcon::Exclamation}};
  form.Show(100);
  EXPECT_FALSE(form.Visible());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(FrmHelpTest, ALinkOrATitleWhosePageIsMissingIsTold) {
  form.Show(102);
  files.Remove("/opt/help/mark.htm");
  log.clear();
  const ScriptedDialogs::Box told = {
      "The help can't be shown, since this file of it is missing:\r\n\r\n"
      "/opt/help/mark.htm",
      "Help", BoxIcon::Exclamation};
  dialogs.boxes = {told, told, told};
  form.Follow("mark.htm#keep");
  EXPECT_EQ(Selected(), "Tresmor and its window");
  form.txtFind.Text = "smart";
  form.lstPages.SetSelected(1, true);
  form.lstPages.OnItemClick();
  form.OpenFirst();
  EXPECT_THAT(dialogs.boxes, IsEmpty());
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(form.Address(), "overview.htm");
  EXPECT_EQ(Selected(), "") << "the page on show isn't among those found";
  EXPECT_TRUE(form.Visible());
}

TEST_F(FrmHelpTest, APageThatCannotBeReadIsFoundByItsTitle) {
  files.SetUnreadable("/opt/help/keys.htm");
  form.Show(102);
  form.txtFind.Text = "keys";
  EXPECT_THAT(Titles(), ElementsAre("Keys"));
}

}  // namespace
}  // namespace tresmor
