// A view of the main window as far as its layout can tell: it answers what the program writes by the measures of a
// window with frame and menu bar, and calls OnResize as a real one does.
#pragma once

#include <algorithm>
#include <cmath>

#include "platform/screen.h"
#include "shell/frm_main.h"

namespace tresmor {

class FakeScreen final : public Screen {
 public:
  WorkArea GetWorkArea() const override { return area; }

  WorkArea area{.right = 1280, .bottom = 1000};
};

class FakeMainView {
 public:
  struct Measures {
    float frameWidth = 120;
    float frameHeight = 810;   // with the menu bar
    float twipsPerPixel = 15;  // of which sizes are whole numbers
  };
  // How far the room below tabs lies within their edges.
  static constexpr float kTabEdge = 30;
  static constexpr float kTabHeight = 330;

  explicit FakeMainView(FrmMain& frm) : FakeMainView(frm, Measures()) {}
  FakeMainView(FrmMain& frm, const Measures& measures) : frm_(frm), measures_(measures) {
    for (TabStrip* const tabs : {&frm_.results.tabMain, &frm_.TabPath}) {
      tabs->Listen([tabs](const Notice& notice) {
        if (notice.what == Notice::What::Place && notice.when == Notice::When::After) MeasureTabs(*tabs);
      });
      MeasureTabs(*tabs);
    }
    frm_.StatusBar1.Listen([this](const Notice& notice) {
      if (notice.what == Notice::What::Place && notice.when == Notice::When::After) PlaceBar();
    });
    frm_.Listen([this](const Notice& notice) { OnNotice(notice); });
    frm_.Width = frm_.ScaleWidth() + measures_.frameWidth;
    frm_.Height = frm_.ScaleHeight() + measures_.frameHeight;
  }
  FakeMainView(const FakeMainView&) = delete;
  FakeMainView& operator=(const FakeMainView&) = delete;

  // The user drags the window's edges.
  void Drag(float width, float height) {
    Show({.width = width, .height = height});
    Resized();
  }

  int resizes = 0;  // calls of OnResize

 private:
  static void MeasureTabs(TabStrip& tabs) {
    tabs.Client = {tabs.Left() + kTabEdge, tabs.Top() + kTabHeight, std::max(0.F, tabs.Width() - 2 * kTabEdge),
                   std::max(0.F, tabs.Height() - kTabHeight - kTabEdge)};
  }
  void PlaceBar() {
    StatusBar& bar = frm_.StatusBar1;
    bar.Top = bar.Align() == Align::Bottom ? frm_.ScaleHeight() - bar.Height() : 0;
  }
  float WholePixels(float twips) const { return std::ceil(twips / measures_.twipsPerPixel) * measures_.twipsPerPixel; }

  void OnNotice(const Notice& notice) {
    if (notice.when != Notice::When::After) return;
    if (notice.what == Notice::What::State) CallOnResize();
    if (notice.what != Notice::What::Place) return;
    const Place asked{.width = WholePixels(frm_.Width()), .height = WholePixels(frm_.Height())};
    if (asked == shown_ || answering_) return;
    Show(asked);
    Resized();
  }
  void Show(Place place) {
    shown_ = place;
    answering_ = true;
    frm_.Width = place.width;
    frm_.Height = place.height;
    answering_ = false;
  }
  void Resized() {
    frm_.ScaleWidth = frm_.Width() - measures_.frameWidth;
    frm_.ScaleHeight = frm_.Height() - measures_.frameHeight;
    frm_.StatusBar1.Width = frm_.ScaleWidth();
    PlaceBar();
    CallOnResize();
  }
  void CallOnResize() {
    ++resizes;
    if (frm_.OnResize) frm_.OnResize();
  }

  FrmMain& frm_;
  const Measures measures_;
  Place shown_;
  bool answering_ = false;
};

}  // namespace tresmor
