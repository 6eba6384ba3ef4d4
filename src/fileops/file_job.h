// Work on files that takes its time: it runs on a thread of its own, the interface thread stays alive, and a form shows
// how far it is and lets the user cancel it.
#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "base/stop_token.h"
#include "fileops/frm_file_progress.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_operations.h"

namespace tresmor {

// Interface thread.
class FileJob {
 public:
  // Takes the form's handlers for itself.
  FileJob(FrmFileProgress& frm, EventQueue& events, Dialogs& dialogs);
  FileJob(const FileJob&) = delete;
  FileJob& operator=(const FileJob&) = delete;

  using Work = std::function<void(OperationWatch& watch)>;
  // Shows the form under this title, does `work` and returns when it is over. What it asks to be confirmed becomes a
  // box, and it stands still meanwhile. One at a time. Throws what the work or an event throws.
  void Run(const std::string& title, const Work& work);

 private:
  class Watch;

  void SetProgress(const OperationProgress& progress);
  OperationProgress Latest() const;
  bool Confirm(const ShFileOpStruct& operation, std::int64_t count);

  FrmFileProgress& frm_;
  EventQueue& events_;
  Dialogs& dialogs_;
  StopToken stop_;
  mutable std::mutex mutex_;
  OperationProgress latest_;
};

}  // namespace tresmor
