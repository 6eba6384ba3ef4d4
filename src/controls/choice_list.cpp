#include "controls/choice_list.h"

#include "base/failure.h"

namespace tresmor {

ChoiceList::ChoiceList(std::vector<std::string> entries, std::int32_t chosen)
    : entries_(std::move(entries)), chosen_(chosen) {
  At(chosen);
}

std::size_t ChoiceList::At(std::int32_t index) const {
  CheckThread();
  if (index < 0 || index >= ListCount()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(index);
}

std::int32_t ChoiceList::ListIndex() const {
  CheckThread();
  return chosen_;
}

void ChoiceList::Choose(std::int32_t index) {
  At(index);
  if (index != chosen_) Announce(Notice::What::Value, index, index, [&] { chosen_ = index; });
  if (OnClick) OnClick();
}

}  // namespace tresmor
