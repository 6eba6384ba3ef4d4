#include "desk/one_action.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tresmor {
namespace {

TEST(OneAction, DropsWhatComesWhileAnotherRuns) {
  OneAction window;
  OneAction dialog;
  int inner = 0;
  int inDialog = 0;
  window.Run([&] {
    window.Run([&] { ++inner; });
    dialog.Run([&] { ++inDialog; });
  });
  EXPECT_EQ(inner, 0);
  EXPECT_EQ(inDialog, 1);
  window.Run([&] { ++inner; });
  EXPECT_EQ(inner, 1);
}

TEST(OneAction, RunsTheNextAfterAFailureToo) {
  OneAction window;
  EXPECT_THROW(window.Run([] { throw std::runtime_error("broken"); }), std::runtime_error);
  int runs = 0;
  window.Run([&] { ++runs; });
  EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace tresmor
