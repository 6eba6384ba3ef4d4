#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/control.h"

namespace tresmor {

// A text with a list to choose it from. Positions in the list count from 0 and fail with Subscript where no entry
// stands. Listeners hear of entries as RowsAdded, RowsRemoved and Item, by these positions.
class ComboBox : public Control {
 public:
  explicit ComboBox(std::string text = "") : text_(std::move(text)) {}

  std::int32_t ListCount() const { return static_cast<std::int32_t>(entries_.size()); }
  const std::string& List(std::int32_t index) const { return entries_[At(index)]; }
  void SetList(std::int32_t index, std::string entry);
  void AddItem(std::string entry);  // at the end
  // The text stays, even where it was chosen from this entry.
  void RemoveItem(std::int32_t index);

  // The entry that was chosen, -1 for none.
  std::int32_t ListIndex() const;
  // Chooses an entry, or none: the text becomes that entry's, or empty. Calls OnClick every time, whoever chooses and
  // whatever was chosen before.
  void SetListIndex(std::int32_t index);

  const std::string& Text() const;
  // A text that was typed: no entry is chosen any more. Doesn't call OnClick.
  void SetText(std::string text);

  Property<std::uint32_t> BackColor{*this, Notice::What::BackColor, kWindowGround};
  std::function<void()> OnClick;

 private:
  std::size_t At(std::int32_t index) const;
  void WriteIndex(std::int32_t index);
  void WriteText(std::string text);

  std::vector<std::string> entries_;
  std::string text_;
  std::int32_t index_ = -1;
};

}  // namespace tresmor
