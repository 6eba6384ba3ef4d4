// Draws the user's eye to a control.
#pragma once

#include <string>

#include "controls/button.h"
#include "controls/control.h"
#include "platform/event_queue.h"

namespace tresmor {

// Pumps events until more than `seconds` have passed. Interface thread.
void WaitSecs(EventQueue& events, double seconds);

inline constexpr double kFlashSecs = 0.5;

// Twice away and back, with time to see each.
template <class T>
void Flash(Property<T>& face, const T& away, EventQueue& events) {
  const T back = face();
  for (int i = 0; i < 2; ++i) {
    face = away;
    WaitSecs(events, kFlashSecs);
    face = back;
    WaitSecs(events, kFlashSecs);
  }
}

// A button flashes by its caption, any other control by its ground. Takes two seconds.
inline void FlashCtrl(Button& ctrl, EventQueue& events) { Flash(ctrl.Caption, std::string(), events); }
template <class Box>
void FlashCtrl(Box& ctrl, EventQueue& events) {
  Flash(ctrl.BackColor, kDesktopGround, events);
}

}  // namespace tresmor
