// The picture of the row that was clicked, over a loader that the test drives.
#include "results/preview.h"

#include <gtest/gtest.h>

#include <string>

#include "results/rows.h"
#include "support/fake_picture_loader.h"

namespace tresmor {
namespace {

class PreviewTest : public testing::Test {
 protected:
  // A click on the row of such a file, which is the list's only one.
  void Click(const std::string& name) {
    ListView& lst = results.Shown();
    lst.Clear();
    Finding finding;
    finding.name = name;
    finding.folder = "/data/";
    AddResultItem(lst, finding);
    lst.SetSelected(1, true);
    preview.Show();
  }
  void Switch(bool on) {
    pane.chkPreview.Value = on ? kTicked : kOff;
    pane.chkPreview.OnClick();
  }
  void ExpectCleared() {
    EXPECT_EQ(pane.imgPreview.File(), "");
    EXPECT_EQ(pane.imgPreview.Image(), nullptr);
    EXPECT_EQ(pane.txtFilename.Text(), "");
    EXPECT_EQ(pane.txtFilename.ToolTipText(), "");
  }
  void ExpectShown(const std::string& name, const SharedImage& picture) {
    EXPECT_EQ(pane.imgPreview.File(), "/data/" + name);
    EXPECT_EQ(pane.imgPreview.Image(), picture);
    EXPECT_EQ(pane.txtFilename.Text(), name);
    EXPECT_EQ(pane.txtFilename.ToolTipText(), "/data/" + name);
  }

