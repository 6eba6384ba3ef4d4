#include "cli/find_command.h"

#include <algorithm>

#include "cli/formats.h"
#include "cli/result_reader.h"
#include "cli/scope_rows.h"
#include "controls/timer.h"
#include "desk/bind_timer.h"
#include "platform/version_reader.h"
#include "shell/frm_main.h"
#include "shell/search_control.h"

namespace tresmor {
namespace {

constexpr int kInterruptPoll = 50;  // milliseconds
constexpr std::int32_t kReadErrorsNamed = 10;

// None of the formats has versions, so nobody asks for one.
class NoVersions final : public VersionReader {
 public:
  std::string GetFileVer(const std::string&) const override { return {}; }
};

class Find {
 public:
  Find(const FindOptions& options, const ConsolePorts& ports) : options_(options), ports_(ports) {
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

  int Run() {
    SetControls();
    if (!options_.quiet) RemarkOnRowsLeftOut();
    const double start = ports_.events.Seconds();
    Search();
    const double seconds = ports_.events.Seconds() - start;
    ports_.err.ClearProgress();
    if (!options_.quiet) RemarkOnEnd();
    Print({frm_.results, control_.SrchFileCnt(), seconds, progress_.CancelSrch, frm_.msgBar.Text()});
    if (progress_.CancelSrch) return kCancelled;
    return ReadErrors().Count() > 0 ? kReadErrors : kRanThrough;
  }

 private:
  bool PrintsText() const { return options_.format == OutputFormat::Text; }
  bool PrintsGroups() const {
    return options_.format == OutputFormat::Groups || options_.format == OutputFormat::Groups0;
  }
  bool ShowsProgress() const {
    if (options_.progress == ProgressWhen::Auto) return ports_.err.IsTerminal() && !options_.quiet;
    return options_.progress == ProgressWhen::Always;
  }
  ScopePorts Scope() const { return {ports_.files, ports_.shell, ports_.workingFolder}; }
  const ListView& ReadErrors() const { return frm_.results.List(ResultList::ReadErrors); }

  void SetControls() {
    for (int i = 0; i < kSrchTypes; ++i) frm_.lstSrchType.SetTicked(i, options_.types[static_cast<std::size_t>(i)]);
    frm_.chkTolerant.Value = options_.tolerant;
    frm_.chkHidden.Value = options_.hidden;
    frm_.chkProtectWinDir.Value = !options_.noProtect;
    AddScopeRows(frm_, options_, Scope());
  }

  void RemarkOnRowsLeftOut() {
    for (const std::string& sentence : RowsLeftOut(frm_, Scope())) ports_.err.Say(sentence);
  }

  void Search() {
    tmrInterrupt_.Enabled = true;
    control_.RunSearch();
    tmrInterrupt_.Enabled = false;
    ports_.searchHasEnded();
  }

  void CancelIfInterrupted() {
    if (progress_.CancelSrch || !ports_.interrupted()) return;
    control_.CancelSearch();
    if (ShowsProgress()) ports_.err.ShowProgress(frm_.msgBar.Text());
  }

  void RemarkOnEnd() {
    if (progress_.CancelSrch) ports_.err.Say("Cancelled. What was found until then is printed.");
    if (ShowsProgress() && !PrintsText()) ports_.err.Say(frm_.msgBar.Text());
    if (PrintsGroups()) RemarkOnReadErrors();
  }

  // The other formats print them.
  void RemarkOnReadErrors() {
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

  void Print(const FindResult& result) {
    Output out(ports_.out);
    const Names names = ports_.outIsTerminal ? Names::MadeVisible : Names::AsTheyAre;
    switch (options_.format) {
      case OutputFormat::Text:
        PrintText(out, options_, result);
        break;
      case OutputFormat::Groups:
        PrintGroups(out, result.lists, options_.ListOfGroups(), LineEnd::NewLine, names);
        break;
      case OutputFormat::Groups0:
        PrintGroups(out, result.lists, options_.ListOfGroups(), LineEnd::Nul, Names::AsTheyAre);
        break;
      case OutputFormat::Json:
        PrintJson(out, result);
        break;
      case OutputFormat::Csv:
        PrintCsv(out, result);
        break;
    }
    out.Flush();
  }

  const FindOptions& options_;
  const ConsolePorts& ports_;
  Timer tmrInterrupt_{kInterruptPoll};
  FrmMain frm_;
  Progress progress_{ports_.events, frm_.tmrProgress, frm_.msgBar, frm_.pbMain};
  NoVersions noVersions_;
  SearchControl control_{frm_, progress_, {ports_.files, ports_.shell, noVersions_, ports_.events, ports_.err}};
};

}  // namespace

int FindCommand(const FindOptions& options, const ConsolePorts& ports) { return Find(options, ports).Run(); }

}  // namespace tresmor
