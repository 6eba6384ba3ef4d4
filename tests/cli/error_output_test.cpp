#include "cli/error_output.h"

#include <gtest/gtest.h>

#include "cli/console_world.h"

namespace tresmor {
namespace {

TEST(ErrorOutput, PrintsAGuardedMessageAndGoesOn) {
  tests::Scratch scratch;
  ErrorOutput err(scratch.File(), ErrorDevice::File);
  GuardedMessages messages(err);
  Options options;
  options.DontShowWarmProtWin = 2;
  EXPECT_TRUE(messages.GuardedMsg(options, kWarmProtWin));
  EXPECT_EQ(options.DontShowWarmProtWin, 0);
  EXPECT_EQ(scratch.Text(), "tresmor-cli: It is risky if you don't protect system directories.\n");
}

}  // namespace
}  // namespace tresmor
