#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/placed_control.h"

namespace tresmor {

// Tabs with captions, one of them selected. Positions count from 1 and fail with Subscript where no tab stands.
class TabStrip : public PlacedControl {
 public:
  explicit TabStrip(std::vector<std::string> captions, Place place = {})
      : PlacedControl(place), captions_(std::move(captions)) {}

  std::int32_t Count() const { return static_cast<std::int32_t>(captions_.size()); }
  const std::string& Caption(std::int32_t tab) const;
  void SetCaption(std::int32_t tab, std::string caption);

  std::int32_t SelectedTab() const;
  // Listeners hear of it whoever selects, but never of the tab that is selected already.
  void Select(std::int32_t tab);

  // The room below the tabs, within what the strip stands in; measured by whoever shows it.
  Property<Place> Client{*this, Notice::What::Client};

 private:
  std::size_t At(std::int32_t tab) const;

  std::vector<std::string> captions_;
  std::int32_t selected_ = 1;
};

}  // namespace tresmor
