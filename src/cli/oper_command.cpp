#include "cli/oper_command.h"

#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "cli/checked_operations.h"
#include "cli/console_watch.h"
#include "cli/marked_check.h"
#include "cli/output.h"
#include "cli/readable.h"
#include "cli/scope_rows.h"
#include "cli/session_io.h"
#include "cli/typed_path.h"
#include "cli/visible.h"
#include "fileops/transfer_marked.h"
#include "results/marks.h"
#include "results/rows.h"
#include "search/file_helpers.h"
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

// `destination` is the whole path of the folder, here and below; empty if there is none.
EmptiedFolders EmptiedBy(const ResultLists& results, const OperOptions& options, const std::string& destination,
                         const ConsolePorts& ports) {
  if (!options.removeEmpty) return {};
  EmptiedFolders emptied = FoldersToEmpty(MarkedPaths(results.List(options.list)), ports.files, ports.shell,
                                          {destination, options.structure});
  // The session is written when all is over.
  const std::string session = TypedPath(options.session, ports.workingFolder);
  std::erase_if(emptied, [&](const auto& folder) { return ports.shell.MustStay(folder.second, session); });
  return emptied;
}

// A line for each folder that would go, in the order of their paths.
std::string FoldersThatGo(const EmptiedFolders& emptied, const OperOptions& options) {
  if (emptied.empty()) return "";
  std::set<std::string> lines;
  for (const auto& [key, path] : emptied) lines.insert("  " + Visible(path) + "\n");
  std::string text = CountOf(static_cast<std::int64_t>(emptied.size()), "folder") +
                     " would then be moved to the trash, with all sub-folders" +
                     (IsChecked(options) ? ", unless a file in them is skipped:\n" : ":\n");
  for (const std::string& line : lines) text += line;
  return text;
}

// A line for each group that would keep no file, by its number and its first file.
std::string GroupsThatGo(const ResultLists& results, const OperOptions& options, MarkedCheck check) {
  const std::vector<RowGroup> groups = check.GroupsThatGo();
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

// What the marked rows of a list stand for. A path counts once, in however many rows it stands.
struct MarkedFiles {
  std::int64_t count = 0;
  std::int64_t bytes = 0;
  std::int64_t none = 0;  // paths of a damaged session that can be no file's
};

MarkedFiles CountFiles(const ListView& lst) {
  MarkedFiles marked;
  ResultReader reader(lst);
  std::unordered_set<std::string> known;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!reader.Marked(row)) continue;
    const auto [path, isNew] = known.emplace(reader.Path(row));
    if (!isNew) continue;
    ++marked.count;
    marked.bytes += reader.Size(row);
    marked.none += HasNul(*path) ? 1 : 0;
  }
  return marked;
}

std::string PathsThatFail(const MarkedFiles& marked) {
  if (marked.none == 0) return "";
  return std::to_string(marked.none) + " of them would fail: there is a NUL in the path.\n";
}

int PrintPlan(const ResultLists& results, const OperOptions& options, const std::string& destination,
              const ConsolePorts& ports) {
  const ListView& lst = results.List(options.list);
  const MarkedFiles marked = CountFiles(lst);
  if (marked.count == 0) {
    Print("No file of this list is marked, so there is nothing to do; 'tresmor-cli mark' marks files.\n", ports);
    return kRanThrough;
  }
  std::string text =
      Amount(marked.count, marked.bytes) + " would be " + WhatIsDone(options) + ".\n" + PathsThatFail(marked);
  if (options.TakesAway()) {
    EmptiedFolders emptied = EmptiedBy(results, options, destination, ports);
    text += FoldersThatGo(emptied, options);
    text += GroupsThatGo(results, options, {results, options.list, ports.files, std::move(emptied)});
  }
  Print(text + "Nothing was done. Give --yes to do it.\n", ports);
  return kRanThrough;
}

// One command that was told to be carried out.
class OperRun {
 public:
  OperRun(ResultLists& results, const OperOptions& options, std::string destination, const ConsolePorts& ports)
      : lst_(results.List(options.list)),
        options_(options),
        destination_(std::move(destination)),
        ports_(ports),
        check_(results, options.list, ports.files, EmptiedBy(results, options, destination_, ports)) {}

  // Does it, tells what went wrong, and takes rows whose files have gone off the list. Gives the exit status.
  int Run() {
    marked_ = CountFiles(lst_).count;
    const auto step = operations_.BeginUndoStep();
    Operate();
    ports_.err.ClearProgress();
    const bool cancelled = operations_.WasCancelled() || cleanUp_.WasCancelled();
    if (cancelled) ports_.err.Say(CancelText());
    PruneMissing(lst_, ports_.files, ports_.events);
    if (cancelled) return kCancelled;
    return skipped_ == 0 && !operations_.HasFailed() && !cleanUp_.HasFailed() ? kRanThrough : kNotAllDone;
  }

