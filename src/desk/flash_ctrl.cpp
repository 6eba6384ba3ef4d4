#include "desk/flash_ctrl.h"

#include <chrono>

namespace tresmor {

void WaitSecs(EventQueue& events, double seconds) {
  constexpr std::chrono::milliseconds kLook{10};
  const double start = events.Seconds();
  while (events.Seconds() - start <= seconds) events.Pump(kLook);
}

}  // namespace tresmor
