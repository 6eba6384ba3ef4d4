#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/control.h"

namespace tresmor {

// A drop-down list with fixed entries, one of them chosen. Indexes count from 0 and fail with Subscript where no entry
// stands.
class ChoiceList : public Control {
 public:
  explicit ChoiceList(std::vector<std::string> entries, std::int32_t chosen = 0);

  std::int32_t ListCount() const { return static_cast<std::int32_t>(entries_.size()); }
  const std::string& List(std::int32_t index) const { return entries_[At(index)]; }

  std::int32_t ListIndex() const;
  // Listeners hear of it whoever chooses, but never of the entry that is chosen already. Calls OnClick every time.
  void Choose(std::int32_t index);

  Property<std::uint32_t> BackColor{*this, Notice::What::BackColor, kWindowGround};
  std::function<void()> OnClick;

 private:
  std::size_t At(std::int32_t index) const;

  std::vector<std::string> entries_;
  std::int32_t chosen_ = 0;
};

}  // namespace tresmor
