// Operations on files from the console: Ctrl-C cancels them, a terminal shows how far they are.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "cli/console.h"
#include "platform/file_operations.h"

namespace tresmor {

// One thread at a time, and none that prints beside it.
class ConsoleWatch final : public OperationWatch {
 public:
  explicit ConsoleWatch(const ConsolePorts& ports) : ConsoleWatch(ports, ports.interrupted) {}
  // One that something else cancels.
  ConsoleWatch(const ConsolePorts& ports, std::function<bool()> cancelled)
      : ports_(ports), cancelled_(std::move(cancelled)) {}

  // Nobody is there to answer; --yes has been the answer before.
  bool Confirm(const ShFileOpStruct& operation, std::int64_t count) override;
  void Progress(const OperationProgress& progress) override;
  bool Cancelled() override { return cancelled_(); }

  // From here on another operation is told of.
  void Begin() { latest_ = {}; }
  // What was told last of it.
  const OperationProgress& Latest() const { return latest_; }

 private:
  using Clock = std::chrono::steady_clock;

  const ConsolePorts& ports_;
  const std::function<bool()> cancelled_;
  OperationProgress latest_;
  Clock::time_point next_;  // when a line is to be drawn again
};

// Passes operations on under a watch of the console's own, and sums up how they went.
class ConsoleOperations final : public FileOperations {
 public:
  // Both outlive it.
  ConsoleOperations(FileOperations& operations, ConsoleWatch& watch) : operations_(operations), watch_(watch) {}

  std::unique_ptr<OpenUndoStep> BeginUndoStep() override { return operations_.BeginUndoStep(); }
  // A cancelled one counts as done here: it is told once, by whoever asks CancelText, however many more there would
  // have been.
  OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) override;

  std::int64_t Files() const { return files_; }  // that were done
  std::int64_t Bytes() const { return bytes_; }
  bool HasFailed() const { return failed_; }
  // Whether a cancel has left anything.
  bool WasCancelled() const { return cancelled_; }
  // What the one that was cancelled said; empty if none was.
  const std::string& CancelText() const { return cancelText_; }

 private:
  FileOperations& operations_;
  ConsoleWatch& watch_;
  std::int64_t files_ = 0;
  std::int64_t bytes_ = 0;
  bool failed_ = false;
  bool cancelled_ = false;
  std::string cancelText_;
};

}  // namespace tresmor
