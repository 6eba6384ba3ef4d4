#include "desk/action_dispatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "base/failure.h"
#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

using testing::ElementsAre;

class ActionDispatchTest : public testing::Test {
 protected:
  ActionDispatchTest() {
    dialogs.onBox = [this] { log.push_back(dispatch.IsRunning() ? "box in action" : "box"); };
  }

  void ExpectError(int number, const std::string& description) {
    dialogs.boxes.push_back({"Run-time error '" + std::to_string(number) + "':\r\n\r\n" + description, ""});
  }
  ActionDispatch::Handler Logs(const std::string& what) {
    return [this, what] { log.push_back(what); };
  }

  ScriptedDialogs dialogs;
  std::vector<std::string> log;
  ActionDispatch dispatch{dialogs, {.restore = Logs("restore"), .atRest = Logs("rest")}};
};

TEST_F(ActionDispatchTest, AnActionWithinAnotherIsDroppedAndAPassiveHandlerIsNot) {
  dispatch.Run([&] {
    dispatch.Run(Logs("inner"));
    dispatch.RunPassive(Logs("passive"));
    dispatch.RunPassive([&] { dispatch.Run(Logs("inner")); });
    log.push_back("end");
  });
  EXPECT_THAT(log, ElementsAre("passive", "end", "rest"));
}

TEST_F(ActionDispatchTest, TheNextActionMayRunOnceOneIsAtRest) {
  int runs = 0;
  ActionDispatch again(dialogs, {.restore = nullptr, .atRest = [&] {
                                   EXPECT_FALSE(again.IsRunning());
                                   if (++runs < 3) again.Run([&] { EXPECT_TRUE(again.IsRunning()); });
                                 }});
  again.Run([] {});
  EXPECT_EQ(runs, 3);
}

TEST_F(ActionDispatchTest, AFailedActionIsRestoredThenToldThenOver) {
  ExpectError(61, "Disk full");
  dispatch.Run([] { throw Failure(Errors::DiskFull); });
  EXPECT_THAT(log, ElementsAre("restore", "box in action", "rest"));
  log.clear();
  dispatch.Run(Logs("next"));
  EXPECT_THAT(log, ElementsAre("next", "rest"));
}

TEST_F(ActionDispatchTest, ALackOfMemoryIsAFailureToo) {
  ExpectError(7, "Out of memory");
  dispatch.Run([] { throw std::bad_alloc(); });
  EXPECT_THAT(log, ElementsAre("restore", "box in action", "rest"));
}

TEST_F(ActionDispatchTest, RestoringMayFailItself) {
  ActionDispatch broken(dialogs, {.restore = [] { throw Failure(Errors::Overflow); }, .atRest = nullptr});
  ExpectError(61, "Disk full");
  broken.Run([] { throw Failure(Errors::DiskFull); });
}

TEST_F(ActionDispatchTest, AFailedPassiveHandlerIsToldAndLeavesTheActionBelowItAlone) {
  ExpectError(61, "Disk full");
  dispatch.Run([&] {
    dispatch.RunPassive([] { throw Failure(Errors::DiskFull); });
    log.push_back("goes on");
  });
  EXPECT_THAT(log, ElementsAre("box in action", "goes on", "rest"));
}

TEST_F(ActionDispatchTest, EventsAreBoundInPlaceWithWhatTheyTell) {
  std::function<void()> click = Logs("click");
  std::function<void(int)> column = [&](int number) { log.push_back("column " + std::to_string(number)); };
  std::function<void()> nothing;
  dispatch.BindAction(click);
  dispatch.BindPassive(column);
  dispatch.BindAction(nothing);
  EXPECT_FALSE(nothing);
  dispatch.Run([&] {
    click();
    column(3);
  });
  EXPECT_THAT(log, ElementsAre("column 3", "rest"));
  log.clear();
  click();
  EXPECT_THAT(log, ElementsAre("click", "rest"));
}

}  // namespace
}  // namespace tresmor
