// The commands on one file: that of the row with the focus in the list on show.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "desk/options.h"
#include "fileops/file_job.h"
#include "platform/dialogs.h"
#include "platform/file_changes.h"
#include "platform/file_operations.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "results/result_lists.h"

namespace tresmor {

struct SingleFilePorts {
  const FileSystem& files;
  FileChanges& changes;
  FileOperations& operations;
  const Shell& shell;
  Dialogs& dialogs;
  FileJob& job;
};

// Interface thread.
class SingleFile {
 public:
  SingleFile(ResultLists& results, const Options& options, const SingleFilePorts& ports)
      : results_(results), options_(options), ports_(ports) {}
  SingleFile(const SingleFile&) = delete;
  SingleFile& operator=(const SingleFile&) = delete;

  // Actions of the main window. Each asks for a row in a box where none has the focus.

  // Asks for a new name, gives it to the file and writes it into the row. A name with folders in front leads there from
  // the file's own folder, and stands in the row as it was typed. An existing file is never replaced: where the file
  // system can't rename without that, the file is copied as in a move to another disk, by a job. One box tells whatever
  // fails, be it with the file, which leaves the row, or with the row.
  void RenFile();
  // With the program that the desktop has for it. Failures show nothing, here and in the next.
  void OpenFile();
  // With the user's editor.
  void OpenEditor();

 private:
  void WithPath(const std::function<void(const std::string& path)>& use);
  void Rename(const std::string& path);
  // To the file, and to its row, which stood at `row` while events were let in. Whether that is done.
  bool GiveName(ListView& lst, std::int32_t row, const std::string& path, const std::string& name);
  bool MoveByCopy(const std::string& from, const std::string& to);

  ResultLists& results_;
  const Options& options_;
  const SingleFilePorts ports_;
};

}  // namespace tresmor
