// A search from the console: what goes on beside it, and what comes after it.
#pragma once

#include "cli/console.h"
#include "cli/options.h"
#include "cli/scope_rows.h"
#include "controls/timer.h"
#include "desk/progress.h"
#include "results/pe_version.h"
#include "shell/frm_main.h"
#include "shell/search_control.h"

namespace tresmor {

class ConsoleSearch {
 public:
  // Both arguments outlive it.
  ConsoleSearch(const SearchOptions& options, const ConsolePorts& ports);
  ConsoleSearch(const ConsoleSearch&) = delete;
  ConsoleSearch& operator=(const ConsoleSearch&) = delete;

  // What is to be searched stands here.
  FrmMain& Form() { return frm_; }
  Progress& ProgressOf() { return progress_; }

  // Searches, saves and prints what was found and gives the exit status. Throws WrongUse, WriteFailure and the search's
  // Failure.
  int Run(const LeftOutWords& words);

 private:
  bool ShowsProgress() const;
  const ListView& ReadErrors() const { return frm_.results.List(ResultList::ReadErrors); }

  void Search();
  void CancelIfInterrupted();
  bool Save();
  void RemarkOnEnd(const std::string& message);
  void RemarkOnReadErrors();

  const SearchOptions& options_;
  const ConsolePorts& ports_;
  Timer tmrInterrupt_;
  FrmMain frm_;
  Progress progress_{ports_.events, frm_.tmrProgress, frm_.msgBar, frm_.pbMain};
  PeVersionReader versions_{ports_.files};
  SearchControl control_{frm_, progress_, {ports_.files, ports_.shell, versions_, ports_.events, ports_.err}};
};

}  // namespace tresmor
