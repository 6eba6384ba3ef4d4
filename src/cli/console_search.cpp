#include "cli/console_search.h"

#include <algorithm>

#include "cli/formats.h"
#include "cli/result_reader.h"
#include "cli/session_io.h"
#include "desk/bind_timer.h"

namespace tresmor {
namespace {

constexpr int kInterruptPoll = 50;  // milliseconds
constexpr std::int32_t kReadErrorsNamed = 10;

}  // namespace

ConsoleSearch::ConsoleSearch(const SearchOptions& options, const ConsolePorts& ports)
    : options_(options), ports_(ports), tmrInterrupt_(kInterruptPoll) {
  BindTimer(frm_.tmrProgress, ports_.events);
  BindTimer(tmrInterrupt_, ports_.events);
  tmrInterrupt_.OnTick = [this] { CancelIfInterrupted(); };
  if (ShowsProgress()) {
    frm_.tmrProgress.OnTick = [this, tick = frm_.tmrProgress.OnTick] {
      tick();
      ports_.err.ShowProgress(frm_.msgBar.Text());
    };
  }
}

int ConsoleSearch::Run(const LeftOutWords& words) {
  const ScopePorts scope{ports_.files, ports_.shell, ports_.workingFolder};
  if (!options_.save.empty()) CheckFolderOfFile(options_.save, scope);
  if (!options_.quiet) {
    for (const std::string& sentence : RowsLeftOut(frm_, scope, words)) ports_.err.Say(sentence);
  }
  frm_.chkVer.Value = options_.versions;
  control_.readsDates = !options_.PrintsGroups() || !options_.save.empty();
  const double start = ports_.events.Seconds();
  Search();
  const double seconds = ports_.events.Seconds() - start;
  ports_.err.ClearProgress();
  const std::string message = frm_.msgBar.Text();
  if (!options_.quiet) RemarkOnEnd(message);
  const bool saved = options_.save.empty() || Save();
  Output out(ports_.out);
  Print(out, options_, {frm_.results, SearchEnd{control_.SrchFileCnt(), seconds, progress_.CancelSrch, message}},
        ports_.outIsTerminal ? Names::MadeVisible : Names::AsTheyAre);
  if (!saved) return kFailed;
  if (progress_.CancelSrch) return kCancelled;
  return ReadErrors().Count() > 0 ? kReadErrors : kRanThrough;
}

bool ConsoleSearch::ShowsProgress() const {
  if (options_.progress == ProgressWhen::Auto) return ports_.err.IsTerminal() && !options_.quiet;
  return options_.progress == ProgressWhen::Always;
}

void ConsoleSearch::Search() {
  tmrInterrupt_.Enabled = true;
  control_.RunSearch();
  tmrInterrupt_.Enabled = false;
  // One that came too late to stop anything is answered like one that came in time.
  if (ports_.interrupted()) progress_.CancelSrch = true;
  ports_.nothingToCancel();
}

void ConsoleSearch::CancelIfInterrupted() {
  if (progress_.CancelSrch || !ports_.interrupted()) return;
  control_.CancelSearch();
  if (ShowsProgress()) ports_.err.ShowProgress(frm_.msgBar.Text());
}

bool ConsoleSearch::Save() {
  frm_.session.SaveSrchResult = true;
  return SaveSession(frm_, options_.save, ports_);
}

void ConsoleSearch::RemarkOnEnd(const std::string& message) {
  if (progress_.CancelSrch) ports_.err.Say("Cancelled. What was found until then is printed.");
  if (ShowsProgress() && options_.format != OutputFormat::Text) ports_.err.Say(message);
  if (options_.PrintsGroups()) RemarkOnReadErrors();
}

// The other formats print them.
void ConsoleSearch::RemarkOnReadErrors() {
  ResultReader reader(ReadErrors());
  const std::int32_t rows = ReadErrors().Count();
  for (std::int32_t row = 1; row <= std::min(rows, kReadErrorsNamed); ++row) {
    ports_.err.Say("Can't read '" + std::string(reader.Path(row)) + "'.");
  }
  if (rows > kReadErrorsNamed) {
    ports_.err.Say("Can't read " + std::to_string(rows - kReadErrorsNamed) +
                   " more files; the formats text, json and csv tell them all.");
  }
}

}  // namespace tresmor
