#include "shell/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "results/rows.h"
#include "support/fake_main_view.h"

namespace tresmor {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using What = Notice::What;
using When = Notice::When;

Place PlaceOf(const PlacedControl& control) {
  return {control.Left(), control.Top(), control.Width(), control.Height()};
}

// A form that a view shows, laid out once.
struct ShownForm {
  explicit ShownForm(const FakeMainView::Measures& measures = {}) : view(frm, measures) {
    frm.screen = &screen;
    frm.TabPath.Listen([this](const Notice& notice) {
      if (notice.what == What::SelectedTab) frm.CurPathTab = static_cast<std::int16_t>(frm.TabPath.SelectedTab() - 1);
    });
    BindLayout(frm);
    frm.OnResize();
    view.resizes = 0;
  }

  // All that a resize places, by name.
  std::map<std::string, PlacedControl*> Laid() {
    return {{"frm", &frm},
            {"tabMain", &frm.results.tabMain},
            {"frmResult", &frm.frmResult[0]},
            {"lstResult", &frm.results.lstResult[0]},
            {"lstPath", &frm.lstPath},
            {"fraSrch", &frm.fraSrch},
            {"frmFileOp", &frm.frmFileOp},
            {"frmSelPath", &frm.frmSelPath},
            {"TabPath", &frm.TabPath},
            {"frmPath", &frm.frmPath[0]}};
  }
  std::map<std::string, Place> Places() {
    std::map<std::string, Place> places;
    for (const auto& [name, control] : Laid()) places[name] = PlaceOf(*control);
    return places;
  }
  void Add(std::size_t list) { AddResultItem(frm.results.lstResult[list], Finding()); }

