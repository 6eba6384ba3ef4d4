// What the dialog of Smart Marker starts with, and what it refuses or warns of.
#include <gmock/gmock.h>

#include "marker/smart_marker_world.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::SmartMarkerTest;

constexpr char kContradiction[] = "You have select keep at least one file, please select either by date or version.";

TEST_F(SmartMarkerTest, ControlsStartWithTheirDesignValues) {
  EXPECT_TRUE(frm.chkLeaveAtLeast1.Value());
  EXPECT_TRUE(frm.chkSubFolder.Value());
  EXPECT_EQ(frm.chkLeaveAtLeast1.Caption(), "Keep at least one:");
  EXPECT_EQ(frm.chkSubFolder.Caption(), "Sub-folder");
  EXPECT_EQ(frm.lstLeaveDate.ListIndex(), 1);
  for (const ChoiceList* list : {&frm.lstLeaveVer, &frm.lstDate, &frm.lstSize, &frm.lstVer}) {
    EXPECT_EQ(list->ListIndex(), 0);
  }
  EXPECT_EQ(frm.cmbPattern.Text(), "");
  EXPECT_EQ(frm.cmbPattern.ListCount(), 0);
  EXPECT_EQ(frm.lstFolder.Column(1).text, "Folders");
  EXPECT_EQ(frm.lstFolder.Count(), 0);
}

TEST_F(SmartMarkerTest, ListsHaveTheirEntries) {
  const auto entries = [](const ChoiceList& list) {
    std::vector<std::string> texts;
    for (std::int32_t i = 0; i < list.ListCount(); ++i) texts.push_back(list.List(i));
    return texts;
  };
  EXPECT_THAT(entries(frm.lstLeaveDate), ElementsAre("(Unspecified)", "Keep Newest Files", "Keep Oldest Files!"));
  EXPECT_THAT(entries(frm.lstLeaveVer), ElementsAre("(Unspecified)", "Keep Newest Version", "Keep Oldest Version!"));
  EXPECT_THAT(entries(frm.lstDate), ElementsAre("(Unspecified)", "Newer File", "Older File!"));
  EXPECT_THAT(entries(frm.lstSize), ElementsAre("(Unspecified)", "Largest File", "Smallest File!"));
  EXPECT_THAT(entries(frm.lstVer), ElementsAre("(Unspecified)", "Newer Version", "Older Version!"));
}

TEST_F(SmartMarkerTest, AContradictionMarksNothingAndKeepsTheDialogOpen) {
  Add({"/d/a"});
  Add({"/d/b"});
  AddFolder("/d/");
  frm.lstLeaveDate.Choose(0);
  frm.lstDate.Choose(1);
  dialogs.boxes = {{.text = kContradiction, .title = "", .icon = BoxIcon::Information}};
  events.onPump = [this] {
    events.seconds += 1;
    events.Wake();
  };
  std::vector<std::uint32_t> grounds;
  frm.lstLeaveDate.Listen([&](const Notice& notice) {
    EXPECT_TRUE(dialogs.boxes.empty()) << "flashed before the box";
    if (notice.when == Notice::When::After) grounds.push_back(frm.lstLeaveDate.BackColor());
  });
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "--");
  EXPECT_THAT(grounds, ElementsAre(kDesktopGround, kWindowGround, kDesktopGround, kWindowGround));
  EXPECT_THAT(settings.saved, IsEmpty());
  EXPECT_THAT(PatternList(), IsEmpty());
  EXPECT_FALSE(tmrUpdate.Enabled());
  EXPECT_EQ(duplicates.Column(3).text, "Duplicate #");
}

TEST_F(SmartMarkerTest, EitherListOrNoWishForOneFileIsNoContradiction) {
  frm.lstLeaveDate.Choose(0);
  frm.lstLeaveVer.Choose(2);
  EXPECT_TRUE(Run());
  EXPECT_THAT(guarded, IsEmpty());
  frm.lstLeaveVer.Choose(0);
  KeepNone();
  EXPECT_TRUE(Run());
}

TEST_F(SmartMarkerTest, WarnsWhereNoFileIsKeptAndGoesOnWhateverTheAnswer) {
  Add({"/d/a"});
  frm.cmbPattern.SetText("a");
  KeepNone();
  goesOn = false;
  EXPECT_TRUE(Run());
  EXPECT_THAT(guarded,
              ElementsAre("Smart Marker|2|Both original and duplicate files are included in the result list, it is "
                          "recommended to keep at least one duplicate file. To do this automatically, select 'Keep at "
                          "least one'."));
  EXPECT_EQ(Marks(), "x");
}

}  // namespace
}  // namespace tresmor
