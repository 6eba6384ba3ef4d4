#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/control.h"

namespace tresmor {

// Entries with a tick each. Indexes count from 0, as those of a list box do, and fail with Subscript where no entry
// stands.
class CheckList : public Control {
 public:
  explicit CheckList(const std::vector<std::string>& entries);

  std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
  const std::string& Text(std::int32_t index) const { return entries_[At(index)].text; }
  bool Ticked(std::int32_t index) const { return entries_[At(index)].ticked; }
  void SetTicked(std::int32_t index, bool ticked);

  Property<std::uint32_t> BackColor{*this, Notice::What::BackColor, kWindowGround};

 private:
  struct Entry {
    std::string text;
    bool ticked = false;
  };
  std::size_t At(std::int32_t index) const;

  std::vector<Entry> entries_;
};

}  // namespace tresmor
