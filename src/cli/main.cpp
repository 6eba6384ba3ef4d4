#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/console.h"
#include "cli/interrupt.h"
#include "platform/posix/event_queue_posix.h"
#include "platform/posix/posix_file_changes.h"
#include "platform/posix/posix_file_system.h"
#include "platform/posix/posix_file_writer.h"
#include "platform/posix/posix_shell.h"
#include "platform/posix/posix_trash_places.h"
#include "platform/posix/trash_folder.h"
#include "transfer/file_executor.h"

namespace {

// One that takes the sequences which redraw a line.
tresmor::ErrorDevice DeviceOfStderr() {
  const char* term = std::getenv("TERM");
  const bool redraws = isatty(STDERR_FILENO) != 0 && term != nullptr && std::strcmp(term, "dumb") != 0;
  return redraws ? tresmor::ErrorDevice::Terminal : tresmor::ErrorDevice::File;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  std::signal(SIGPIPE, SIG_IGN);
  tresmor::CatchInterrupts();
  const tresmor::PosixFileSystem files;
  const tresmor::PosixFileWriter writer;
  const tresmor::PosixShell shell;
  tresmor::PosixEventQueue events;
  const tresmor::UserFolders folders = tresmor::FindUserFolders();
  tresmor::PosixFileChanges changes;
  tresmor::PosixTrashPlaces trash(tresmor::HomeTrash(folders));
  tresmor::UndoLog undoLog(files, changes, tresmor::FindUndoLog(folders));
  tresmor::FileExecutor operations(files, changes, trash, undoLog);
  tresmor::ErrorOutput err(stderr, DeviceOfStderr());
  std::error_code gone;  // leaves no working folder
  const std::string workingFolder = std::filesystem::current_path(gone).string();
  return tresmor::RunConsole(argc, argv,
                             {files, writer, shell, events, operations, changes, undoLog, workingFolder, stdout,
                              isatty(STDOUT_FILENO) != 0, err, tresmor::Interrupted, tresmor::ReleaseInterrupts});
}
