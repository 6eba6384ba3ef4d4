#include "window_bench.h"

#include <stdlib.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <chrono>
#include <cstdio>

namespace tresmor {

Scratch::Scratch() {
  std::string name = (std::filesystem::temp_directory_path() / "tresmor-window-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    std::perror(name.c_str());
    std::exit(1);
  }
  folder_ = name;
  for (const char* const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
    const std::filesystem::path folder = folder_ / "user" / variable;
    std::filesystem::create_directories(folder);
    setenv(variable, folder.c_str(), 1);
  }
  setenv("XDG_RUNTIME_DIR", folder_.c_str(), 0);
}

Scratch::~Scratch() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

Answers::Answers() {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Answer(); });
  timer_.start(20);
}

void Answers::Answer() const {
  QWidget* const box = QApplication::activeModalWidget();
  if (box == nullptr) return;
  if (auto* const files = qobject_cast<QFileDialog*>(box)) {
    files->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(fileToOpen));
    QMetaObject::invokeMethod(files, "accept", Qt::QueuedConnection);
    return;
  }
  for (QPushButton* const button : box->findChildren<QPushButton*>()) {
    const QString text = button->text().remove('&');
    if (!button->isVisible() || (text != "OK" && text != "Yes")) continue;
    // Not from here: what it sets off may ask again, and the timer doesn't tick within its own tick.
    QMetaObject::invokeMethod(button, "click", Qt::QueuedConnection);
    return;
  }
}

Watchdog::Watchdog(std::function<std::string()> where) : where_(std::move(where)) {
  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setInterval(10);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
}

void Watchdog::Tick() {
  const qint64 gap = sinceTick_.nsecsElapsed();
  sinceTick_.restart();
  if (gap <= longest_) return;
  longest_ = gap;
  place_ = where_();
}

void Watchdog::Watch(const std::string& what, const std::function<void()>& work) {
  PumpUntil([] { return true; });
  longest_ = 0;
  sinceTick_.start();
  timer_.start();
  const double whole = Milliseconds(work);
  PumpUntil([] { return true; });
  Tick();
  timer_.stop();
  const double gap = static_cast<double>(longest_) * 1e-6;
  std::printf("%-58s longest gap %7.1f ms of %8.1f%s  \"%s\"\n", what.c_str(), gap, whole,
              gap > kAnswerMilliseconds ? "  TOO LONG" : "", place_.c_str());
  std::fflush(stdout);
}

double Milliseconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

void Print(const std::string& what, std::vector<double> milliseconds, double limit) {
  std::sort(milliseconds.begin(), milliseconds.end());
  const double worst = milliseconds.back();
  std::printf("%-58s worst %7.1f ms, median %7.1f, %4.2f of the limit%s\n", what.c_str(), worst,
              milliseconds[milliseconds.size() / 2], worst / limit, worst > limit ? "  TOO LONG" : "");
  std::fflush(stdout);
}

void PumpUntil(const std::function<bool()>& done) {
  do {
    QApplication::processEvents();
  } while (!done());
}

}  // namespace tresmor
