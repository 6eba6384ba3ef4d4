#include "transfer/undo.h"

#include <algorithm>
#include <utility>

#include "transfer/operation_plan.h"

namespace tresmor {

class Undo::Client final : public CopyClient {
 public:
  Client(Undo& undo, const UndoEntry& entry, OperationWatch& watch) : undo_(undo), entry_(entry), watch_(watch) {}

  bool Passed(std::int64_t bytes) override {
    undo_.progress_.bytes += bytes;
    watch_.Progress(undo_.progress_);
    return !watch_.Cancelled();
  }
  Trouble Place(const std::string& part, std::string& placed) override {
    placed = entry_.from;
    return RenameTrouble(undo_.changes_.Rename(part, placed), undo_.files_, part, placed);
  }
  Trouble BeforeRemoval(const std::string& /*placed*/) override { return {}; }

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
  const bool stands = from == Found::Itself || from == Found::SomethingElse;
  return (stands && to == Found::Nothing) || (from == Found::Itself && to == Found::SomethingElse);
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

Trouble Undo::PutBack(const UndoEntry& entry, OperationWatch& watch) {
  for (const std::string& folder : stuck_) {
    if (!LiesBelow(entry.from, folder, files_.Style())) continue;
    return {OperationCode::NotFound, "its folder could not be put back; it is left at " + entry.to};
  }
  Trouble trouble = Return(entry, watch);
  if (!trouble && !entry.trashInfo.empty()) changes_.Remove(entry.trashInfo);
  return trouble;
}

// False once it is cancelled.
bool Undo::Take(const UndoEntry& entry, OperationWatch& watch, UndoResult& result) {
  const Found from = Look(files_, entry.from, entry);
  const Found to = Look(files_, entry.to, entry);
  if (NeverWent(from, to)) return true;
  const std::int64_t bytes = progress_.bytes;
  Trouble trouble = Check(entry, from, to);
  const bool mayComeBack = !trouble || trouble.code == OperationCode::ReadFault;
  if (!trouble) trouble = PutBack(entry, watch);
  if (trouble.code == OperationCode::Cancelled) return false;
  progress_.bytes = bytes + (trouble ? 0 : BytesOf(entry));
  if (!trouble) {
    ++result.putBack;
    return true;
  }
  // Made anew for a file of it, the folder would be in its own way the next time.
  if (mayComeBack && entry.kind == EntryKind::Folder) stuck_.push_back(entry.from);
  result.left.push_back({entry.from, trouble.reason});
  kept_.push_back(entry);
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

UndoResult Undo::Run(OperationWatch& watch) {
  UndoResult result;
  std::vector<UndoEntry> entries;
  if (const Errors failure = log_.Read(entries); failure != Errors::None) {
    result.trouble =
        "The list of what can be undone, " + log_.Path() + ", could not be read: " + Describe(failure) + ".";
    return result;
  }
  if (entries.empty()) return result;
  progress_.allFiles = static_cast<std::int64_t>(entries.size());
  for (const UndoEntry& entry : entries) progress_.allBytes += BytesOf(entry);
  Walk(entries, watch, result);
  watch.Progress(progress_);
  if (const Errors failure = log_.Keep(entries); failure != Errors::None) {
    result.trouble =
        "The list of what can be undone, " + log_.Path() + ", could not be written: " + Describe(failure) + ".";
  }
  return result;
}

}  // namespace tresmor
