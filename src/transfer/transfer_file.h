// Moves and copies files. A move on one disk is a rename; to another disk it is a copy whose source is removed when the
// copy is complete and on the disk.
#pragma once

#include "transfer/file_copier.h"
#include "transfer/path_operation.h"

namespace tresmor {

enum class OnCollision { Fail, Rename };
enum class UndoNotes { Keep, None };

class TransferFile final : public PathOperation {
 public:
  TransferFile(const TransferTools& tools, AfterCopy after, std::string base, OnCollision onCollision, UndoNotes notes,
               std::shared_ptr<EnteredFolders> entered, Passed passed)
      : tools_(tools),
        after_(after),
        base_(std::move(base)),
        onCollision_(onCollision),
        notes_(notes),
        passed_(std::move(passed)),
        destination_(tools.files, tools.changes, std::move(entered)),
        copier_(tools.files, tools.changes, destination_) {}

  const char* PastParticiple() const override { return Moves() ? "moved" : "copied"; }
  bool Undoable() const override { return Moves() && notes_ == UndoNotes::Keep; }
  bool TakesAway() const override { return Moves(); }
  Trouble Prepare(Task& task) override;
  Trouble Perform(Task& task) override;

 private:
  class Client;

  bool Moves() const { return after_ == AfterCopy::RemoveSource; }
  Trouble CheckKind(const Task& task) const;
  FreeNames::Taken TakenIn(const PlanItem& item) const;
  bool IsItself(const Task& task) const;
  Trouble PickAnother(Task& task, Errors failure);
  Trouble Correct(const Task& task);

  const TransferTools& tools_;
  const AfterCopy after_;
  const std::string base_;
  const OnCollision onCollision_;
  const UndoNotes notes_;
  const Passed passed_;
  Destination destination_;
  FileCopier copier_;
};

}  // namespace tresmor
