// What all tests with widgets share: no display, one font and style everywhere, and an end for a test that hangs.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QFont>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <ostream>

#include "qt/program_style.h"

// For the messages of failed tests.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace tresmor::tests {

inline constexpr int kFontPoints = 9;

inline QFont PinnedFont(int points) { return {"DejaVu Sans", points}; }

// Ends the program if one test takes longer than any should.
class Watchdog : public testing::EmptyTestEventListener {
 public:
  Watchdog() { std::signal(SIGALRM, Bark); }
  void OnTestStart(const testing::TestInfo&) override { alarm(kMostSeconds); }
  void OnTestEnd(const testing::TestInfo&) override { alarm(0); }

 private:
  static constexpr unsigned kMostSeconds = 60;
  static void Bark(int) {
    constexpr char kWords[] = "This test hangs.\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, kWords, sizeof kWords - 1);
    std::_Exit(EXIT_FAILURE);
  }
};

// What the screen has for windows, whatever the scale.
inline constexpr int kScreenWidth = 1024;
inline constexpr int kScreenHeight = 768;

inline void DescribeScreen(QFile& file) {
  const double scale = std::max(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
  const QString screen = R"({"screens": [{"name": "only", "x": 0, "y": 0, "width": %1, "height": %2}]})";
  file.write(screen.arg(kScreenWidth * scale).arg(kScreenHeight * scale).toUtf8());
  file.flush();
}

inline int RunWindowTests(int argc, char** argv) {
  QTemporaryFile screen;
  EXPECT_TRUE(screen.open());
  DescribeScreen(screen);
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
  qputenv("QT_QPA_PLATFORMTHEME", "");
  QApplication application(argc, argv);
  QApplication::setStyle(new ProgramStyle("Fusion"));  // the application owns it
  QApplication::setFont(PinnedFont(kFontPoints));
  QApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
  return RUN_ALL_TESTS();
}

// Lets events in until it holds, however long that takes: what never comes is the watchdog's.
template <class Claim>
void WaitUntil(Claim holds) {
  while (!holds()) {
    QTimer again;  // for what has no event of its own, such as another process that ends
    again.start(5);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
}

// Shows a window that gets the keys from now on.
inline void ShowActive(QWidget& window) {
  window.show();
  window.activateWindow();
  WaitUntil([&] { return window.isActiveWindow(); });
}

inline void Click(QWidget* widget, Qt::KeyboardModifiers keys = {}) {
  ASSERT_NE(widget, nullptr);
  QTest::mouseClick(widget, Qt::LeftButton, keys);
}

}  // namespace tresmor::tests
