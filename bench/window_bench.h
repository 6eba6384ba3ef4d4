// What measurements of the window share: a user's folders for the time being, somebody who answers boxes, and clocks.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tresmor {

// A new folder among the temporary files, and in it all that a program keeps for its user. Gone with the object.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
};

// Says OK or Yes to every box, and opens `fileToOpen` where a file is asked for.
class Answers {
 public:
  Answers();
  std::string fileToOpen;

 private:
  void Answer() const;
  QTimer timer_;
};

// How long the event loop leaves its events unattended: a timer is to tick every ten milliseconds.
class Watchdog {
 public:
  // `where` tells what is going on, for the longest gap.
  explicit Watchdog(std::function<std::string()> where);

  // Does the work, prints how long the longest gap was, and whether that is too long.
  void Watch(const std::string& what, const std::function<void()>& work);

 private:
  void Tick();

  const std::function<std::string()> where_;
  QTimer timer_;
  QElapsedTimer sinceTick_;
  qint64 longest_ = 0;  // nanoseconds
  std::string place_;
};

inline constexpr double kAnswerMilliseconds = 100;
inline constexpr double kSortMilliseconds = 2000;
inline constexpr double kDialogMilliseconds = 1000;

double Milliseconds(const std::function<void()>& work);
// The worst and the median of some times, with a sign where the worst is above the limit.
void Print(const std::string& what, std::vector<double> milliseconds, double limit);
// Lets events in until `done`.
void PumpUntil(const std::function<bool()>& done);

}  // namespace tresmor
