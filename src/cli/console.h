// The console program without its main().
#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "cli/error_output.h"
#include "platform/event_queue.h"
#include "platform/file_changes.h"
#include "platform/file_operations.h"
#include "platform/file_system.h"
#include "platform/file_writer.h"
#include "platform/shell.h"
#include "transfer/undo_log.h"

namespace tresmor {

enum ExitStatus : int {
  kRanThrough = 0,
  kReadErrors = 1,
  kNotAllDone = 1,
  kWrongUse = 2,
  kFailed = 3,
  kCancelled = 130
};

struct ConsolePorts {
  const FileSystem& files;
  const FileWriter& writer;
  const Shell& shell;
  EventQueue& events;
  FileOperations& operations;
  FileChanges& changes;
  UndoLog& undoLog;           // that the operations write
  std::string workingFolder;  // as TypedPath takes it
  std::FILE* out;
  bool outIsTerminal = false;
  ErrorOutput& err;
  std::function<bool()> interrupted;      // any thread; asked while a search or operation runs, true cancels it
  std::function<void()> nothingToCancel;  // from here on the first signal may end the program
};

// Does what the command line says and gives the exit status.
int RunConsole(int argc, const char* const* argv, const ConsolePorts& ports);

}  // namespace tresmor
