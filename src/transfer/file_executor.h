// Deletes, moves and copies files: FileOperations over the ports of single steps.
//
// Whatever fails, and wherever the program or the machine is stopped, each file's bytes stand somewhere whole; nothing
// that exists is ever replaced.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/file_operations.h"
#include "transfer/destination.h"
#include "transfer/path_operation.h"

namespace tresmor {

// Seconds since 1970 UTC by the system's clock.
std::int64_t SystemSeconds();

class FileExecutor final : public FileOperations {
 public:
  // What it is given has to outlive it.
  FileExecutor(const FileSystem& files, FileChanges& changes, TrashPlaces& trash, UndoLog& log,
               std::function<std::int64_t()> now = SystemSeconds);

  std::unique_ptr<OpenUndoStep> BeginUndoStep() override;
  OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) override;

 private:
  class Step;

  FreeNames names_;
  const TransferTools tools_;
  std::weak_ptr<EnteredFolders> ofStep_;  // while one is open
};

}  // namespace tresmor
