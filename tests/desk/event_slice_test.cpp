#include "desk/event_slice.h"

#include <gtest/gtest.h>

#include "desk/scripted_event_queue.h"

namespace tresmor {
namespace {

TEST(EventSlice, IsOverOnceEventsHaveWaitedAndBeginsAnewBehindThem) {
  tests::ScriptedEventQueue events;
  events.seconds = 100;
  EventSlice slice(events);
  EXPECT_FALSE(slice.IsOver());
  events.seconds += 0.04;
  EXPECT_FALSE(slice.IsOver());
  events.seconds += 0.02;
  EXPECT_TRUE(slice.IsOver());
  events.onPump = [&] { events.seconds += 10; };  // however long they take
  slice.LetEventsIn();
  EXPECT_EQ(events.pumps, 1);
  EXPECT_EQ(events.waits, 0);
  EXPECT_FALSE(slice.IsOver());
}

}  // namespace
}  // namespace tresmor
