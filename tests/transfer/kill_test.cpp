// Kills a program that works on files of this machine, at random moments.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <span>
#include <thread>

#include "platform/posix/posix_file_changes.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_trash_places.h"
#include "transfer/transfer_world.h"
#include "transfer/whole_files.h"

namespace tresmor {

namespace {

namespace fs = std::filesystem;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr int kKills = 500;
constexpr int kKillsBetweenDisks = 200;

// An empty folder, without a separator at its end, that goes at the end; none where it can't be made.
class Scratch {
 public:
  explicit Scratch(const std::string& parent) {
    std::string pattern = parent + "/tresmor_kill_XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) path_ = pattern;
  }
  ~Scratch() {
    std::error_code failure;
    if (!path_.empty()) fs::remove_all(path_, failure);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

// Two places on this machine: one with the user's trash, and one on another file system if there is any.
struct Grounds {
  Grounds() {
    struct stat a {};
    struct stat b {};
    hasOther = !other.Path().empty() && stat(here.Path().c_str(), &a) == 0 && stat(other.Path().c_str(), &b) == 0 &&
               a.st_dev != b.st_dev;
  }
  const Scratch here{fs::temp_directory_path().string()};
  const Scratch other{"/dev/shm"};
  bool hasOther = false;
};

enum class Kind { Trash, TrashOfDisk, Move, MoveAndCleanUp, MoveAcross, MoveBackAcross, Copy };

struct KilledOperation {
  const char* name;
  Kind kind;
  bool undone;  // it is the undoing of it that is killed
  std::size_t files;
  std::size_t bytes;  // of each file
};

constexpr std::size_t kFew = 2;
constexpr std::size_t kMany = 20;
constexpr std::size_t kShort = 2'000;
constexpr std::size_t kLong = 2'000'000;
constexpr std::array kOnOneDisk = {
    KilledOperation{"trash", Kind::Trash, false, kMany, kShort},
    KilledOperation{"trash undone", Kind::Trash, true, kMany, kShort},
    KilledOperation{"move", Kind::Move, false, kMany, kShort},
    KilledOperation{"move undone", Kind::Move, true, kMany, kShort},
    KilledOperation{"copy", Kind::Copy, false, kFew, kShort},
    KilledOperation{"move with structure and clean-up", Kind::MoveAndCleanUp, false, kMany, kShort},
    KilledOperation{"move with structure and clean-up undone", Kind::MoveAndCleanUp, true, kMany, kShort},
    KilledOperation{"trash of a disk of its own", Kind::TrashOfDisk, false, kMany, kShort},
    KilledOperation{"trash of a disk of its own undone", Kind::TrashOfDisk, true, kMany, kShort},
};
constexpr std::array kBetweenDisks = {
    KilledOperation{"move to another disk", Kind::MoveAcross, false, kFew, kLong},
    KilledOperation{"move from another disk undone", Kind::MoveBackAcross, true, kFew, kLong},
};

// A file of a test repeats one line, so that the line and the size tell all of its bytes: a text of the two stands for
// them here. To hold the bytes themselves would make this process big and each fork of it slow.
constexpr std::size_t kLine = 1024;
constexpr std::size_t kBlock = 64 * kLine;

std::string StandIn(std::string_view line, std::size_t size) {
  return std::string(line.substr(0, line.find_last_not_of(' ') + 1)) + ", " + std::to_string(size) + " bytes";
}

std::string WriteFile(const std::string& path, std::string line, std::size_t size) {
  line.resize(kLine, ' ');
  std::array<char, kBlock> block{};
  for (std::size_t at = 0; at < kBlock; at += kLine) line.copy(block.data() + at, kLine);
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream file(path, std::ios::binary);
  for (std::size_t left = size; left > 0; left -= std::min(left, kBlock)) {
    file.write(block.data(), static_cast<std::streamsize>(std::min(left, kBlock)));
  }
  return StandIn(line, size);
}

std::string ReadFile(const std::string& path) {
  std::array<char, kBlock> first{};
  std::array<char, kBlock> block{};
  std::ifstream file(path, std::ios::binary);
  file.read(first.data(), kBlock);
  auto got = static_cast<std::size_t>(file.gcount());
  std::size_t size = got;
  bool regular = got > kLine && std::memcmp(first.data(), first.data() + kLine, got - kLine) == 0;
  while (got == kBlock) {
    file.read(block.data(), kBlock);
    got = static_cast<std::size_t>(file.gcount());
    regular = regular && std::memcmp(block.data(), first.data(), got) == 0;
    size += got;
  }
  return regular ? StandIn({first.data(), kLine}, size) : "no file of the test's, " + std::to_string(size) + " bytes";
}

// The trash at the top of a disk whose top is this folder.
class DiskTrash final : public TrashPlaces {
 public:
  explicit DiskTrash(std::string top) : top_(std::move(top)) {}
  std::vector<TrashPlace> Places(const std::string& path, TrashFailure& /*why*/) override {
    return {{top_ + "/Trash", top_, fs::path(path).parent_path()}};
  }

 private:
  const std::string top_;
};

// What one scenario begins with, and what it does.
class Trial {
 public:
  Trial(const Grounds& grounds, const KilledOperation& scenario) : grounds_(grounds), scenario_(scenario) {
    for (std::size_t i = 0; i < scenario.files; ++i) {
      sources_.push_back(SourceRoot() + "/folder " + std::to_string(i % 3) + "/name " + std::to_string(i / 3));
      Make(sources_.back(), scenario.bytes);
    }
    for (const std::string& path : {TargetRoot() + "/keep/name 0", TrashFolder() + "/files/name 0"}) {
      Make(path, kShort);
      bystanders_.insert(*atFirst_.find(path));
    }
    fs::create_directories(TrashFolder() + "/info");
  }
  ~Trial() {
    for (const std::string& root : {Here(), grounds_.other.Path()}) {
      if (root.empty()) continue;
      for (const auto& entry : fs::directory_iterator(root)) fs::remove_all(entry);
    }
  }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  // Whether all went well.
  bool Do(OperationWatch& watch) const {
    Machine machine(*this);
    const auto step = machine.executor.BeginUndoStep();
    return std::ranges::all_of(Operations(), [&](const ShFileOpStruct& operation) {
      return machine.executor.ShFileOperation(operation, watch).code == OperationCode::Done;
    });
  }
  bool TakeBack(OperationWatch& watch) const {
    Machine machine(*this);
    const UndoResult result = Undo(machine.files, machine.changes, machine.log).Run(watch);
    return result.trouble.empty() && result.left.empty();
  }

  Files Now() const {
    Files files;
    for (const std::string& root : {Here(), grounds_.other.Path()}) AddFiles(root, files);
    return files;
  }
  const Files& AtFirst() const { return atFirst_; }
  const Files& Bystanders() const { return bystanders_; }
  // Puts a new file where one has gone, if any has, and gives it.
  Files PutInTheWay(const Files& now) const {
    const auto gone = std::ranges::find_if(sources_, [&](const std::string& path) { return !now.contains(path); });
    if (gone == sources_.end()) return {};
    return {{*gone, WriteFile(*gone, "somebody else's", kShort)}};
  }
  // Some files have gone and some haven't, or one is on its way.
  bool HalfDone(const Files& now) const {
    std::size_t there = 0;
    for (const std::string& path : sources_) there += now.contains(path) ? 1 : 0;
    const bool onItsWay = std::ranges::any_of(now, [](const auto& file) { return file.first.ends_with(".part"); });
    return onItsWay || (there > 0 && there < sources_.size());
  }

 private:
  // One run of the program.
  struct Machine {
    explicit Machine(const Trial& trial)
        : homeTrash(trial.TrashFolder()),
          diskTrash(trial.Here()),
          log(files, changes, trial.Here() + "/state/undo"),
          executor(files, changes,
                   trial.scenario_.kind == Kind::TrashOfDisk ? static_cast<TrashPlaces&>(diskTrash) : homeTrash, log) {}
    PosixFileSystem files;
    PosixFileChanges changes;
    PosixTrashPlaces homeTrash;
    DiskTrash diskTrash;
    UndoLog log;
    FileExecutor executor;
  };

  const std::string& Here() const { return grounds_.here.Path(); }
  std::string SourceRoot() const {
    return scenario_.kind == Kind::MoveBackAcross ? grounds_.other.Path() : grounds_.here.Path();
  }
  std::string TargetRoot() const {
    return scenario_.kind == Kind::MoveAcross ? grounds_.other.Path() : grounds_.here.Path();
  }
  std::string TrashFolder() const { return Here() + "/Trash"; }

  // What a user asks for at once.
  std::vector<ShFileOpStruct> Operations() const {
    const std::string keep = TargetRoot() + "/keep";
    switch (scenario_.kind) {
      case Kind::Trash:
      case Kind::TrashOfDisk:
        return {TrashThese(sources_)};
      case Kind::Copy:
        return {PutThese(FO_COPY, sources_, keep)};
      case Kind::MoveAndCleanUp:
        break;
      default:
        return {PutThese(FO_MOVE, sources_, keep)};
    }
    Paths places;
    std::set<std::string> folders;
    for (const std::string& path : sources_) {
      places.push_back(keep + path);
      folders.insert(fs::path(path).parent_path());
    }
    return {PutTheseAt(FO_MOVE, sources_, places, keep), TrashThese({folders.begin(), folders.end()})};
  }

  void Make(const std::string& path, std::size_t count) {
    atFirst_[path] = WriteFile(path, "the bytes of " + path, count);
  }
  static void AddFiles(const std::string& root, Files& files) {
    if (root.empty()) return;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
      if (entry.is_regular_file()) files[entry.path().string()] = ReadFile(entry.path().string());
    }
  }

  const Grounds& grounds_;
  const KilledOperation& scenario_;
  Paths sources_;
  Files atFirst_;
  Files bystanders_;
};

// What a process tells over its line.
constexpr char kStep = '.';
constexpr char kDone = ')';
constexpr char kFailed = '!';

void Tell(int line, char mark) {
  if (write(line, &mark, 1) != 1) _exit(1);
}
std::optional<char> Hear(int line) {
  char mark = ' ';
  return read(line, &mark, 1) == 1 ? std::optional(mark) : std::nullopt;
}

class TellingWatch final : public OperationWatch {
 public:
  explicit TellingWatch(int line) : line_(line) {}
  bool Confirm(const ShFileOpStruct& /*operation*/, std::int64_t /*count*/) override { return true; }
  void Progress(const OperationProgress& /*progress*/) override { Tell(line_, kStep); }
  bool Cancelled() override { return false; }

