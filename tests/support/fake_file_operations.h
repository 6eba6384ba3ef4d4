// Operations on files in memory as far as the logic above them can tell: what is moved or deleted is gone afterwards.
// Keeps what it was asked to do.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/path.h"
#include "platform/file_operations.h"
#include "support/memory_file_system.h"

namespace tresmor {

class FakeFileOperations final : public FileOperations {
 public:
  explicit FakeFileOperations(MemoryFileSystem& files) : files_(files) {}

  std::unique_ptr<OpenUndoStep> BeginUndoStep() override {
    callsAtUndoSteps.push_back(calls.size());
    return std::make_unique<Step>(*this);
  }

  OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) override {
    calls.push_back(operation);
    if (onOperation) onOperation(operation, watch);
    if (operation.wFunc != FO_COPY) {
      for (const std::string& path : Paths(operation.pFrom)) Take(path);
    }
    if (results.empty()) return {};
    const OperationResult result = results.front();
    results.pop_front();
    return result;
  }

  // What a list of paths names.
  static std::vector<std::string> Paths(std::string_view list) {
    std::vector<std::string> paths;
    while (list.size() > 1) {
      paths.emplace_back(list.substr(0, list.find('\0')));
      list.remove_prefix(paths.back().size() + 1);
    }
    return paths;
  }

  std::vector<ShFileOpStruct> calls;
  std::vector<std::size_t> callsAtUndoSteps;  // how many had been made when each step began
  std::vector<std::size_t> callsAtStepEnds;   // and when it ended
  std::deque<OperationResult> results;        // to come, in order; done when there are none
  std::set<std::string> stuck;                // what stays where it is
  std::function<void(const ShFileOpStruct&, OperationWatch&)> onOperation;  // on the operation's thread

 private:
  class Step final : public OpenUndoStep {
   public:
    explicit Step(FakeFileOperations& operations) : operations_(operations) {}
    ~Step() override { operations_.callsAtStepEnds.push_back(operations_.calls.size()); }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

   private:
    FakeFileOperations& operations_;
  };
  void Take(const std::string& path) {
    FileStat stat;
    if (!stuck.contains(path) && files_.Stat(path, stat) == Errors::None) files_.Remove(path);
  }

  MemoryFileSystem& files_;
};

}  // namespace tresmor
