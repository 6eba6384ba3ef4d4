#include "controls/control.h"

namespace tresmor {

void Control::Listen(Listener listener) {
  CheckThread();
  listeners_.push_back(std::move(listener));
}

void Control::Tell(Notice::What what, Notice::When when, std::int32_t first, std::int32_t last) {
  CheckThread();
  for (std::size_t i = 0; i < listeners_.size(); ++i) listeners_[i]({what, when, first, last});
}

}  // namespace tresmor
