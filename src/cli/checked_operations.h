// Operations on files of which each is looked at right before it is touched.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/file_operations.h"

namespace tresmor {

// Does one path of an operation after the other, so that nothing but its own judgement stands between a file's
// judgement and its going. Paths that may not go are left out, which is no failure and counts for nothing. Where a
// question is to be asked it would be asked for each path.
class CheckedOperations final : public FileOperations {
 public:
  // Asked on the operation's thread, after progress has named the path. A cancel meanwhile leaves the file.
  using MayGo = std::function<bool(const std::string& path)>;

  // `operations` outlives it.
  CheckedOperations(FileOperations& operations, MayGo mayGo) : operations_(operations), mayGo_(std::move(mayGo)) {}

  std::unique_ptr<OpenUndoStep> BeginUndoStep() override { return operations_.BeginUndoStep(); }
  OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) override;

 private:
  FileOperations& operations_;
  const MayGo mayGo_;
};

}  // namespace tresmor
