// The console program without its main().
#pragma once

#include <cstdio>
#include <functional>
#include <string>

#include "cli/error_output.h"
#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "platform/file_writer.h"
#include "platform/shell.h"

namespace tresmor {

enum ExitStatus : int { kRanThrough = 0, kReadErrors = 1, kWrongUse = 2, kFailed = 3, kCancelled = 130 };

struct ConsolePorts {
  const FileSystem& files;
  const FileWriter& writer;
  const Shell& shell;
  EventQueue& events;
  std::string workingFolder;  // absolute
  std::FILE* out;
  bool outIsTerminal = false;
  ErrorOutput& err;
  std::function<bool()> interrupted;     // asked now and then while a search runs; true cancels it
  std::function<void()> searchHasEnded;  // from here on there is nothing to cancel
};

// Does what the command line says and gives the exit status.
int RunConsole(int argc, const char* const* argv, const ConsolePorts& ports);

}  // namespace tresmor
