// The window answers while long work runs.
#include <gtest/gtest.h>

#include "app/app_world.h"

namespace tresmor::tests {
namespace {

using AnswersTest = AppTest;

// The files have no bytes on the disk, so that nothing but the comparison takes time.
TEST_F(AnswersTest, BigFilesAreComparedWhileTheLoopTicksAndAClickIsAnswered) {
  for (const char* const name : {"data/1", "data/2"}) MakeSparse(name, 2LL << 30, 'x');
  Start();
  AddFolder(At("data"));
  int ticks = 0;
  int tabAtOnce = 0;
  int ticksAfterIt = 0;
  QTimer often;
  QObject::connect(&often, &QTimer::timeout, [&] {
    if (Frm().cmdSrch.Caption() != kCancelCaption) return;
    ++ticks;
    if (tabAtOnce != 0) ++ticksAfterIt;
    if (ticks != 10) return;
    auto* const tabs = static_cast<QTabBar*>(Named("Results"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    tabAtOnce = Frm().results.tabMain.SelectedTab();
  });
  often.start(1);
  Search(Report(1, 0, "2, 1 group(s)", "0, 0 group(s)"));
  EXPECT_EQ(tabAtOnce, 3);
  EXPECT_GT(ticksAfterIt, 50);
  EXPECT_EQ(List(ResultList::Duplicates).Count(), 2);
}

}  // namespace
}  // namespace tresmor::tests
