// From marked rows to operations on their files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/list_view.h"
#include "fileops/emptied_folders.h"
#include "fileops/file_job.h"
#include "platform/dialogs.h"
#include "platform/file_operations.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "results/preview.h"

namespace tresmor {

// What of an operation's record the caller decides; the meaning of its fields is that of the flags and the record.
struct FileOper {
  std::uint32_t wFunc = 0;
  std::string pFrom{};
  std::string pTo{};
  bool bUndo = false;
  bool bMultiDest = false;
  bool bYesToAll = false;
  std::string destination{};
};

struct TransferOptions {
  std::uint32_t wFunc = 0;
  bool bUndo = false;
  bool bDirStruct = false;  // keep the folders of the sources below the destination
  bool bYesToAll = false;
  std::string destPath{};  // of a move or copy
};

struct TransferPorts {
  const FileSystem& files;
  const Shell& shell;
  FileOperations& operations;
  Dialogs& dialogs;
};

// Interface thread. Each call pumps events while its work runs as a job; rows are read before.
class Transfer {
 public:
  Transfer(FileJob& job, PreviewPane& preview, const TransferPorts& ports)
      : job_(job), preview_(preview), ports_(ports) {}

  // Does one operation, whose newcomers are renamed where a name is taken, and gives its code, 0 for done. Any other is
  // told in a box, a cancel too.
  std::int32_t ShFileOper(const FileOper& oper);

  // Deletes, moves or copies the files of the marked rows, 2,000 at a time, of which each path is done once, and gives
  // the code of the last operation, 0 if nothing is marked. An operation that fails keeps none of the next from being
  // tried, and its code is lost unless it is the last. A row with a NUL in its path fails, since no file has one.
  std::int32_t TransferMarked(const ListView& lst, const TransferOptions& options);

  // Moves the folders of marked rows that hold no file any more to the trash, with the sub-folders in them, in one
  // operation that names a folder once for each of its rows. Folders that must stay do: above all those that hold a
  // place where the transfer before brought a file of these rows, or would have. So do links to folders and what they
  // lead to. A cancel while folders are looked for leaves them all, and is told like that of an operation.
  void RmEmptyDirs(const ListView& lst, const BroughtTo& broughtTo, bool bYesToAll);

 private:
  // In a box, unless it is done. Gives the code.
  std::int32_t Tell(const OperationResult& result) const;
  // As a list of an operation, unless it is cancelled.
  std::string EmptyFoldersOf(const std::vector<std::string>& paths, const BroughtTo& broughtTo,
                             OperationWatch& watch) const;

  FileJob& job_;
  PreviewPane& preview_;
  const TransferPorts ports_;
};

}  // namespace tresmor