  std::string Summary() const {
    const std::int64_t left = marked_ - skipped_ - operations_.Files();
    std::string text = Amount(operations_.Files(), operations_.Bytes()) + " " + WhatIsDone(options_);
    if (skipped_ > 0) text += ", " + std::to_string(skipped_) + " skipped";
    if (left > 0) text += ", " + std::to_string(left) + " not";
    return text + ".\n";
  }

 private:
  // On the operations' thread, while this one waits.
  bool MayGo(const std::string& path) {
    const CheckRules rules{.verify = !options_.noVerify, .allowAll = options_.allowAll};
    const auto objection = check_.ObjectionTo(path, rules, ports_.interrupted);
    if (!objection) return true;
    ++skipped_;
    ports_.err.Say("Skipped '" + path + "': no file of its group " +
                   (*objection == Objection::NoneStays ? "would stay." : "that stays was found equal."));
    return false;
  }
  void Operate() {
    FrmFileProgress frm;
    FileJob job(frm, ports_.events, ports_.err);
    PreviewPane preview;
    const TransferPorts ports{ports_.files, ports_.shell, operations_, ports_.err};
    Transfer(job, preview, ports)
        .TransferMarked(lst_, {.wFunc = FunctionOf(options_.action),
                               .bUndo = options_.action == FileAction::Trash,
                               .bDirStruct = options_.structure,
                               .bYesToAll = true,
                               .destPath = destination_});
    if (options_.removeEmpty) CleanUp(job, preview);
  }
  // The marked rows whose folders are no folders to clean up: marked files that have stayed lie below them, though none
  // may stand in the folder itself, or nobody foresaw that they come out empty.
  std::vector<std::int32_t> RowsToPassOver() {
    std::vector<std::int32_t> marked;
    for (std::int32_t row = 1; row <= lst_.Count(); ++row) {
      if (!lst_.Checked(row)) continue;
      marked.push_back(row);
      if (ExistsFile(ports_.files, PathOf(lst_, row))) check_.HoldFoldersOf(PathOf(lst_, row));
    }
    std::erase_if(marked, [this](std::int32_t row) { return check_.MayEmptyFolderOf(PathOf(lst_, row)); });
    return marked;
  }
  // Also after a cancel, for what has gone by then; another one ends the program.
  void CleanUp(FileJob& job, PreviewPane& preview) {
    cancelledBefore_ = watch_.Cancelled();
    const std::vector<std::int32_t> passedOver = RowsToPassOver();
    for (const std::int32_t row : passedOver) lst_.SetChecked(row, false);
    const TransferPorts ports{ports_.files, ports_.shell, cleanUp_, ports_.err};
    Transfer(job, preview, ports).RmEmptyDirs(lst_, {destination_, options_.structure}, true);
    for (const std::int32_t row : passedOver) lst_.SetChecked(row, true);
  }
  std::string CancelText() const {
    if (!operations_.CancelText().empty()) return operations_.CancelText();
    return cleanUp_.CancelText().empty() ? "Cancelled." : cleanUp_.CancelText();
  }

  ListView& lst_;
  const OperOptions& options_;
  const std::string destination_;
  const ConsolePorts& ports_;
  MarkedCheck check_;
  ConsoleWatch watch_{ports_};
  CheckedOperations checked_{ports_.operations, [this](const std::string& path) { return MayGo(path); }};
  ConsoleOperations operations_{IsChecked(options_) ? checked_ : ports_.operations, watch_};  // on the files
  bool cancelledBefore_ = false;                                                              // the clean-up
  ConsoleWatch cleanUpWatch_{ports_, [this] { return !cancelledBefore_ && ports_.interrupted(); }};
  ConsoleOperations cleanUp_{ports_.operations, cleanUpWatch_};  // on their folders
  std::int64_t marked_ = 0;
  std::int64_t skipped_ = 0;
};

std::string WhatIsBack(const UndoResult& result) {
  const bool nothing = result.putBack == 0 && result.left.empty() && result.trouble.empty() && !result.cancelled;
  return nothing ? "There is nothing to undo.\n" : CountOf(result.putBack, "item") + " put back.\n";
}

}  // namespace

int OperCommand(const OperOptions& options, const ConsolePorts& ports) {
  if (!options.yes) ports.nothingToCancel();
  const std::string destination =
      options.HasDestination() ? ExistingFolder(options.destination, {ports.files, ports.shell, ports.workingFolder})
                               : "";
  SavedResult saved(ports);
  if (!saved.Load(options.session, ports)) return kFailed;
  if (!options.yes) return PrintPlan(saved.frm.results, options, destination, ports);
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
  Print(WhatIsBack(result), ports);
  if (!result.trouble.empty()) return kFailed;
  if (result.cancelled) return kCancelled;
  return result.left.empty() ? kRanThrough : kNotAllDone;
}

}  // namespace tresmor
