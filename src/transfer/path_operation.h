// What the kinds of operations have in common: each is done to one path after the other, in two steps, so that what is
// going to be done can be noted for many paths at once before it is done.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/file_changes.h"
#include "platform/file_system.h"
#include "platform/trash_places.h"
#include "transfer/free_names.h"
#include "transfer/operation_plan.h"
#include "transfer/undo_log.h"

namespace tresmor {

// What operations work with; lives longer than they.
struct TransferTools {
  const FileSystem& files;
  FileChanges& changes;
  TrashPlaces& trash;
  UndoLog& log;
  FreeNames& names;
  std::function<std::int64_t()> now;  // seconds since 1970 UTC
};

// Told of so many bytes more that were copied; false: it is cancelled.
using Passed = std::function<bool(std::int64_t bytes)>;

// One path on its way.
struct Task {
  const PlanItem* item = nullptr;
  FileStat stat;                  // of the path
  UndoEntry entry;                // with the place that it is to get, and gets if nobody else takes it
  std::vector<TrashPlace> trash;  // that it may go to
};

class PathOperation {
 public:
  virtual ~PathOperation() = default;
  // What a message says was or wasn't done to a file, such as "moved".
  virtual const char* PastParticiple() const = 0;
  // Whether it can be undone, so that its entries belong into the log.
  virtual bool Undoable() const = 0;
  // Whether the path is gone when it is done.
  virtual bool TakesAway() const = 0;
  // Checks the path, whose stat is filled in, and picks its new place. Changes nothing.
  virtual Trouble Prepare(Task& task) = 0;
  // Does it. A place that was taken meanwhile is replaced by another one, which is noted first.
  virtual Trouble Perform(Task& task) = 0;
};

}  // namespace tresmor
