// Deletes files and links for good.
#pragma once

#include "transfer/path_operation.h"

namespace tresmor {

class DeleteFile final : public PathOperation {
 public:
  explicit DeleteFile(const TransferTools& tools) : tools_(tools) {}

  const char* PastParticiple() const override { return "deleted"; }
  bool Undoable() const override { return false; }
  bool TakesAway() const override { return true; }
  Trouble Prepare(Task& task) override {
    if (task.stat.kind != EntryKind::Folder) return {};
    return {OperationCode::Denied, "it is a folder, and folders can only be moved to the trash"};
  }
  Trouble Perform(Task& task) override { return SourceTrouble(tools_.changes.Remove(task.item->from)); }

 private:
  const TransferTools& tools_;
};

}  // namespace tresmor
