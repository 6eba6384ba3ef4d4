// Sessions as they are written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "persist/golden.h"
#include "persist/session_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::Golden;
using tests::Lines;
using tests::SessionWorld;

class SaveSessionTest : public testing::Test, protected SessionWorld {
 protected:
  // The controls that results.Tresmor tells of.
  void FillAsGolden() {
    for (const int type : {0, 1, 3}) lstSrchType.SetTicked(type, true);
    chkTolerant.Value = true;
    chkProtectWinDir.Value = true;
    AddScope("/home/ann/*.jpg;*.gif", {"Yes", "10", "", "", "Yes"});
    AddScope("/data/*.*", {"No", "", "2000", "2004-01-02", "No"});
    AddScope("/home/ann/keep/", {"Yes"}, ScopeRow::kExcluded);
    Add(List(ResultList::ZeroSize), "empty", {"/data/", " ", "         0", "2004/01/02 10:20:30"});
    ListView& duplicates = List(ResultList::Duplicates);
    duplicates.Tag = kVersionTag;
    Add(duplicates, "a.dll", {"/x/", "         7", "        12", "2004/01/02 10:20:30", "1.10"});
    duplicates.SetCellTag(1, kVersionItem, "00010010");
    duplicates.SetChecked(1, true);
    Add(duplicates, "b.dll", {"/y/", "         7", "        12", "1899/12/30 00:00:00"});
    List(ResultList::SameName).Tag = kVersionTag;
    Add(List(ResultList::Portions), "cut", {"/z/", "        12", "2147483648", "2004/01/03 10:20:30", "2.0"});
    List(ResultList::Portions).SetChecked(1, true);
    Add(List(ResultList::ReadErrors), "bad", {"/e/", "        -3", "        12", "2004/01/03 10:20:30"});
  }
  std::string PathRow(const std::string& folder, const std::string& name) {
    Add(List(ResultList::Duplicates), name, {folder, " ", "         1", "2004/01/02 10:20:30"});
    return folder + name;
  }
};

TEST_F(SaveSessionTest, WritesEveryLine) {
  FillAsGolden();
  session.SaveSrchResult = true;
  EXPECT_TRUE(Save());
  EXPECT_EQ(SavedText(), Golden("results.Tresmor"));
}

TEST_F(SaveSessionTest, WithoutResultsTheTagsAloneAreLeft) {
  lstSrchType.SetTicked(1, true);
  lstSrchType.SetTicked(2, true);
  chkHidden.Value = true;
  AddScope("/data/*.*", {"Yes", "", "", "", "Yes"});
  List(ResultList::Duplicates).Tag = kVersionTag;
  PathRow("/x/", "a");
  EXPECT_TRUE(Save());
  EXPECT_EQ(SavedText(), Golden("parameters.Tresmor"));
}

TEST_F(SaveSessionTest, EachOptionHasItsLine) {
  lstSrchType.SetTicked(3, true);
  chkTolerant.Value = true;
  EXPECT_TRUE(Save());
  EXPECT_EQ(SavedText(), Golden("options.Tresmor"));
}

TEST_F(SaveSessionTest, SaysWhatItDoes) {
  std::vector<std::string> said;
  msgBar.Listen([&](const Notice& notice) {
    if (notice.when != Notice::When::After) return;
    FileStat stat;
    const bool isThere = files.Stat("/home/x.Tresmor", stat) == Errors::None;
    said.push_back(msgBar.Text() + (isThere ? " It is there." : " It isn't there."));
  });
  Save("/home/x.Tresmor");
  EXPECT_THAT(said, ElementsAre("Saving search session to /home/x.Tresmor. It isn't there.",
                                "Search session - /home/x.Tresmor is saved. It is there."));
}

TEST_F(SaveSessionTest, AFailureIsThrownAndTheOldFileStays) {
  files.MakeFile("/home/s.Tresmor", "old");
  writer.Fail(Errors::DiskFull);
  EXPECT_THROW(Save(), Failure);
  EXPECT_EQ(SavedText(), "old");
  EXPECT_EQ(msgBar.Text(), "Saving search session to /home/s.Tresmor.");
}

