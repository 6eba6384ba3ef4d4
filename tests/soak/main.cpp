// The monkey over the forms: forms_monkey [--seed N] [--steps N | --minutes N].
//
// It takes so many steps, 200 if none are told, with that seed, and goes on with the next seeds until the minutes are
// over. The status is 1 if something was wrong, which is told with the seed and the last steps.
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

#include "soak/monkey.h"

namespace tresmor::soak {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kStepsOfASeed = 200;
constexpr std::chrono::seconds kPatience{120};  // for one step, on a machine that may be busy

constexpr std::uint64_t kWarmUp = 10;  // seeds, until memory is looked at
constexpr std::int64_t kGrowth = 2;    // times as much at the end is too much

struct Arguments {
  std::uint64_t seed = 1;
  std::uint64_t steps = kStepsOfASeed;
  std::uint64_t minutes = 0;
};

std::optional<Arguments> Read(int argc, char** argv) {
  Arguments arguments;
  if (argc % 2 == 0) return std::nullopt;
  for (int i = 1; i < argc; i += 2) {
    std::uint64_t* const number = std::strcmp(argv[i], "--seed") == 0      ? &arguments.seed
                                  : std::strcmp(argv[i], "--steps") == 0   ? &arguments.steps
                                  : std::strcmp(argv[i], "--minutes") == 0 ? &arguments.minutes
                                                                           : nullptr;
    const char* const end = argv[i + 1] + std::strlen(argv[i + 1]);
    if (number == nullptr || std::from_chars(argv[i + 1], end, *number).ptr != end) return std::nullopt;
  }
  return arguments;
}

void Tell(std::uint64_t seed, const Monkey& monkey) {
  std::printf("The last steps of seed %llu:\n", static_cast<unsigned long long>(seed));
  for (const std::string& step : monkey.Log()) std::printf("  %s\n", step.c_str());
  for (const std::string& trouble : monkey.Troubles()) std::printf("WRONG: %s\n", trouble.c_str());
  std::fflush(stdout);
}

// Ends the program, with what was done last, when no step ends for too long.
class Watchdog {
 public:
  explicit Watchdog(std::atomic<std::uint64_t>& step)
      : thread_([this, &step](const std::stop_token& stop) { Watch(step, stop); }) {}

  void Follow(std::uint64_t seed, const Monkey* monkey) {
    seed_ = seed;
    monkey_ = monkey;
  }

 private:
  void Watch(const std::atomic<std::uint64_t>& step, const std::stop_token& stop) {
    std::uint64_t last = 0;
    for (Clock::time_point since = Clock::now(); !stop.stop_requested();) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      if (step != last) {
        last = step;
        since = Clock::now();
      }
      if (Clock::now() - since < kPatience) continue;
      std::puts("WRONG: a step doesn't end");
      Tell(seed_, *monkey_);
      std::abort();
    }
  }

  std::atomic<std::uint64_t> seed_ = 0;
  std::atomic<const Monkey*> monkey_ = nullptr;
  std::jthread thread_;
};

// Megabytes that are in memory now.
std::int64_t Resident() {
  std::ifstream figures("/proc/self/statm");
  std::int64_t pages = 0;
  figures >> pages >> pages;
  return pages * sysconf(_SC_PAGESIZE) / 1'000'000;
}

std::int64_t PeakResident() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1'000;
}

void Print(const Figures& figures, double minutes) {
  const auto line = [](const char* what, std::int64_t figure) {
    std::printf("  %-28s %lld\n", what, static_cast<long long>(figure));
  };
  std::printf("forms: %.1f minutes\n", minutes);
  line("steps", figures.steps);
  line("windows", figures.windows);
  line("searches", figures.searches);
  line("searches cancelled", figures.cancels);
  line("operations", figures.operations);
  line("trashed", figures.trashed);
  line("deleted for good", figures.deleted);
  line("moved or renamed by copy", figures.moved);
  line("copied", figures.copied);
  line("put back", figures.undone);
  line("changes by somebody else", figures.changes);
  line("peak memory (MB)", PeakResident());
  for (const auto& [error, times] : figures.told) line(error.c_str(), times);
}

int Run(const Arguments& arguments) {
  const Clock::time_point begin = Clock::now();
  const auto isOver = [&] { return Clock::now() - begin >= std::chrono::minutes(arguments.minutes); };
  Figures figures;
  std::atomic<std::uint64_t> step = 0;
  Watchdog watchdog(step);
  std::printf("forms: seed %llu\n", static_cast<unsigned long long>(arguments.seed));
  std::fflush(stdout);
  bool isWell = true;
  std::int64_t warm = 0;  // memory by then
  std::uint64_t seed = arguments.seed;
  for (; isWell && (seed == arguments.seed || !isOver()); ++seed) {
    Monkey monkey(seed, figures);
    watchdog.Follow(seed, &monkey);
    for (std::uint64_t i = 0; i < arguments.steps && monkey.Troubles().empty(); ++i, ++step) monkey.Step();
    isWell = monkey.Troubles().empty();
    if (!isWell) Tell(seed, monkey);
    if (seed - arguments.seed == kWarmUp) warm = Resident();
  }
  if (warm != 0 && Resident() > kGrowth * warm) {
    std::printf("WRONG: the memory grows: %lld MB, then %lld MB\n", static_cast<long long>(warm),
                static_cast<long long>(Resident()));
    isWell = false;
  }
  Print(figures, std::chrono::duration<double>(Clock::now() - begin).count() / 60);
  std::printf("  seeds                        %llu to %llu\n", static_cast<unsigned long long>(arguments.seed),
              static_cast<unsigned long long>(seed - 1));
  return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace tresmor::soak

int main(int argc, char** argv) {
  const auto arguments = tresmor::soak::Read(argc, argv);
  if (!arguments) {
    std::fputs("usage: forms_monkey [--seed N] [--steps N | --minutes N]\n", stderr);
    return 2;
  }
  return tresmor::soak::Run(*arguments);
}
