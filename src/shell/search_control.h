// A search from the controls of the main window, and back into them.
#pragma once

#include <cstdint>

#include "base/stop_token.h"
#include "desk/progress.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "platform/version_reader.h"
#include "shell/frm_main.h"

namespace tresmor {

struct SearchRequest;

struct SearchControlPorts {
  const FileSystem& files;
  const Shell& shell;
  const VersionReader& versions;
  EventQueue& events;
  Dialogs& dialogs;
};

// Interface thread.
class SearchControl {
 public:
  // `progress` is bound to the form's own timer, panel and bar.
  SearchControl(FrmMain& frm, Progress& progress, const SearchControlPorts& ports)
      : frm_(frm), progress_(progress), ports_(ports) {}
  SearchControl(const SearchControl&) = delete;
  SearchControl& operator=(const SearchControl&) = delete;

  // Empties the result lists, searches what the controls say, and leaves the lists sorted, coloured and counted. Runs
  // on all cores while this thread pumps its events, the inputs locked; it must be told by CancelSearch, from such an
  // event, to end early, and then keeps what it found so far.
  // Throws the search's Failure; the lists then hold what came before it, uncoloured but counted, and all else is as
  // before a search.
  void RunSearch();

  // Makes a running search end soon; without one it does nothing.
  void CancelSearch();
  // Asks the user whether to do that. The search stands still while the question is open.
  void AskCancelSrch();

  // Frees the inputs that a search keeps locked while it runs.
  void UnlockSrchUi();

  // Whether rows get the dates of their files. For who shows none: a search is faster without.
  bool readsDates = true;

  // What the last search tells as the number of files searched.
  std::int64_t SrchFileCnt() const { return srchFileCnt_; }

 private:
  // Ends what shows the progress.
  void Rest();
  void LockSrchUi();
  std::int64_t RunOnWorker(const SearchRequest& request);

  FrmMain& frm_;
  Progress& progress_;
  const SearchControlPorts ports_;
  StopToken stop_;
  std::int64_t srchFileCnt_ = 0;
};

}  // namespace tresmor
