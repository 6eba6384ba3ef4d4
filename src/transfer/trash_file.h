// Moves files and folders to the desktop's trash: by a rename alone, never by a copy.
#pragma once

#include "transfer/path_operation.h"

namespace tresmor {

class TrashFile final : public PathOperation {
 public:
  explicit TrashFile(const TransferTools& tools) : tools_(tools) {}

  const char* Done() const override { return "moved to the trash"; }
  bool Undoable() const override { return true; }
  Trouble Prepare(Task& task) override;
  Trouble Perform(Task& task) override;

 private:
  FreeNames::Wish WishFor(const Task& task, const TrashPlace& place) const;
  FreeNames::Taken TakenIn(const TrashPlace& place) const;
  void SetPlace(Task& task, const TrashPlace& place, const std::string& name) const;
  Trouble PutInto(Task& task, const TrashPlace& place);
  Errors Put(const Task& task, const TrashPlace& place, Trouble& trouble);

  const TransferTools& tools_;
};

}  // namespace tresmor
