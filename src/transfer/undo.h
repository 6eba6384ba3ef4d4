// Puts back what the last step of operations moved or trashed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_operations.h"
#include "transfer/destination.h"
#include "transfer/file_copier.h"
#include "transfer/undo_log.h"

namespace tresmor {

struct UndoResult {
  std::int64_t putBack = 0;  // files and folders
  struct Left {
    std::string path;    // the old place
    std::string reason;  // the end of a sentence that names the path, without its full stop
  };
  std::vector<Left> left;  // what could not be put back, the last that went first
  bool cancelled = false;
  std::string trouble;  // what is the matter with the log itself, a sentence; mostly empty
};

// One object for one undo, with no operation beside it; where another program is at one, nothing is done. It never
// replaces anything: something goes back only if it still stands where it was put, with the size and time that it had,
// and nothing stands in its old place.
class Undo {
 public:
  Undo(const FileSystem& files, FileChanges& changes, UndoLog& log);

  // Walks the step from its end. What was put back, never went, or is told to have gone or changed where it was put,
  // is dropped from the log; the rest stays. Progress and cancel as in operations; the question isn't asked.
  UndoResult Run(OperationWatch& watch);

 private:
  class Client;
  Trouble Return(const UndoEntry& entry, OperationWatch& watch);
  Trouble ReturnIntoItsFolder(const UndoEntry& entry, OperationWatch& watch);
  bool MayComeBack(const UndoEntry& entry) const;
  bool Take(const UndoEntry& entry, OperationWatch& watch, UndoResult& result);
  void Walk(std::vector<UndoEntry>& entries, OperationWatch& watch, UndoResult& result);
  void RunAlone(OperationWatch& watch, UndoResult& result);

  const FileSystem& files_;
  FileChanges& changes_;
  UndoLog& log_;
  const UndoLog::Use use_{log_};
  Destination destination_;
  FileCopier copier_;
  OperationProgress progress_;
  std::vector<std::string> stuck_;  // folders that could not be put back but may be later
  std::vector<UndoEntry> kept_;     // what could not be put back, the last that went first
};

}  // namespace tresmor
