// Measures operations on many files of this machine: measure_operations [FOLDER], the folder for temporary files if not
// told. All that it needs is made in a folder of its own there and goes at the end; nothing of the user's is touched,
// nor is the user's trash.
//
// It moves 10,000 files into one folder, in turns with one `mv` of them, and throws away 100,000 files and puts them
// back; after each the files must have their bytes. It ends with status 1 if any hasn't, or a target is missed. Making
// and checking the files isn't measured.
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "platform/posix/posix_file_changes.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_trash_places.h"
#include "transfer/file_executor.h"
#include "transfer/undo.h"

namespace {

using namespace tresmor;
namespace fs = std::filesystem;

constexpr int kRounds = 7;
constexpr std::size_t kMoved = 10'000;
constexpr std::size_t kTrashed = 100'000;
constexpr std::size_t kInOneFolder = 100;
constexpr double kMostOfMv = 1.5;

using Paths = std::vector<std::string>;

[[noreturn]] void Fail(const std::string& why) {
  std::fprintf(stderr, "%s\n", why.c_str());
  std::exit(1);
}

class NobodyWatches final : public OperationWatch {
 public:
  bool Confirm(const ShFileOpStruct& /*operation*/, std::int64_t /*count*/) override { return true; }
  void Progress(const OperationProgress& /*progress*/) override {}
  bool Cancelled() override { return false; }
};

double Seconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

// One run of the program.
struct Program {
  explicit Program(const fs::path& home)
      : trash(home / "Trash"), log(files, changes, home / "state/undo"), executor(files, changes, trash, log) {}
  void Do(const ShFileOpStruct& operation) {
    const OperationResult result = executor.ShFileOperation(operation, watch);
    if (result.code != OperationCode::Done) Fail(result.description);
  }
  UndoResult TakeBack() { return Undo(files, changes, log).Run(watch); }

  PosixFileSystem files;
  PosixFileChanges changes;
  PosixTrashPlaces trash;
  UndoLog log;
  NobodyWatches watch;
  FileExecutor executor;
};

std::string ListOf(const Paths& paths) {
  std::string list;
  for (const std::string& path : paths) list.append(path).push_back('\0');
  return list + '\0';
}

Paths MakeFiles(const fs::path& folder, std::size_t count) {
  Paths paths;
  for (std::size_t i = 0; i < count; ++i) {
    const fs::path in = folder / std::to_string(i / kInOneFolder);
    if (i % kInOneFolder == 0) fs::create_directories(in);
    paths.push_back(in / ("holiday picture " + std::to_string(i) + ".jpg"));
    std::ofstream(paths.back(), std::ios::binary) << paths.back();
  }
  return paths;
}

// How many are there, each with the bytes that it was made with; those that were moved into one folder are looked for
// in that.
std::size_t Whole(const Paths& paths, const fs::path& movedTo = {}) {
  return static_cast<std::size_t>(std::ranges::count_if(paths, [&](const std::string& path) {
    std::ifstream file(movedTo.empty() ? fs::path(path) : movedTo / fs::path(path).filename(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {}) == path;
  }));
}

std::size_t Entries(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

void MoveByMv(const Paths& paths, const std::string& folder) {
  Paths words = {"mv", "-t", folder};
  words.insert(words.end(), paths.begin(), paths.end());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  int status = 1;
  if (posix_spawnp(&child, "mv", nullptr, nullptr, arguments.data(), environ) != 0) Fail("mv can't be started");
  if (waitpid(child, &status, 0) != child || status != 0) Fail("mv failed");
}

void MoveByProgram(const fs::path& home, const Paths& paths, const std::string& folder) {
  Program(home).Do({FO_MOVE, ListOf(paths), folder, FOF_RENAMEONCOLLISION, folder});
}

using Mover = std::function<void(const Paths& paths, const std::string& folder)>;

double MeasureMove(const fs::path& root, const Mover& move) {
  const Paths paths = MakeFiles(root / "from", kMoved);
  const fs::path to = root / "to";
  fs::create_directory(to);
  const double seconds = Seconds([&] { move(paths, to); });
  if (Entries(to) != kMoved || Whole(paths, to) != kMoved || Whole(paths) != 0) Fail("not all were moved whole");
  fs::remove_all(root / "from");
  fs::remove_all(to);
  return seconds;
}

// Whether the target is met.
bool MeasureMoves(const fs::path& root) {
  std::vector<double> program;
  std::vector<double> mv;
  std::vector<double> ratios;
  std::printf("%zu files moved into one folder, seconds:\n", kMoved);
  for (int round = 0; round < kRounds; ++round) {
    const auto byProgram = [&](const Paths& paths, const std::string& to) { MoveByProgram(root, paths, to); };
    program.push_back(MeasureMove(root, byProgram));
    mv.push_back(MeasureMove(root, MoveByMv));
    ratios.push_back(program.back() / mv.back());
    std::printf("  tresmor %.3f  mv %.3f  ratio %.2f\n", program.back(), mv.back(), ratios.back());
  }
  const double ratio = Median(ratios);
  std::printf("median: tresmor %.3f  mv %.3f  ratio %.2f, target at most %.2f: %s\n", Median(program), Median(mv),
              ratio, kMostOfMv, ratio <= kMostOfMv ? "met" : "MISSED");
  return ratio <= kMostOfMv;
}

void MeasureTrash(const fs::path& root) {
  const Paths paths = MakeFiles(root / "from", kTrashed);
  Program program(root);
  const double there = Seconds([&] {
    program.Do({FO_DELETE, ListOf(paths), "", FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_RENAMEONCOLLISION, ""});
  });
  const std::size_t inTrash = Entries(root / "Trash/files");
  const std::size_t left = Whole(paths);
  std::printf("%zu files thrown away: %.3f seconds, %zu in the trash, %zu left\n", kTrashed, there, inTrash, left);
  UndoResult result;
  const double back = Seconds([&] { result = program.TakeBack(); });
  const std::size_t whole = Whole(paths);
  std::printf("and put back: %.3f seconds, %lld told, %zu there with all their bytes, %zu left in the trash\n", back,
              static_cast<long long>(result.putBack), whole, Entries(root / "Trash/files"));
  if (inTrash != kTrashed || left != 0 || whole != kTrashed || !result.left.empty()) Fail("files were lost or left");
}

}  // namespace

int main(int count, char** arguments) {
  const fs::path parent = count > 1 ? fs::absolute(arguments[1]) : fs::temp_directory_path();
  std::string root = parent / "tresmor-operations-XXXXXX";
  if (mkdtemp(root.data()) == nullptr) Fail("no folder can be made in " + parent.string());
  const bool met = MeasureMoves(root);
  MeasureTrash(root);
  fs::remove_all(root);
  return met ? 0 : 1;
}
