#include "shell/layout.h"

#include "base/failure.h"

namespace tresmor {
namespace {

constexpr float kHeightWithResult = 8000;
constexpr float kPlaceOnScreen = 300;  // from the left or upper edge, for a window that would leave it
constexpr float kBelowPanels = 160;
constexpr float kRightMargin = 160;
constexpr float kBetweenColumns = 320;
constexpr float kResultRoom = 800;  // under the upper panels; with no more no result shows
constexpr float kBarMargin = 40;

template <class... Steps>
void PassOverFailures(Steps&&... steps) {
  (PassOverFailure(steps), ...);
}

bool HidesPanels(const FrmMain& frm) {
  return frm.StatusBar1.Height() + frm.frmSelPath.Height() + kBelowPanels > frm.ScaleHeight();
}

bool HasRoomForResult(const FrmMain& frm) {
  return frm.Height() - frm.frmSelPath.Height() - frm.StatusBar1.Height() - kResultRoom > 0;
}

// A frame below the tabs of a strip, which may be measured anew with each step.
void FillClient(Frame& frame, const TabStrip& tabs) {
  PassOverFailures([&] { frame.Left = tabs.Client().left; }, [&] { frame.Top = tabs.Client().top; },
                   [&] { frame.Width = tabs.Client().width; }, [&] { frame.Height = tabs.Client().height; });
}

void ResizeResult(FrmMain& frm) {
  TabStrip& tabs = frm.results.tabMain;
  PassOverFailure([&] { tabs.Height = frm.ScaleHeight() - frm.StatusBar1.Height() - tabs.Top() - kBelowPanels; });
  FillClient(frm.frmResult[static_cast<std::size_t>(frm.results.mIntCurFrame)], tabs);
  ListView& lst = frm.results.Shown();
  PassOverFailures([&] { lst.Left = 0; }, [&] { lst.Top = 0; }, [&] { lst.Width = tabs.Client().width; },
                   [&] { lst.Height = tabs.Client().height; });
}

void ShowResultFrame(FrmMain& frm) {
  const auto shown = static_cast<std::size_t>(frm.results.mIntCurFrame);
  frm.frmResult[shown].Visible = true;
  for (std::size_t i = 0; i < frm.frmResult.size(); ++i) {
    if (i != shown) frm.frmResult[i].Visible = false;
  }
}

template <class Laying>
void OnTab(TabStrip& tabs, Laying&& lay) {
  tabs.Listen([lay](const Notice& notice) {
    if (notice.what == Notice::What::SelectedTab && notice.when == Notice::When::After) lay();
  });
}

}  // namespace

float LeastHeight(const FrmMain& frm) {
  return frm.StatusBar1.Height() + (frm.Height() - frm.ScaleHeight() + frm.frmSelPath.Height()) + kBelowPanels;
}

void Resize(FrmMain& frm) {
  PassOverFailure([&] { frm.results.tabMain.Width = frm.ScaleWidth() - frm.frmFileOp.Width() - kBetweenColumns; });
  if (frm.State() == WindowState::Minimised) return;
  PassOverFailure([&] {
    if (HidesPanels(frm)) frm.Height = LeastHeight(frm);
  });
  if (HasRoomForResult(frm)) ResizeResult(frm);
  PassOverFailures(
      [&] {
        if (frm.Width() < kLeastWidth) frm.Width = kLeastWidth;
      },
      [&] { frm.lstPath.Width = frm.TabPath.Width() - frm.fraSrch.Width() - frm.lstPath.Left() - kBetweenColumns; },
      [&] { frm.fraSrch.Left = frm.Width() - frm.fraSrch.Width() - kRightMargin; },
      [&] { frm.frmFileOp.Left = frm.Width() - frm.frmFileOp.Width() - kRightMargin; });
  ResizeSelPath(frm);
}

void ResizeSelPath(FrmMain& frm) {
  constexpr float kBesideSearch = 480;
  PassOverFailures([&] { frm.frmSelPath.Width = frm.Width() - frm.fraSrch.Width() - kBesideSearch; },
                   [&] { frm.TabPath.Width = frm.frmSelPath.Width() - kBetweenColumns; });
  FillClient(frm.frmPath[static_cast<std::size_t>(frm.CurPathTab)], frm.TabPath);
  PassOverFailure(
      [&] { frm.lstPath.Width = frm.frmSelPath.Width() - frm.cmdAdd.Left() - frm.cmdAdd.Width() - kBetweenColumns; });
}

void BindLayout(FrmMain& frm) {
  frm.OnResize = [&frm] { Resize(frm); };
  OnTab(frm.results.tabMain, [&frm] {
    ShowResultFrame(frm);
    frm.OnResize();
  });
  OnTab(frm.TabPath, [&frm] { ResizeSelPath(frm); });
}

void Collapse(FrmMain& frm) {
  if (frm.State() == WindowState::Normal) frm.Height = LeastHeight(frm);
}

void OpenForResult(FrmMain& frm, const Screen& screen) {
  if (frm.State() != WindowState::Normal) return;
  frm.Height = kHeightWithResult;
  const WorkArea area = screen.GetWorkArea();
  if ((frm.Top() + frm.Height()) / area.twipsPerPixelY > static_cast<float>(area.bottom)) frm.Top = kPlaceOnScreen;
  if ((frm.Left() + frm.Width()) / area.twipsPerPixelX > static_cast<float>(area.right)) frm.Left = kPlaceOnScreen;
}

void EmbedProgressBar(ProgressBar& pb, StatusBar& bar, const Panel& panel, float margin, const Control*& prevParent) {
  if (prevParent != nullptr) return;
  prevParent = pb.Parent();
  pb.Parent = &bar;
  bar.Align = Align::Top;  // where its own top is 0
  bar.Visible = false;
  pb.Visible = false;
  pb.Align = Align::None;
  pb.Appearance = Appearance::Flat;
  pb.BorderStyle = BorderStyle::None;
  pb.Width = panel.Width();
  pb.Left = panel.Left() + margin;
  pb.Top = bar.Top() + margin;
  pb.Width = panel.Width() - 2 * margin;
  pb.Height = bar.Height() - margin;
  pb.Visible = true;
  pb.BringToFront();
  bar.Align = Align::Bottom;
  bar.Visible = true;
}

void InitProgressBar(FrmMain& frm) {
  EmbedProgressBar(frm.pbMain, frm.StatusBar1, frm.StatusBar1.Panels(1), kBarMargin, frm.PrevPbParent);
}

void ReleaseProgressBar(FrmMain& frm) {
  if (frm.PrevPbParent != nullptr) frm.pbMain.Parent = frm.PrevPbParent;
}

}  // namespace tresmor
