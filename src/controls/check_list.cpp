#include "controls/check_list.h"

#include "base/failure.h"

namespace tresmor {

CheckList::CheckList(const std::vector<std::string>& entries) {
  for (const std::string& text : entries) entries_.push_back({text, false});
}

std::size_t CheckList::At(std::int32_t index) const {
  CheckThread();
  if (index < 0 || index >= Count()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(index);
}

void CheckList::SetTicked(std::int32_t index, bool ticked) {
  Entry& entry = entries_[At(index)];
  if (entry.ticked == ticked) return;
  Announce(Notice::What::Item, index, index, [&] { entry.ticked = ticked; });
}

}  // namespace tresmor
