// The frame around a search: help, version, statuses of failures.
#include "cli/console.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

#include "cli/console_world.h"

namespace tresmor {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class RunConsoleTest : public tests::ConsoleTest {
 protected:
  int FindInto(const char* device, std::string& err) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::fopen(device, "w"), std::fclose);
    tests::Scratch scratch;
    ErrorOutput errors(scratch.File(), ErrorDevice::File);
    const int status = RunInto(out.get(), errors, {"find", "/data"});
    err = scratch.Text();
    return status;
  }
};

TEST_F(RunConsoleTest, HelpAndVersionGoToTheOutput) {
  const tests::ConsoleRun version = Run({"--version"});
  EXPECT_EQ(version.out, "tresmor-cli 3.1.0\n");
  EXPECT_EQ(version.status, kRanThrough);
  const tests::ConsoleRun help = Run({"find", "--help"});
  EXPECT_THAT(help.out, HasSubstr("--no-protect"));
  EXPECT_EQ(help.status, kRanThrough);
  EXPECT_EQ(help.err, "");
}

TEST_F(RunConsoleTest, WrongUseGoesToTheErrors) {
  const tests::ConsoleRun run = Run({});
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, StartsWith("tresmor-cli: "));
  EXPECT_EQ(run.status, kWrongUse);
}

TEST_F(RunConsoleTest, AFullDiskIsAFailure) {
  files.MakeFolder("/data");
  std::string err;
  EXPECT_EQ(FindInto("/dev/full", err), kFailed);
  EXPECT_EQ(err, "tresmor-cli: The output can't be written: No space left on device.\n");
}

TEST_F(RunConsoleTest, AFailureOfTheSearchIsTold) {
  files.MakeFolder("/data");
  std::vector<std::string> arguments = {"find"};
  for (int i = 0; i < 32'768; ++i) arguments.emplace_back("/data");
  const tests::ConsoleRun run = Run(arguments);
  EXPECT_EQ(run.err, "tresmor-cli: Run-time error '6': " + std::string(Describe(Errors::Overflow)) + "\n");
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.status, kFailed);
}

TEST_F(RunConsoleTest, AnyOtherTroubleIsToldToo) {
  files.MakeFolder("/data");
  files.SetHook([](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::List) throw std::bad_alloc();
  });
  const tests::ConsoleRun memory = Run({"find", "/data"});
  EXPECT_EQ(memory.err, "tresmor-cli: Out of memory.\n");
  EXPECT_EQ(memory.status, kFailed);
  files.SetHook([](const MemoryFileSystem::Call& call) {
    if (call.op == MemoryFileSystem::Op::List) throw std::runtime_error("no thread");
  });
  const tests::ConsoleRun other = Run({"find", "/data"});
  EXPECT_EQ(other.err, "tresmor-cli: no thread\n");
  EXPECT_EQ(other.status, kFailed);
  EXPECT_TRUE(events.timers.empty());
}

}  // namespace
}  // namespace tresmor
