// Moves files and folders to the desktop's trash: by a rename alone, never by a copy.
#pragma once

#include "transfer/path_operation.h"

namespace tresmor {

class TrashFile final : public PathOperation {
 public:
  TrashFile(const TransferTools& tools, Passed passed) : tools_(tools), passed_(std::move(passed)) {}

  const char* PastParticiple() const override { return "moved to the trash"; }
  bool Undoable() const override { return true; }
  bool TakesAway() const override { return true; }
  Trouble Prepare(Task& task) override;
  Trouble Perform(Task& task) override;

 private:
  // What a trash folder, and what lies in one, has against being trashed.
  Trouble TroubleInTrash(const Task& task) const;
  FreeNames::Wish WishFor(const Task& task, const TrashPlace& place) const;
  FreeNames::Taken TakenIn(const TrashPlace& place) const;
  void ChooseName(Task& task, const TrashPlace& place, const std::string& name) const;
  Trouble ChooseOtherName(Task& task, const TrashPlace& place, const std::string& name) const;
  Trouble MoveInto(Task& task, const TrashPlace& place);
  Errors MoveWithInfo(const Task& task, const TrashPlace& place, Trouble& trouble);

  const TransferTools& tools_;
  const Passed passed_;
};

}  // namespace tresmor
