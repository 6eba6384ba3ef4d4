#include "cli/oper_command.h"

#include <algorithm>

#include "cli/console_watch.h"
#include "cli/marked_check.h"
#include "cli/output.h"
#include "cli/readable.h"
#include "cli/scope_rows.h"
#include "cli/session_io.h"
#include "cli/visible.h"
#include "fileops/transfer_marked.h"
#include "results/marks.h"
#include "results/rows.h"
#include "transfer/undo.h"

namespace tresmor {
namespace {

// The end of a sentence about files.
std::string WhatIsDone(const OperOptions& options) {
  switch (options.action) {
    case FileAction::Trash:
      return "moved to the trash";
    case FileAction::Delete:
      return "deleted for good";
    case FileAction::Move:
      return "moved to '" + Visible(options.destination) + "'";
    case FileAction::Copy:
      break;
  }
  return "copied to '" + Visible(options.destination) + "'";
}

std::uint32_t FunctionOf(FileAction action) {
  if (action == FileAction::Move) return FO_MOVE;
  return action == FileAction::Copy ? FO_COPY : FO_DELETE;
}

std::string Amount(std::int64_t files, std::int64_t bytes) {
  return CountOf(files, "file") + " (" + ReadableSize(bytes) + ")";
}

void Print(const std::string& text, const ConsolePorts& ports) {
  Output out(ports.out);
  out.Write(text);
  out.Flush();
}

// Whether files are looked at once more before they go.
bool IsChecked(const OperOptions& options) { return options.TakesAway() && options.list == ResultList::Duplicates; }

// A line for each group that would keep no file, by its number and its first file.
std::string GroupsThatGo(const ResultLists& results, const OperOptions& options, const FileSystem& files) {
  const std::vector<RowGroup> groups = MarkedCheck(results, options.list, files).GroupsThatGo();
  ResultReader reader(results.List(options.list));
  std::string lines;
  std::int64_t running = 0;
  auto next = groups.begin();
  ForEachGroup(results, options.list, [&](RowGroup group) {
    ++running;
    if (next == groups.end() || next->first != group.first) return;
    ++next;
    const auto number = GroupNumber(reader, options.list, group, running);
    lines += "  group " + std::to_string(number.value()) + " of " + CountOf(group.Rows(), "file") + ": " +
             Visible(reader.Path(group.first)) + "\n";
  });
  if (groups.empty()) return lines;
  const bool skips = IsChecked(options) && !options.allowAll;
  return CountOf(static_cast<std::int64_t>(groups.size()), "group") + " would keep no file" +
         (skips ? ", so that they are skipped without --allow-all:\n" : ":\n") + lines;
}

int PrintPlan(const ResultLists& results, const OperOptions& options, const ConsolePorts& ports) {
  const MarkedRows marked = CountMarked(results.List(options.list));
  std::string text = Amount(marked.count, marked.bytes) + " would be " + WhatIsDone(options) + ".\n";
  if (options.TakesAway()) text += GroupsThatGo(results, options, ports.files);
  Print(text + "Nothing was done. Give --yes to do it.\n", ports);
  return kRanThrough;
}

// One command that was told to be carried out.
class OperRun {
 public:
  // `destination` is the whole path of the folder; empty if there is none.
  OperRun(ResultLists& results, const OperOptions& options, std::string destination, const ConsolePorts& ports)
      : results_(results),
        lst_(results.List(options.list)),
        options_(options),
        destination_(std::move(destination)),
        ports_(ports) {}

  // Does it, tells what went wrong, and takes rows whose files have gone off the list. Gives the exit status.
  int Run() {
    marked_ = CountMarked(lst_).count;
    if (IsChecked(options_)) Skip();
    SetSkipped(false);
    if (!watch_.Cancelled()) Operate();
    SetSkipped(true);
    ports_.err.ClearProgress();
    if (watch_.Cancelled()) ports_.err.Say(operations_.CancelText().empty() ? "Cancelled." : operations_.CancelText());
    PruneMissing(lst_, ports_.files, ports_.events);
    if (watch_.Cancelled()) return kCancelled;
    return skipped_.empty() && !operations_.HasFailed() ? kRanThrough : kNotAllDone;
  }

