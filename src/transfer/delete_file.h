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
    switch (task.stat.kind) {
      case EntryKind::File:
        return {};
      case EntryKind::Folder:
        return {OperationCode::Denied, "it is a folder, and folders can only be moved to the trash"};
      case EntryKind::Other:
        break;
    }
    if (task.stat.link) return {};
    return {OperationCode::Denied, "it is a pipe, a socket or a device, and only files and links are deleted for good"};
  }
  Trouble Perform(Task& task) override { return SourceTrouble(tools_.changes.Remove(task.item->from)); }

 private:
  const TransferTools& tools_;
};

}  // namespace tresmor