 private:
  const int line_;
};

// When a process is killed: so long after it told of so many steps. However busy the machine is, the moments are spread
// over all of its work.
struct Moment {
  int steps = 0;
  nanoseconds after{};
};

enum class End { Well, Badly, Killed };

struct Course {
  End end = End::Badly;
  int steps = 0;
  nanoseconds length{};
};

Course Watch(pid_t child, int line, const std::optional<Moment>& moment) {
  Course course;
  const auto begin = steady_clock::now();
  std::optional<char> mark = kStep;
  while (mark == kStep) {
    if (moment && course.steps == moment->steps) {
      std::this_thread::sleep_for(moment->after);
      kill(child, SIGKILL);
    }
    mark = Hear(line);
    ++course.steps;
  }
  course.length = steady_clock::now() - begin;
  int status = 0;
  if (waitpid(child, &status, 0) != child) return {};
  const bool killed = !mark && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  if (killed) course.end = End::Killed;
  if (mark == kDone) course.end = End::Well;
  return course;
}

// Runs the scenario in a process of its own. Tests of this floor run no threads, so that a process may be forked.
Course RunApart(const Trial& trial, bool undone, const std::optional<Moment>& moment = std::nullopt) {
  int line[2] = {-1, -1};
  if (pipe2(line, O_CLOEXEC) != 0) return {};
  const pid_t child = fork();
  if (child == 0) {
    TellingWatch watch(line[1]);
    Tell(line[1], (undone ? trial.TakeBack(watch) : trial.Do(watch)) ? kDone : kFailed);
    _exit(0);
  }
  close(line[1]);
  const Course course = child > 0 ? Watch(child, line[0], moment) : Course{};
  close(line[0]);
  return course;
}

// What comes before the work that is killed.
bool Begin(const Trial& trial, const KilledOperation& scenario) {
  ScriptedWatch watch;
  return !scenario.undone || trial.Do(watch);
}

// How it goes when nobody kills it.
Course WholeRun(const Grounds& grounds, const KilledOperation& scenario) {
  const Trial trial(grounds, scenario);
  EXPECT_TRUE(Begin(trial, scenario));
  const Course course = RunApart(trial, scenario.undone);
  EXPECT_EQ(course.end, End::Well) << scenario.name;
  return course;
}

Moment SomeMoment(const Course& whole, std::mt19937& random) {
  const std::int64_t step = whole.length.count() / whole.steps;
  return {static_cast<int>(random() % static_cast<unsigned>(whole.steps)),
          nanoseconds(static_cast<std::int64_t>(random()) % (step + 1))};
}

struct Tally {
  int running = 0;
  int halfDone = 0;
};

enum class OldPlaces { Free, OneTaken };

void RunAndKill(const Trial& trial, const KilledOperation& scenario, const Moment& moment, OldPlaces places,
                Tally& tally) {
  ASSERT_TRUE(Begin(trial, scenario));
  const End end = RunApart(trial, scenario.undone, moment).end;
  ASSERT_NE(end, End::Badly);
  std::set<std::string> whole = ContentsOf(trial.AtFirst());
  const Files killed = trial.Now();
  ASSERT_TRUE(HasAll(killed, whole));
  ASSERT_TRUE(NothingHalf(killed, whole));
  ASSERT_TRUE(InPlace(killed, trial.Bystanders()));
  tally.running += end == End::Killed ? 1 : 0;
  tally.halfDone += trial.HalfDone(killed) ? 1 : 0;
  Files wanted = places == OldPlaces::OneTaken ? trial.PutInTheWay(killed) : Files{};
  whole.merge(ContentsOf(wanted));
  wanted.insert(trial.AtFirst().begin(), trial.AtFirst().end());
  ScriptedWatch watch;
  trial.TakeBack(watch);
  const Files undone = trial.Now();
  ASSERT_TRUE(HasAll(undone, whole));
  ASSERT_TRUE(NothingHalf(undone, whole));
  ASSERT_TRUE(InPlace(undone, wanted));
}

void KillAtRandom(const Grounds& grounds, std::span<const KilledOperation> scenarios, int kills) {
  std::vector<Course> whole;
  for (const KilledOperation& scenario : scenarios) whole.push_back(WholeRun(grounds, scenario));
  std::mt19937 random(1);
  std::vector<Tally> tallies(scenarios.size());
  for (int kill = 0; kill < kills; ++kill) {
    const std::size_t which = random() % scenarios.size();
    const Moment moment = SomeMoment(whole[which], random);
    SCOPED_TRACE(testing::Message() << scenarios[which].name << ", kill " << kill);
    const OldPlaces places = random() % 4 == 0 ? OldPlaces::OneTaken : OldPlaces::Free;
    const Trial trial(grounds, scenarios[which]);
    ASSERT_NO_FATAL_FAILURE(RunAndKill(trial, scenarios[which], moment, places, tallies[which]));
  }
  Tally all;
  for (std::size_t which = 0; which < scenarios.size(); ++which) {
    all.running += tallies[which].running;
    all.halfDone += tallies[which].halfDone;
    testing::Test::RecordProperty(std::string("half done, ") + scenarios[which].name, tallies[which].halfDone);
  }
  testing::Test::RecordProperty("kills of a running operation", all.running);
  testing::Test::RecordProperty("of them half done", all.halfDone);
  // The moments are spread over a whole run, so that nearly all find one running. On a busy machine many come late, but
  // where nearly all do, little was tried.
  EXPECT_GE(all.running, kills / 10);
  EXPECT_GT(all.halfDone, 0);
}

TEST(KillTest, WhereverItIsKilledNothingIsLostOrReplacedAndUndoPutsAllBack) {
  const Grounds grounds;
  ASSERT_FALSE(grounds.here.Path().empty());
  KillAtRandom(grounds, kOnOneDisk, kKills);
}

TEST(KillTest, SoItIsBetweenTwoDisks) {
  const Grounds grounds;
  ASSERT_FALSE(grounds.here.Path().empty());
  if (!grounds.hasOther) GTEST_SKIP() << "/dev/shm is no other file system than the folder for temporary files";
  KillAtRandom(grounds, kBetweenDisks, kKillsBetweenDisks);
}

}  // namespace

}  // namespace tresmor
