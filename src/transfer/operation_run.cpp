#include "transfer/operation_run.h"

#include <utility>

namespace tresmor {

namespace {

constexpr std::size_t kNotedAtOnce = 256;

std::string Others(std::int64_t count) { return count == 0 ? "" : " " + std::to_string(count) + " more failed too."; }

}  // namespace

OperationRun::OperationRun(const TransferTools& tools, const OperationPlan& plan, OperationWatch& watch)
    : tools_(tools), plan_(plan), watch_(watch) {
  progress_.allFiles = static_cast<std::int64_t>(plan.items.size());
}

bool OperationRun::Cancelled() {
  cancelled_ = cancelled_ || watch_.Cancelled();
  return cancelled_;
}

bool OperationRun::Passed(std::int64_t bytes) {
  progress_.bytes += bytes;
  watch_.Progress(progress_);
  return !Cancelled();
}

void OperationRun::Measure() {
  for (const PlanItem& item : plan_.items) {
    if (Cancelled()) return;
    FileStat stat;
    const bool there = tools_.files.Stat(item.from, stat) == Errors::None;
    folders_.push_back(there && stat.kind == EntryKind::Folder);
    if (there && stat.kind == EntryKind::File) progress_.allBytes += stat.size;
  }
}

void OperationRun::Prepare(Step& step, PathOperation& operation) {
  Task& task = step.task;
  step.trouble = task.item->trouble;
  if (!step.trouble) step.trouble = SourceTrouble(tools_.files.Stat(task.item->from, task.stat));
  if (step.trouble) return;
  task.entry = {task.item->from, {}, {}, task.stat.kind, task.stat.size, task.stat.modified};
  step.trouble = operation.Prepare(task);
}

// A folder comes alone: what of its content went before, and what goes with it, must be over when it is looked at.
std::vector<OperationRun::Step> OperationRun::NextSteps(PathOperation& operation) {
  std::vector<Step> steps;
  while (next_ < plan_.items.size() && steps.size() < kNotedAtOnce && !Cancelled()) {
    const bool folder = folders_[next_];
    if (folder && !steps.empty()) break;
    Step& step = steps.emplace_back();
    step.task.item = &plan_.items[next_++];
    Prepare(step, operation);
    if (folder) break;
  }
  return steps;
}

void OperationRun::Note(std::vector<Step>& steps) {
  std::vector<UndoEntry> entries;
  for (const Step& step : steps) {
    if (!step.trouble) entries.push_back(step.task.entry);
  }
  const Trouble trouble = tools_.log.Write(entries);
  for (Step& step : steps) {
    if (step.trouble) continue;
    step.trouble = trouble;
    step.noted = !trouble;
  }
}

bool OperationRun::WentWithItsFolder(const std::string& path) const {
  const PathStyle style = tools_.files.Style();
  std::string folder = ParentOf(path, style);
  for (std::string below = path; folder != below && !folder.empty(); folder = ParentOf(below, style)) {
    if (goneFolders_.contains(style.Key(folder))) return true;
    below = folder;
  }
  return false;
}

void OperationRun::Count(const Step& step, std::int64_t bytes) {
  const bool cancelled = step.trouble.code == OperationCode::Cancelled;
  const bool gone = step.trouble.code == OperationCode::NotFound && WentWithItsFolder(step.task.item->from);
  const bool done = !step.trouble || gone;
  progress_.bytes = bytes + (done && step.task.stat.kind == EntryKind::File ? step.task.stat.size : 0);
  progress_.files += done ? 1 : 0;
  if (done || cancelled) return;
  if (!first_) {
    first_ = step.trouble;
    firstPath_ = step.task.item->from;
  } else {
    ++othersFailed_;
  }
}

// Some time may have passed since the path was looked at, and what is gone for good has to be what was meant.
Trouble OperationRun::LookAgain(const Task& task) const {
  FileStat now;
  const Errors failure = tools_.files.Stat(task.item->from, now);
  if (failure != Errors::None) return SourceTrouble(failure);
  const FileStat& was = task.stat;
  const bool same =
      now.kind == was.kind && now.identity == was.identity && now.size == was.size && now.modified == was.modified;
  if (same) return {};
  return {OperationCode::Changed, "it was changed or replaced meanwhile"};
}

void OperationRun::Perform(Step& step, PathOperation& operation) {
  const std::int64_t bytes = progress_.bytes;
  progress_.path = step.task.item->from;
  watch_.Progress(progress_);
  if (!step.trouble && operation.TakesAway()) step.trouble = LookAgain(step.task);
  if (!step.trouble) {
    step.begun = true;
    step.trouble = operation.Perform(step.task);
  }
  if (!step.trouble && step.task.stat.kind == EntryKind::Folder) {
    goneFolders_.insert(tools_.files.Style().Key(step.task.item->from));
  }
  Count(step, bytes);
}

// A failure alone doesn't tell: the file may have gone all the same.
bool OperationRun::HasStayed(const Step& step) const {
  if (!step.begun) return true;
  FileStat now;
  return step.trouble && tools_.files.Stat(step.task.item->from, now) == Errors::None &&
         now.identity == step.task.stat.identity;
}

void OperationRun::Withdraw(const std::vector<Step>& steps) {
  std::vector<UndoEntry> stayed;
  for (const Step& step : steps) {
    if (step.noted && HasStayed(step)) stayed.push_back(step.task.entry);
  }
  tools_.log.Withdraw(stayed);
}

OperationResult OperationRun::Result(const PathOperation& operation) const {
  OperationResult result;
  const std::int64_t failed = othersFailed_ + (first_ ? 1 : 0);
  const bool cancelled = cancelled_ && progress_.files + failed < progress_.allFiles;
  if (cancelled) {
    result.code = OperationCode::Cancelled;
    result.description = "Cancelled: " + std::to_string(progress_.files) + " of " + std::to_string(progress_.allFiles) +
                         " were " + operation.PastParticiple() + ".";
  }
  if (!first_) return result;
  if (!cancelled) result.code = first_.code;
  if (cancelled) result.description += ' ';
  result.description += (firstPath_.empty() ? "A file without a name" : firstPath_) + " could not be " +
                        operation.PastParticiple() + ": " + first_.reason + "." + Others(othersFailed_);
  return result;
}

OperationResult OperationRun::Run(PathOperation& operation) {
  Measure();
  while (!Cancelled() && next_ < plan_.items.size()) {
    std::vector<Step> steps = NextSteps(operation);
    if (Cancelled()) break;
    if (operation.Undoable()) Note(steps);
    for (Step& step : steps) {
      if (Cancelled()) break;
      Perform(step, operation);
    }
    Withdraw(steps);
    tools_.names.ForgetPromises();
  }
  watch_.Progress(progress_);
  return Result(operation);
}

}  // namespace tresmor
