#include "transfer/undo.h"

#include <algorithm>
#include <utility>

#include "base/path.h"

namespace tresmor {

class Undo::Client final : public CopyClient {
 public:
  Client(Undo& undo, const UndoEntry& entry, OperationWatch& watch) : undo_(undo), entry_(entry), watch_(watch) {}

  const std::string& Place() const override { return entry_.from; }
  Trouble PickAnother(Errors failure) override { return TargetTrouble(failure, entry_.from); }
  bool Passed(std::int64_t bytes) override {
    undo_.progress_.bytes += bytes;
    watch_.Progress(undo_.progress_);
    return !watch_.Cancelled();
  }
  Trouble BeforeRemoval() override { return {}; }

 private:
  Undo& undo_;
  const UndoEntry& entry_;
  OperationWatch& watch_;
};

namespace {

enum class Found { Nothing, Itself, SomethingElse, Unknown };

Found Look(const FileSystem& files, const std::string& path, const UndoEntry& entry) {
  FileStat stat;
  const Errors failure = files.Stat(path, stat);
  if (failure == Errors::FileNotFound) return Found::Nothing;
  if (failure != Errors::None) return Found::Unknown;
  const bool same = stat.kind == entry.kind && stat.size == entry.size && stat.modified == entry.modified;
  return same ? Found::Itself : Found::SomethingElse;
}

// It failed, or was put back before, by whomever.
bool NeverWent(Found from, Found to) {
  return from == Found::Itself && (to == Found::Nothing || to == Found::SomethingElse);
}

// What keeps something from being put back; with ReadFault it may go better later.
Trouble Check(const UndoEntry& entry, Found from, Found to) {
  if (to == Found::Nothing) return {OperationCode::NotFound, "it is no longer at " + entry.to};
  if (to == Found::SomethingElse) return {OperationCode::Changed, entry.to + " is another file or was changed"};
  if (to == Found::Unknown) return {OperationCode::ReadFault, entry.to + " can't be looked at"};
  if (from == Found::Unknown)
    return {OperationCode::ReadFault, "its place can't be looked at; it is left at " + entry.to};
  if (from == Found::Nothing) return {};
  return {OperationCode::Exists, "something stands there; it is left at " + entry.to};
}

std::string AboutLog(const UndoLog& log, const std::string& what) {
  return "The list of what can be undone, " + log.Path() + ", " + what + ".";
}

std::int64_t BytesOf(const UndoEntry& entry) { return entry.kind == EntryKind::File ? entry.size : 0; }

}  // namespace

Undo::Undo(const FileSystem& files, FileChanges& changes, UndoLog& log)
    : files_(files),
      changes_(changes),
      log_(log),
      destination_(files, changes),
      copier_(files, changes, destination_) {}

Trouble Undo::Return(const UndoEntry& entry, OperationWatch& watch) {
  const std::string folder = ParentOf(entry.from, files_.Style());
  if (Trouble trouble = destination_.Enter(folder)) return trouble;
  const Errors failure = changes_.Rename(entry.to, entry.from);
  if (failure != Errors::DifferentDrive) return RenameTrouble(failure, files_, entry.to, entry.from);
  if (entry.kind != EntryKind::File) return {OperationCode::Denied, "its old place is on another disk now"};
  Client client(*this, entry, watch);
  return copier_.Copy(entry.to, folder, AfterCopy::RemoveSource, client);
}

Trouble Undo::ReturnIntoItsFolder(const UndoEntry& entry, OperationWatch& watch) {
  for (const std::string& folder : stuck_) {
    if (!LiesBelow(entry.from, folder, files_.Style())) continue;
    return {OperationCode::NotFound, "its folder could not be put back; it is left at " + entry.to};
  }
  Trouble trouble = Return(entry, watch);
  if (trouble) return trouble;
  if (!entry.trashInfo.empty()) changes_.Remove(entry.trashInfo);
  // Once files have come back into it, nobody could tell by its time that it is the one that went.
  if (entry.kind == EntryKind::Folder) log_.Withdraw({&entry, 1});
  return {};
}

// What is gone from a folder, or was changed, is so for good; but a folder that is missing may be on a disk that is.
bool Undo::MayComeBack(const UndoEntry& entry) const {
  FileStat stat;
  return Look(files_, entry.to, entry) == Found::Nothing &&
         files_.Stat(ParentOf(entry.to, files_.Style()), stat) != Errors::None;
}

// False once it is cancelled.
bool Undo::Take(const UndoEntry& entry, OperationWatch& watch, UndoResult& result) {
  const Found from = Look(files_, entry.from, entry);
  const Found to = Look(files_, entry.to, entry);
  if (NeverWent(from, to)) {
    // A program that was killed may have left it.
    if (to == Found::Nothing && !entry.trashInfo.empty()) changes_.Remove(entry.trashInfo);
    return true;
  }
  const std::int64_t bytes = progress_.bytes;
  Trouble trouble = Check(entry, from, to);
  const bool gone = (to == Found::Nothing || to == Found::SomethingElse) && !MayComeBack(entry);
  const bool tried = !trouble;
  if (tried) trouble = ReturnIntoItsFolder(entry, watch);
  if (trouble.code == OperationCode::Cancelled) return false;
  progress_.bytes = bytes + (trouble ? 0 : BytesOf(entry));
  if (!trouble) {
    ++result.putBack;
    return true;
  }
  // Made anew for a file of it, the folder would be in its own way the next time.
  const bool later = tried || trouble.code == OperationCode::ReadFault;
  if (later && entry.kind == EntryKind::Folder) stuck_.push_back(entry.from);
  result.left.push_back({entry.from, trouble.reason});
  if (!gone) kept_.push_back(entry);
  return true;
}

// Leaves in `entries` those that stay in the log.
void Undo::Walk(std::vector<UndoEntry>& entries, OperationWatch& watch, UndoResult& result) {
  for (; !entries.empty(); entries.pop_back(), ++progress_.files) {
    progress_.path = entries.back().from;
    watch.Progress(progress_);
    result.cancelled = watch.Cancelled() || !Take(entries.back(), watch, result);
    if (result.cancelled) break;
  }
  entries.insert(entries.end(), kept_.rbegin(), kept_.rend());
}

void Undo::RunAlone(OperationWatch& watch, UndoResult& result) {
  UndoStep step;
  if (const Errors failure = log_.Read(step); failure != Errors::None) {
    result.trouble = AboutLog(log_, std::string("could not be read: ") + Describe(failure));
    return;
  }
  if (step.damaged) result.trouble = AboutLog(log_, "is damaged; what it can't tell any more is left where it is");
  if (step.entries.empty() && !step.damaged) return;
  progress_.allFiles = static_cast<std::int64_t>(step.entries.size());
  for (const UndoEntry& entry : step.entries) progress_.allBytes += BytesOf(entry);
  Walk(step.entries, watch, result);
  watch.Progress(progress_);
  if (const Errors failure = log_.Keep(step.entries); failure != Errors::None) {
    result.trouble = AboutLog(log_, std::string("could not be written: ") + Describe(failure));
  }
}

UndoResult Undo::Run(OperationWatch& watch) {
  UndoResult result;
  const Errors failure = log_.HoldAlone();
  if (failure == Errors::PathAccess) {
    result.trouble = AboutLog(log_, "is in use by another program; nothing was put back");
  } else if (failure != Errors::None && failure != Errors::FileNotFound) {
    result.trouble = AboutLog(log_, std::string("could not be read: ") + Describe(failure));
  } else if (failure == Errors::None) {
    RunAlone(watch, result);
  }
  return result;
}

}  // namespace tresmor
