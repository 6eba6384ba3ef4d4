// Stops each operation after every single step that it takes, and lets every single step fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "transfer/transfer_world.h"
#include "transfer/whole_files.h"

namespace tresmor {

namespace {

using Crash = MemoryFileChanges::Crash;

// The top of a disk that can't rename without replacing.
const char* const kWithoutRename = "/without";

struct Scenario {
  const char* name;
  ShFileOpStruct operation;
  bool undone = false;                 // what is watched is the undoing of it
  std::set<std::string> losable = {};  // bytes that the user wants gone
  bool logged = true;                  // or it can't be undone
};

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

// Every file has bytes of its own, so that each can be told from all others wherever it is.
void Fill(Disks& disks) {
  const auto make = [&](const std::string& path) { disks.files.MakeFile(path, "the bytes of " + path); };
  for (const char* path :
       {"/a/one.txt", "/a/two.txt", "/b/one.txt", "/b/deep/three", "/keep/one.txt", "/keep/x/one.txt", "/usb/one.txt",
        "/usb/photos/four", "/usb/keep/one.txt", "/full/five", "/full/in/six", "/home/me/Trash/files/two.txt",
        "/without/seven", "/without/in/eight", "/without/keep/one.txt"}) {
    make(path);
  }
}

std::vector<Scenario> Scenarios() {
  const Paths some = {"/a/one.txt", "/a/two.txt", "/b/one.txt", "/b/deep/three"};
  const Paths below = {"/keep/x/one.txt", "/keep/y/z/two.txt", "/keep/x/one.txt", "/keep/y/three"};
  const Paths belowUsb = {"/usb/keep/x/one.txt", "/usb/keep/y/z/two.txt", "/usb/keep/x/one.txt", "/usb/keep/y/three"};
  std::vector<Scenario> all = {
      {"Trash", TrashThese(some)},
      {"TrashOfTwoDisks", TrashThese({"/usb/one.txt", "/a/one.txt", "/usb/photos/four"})},
      {"TrashFolder", TrashThese({"/full/five", "/full"})},
      {"MoveOnOneDisk", PutThese(FO_MOVE, some, "/new/folder")},
      {"MoveWithCollisions", PutThese(FO_MOVE, some, "/keep")},
      {"MoveWithStructure", PutTheseAt(FO_MOVE, some, below, "/keep")},
      {"MoveAcross", PutThese(FO_MOVE, some, "/usb/new/folder")},
      {"MoveAcrossWithCollisions", PutThese(FO_MOVE, some, "/usb/keep")},
      {"MoveAcrossWithStructure", PutTheseAt(FO_MOVE, some, belowUsb, "/usb/keep")},
  };
  for (std::size_t i = 0, count = all.size(); i < count; ++i) {
    all.push_back(all[i]);
    all.back().undone = true;
  }
  for (const char* folder : {"/new/folder", "/keep", "/usb/keep"}) {
    all.push_back({"Copy", PutThese(FO_COPY, some, folder)});
  }
  all.push_back({"CopyWithStructure", PutTheseAt(FO_COPY, some, belowUsb, "/usb/keep")});
  const Paths here = {"/without/new/one", "/without/keep/one", "/without/a", "/without/b"};
  const Paths there = {"/without/seven", "/without/in/eight"};
  for (const std::uint32_t function : {FO_MOVE, FO_COPY}) {
    all.push_back({"PutOntoDiskWithoutRename", PutThese(function, some, "/without/keep")});
    all.push_back({"PutBelowDiskWithoutRename", PutTheseAt(function, some, here, "/without")});
    all.push_back({"PutFromDiskWithoutRename", PutThese(function, there, "/keep")});
  }
  all.push_back({"MoveOntoDiskWithoutRename", PutThese(FO_MOVE, some, "/without/keep"), true});
  const ShFileOpStruct rename{FO_RENAME, ListOf({"/without/seven"}), ListOf({"/without/new name"}), FOF_MULTIDESTFILES,
                              "/without"};
  all.push_back({"RenameOnDiskWithoutRename", rename, false, {}, false});
  all.push_back({"Delete", DeleteThese(some), false, {}});
  for (const std::string& path : some) all.back().losable.insert("the bytes of " + path);
  return all;
}

struct Outcome {
  OperationCode code = OperationCode::Done;
  std::string description;
  std::size_t calls = 0;
};

// Builds the world, does what comes before, lets `arm` prepare the program that is watched, and `look` see it at last.
Outcome Play(
    Disks& disks, const Scenario& scenario, const std::function<void(Program&)>& arm,
    const std::function<void(const Program&)>& look = [](const Program&) {}) {
  Fill(disks);
  if (scenario.undone) {
    Program before(disks);
    before.changes.SetWithoutRename(kWithoutRename);
    EXPECT_EQ(before.Do(scenario.operation).code, OperationCode::Done);
  }
  Program program(disks);
  program.changes.SetPiece(10);
  program.changes.SetWithoutRename(kWithoutRename);
  arm(program);
  Outcome outcome;
  try {
    if (scenario.undone) {
      const UndoResult result = program.Undone();
      outcome.description = result.left.empty() ? result.trouble : result.left.front().reason;
    } else {
      const OperationResult result = program.Do(scenario.operation);
      outcome.code = result.code;
      outcome.description = result.description;
    }
  } catch (const MemoryCrash&) {
  }
  outcome.calls = program.changes.Calls().size();
  look(program);
  return outcome;
}

const Files& AtFirst() {
  static const Files files = [] {
    Disks disks;
    Fill(disks);
    return AllFiles(disks.files);
  }();
  return files;
}

std::set<std::string> MustLast(const Scenario& scenario) {
  std::set<std::string> contents = ContentsOf(AtFirst());
  for (const std::string& bytes : scenario.losable) contents.erase(bytes);
  return contents;
}

testing::AssertionResult DisksHold(const Disks& disks, const std::set<std::string>& wanted) {
  return HasAll(AllFiles(disks.files), wanted);
}

testing::AssertionResult NothingHalfOn(const Disks& disks) {
  return NothingHalf(AllFiles(disks.files), ContentsOf(AtFirst()));
}

// A copy that has to grow in its place is left there by a crash.
testing::AssertionResult NothingHalfAfterACrash(const Disks& disks) {
  Files files = AllFiles(disks.files);
  std::erase_if(files, [&](const auto& file) {
    return LiesBelow(file.first, kWithoutRename, PathStyle::Posix()) && !AtFirst().contains(file.first);
  });
  return NothingHalf(files, ContentsOf(AtFirst()));
}

void TakeBack(Disks& disks) {
  Program program(disks);
  program.changes.SetWithoutRename(kWithoutRename);
  program.Undone();
}

bool CanBeUndone(const Scenario& scenario) { return scenario.losable.empty() && scenario.logged; }

// Files that no operation names must not even have moved.
testing::AssertionResult Untouched(const Disks& disks) {
  Files bystanders;
  for (const char* path : {"/keep/one.txt", "/keep/x/one.txt", "/usb/keep/one.txt", "/home/me/Trash/files/two.txt",
                           "/without/keep/one.txt"}) {
    bystanders.insert(*AtFirst().find(path));
  }
  return InPlace(AllFiles(disks.files), bystanders);
}

// After an undo everything stands where it stood at first.
testing::AssertionResult AllBack(const Disks& disks) { return InPlace(AllFiles(disks.files), AtFirst()); }

class CrashTest : public testing::TestWithParam<Scenario> {};

TEST_P(CrashTest, AfterEveryStepAllBytesAreSomewhereAndUndoKeepsThem) {
  const Scenario& scenario = GetParam();
  const std::set<std::string> wanted = MustLast(scenario);
  int cases = 0;
  for (const Crash crash : {Crash::OfProgram, Crash::OfMachine, Crash::OfMachineKeepNames}) {
    Disks whole;
    const std::size_t calls = Play(whole, scenario, [](Program&) {}).calls;
    ASSERT_GT(calls, 2U);
    for (std::size_t call = 1; call <= calls; ++call, ++cases) {
      SCOPED_TRACE(testing::Message() << "crash " << static_cast<int>(crash) << " after step " << call);
      Disks disks;
      Play(disks, scenario, [&](Program& program) { program.changes.CrashAfter(call, crash); });
      ASSERT_TRUE(DisksHold(disks, wanted));
      ASSERT_TRUE(NothingHalfAfterACrash(disks));
      ASSERT_TRUE(Untouched(disks));
      TakeBack(disks);
      ASSERT_TRUE(DisksHold(disks, wanted));
      ASSERT_TRUE(Untouched(disks));
      const bool logged = crash == Crash::OfProgram && CanBeUndone(scenario);  // a crash of the machine takes the log
      ASSERT_TRUE(!logged || AllBack(disks));
    }
  }
  RecordProperty("cases", cases);
}

// Steps whose failure changes nothing for the user: only leftovers of the program's own, the date at which a removal
// reaches the disk, or what an undo notes for the case that it is killed.
bool DoesNotMatter(const MemoryFileChanges::Call& call, const std::string& source, const Scenario& scenario) {
  using Op = MemoryFileChanges::Op;
  if (scenario.undone && call.op == Op::Append) return call.path.ends_with("/undo");
  if (call.op == Op::StandsAt) return call.path.ends_with(".part");
  if (call.op == Op::Remove) return call.path.ends_with(".trashinfo") || call.path.ends_with(".part");
  return call.op == Op::FlushFolder && call.path == source;
}

TEST_P(CrashTest, EveryStepMayFail) {
  const Scenario& scenario = GetParam();
  const std::set<std::string> wanted = MustLast(scenario);
  Disks whole;
  const std::size_t count = Play(whole, scenario, [](Program&) {}).calls;
  int cases = 0;
  int harmless = 0;
  for (const Errors failure : {Errors::DiskFull, Errors::PermissionDenied, Errors::Device}) {
    for (std::size_t call = 1; call <= count; ++call, ++cases) {
      SCOPED_TRACE(testing::Message() << Describe(failure) << " at step " << call);
      Disks disks;
      MemoryFileChanges::Call failed;
      std::string lastSource;
      const Outcome outcome = Play(disks, scenario, [&](Program& program) {
        program.changes.FailAt(call, failure);
        program.changes.SetHook([&, number = std::size_t{0}](const MemoryFileChanges::Call& now) mutable {
          if (++number == call) failed = now;
          if (number < call && now.op == MemoryFileChanges::Op::Remove) lastSource = now.path;
        });
      });
      ASSERT_TRUE(DisksHold(disks, wanted));
      ASSERT_TRUE(NothingHalfOn(disks));
      ASSERT_TRUE(Untouched(disks));
      const std::string folder = ParentOf(lastSource, PathStyle::Posix());
      if (DoesNotMatter(failed, folder, scenario)) {
        ++harmless;
      } else {
        EXPECT_TRUE(outcome.code != OperationCode::Done || !outcome.description.empty())
            << static_cast<int>(failed.op) << " " << failed.path;
        EXPECT_FALSE(outcome.description.empty());
      }
      TakeBack(disks);
      ASSERT_TRUE(DisksHold(disks, wanted));
      ASSERT_TRUE(Untouched(disks));
      ASSERT_TRUE(!CanBeUndone(scenario) || AllBack(disks));
    }
  }
  RecordProperty("cases", cases);
  RecordProperty("harmless", harmless);
}

// What a look that fails must never be taken for: "nothing there".
TEST_P(CrashTest, EveryLookMayFail) {
  const Scenario& scenario = GetParam();
  const std::set<std::string> wanted = MustLast(scenario);
  std::size_t looks = 0;
  Disks whole;
  const auto count = [&looks](const Program& program) { looks = std::max(looks, program.looks.Count()); };
  Play(
      whole, scenario, [](Program&) {}, count);
  int cases = 0;
  for (std::size_t look = 1; look <= looks; ++look, ++cases) {
    SCOPED_TRACE(testing::Message() << "look " << look);
    Disks disks;
    Play(
        disks, scenario, [look](Program& program) { program.looks.FailAt(look); }, count);
    ASSERT_TRUE(DisksHold(disks, wanted));
    ASSERT_TRUE(NothingHalfOn(disks));
    ASSERT_TRUE(Untouched(disks));
    TakeBack(disks);
    ASSERT_TRUE(DisksHold(disks, wanted));
    ASSERT_TRUE(!CanBeUndone(scenario) || AllBack(disks));
  }
  EXPECT_GT(cases, 3);
  RecordProperty("cases", cases);
}

TEST_P(CrashTest, EveryTrashMayBeMissing) {
  const Scenario& scenario = GetParam();
  const std::set<std::string> wanted = MustLast(scenario);
  std::size_t asked = 0;
  Disks whole;
  Play(
      whole, scenario, [](Program&) {}, [&](const Program& program) { asked = program.trash.asked; });
  for (std::size_t missing = 1; missing <= asked; ++missing) {
    Disks disks;
    const Outcome outcome = Play(disks, scenario, [&](Program& program) { program.trash.missingAt = missing; });
    EXPECT_EQ(outcome.code, OperationCode::NoTrash);
    ASSERT_TRUE(DisksHold(disks, wanted));
    ASSERT_TRUE(Untouched(disks));
    TakeBack(disks);
    ASSERT_TRUE(AllBack(disks));
  }
  RecordProperty("cases", static_cast<int>(asked));
}

INSTANTIATE_TEST_SUITE_P(All, CrashTest, testing::ValuesIn(Scenarios()), [](const auto& info) {
  return std::to_string(info.index) + info.param.name + (info.param.undone ? "Undone" : "");
});

}  // namespace

}  // namespace tresmor
