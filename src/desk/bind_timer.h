#pragma once

#include "controls/timer.h"
#include "platform/event_queue.h"

namespace tresmor {

// Makes `timer` tick from `events` whenever it is enabled. `events` outlives the timer.
void BindTimer(Timer& timer, EventQueue& events);

}  // namespace tresmor
