#include "controls/tab_strip.h"

#include "base/failure.h"

namespace tresmor {

std::size_t TabStrip::At(std::int32_t tab) const {
  CheckThread();
  if (tab < 1 || tab > Count()) throw Failure(Errors::Subscript);
  return static_cast<std::size_t>(tab - 1);
}

const std::string& TabStrip::Caption(std::int32_t tab) const { return captions_[At(tab)]; }

void TabStrip::SetCaption(std::int32_t tab, std::string caption) {
  std::string& held = captions_[At(tab)];
  if (held == caption) return;
  Announce(Notice::What::Item, tab, tab, [&] { held = std::move(caption); });
}

std::int32_t TabStrip::SelectedTab() const {
  CheckThread();
  return selected_;
}

void TabStrip::Select(std::int32_t tab) {
  At(tab);
  if (tab == selected_) return;
  Announce(Notice::What::SelectedTab, tab, tab, [&] { selected_ = tab; });
}

}  // namespace tresmor
