#pragma once

#include <array>
#include <cstdint>

#include "base/failure.h"
#include "controls/align.h"
#include "controls/panel.h"

namespace tresmor {

// A bar along an edge of a window, with two panels, which count from 1. Fails with Subscript where none stands. Whoever
// shows it answers another edge by the place that it has there, before the write returns.
class StatusBar : public PlacedControl {
 public:
  explicit StatusBar(Place place = {}, float firstPanel = 0)
      : PlacedControl(place),
        panels_{Panel({0, 0, firstPanel, place.height}),
                Panel({firstPanel, 0, place.width - firstPanel, place.height})} {}

  Panel& Panels(std::int32_t panel) {
    if (panel < 1 || panel > 2) throw Failure(Errors::Subscript);
    return panels_[static_cast<std::size_t>(panel - 1)];
  }

  Property<tresmor::Align> Align{*this, Notice::What::Place, tresmor::Align::Bottom};

 private:
  std::array<Panel, 2> panels_;
};

}  // namespace tresmor