  Panel msgBar;
  ResultLists results{msgBar};
  PreviewPane pane;
  FakePictureLoader loader;
  float twipsPerDot = 15;
  Preview preview{results, pane, {loader, "/program/err_read.bmp", [this] { return twipsPerDot; }}};
  const SharedImage dot = FakePictureLoader::Dot();
};

TEST_F(PreviewTest, ShowsThePictureOfTheRow) {
  pane.imgPreview.Visible = false;
  Click("a.jpg");
  EXPECT_TRUE(pane.imgPreview.Visible());
  ExpectShown("a.jpg", nullptr);
  loader.Finish(dot);
  ExpectShown("a.jpg", dot);
  ASSERT_EQ(loader.asked.size(), 1U);
  EXPECT_EQ(loader.asked[0].file, "/data/a.jpg");
}

TEST_F(PreviewTest, AsksForAsManyPixelsAsThereIsRoomFor) {
  pane.imgPreview.Width = 1500;
  pane.imgPreview.Height = 300;
  Click("a.jpg");
  EXPECT_EQ(loader.asked.back().width, 100);
  EXPECT_EQ(loader.asked.back().height, 20);
  twipsPerDot = 7.5;
  pane.imgPreview.Height = 0;
  loader.Fail();
  EXPECT_EQ(loader.asked.back().width, 200);
  EXPECT_EQ(loader.asked.back().height, 1);
}

TEST_F(PreviewTest, WorksOnTheListOnShow) {
  results.tabMain.Select(3);
  Click("a.gif");
  ExpectShown("a.gif", nullptr);
}

TEST_F(PreviewTest, ARowThatIsNoPictureClearsThePane) {
  Click("a.jpg");
  loader.Finish(dot);
  Click("readme.TXT");
  ExpectCleared();
  EXPECT_EQ(loader.asked.size(), 1U);
}

TEST_F(PreviewTest, TheCaseOfAnExtensionIsNoMatter) {
  Click("PHOTO.JPG");
  loader.Finish(dot);
  ExpectShown("PHOTO.JPG", dot);
}

TEST_F(PreviewTest, AFileThatHoldsNoPictureShowsTheOneThatSaysSo) {
  Click("photo.jpg");
  loader.Fail();
  ASSERT_EQ(loader.asked.size(), 2U);
  EXPECT_EQ(loader.asked[1].file, "/program/err_read.bmp");
  ExpectShown("photo.jpg", nullptr);
  loader.Finish(dot);
  ExpectShown("photo.jpg", dot);
}

TEST_F(PreviewTest, WhereThatIsMissingTooThereIsNone) {
  Click("photo.jpg");
  loader.Fail();
  loader.Fail();
  EXPECT_EQ(loader.asked.size(), 2U);
  ExpectShown("photo.jpg", nullptr);
}

TEST_F(PreviewTest, WithoutARowAllStays) {
  Click("a.jpg");
  loader.Finish(dot);
  results.Shown().RemoveRow(1);
  preview.Show();
  ExpectShown("a.jpg", dot);
}

TEST_F(PreviewTest, SwitchedOffAClickChangesNothing) {
  Click("a.jpg");
  loader.Finish(dot);
  pane.chkPreview.Value = kOff;  // without a click on it
  Click("b.jpg");
  Click("c.txt");
  ExpectShown("a.jpg", dot);
  EXPECT_EQ(loader.asked.size(), 1U);
}

TEST_F(PreviewTest, SwitchingItOffClearsAndOnShowsNothingYet) {
  Click("a.jpg");
  loader.Finish(dot);
  Switch(false);
  ExpectCleared();
  Switch(true);
  ExpectCleared();
  EXPECT_EQ(loader.asked.size(), 1U);
  preview.Show();
  ExpectShown("a.jpg", nullptr);
}

TEST_F(PreviewTest, SwitchingItOnLeavesWhatStands) {
  Click("a.jpg");
  loader.Finish(dot);
  Switch(true);
  ExpectShown("a.jpg", dot);
}

TEST_F(PreviewTest, ALoadThatNobodyWaitsForIsDropped) {
  Click("a.jpg");
  Click("b.txt");
  EXPECT_FALSE(loader.IsLoading());
  Click("a.jpg");
  Switch(false);
  EXPECT_FALSE(loader.IsLoading());
}

// As a search and the operations on files do.
TEST_F(PreviewTest, WhoeverClearsThePaneDropsTheLoad) {
  Click("a.jpg");
  ClrPreview(pane);
  EXPECT_FALSE(loader.IsLoading());
  Click("a.jpg");
  loader.Fail();
  EXPECT_TRUE(loader.IsLoading()) << "of the picture that says so";
  ClrPreview(pane);
  EXPECT_FALSE(loader.IsLoading());
  ExpectCleared();
}

TEST_F(PreviewTest, WhereLoadsHangNoMoreAreBegun) {
  loader.isStuck = true;
  Click("photo.jpg");
  ASSERT_EQ(loader.asked.size(), 1U);
  EXPECT_EQ(loader.asked[0].file, "/program/err_read.bmp");
  loader.Finish(dot);
  ExpectShown("photo.jpg", dot);
  loader.isStuck = false;
  Click("photo.jpg");
  EXPECT_EQ(loader.asked.back().file, "/data/photo.jpg");
}

TEST(IsPicExt, KnowsNineExtensions) {
  for (const char* ext : {"jpeg", "jpg", "gif", "bmp", "ico", "rle", "cur", "wmf", "emf", "WMF", "Jpg"}) {
    EXPECT_TRUE(IsPicExt(std::string("/data/a.") + ext)) << ext;
  }
  for (const char* path : {"/data/a.png", "/data/a.jpgx", "/data/jpg", "/data/a.", "/data/a.jpg.txt", "/a.jpg/b", ""}) {
    EXPECT_FALSE(IsPicExt(path)) << path;
  }
  EXPECT_TRUE(IsPicExt("C:\\data\\a.b.BMP"));
}

TEST(PreviewPane, ItsTextTakesNoTyping) {
  const PreviewPane pane;
  EXPECT_TRUE(pane.txtFilename.Locked);
  EXPECT_TRUE(pane.chkPreview.Ticked());
}

}  // namespace
}  // namespace tresmor