  std::string Summary() const {
    const auto skipped = static_cast<std::int64_t>(skipped_.size());
    const std::int64_t left = marked_ - skipped - files_;
    std::string text = Amount(files_, bytes_) + " " + WhatIsDone(options_);
    if (skipped > 0) text += ", " + std::to_string(skipped) + " skipped";
    if (left > 0) text += ", " + std::to_string(left) + " not";
    return text + ".\n";
  }

 private:
  void Skip() {
    const CheckRules rules{.verify = !options_.noVerify, .allowAll = options_.allowAll};
    skipped_ = MarkedCheck(results_, options_.list, ports_.files).RowsToSkip(rules, watch_);
    ports_.err.ClearProgress();
    for (const SkippedRow& skipped : skipped_) {
      ports_.err.Say("Skipped '" + PathOf(lst_, skipped.row) + "': no file of its group " +
                     (skipped.why == SkippedRow::Why::NoneStays ? "would stay." : "that stays was found equal."));
    }
  }
  void SetSkipped(bool marked) {
    for (const SkippedRow& skipped : skipped_) lst_.SetChecked(skipped.row, marked);
  }
  void Operate() {
    FrmFileProgress frm;
    FileJob job(frm, ports_.events, ports_.err);
    PreviewPane preview;
    Transfer transfer(job, preview, {ports_.files, ports_.shell, operations_, ports_.err});
    operations_.BeginUndoStep();
    transfer.TransferMarked(lst_, {.wFunc = FunctionOf(options_.action),
                                   .bUndo = options_.action == FileAction::Trash,
                                   .bDirStruct = options_.structure,
                                   .bYesToAll = true,
                                   .destPath = destination_});
    files_ = operations_.Files();
    bytes_ = operations_.Bytes();
    // Copies leave no folder empty.
    const bool empties = options_.removeEmpty && options_.TakesAway() && !watch_.Cancelled();
    if (empties) transfer.RmEmptyDirs(lst_, destination_, true);
  }

  ResultLists& results_;
  ListView& lst_;
  const OperOptions& options_;
  const std::string destination_;
  const ConsolePorts& ports_;
  ConsoleWatch watch_{ports_};
  ConsoleOperations operations_{ports_.operations, watch_};
  std::vector<SkippedRow> skipped_;
  std::int64_t marked_ = 0;
  std::int64_t files_ = 0;
  std::int64_t bytes_ = 0;
};

}  // namespace

int OperCommand(const OperOptions& options, const ConsolePorts& ports) {
  if (!options.yes) ports.nothingToCancel();
  const std::string destination =
      options.HasDestination() ? ExistingFolder(options.destination, {ports.files, ports.shell, ports.workingFolder})
                               : "";
  SavedResult saved(ports);
  if (!saved.Load(options.session, ports)) return kFailed;
  if (!options.yes) return PrintPlan(saved.frm.results, options, ports);
  OperRun run(saved.frm.results, options, destination, ports);
  const int status = run.Run();
  const bool isSaved = SaveSession(saved.frm, options.session, ports);
  ports.nothingToCancel();
  Print(run.Summary(), ports);
  return isSaved ? status : kFailed;
}

int UndoCommand(const ConsolePorts& ports) {
  ConsoleWatch watch(ports);
  const UndoResult result = Undo(ports.files, ports.changes, ports.undoLog).Run(watch);
  ports.nothingToCancel();
  ports.err.ClearProgress();
  for (const UndoResult::Left& left : result.left) {
    ports.err.Say("'" + left.path + "' was not put back: " + left.reason + ".");
  }
  if (!result.trouble.empty()) ports.err.Say(result.trouble);
  if (result.cancelled) ports.err.Say("Cancelled. What is not back yet is put back by the next undo.");
  Print(CountOf(result.putBack, "item") + " put back.\n", ports);
  if (!result.trouble.empty()) return kFailed;
  if (result.cancelled) return kCancelled;
  return result.left.empty() ? kRanThrough : kNotAllDone;
}

}  // namespace tresmor