TEST_F(SaveSessionTest, RowsThatCanNotBeToldAreLeftOutAndCounted) {
  session.SaveSrchResult = true;
  std::string names;
  for (int i = 0; i < 12; ++i) {
    const std::string path = PathRow("/x/", (i % 2 == 0 ? "a|-b" : "a\r\nb") + std::to_string(i));
    if (i < 10) names += "\r\n" + path;
  }
  PathRow("/x/", "good");
  PathRow("/x|-/", "in such a folder");
  PathRow("/x/", "|");
  dialogs.boxes = {{.text = "13 file(s) left out, since a name with \"|-\" or a line end in it has no place in a "
                            "search session:" +
                            names + "\r\n...",
                    .title = "Files left out",
                    .icon = BoxIcon::Exclamation}};
  EXPECT_TRUE(Save());
  const std::vector<std::string> lines = Lines(SavedText());
  ASSERT_EQ(lines.size(), 21U);
  EXPECT_EQ(lines[13], " 2 ");
  EXPECT_EQ(lines[15], "good|-/x/|- |-         1|-2004/01/02 10:20:30|-|-False");
  EXPECT_EQ(lines[16], "||-/x/|- |-         1|-2004/01/02 10:20:30|-|-False");
}

TEST_F(SaveSessionTest, AVersionKeyThatCanNotBeToldLeavesItsRowOut) {
  session.SaveSrchResult = true;
  ListView& duplicates = List(ResultList::Duplicates);
  duplicates.Tag = kVersionTag;
  Add(duplicates, "a", {"/x/", "", "", "", "1"});
  duplicates.SetCellTag(1, kVersionItem, "|-");
  dialogs.boxes = {{.text = "1 file(s) left out, since a name with \"|-\" or a line end in it has no place in a "
                            "search session:\r\n/x/a",
                    .title = "Files left out",
                    .icon = BoxIcon::Exclamation}};
  EXPECT_TRUE(Save());
}

TEST_F(SaveSessionTest, NothingIsSaidOfRowsThatAreNotSaved) {
  PathRow("/x/", "a|-b");
  PathRow("/x/", "c\r\nd");
  EXPECT_TRUE(Save());  // without results
}

TEST_F(SaveSessionTest, AScopeRowThatCanNotBeToldRefusesTheSave) {
  files.MakeFile("/home/s.Tresmor", "old");
  msgBar.Text = "before";
  AddScope("/a/*.*", {"Yes"});
  AddScope("/a|-b/*.*", {"Yes"});
  dialogs.boxes = {{.text = "Search session can't be saved, since a name with \"|-\" or a line end in it has no place "
                            "in a search session:\r\n/a|-b/*.*",
                    .title = "Search session not saved"}};
  EXPECT_FALSE(Save());
  EXPECT_EQ(SavedText(), "old");
  EXPECT_EQ(msgBar.Text(), "before");
}

// A mark that the user sets meanwhile is saved if its row's turn is yet to come.
TEST_F(SaveSessionTest, LetsEventsInBetweenRows) {
  ListView& lst = List(ResultList::Portions);
  const std::vector<std::string> cells = {"/z/", "        12", "        13", "2004/01/03 10:20:30"};
  for (const char* const name : {"a", "b", "c"}) Add(lst, name, cells);
  session.SaveSrchResult = true;
  events.onPump = [&] {
    lst.SetChecked(1, true);
    lst.SetChecked(2, true);
  };
  ASSERT_TRUE(Save());
  EXPECT_EQ(events.pumps, 3);
  const std::string rest = "|-/z/|-        12|-        13|-2004/01/03 10:20:30|-|-";
  EXPECT_THAT(Lines(SavedText()), testing::IsSupersetOf({"a" + rest + "False", "b" + rest + "True"}));
}

}  // namespace
}  // namespace tresmor
