// The console program over a file system in memory.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "cli/console.h"
#include "desk/scripted_event_queue.h"
#include "search/search_world.h"
#include "support/memory_file_changes.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"
#include "transfer/file_executor.h"
#include "transfer/transfer_world.h"

namespace tresmor::tests {

// A file that is gone when it is closed.
class Scratch {
 public:
  std::FILE* File() { return file_.get(); }
  std::string Text() {
    std::string text;
    std::rewind(File());
    for (int c = std::fgetc(File()); c != EOF; c = std::fgetc(File())) text.push_back(static_cast<char>(c));
    return text;
  }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_{std::tmpfile()};
};

struct ConsoleRun {
  int status = 0;
  std::string out;
  std::string err;
};

class ConsoleTest : public testing::Test {
 protected:
  // Runs "tresmor-cli" with these arguments.
  ConsoleRun Run(const std::vector<std::string>& arguments) {
    Scratch out;
    Scratch err;
    ErrorOutput errors(err.File(), errDevice);
    const int status = RunInto(out.File(), errors, arguments);
    errors.ClearProgress();
    return {status, out.Text(), err.Text()};
  }
  int RunInto(std::FILE* out, ErrorOutput& errors, const std::vector<std::string>& arguments) {
    std::vector<const char*> argv = {"tresmor-cli"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    // Each run of the program has its own.
    UndoLog undoLog(files, changes, "/home/state/undo");
    FileExecutor operations(files, changes, trash, undoLog, [] { return std::int64_t{1'088'683'200}; });
    return RunConsole(static_cast<int>(argv.size()), argv.data(),
                      {files, writer, shell, events, operations, changes, undoLog, workingFolder, out, outIsTerminal,
                       errors, [this] { return interrupted.load(); }, [this] { ++ends; }});
  }
  ConsoleRun Find(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "find");
    return Run(arguments);
  }

  // At the first call of one kind the user presses Ctrl-C; the search goes on once the program has noticed it.
  void InterruptAtFirst(MemoryFileSystem::Op op) {
    files.SetHook([this, op](const MemoryFileSystem::Call& call) {
      if (call.op != op || interrupted.exchange(true)) return;
      events.Wake();
      noticed_.wait(false);
    });
    events.onPump = [this] {
      const bool was = interrupted;
      TickAll();
      if (!was) return;
      noticed_ = true;
      noticed_.notify_all();
    };
  }
  void TickAll() {
    const auto timers = events.timers;
    for (const auto& [id, timer] : timers) timer.tick();
  }

  std::string workingFolder = "/home";
  MemoryFileSystem files;
  MemoryFileWriter writer{files};
  MemoryFileChanges changes{files};
  FakeTrashPlaces trash;
  FakeShell shell;
  ScriptedEventQueue events;
  ErrorDevice errDevice = ErrorDevice::File;
  bool outIsTerminal = false;
  std::atomic<bool> interrupted{false};
  int ends = 0;

 private:
  std::atomic<bool> noticed_{false};
};

}  // namespace tresmor::tests
