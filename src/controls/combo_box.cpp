#include "controls/combo_box.h"

#include <utility>

#include "base/failure.h"

namespace tresmor {

std::size_t ComboBox::At(std::int32_t index) const {
  CheckThread();
  if (index < 0 || index >= ListCount()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(index);
}

void ComboBox::SetList(std::int32_t index, std::string entry) {
  std::string& held = entries_[At(index)];
  if (held == entry) return;
  Announce(Notice::What::Item, index, index, [&] { held = std::move(entry); });
}

void ComboBox::AddItem(std::string entry) {
  const std::int32_t end = ListCount();
  Announce(Notice::What::RowsAdded, end, end, [&] { entries_.push_back(std::move(entry)); });
}

void ComboBox::RemoveItem(std::int32_t index) {
  const auto entry = entries_.begin() + static_cast<std::ptrdiff_t>(At(index));
  Announce(Notice::What::RowsRemoved, index, index, [&] {
    entries_.erase(entry);
    if (index_ == index) {
      index_ = -1;
    } else if (index_ > index) {
      --index_;
    }
  });
}

std::int32_t ComboBox::ListIndex() const {
  CheckThread();
  return index_;
}

void ComboBox::SetListIndex(std::int32_t index) {
  std::string text = index == -1 ? std::string() : List(index);
  WriteIndex(index);
  WriteText(std::move(text));
  if (OnClick) OnClick();
}

const std::string& ComboBox::Text() const {
  CheckThread();
  return text_;
}

void ComboBox::SetText(std::string text) {
  WriteIndex(-1);
  WriteText(std::move(text));
}

void ComboBox::WriteIndex(std::int32_t index) {
  if (index == index_) return;
  Announce(Notice::What::ListIndex, index, index, [&] { index_ = index; });
}

void ComboBox::WriteText(std::string text) {
  if (text == text_) return;
  Announce(Notice::What::Text, 0, 0, [&] { text_ = std::move(text); });
}

}  // namespace tresmor