  FrmMain frm;
  FakeScreen screen;
  FakeMainView view;
};

// Twips are whole pixels here, so that figures come out as they were written.
constexpr FakeMainView::Measures kFine{.frameHeight = 300, .twipsPerPixel = 1};

class LayoutTest : public testing::Test, protected ShownForm {
 protected:
  LayoutTest() : ShownForm(kFine) {}
};

TEST_F(LayoutTest, AResizePlacesAllByTheFormulas) {
  view.Drag(12000, 9000);
  EXPECT_EQ(frm.ScaleWidth(), 11880);
  EXPECT_EQ(frm.ScaleHeight(), 8700);
  EXPECT_EQ(PlaceOf(frm.results.tabMain), (Place{120, 3360, 11880 - 2175 - 320, 8700 - 252 - 3360 - 160}));
  EXPECT_EQ(PlaceOf(frm.frmResult[0]), (Place{150, 3690, 9385 - 60, 4928 - 360}));
  EXPECT_EQ(PlaceOf(frm.results.lstResult[0]), (Place{0, 0, 9325, 4568}));
  EXPECT_EQ(PlaceOf(frm.fraSrch), (Place{12000 - 2775 - 160, 0, 2775, 3255}));
  EXPECT_EQ(PlaceOf(frm.frmFileOp), (Place{12000 - 2175 - 160, 3360, 2175, 3975}));
  EXPECT_EQ(PlaceOf(frm.frmSelPath), (Place{120, 0, 12000 - 2775 - 480, 3135}));
  EXPECT_EQ(PlaceOf(frm.TabPath), (Place{120, 240, 8745 - 320, 1215}));
  EXPECT_EQ(PlaceOf(frm.frmPath[0]), (Place{150, 570, 8425 - 60, 1215 - 360}));
  EXPECT_EQ(PlaceOf(frm.lstPath), (Place{1200, 1560, 8745 - 120 - 975 - 320, 1455}));
  EXPECT_EQ(view.resizes, 1);
}

TEST_F(LayoutTest, TheFirstWidthOfTheScopeListIsOverwritten) {
  std::vector<float> widths;
  frm.TabPath.Width = 6615;
  frm.lstPath.Listen([&](const Notice& notice) {
    if (notice.what == What::Place && notice.when == When::After) widths.push_back(frm.lstPath.Width());
  });
  view.Drag(12000, 9000);
  EXPECT_THAT(widths, ElementsAre(6615 - 2775 - 1200 - 320, 7330));
}

TEST_F(LayoutTest, OnlyTheListOnShowTakesASize) {
  const Place hidden = PlaceOf(frm.frmResult[1]);
  view.Drag(12000, 9000);
  EXPECT_EQ(PlaceOf(frm.frmResult[1]), hidden);
  EXPECT_EQ(PlaceOf(frm.results.lstResult[1]), Place());
  EXPECT_EQ(PlaceOf(frm.frmPath[1]), Place());
}

TEST_F(LayoutTest, MinimisedItSizesTheTabsOnly) {
  auto before = Places();
  frm.State = WindowState::Minimised;
  EXPECT_EQ(view.resizes, 1);
  view.Drag(11000, 1000);
  before["frm"] = PlaceOf(frm);
  before["tabMain"].width = 11000 - 120 - 2175 - 320;
  EXPECT_EQ(Places(), before);
  EXPECT_EQ(frm.Height(), 1000);
}

TEST_F(LayoutTest, MaximisedItIsLaidOutAsEver) {
  frm.State = WindowState::Maximised;
  view.Drag(12000, 9000);
  EXPECT_EQ(frm.frmFileOp.Left(), 12000 - 2175 - 160);
  EXPECT_EQ(frm.results.tabMain.Height(), 4928);
}

TEST_F(LayoutTest, ALowerEdgeAboveThePanelsSnapsBackAndTheResultKeepsItsSize) {
  view.Drag(12000, 9000);
  const Place tabs = PlaceOf(frm.results.tabMain);
  const Place list = PlaceOf(frm.results.lstResult[0]);
  view.resizes = 0;
  view.Drag(12000, 3000);
  EXPECT_EQ(frm.Height(), 252 + 300 + 3135 + 160);
  EXPECT_EQ(frm.ScaleHeight(), 252 + 3135 + 160);
  EXPECT_EQ(view.resizes, 2);
  EXPECT_EQ(PlaceOf(frm.results.tabMain), tabs);
  EXPECT_EQ(PlaceOf(frm.results.lstResult[0]), list);
}

TEST_F(LayoutTest, TheLeastHeightItselfStays) {
  view.Drag(12000, 252 + 300 + 3135 + 160);
  EXPECT_EQ(view.resizes, 1);
}

TEST_F(LayoutTest, TheResultIsLaidOutFromTheFirstTwipThatIsRoomOn) {
  constexpr float kNoRoom = 3135 + 252 + 800;
  view.Drag(12000, 9000);
  view.Drag(11000, kNoRoom);
  EXPECT_EQ(frm.results.tabMain.Height(), 4928);
  EXPECT_EQ(frm.frmResult[0].Width(), 9325);
  EXPECT_EQ(frm.frmFileOp.Left(), 11000 - 2175 - 160);
  view.Drag(11000, kNoRoom + 1);
  EXPECT_EQ(frm.results.tabMain.Height(), kNoRoom + 1 - 300 - 252 - 3360 - 160);
  EXPECT_EQ(frm.frmResult[0].Width(), 8325);
}

TEST_F(LayoutTest, ANarrowWindowIsWidenedWithinTheSameResize) {
  view.Drag(9000, 9000);
  EXPECT_EQ(frm.Width(), 10000);
  EXPECT_EQ(view.resizes, 2);
  EXPECT_EQ(frm.fraSrch.Left(), 10000 - 2775 - 160);
  EXPECT_EQ(frm.results.tabMain.Width(), 10000 - 120 - 2175 - 320);
  view.Drag(10000, 9000);
  EXPECT_EQ(view.resizes, 3);
}

TEST(LayoutOnPixels, ABoundIsKeptWithOneMoreResize) {
  ShownForm shown;
  shown.view.Drag(9000, 3000);
  EXPECT_EQ(shown.frm.Width(), 10005);
  EXPECT_EQ(shown.frm.Height(), 4365);
  EXPECT_EQ(shown.view.resizes, 3);
}

TEST(LayoutOnPixels, TabsThatWouldBeLessThanNothingKeepTheirHeight) {
  ShownForm shown;
  shown.view.Drag(12000, 9000);
  const float height = shown.frm.results.tabMain.Height();
  shown.view.Drag(13500, 4365);  // 810 of which are the frame
  EXPECT_EQ(shown.frm.results.tabMain.Height(), height);
  EXPECT_EQ(shown.frm.results.lstResult[0].Width(), 13500 - 120 - 2175 - 320 - 60);
  EXPECT_EQ(shown.frm.frmFileOp.Left(), 13500 - 2175 - 160);
}

// Each control in turn fails whenever a resize places it.
TEST(LayoutFailures, EveryStepIsTakenWhateverBecomesOfTheOthers) {
  const auto dragAll = [](ShownForm& shown) {
    std::vector<std::map<std::string, Place>> seen;
    for (const Place size : {Place{0, 0, 9000, 3000}, Place{0, 0, 12000, 9000}, Place{0, 0, 11000, 8000}}) {
      shown.view.Drag(size.width, size.height);
      seen.push_back(shown.Places());
    }
    shown.frm.TabPath.Select(2);
    shown.frm.results.tabMain.Select(2);
    seen.push_back(shown.Places());
    return seen;
  };
  ShownForm sound(kFine);
  const auto expected = dragAll(sound);
  for (const auto& [name, unused] : sound.Laid()) {
    ShownForm shown(kFine);
    int depth = 0;
    int failures = 0;
    shown.frm.OnResize = [&] {
      ++depth;
      Resize(shown.frm);
      --depth;
    };
    shown.Laid().at(name)->Listen([&](const Notice& notice) {
      if (depth == 0 || notice.what != What::Place || notice.when != When::After) return;
      ++failures;
      throw Failure(Errors::Device);
    });
    EXPECT_EQ(dragAll(shown), expected) << name;
    EXPECT_GT(failures, 0) << name;
  }
}

// --- Tabs

TEST_F(LayoutTest, AnotherTabShowsItsFrameAndLaysAllOut) {
  std::vector<std::string> log;
  for (std::size_t i = 0; i < 2; ++i) {
    frm.frmResult[i].Listen([&, i](const Notice& notice) {
      if (notice.what != What::Visible || notice.when != When::After) return;
      log.push_back(std::to_string(i) + (frm.frmResult[i].Visible() ? " shown" : " hidden"));
    });
  }
  frm.OnResize = [&] {
    log.push_back("resize");
    Resize(frm);
  };
  frm.frmFileOp.Left = 0;
  frm.results.tabMain.Select(2);
  EXPECT_THAT(log, ElementsAre("1 shown", "0 hidden", "resize"));
  EXPECT_EQ(frm.results.mIntCurFrame, 1);
  EXPECT_EQ(PlaceOf(frm.frmResult[1]), frm.results.tabMain.Client());
  EXPECT_EQ(frm.results.lstResult[1].Width(), frm.results.tabMain.Client().width);
  EXPECT_EQ(frm.frmFileOp.Left(), frm.Width() - 2175 - 160);
  frm.results.tabMain.Select(5);
  EXPECT_TRUE(frm.frmResult[4].Visible());
  for (std::size_t i = 0; i < 4; ++i) EXPECT_FALSE(frm.frmResult[i].Visible());
}

TEST_F(LayoutTest, TheTabOnShowDoesNothing) {
  frm.results.tabMain.Select(2);
  int resizes = 0;
  frm.OnResize = [&] { ++resizes; };
  frm.frmSelPath.Width = 1;
  frm.results.tabMain.Select(2);
  frm.TabPath.Select(1);
  EXPECT_EQ(resizes, 0);
  EXPECT_EQ(frm.frmSelPath.Width(), 1);
}

TEST_F(LayoutTest, ATabOfTheScopeLaysOutItsFrameAlone) {
  int resizes = 0;
  frm.OnResize = [&] { ++resizes; };
  view.Drag(12000, 9000);
  resizes = 0;
  frm.TabPath.Select(3);
  EXPECT_EQ(resizes, 0);
  EXPECT_EQ(frm.frmSelPath.Width(), 8745);
  EXPECT_EQ(PlaceOf(frm.frmPath[2]), frm.TabPath.Client());
  EXPECT_EQ(frm.lstPath.Width(), 7330);
}

// --- A new search, and results

TEST_F(LayoutTest, ANewSearchLeavesRoomForThePanelsOnly) {
  Init(frm);
  EXPECT_EQ(frm.Height(), 252 + 300 + 3135 + 160);
  EXPECT_EQ(frm.ScaleHeight(), 252 + 3135 + 160);
  for (const WindowState state : {WindowState::Maximised, WindowState::Minimised}) {
    view.Drag(12000, 9000);
    frm.State = state;
    Init(frm);
    EXPECT_EQ(frm.Height(), 9000);
  }
}

TEST_F(LayoutTest, ResultsOpenTheWindow) {
  Init(frm);
  ShowResult(frm);
  EXPECT_EQ(frm.Height(), 8000);
  EXPECT_EQ(frm.results.tabMain.Height(), 8000 - 300 - 252 - 3360 - 160);
  frm.mnuFile.Enabled = false;
  frm.mnuSrchSession.Enabled = false;
  for (const WindowState state : {WindowState::Maximised, WindowState::Minimised}) {
    frm.State = state;
    view.Drag(12000, 9000);
    frm.Top = 20000;
    frm.Left = 20000;
    ShowResult(frm);
    EXPECT_EQ(PlaceOf(frm), (Place{20000, 20000, 12000, 9000}));
  }
  EXPECT_TRUE(frm.mnuFile.Enabled() && frm.mnuSrchSession.Enabled());
}

TEST_F(LayoutTest, AWindowThatWouldLeaveTheWorkAreaIsPutBack) {
  screen.area = {.right = 1000, .bottom = 800, .twipsPerPixelX = 12, .twipsPerPixelY = 15};
  view.Drag(11000, 9000);
  frm.Top = 4000;
  frm.Left = 1000;
  ShowResult(frm);
  EXPECT_EQ(frm.Top(), 4000);
  EXPECT_EQ(frm.Left(), 1000);
  frm.Top = 4001;
  ShowResult(frm);
  EXPECT_EQ(frm.Top(), 300);
  EXPECT_EQ(frm.Left(), 1000);
  frm.Left = 1001;
  ShowResult(frm);
  EXPECT_EQ(frm.Top(), 300);
  EXPECT_EQ(frm.Left(), 300);
}

TEST_F(LayoutTest, WithoutAnyRowsTheTabOnShowStays) {
  frm.results.tabMain.Select(3);
  ShowResult(frm);
  EXPECT_EQ(frm.results.tabMain.SelectedTab(), 3);
  Add(4);
  ShowResult(frm);
  EXPECT_EQ(frm.results.tabMain.SelectedTab(), 3);
}

TEST_F(LayoutTest, TheLastListWithRowsComesUpLaidOut) {
  Add(1);
  Add(3);
  ShowResult(frm);
  EXPECT_EQ(frm.results.mIntCurFrame, 3);
  EXPECT_TRUE(frm.frmResult[3].Visible());
  EXPECT_FALSE(frm.frmResult[0].Visible() || frm.frmResult[1].Visible());
  EXPECT_EQ(PlaceOf(frm.frmResult[3]), frm.results.tabMain.Client());
}

// --- The bar in the status bar

TEST_F(LayoutTest, TheBarIsSeatedInItsPanel) {
  ProgressBar& pb = frm.pbMain;
  StatusBar& bar = frm.StatusBar1;
  std::vector<bool> shown;
  std::vector<What> asked;
  pb.Listen([&](const Notice& notice) {
    if (notice.when != When::After) return;
    if (notice.what == What::Place) shown.push_back(pb.Visible() || bar.Visible());
    if (notice.what == What::Visible || notice.what == What::ToFront) asked.push_back(notice.what);
  });
  EXPECT_EQ(pb.Parent(), &frm);
  frm.StatusBar1.Panels(1).Left = 15;
  InitProgressBar(frm);
  EXPECT_EQ(pb.Parent(), &bar);
  EXPECT_EQ(frm.PrevPbParent, &frm);
  EXPECT_EQ(PlaceOf(pb), (Place{15 + 40, 40, 2400 - 80, 252 - 40}));
  EXPECT_EQ(pb.Align(), Align::None);
  EXPECT_EQ(pb.Appearance(), Appearance::Flat);
  EXPECT_EQ(pb.BorderStyle(), BorderStyle::None);
  EXPECT_THAT(shown, testing::AllOf(testing::Not(IsEmpty()), Each(false)));
  EXPECT_THAT(asked, ElementsAre(What::Visible, What::Visible, What::ToFront));
  EXPECT_TRUE(pb.Visible() && bar.Visible());
  EXPECT_EQ(bar.Align(), Align::Bottom);
  EXPECT_EQ(bar.Top(), frm.ScaleHeight() - 252);
}

TEST_F(LayoutTest, ASeatedBarIsNotMovedAgain) {
  InitProgressBar(frm);
  const Place place = PlaceOf(frm.pbMain);
  frm.StatusBar1.Panels(1).Width = 5000;
  InitProgressBar(frm);
  view.Drag(15000, 9000);
  EXPECT_EQ(PlaceOf(frm.pbMain), place);
}

TEST_F(LayoutTest, TheBarGoesBackToWhereItStood) {
  ReleaseProgressBar(frm);
  EXPECT_EQ(frm.pbMain.Parent(), &frm);
  InitProgressBar(frm);
  ReleaseProgressBar(frm);
  EXPECT_EQ(frm.pbMain.Parent(), &frm);
}

}  // namespace
}  // namespace tresmor
