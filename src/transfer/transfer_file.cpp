#include "transfer/transfer_file.h"

namespace tresmor {

class TransferFile::Client final : public CopyClient {
 public:
  Client(TransferFile& transfer, Task& task) : transfer_(transfer), task_(task) {}

  const std::string& Place() const override { return task_.entry.to; }
  Trouble PickAnother(Errors failure) override { return transfer_.PickAnother(task_, failure); }
  bool Passed(std::int64_t bytes) override { return transfer_.passed_(bytes); }

  // Disks keep the time of a file more or less exactly; undo goes by what is there now.
  Trouble BeforeRemoval() override {
    FileStat stat;
    const Errors failure = transfer_.tools_.files.Stat(Place(), stat);
    if (failure != Errors::None) return TargetTrouble(failure, Place());
    if (stat.modified == task_.entry.modified && stat.size == task_.entry.size) return {};
    task_.entry.modified = stat.modified;
    task_.entry.size = stat.size;
    return transfer_.Correct(task_);
  }

 private:
  TransferFile& transfer_;
  Task& task_;
};

FreeNames::Taken TransferFile::TakenIn(const PlanItem& item) const {
  return [this, &item](const std::string& name) {
    FileStat stat;
    return tools_.files.Stat(JoinPath(item.folder, name, tools_.files.Style()), stat) == Errors::None;
  };
}

// Whether the place that is asked for is the file's own, whatever path leads there. Another hard link isn't.
bool TransferFile::IsItself(const Task& task) const {
  const PathStyle style = tools_.files.Style();
  if (!style.Equal(GetFileNameOf(task.item->from, style), task.item->name)) return false;
  FileStat old;
  FileStat other;
  return tools_.files.Stat(std::string(GetFolderOf(task.item->from, style)), old) == Errors::None &&
         tools_.files.Stat(AddTail(task.item->folder, style.Tail()), other) == Errors::None &&
         old.identity == other.identity;
}

Trouble TransferFile::CheckKind(const Task& task) const {
  const PathStyle style = tools_.files.Style();
  if (task.stat.kind == EntryKind::Folder) {
    if (IsOrLiesBelow(base_, task.item->from, style)) {
      return {OperationCode::SameFile, "the destination lies in it"};
    }
    return {OperationCode::Denied, std::string("it is a folder, and only files can be ") + PastParticiple()};
  }
  if (task.stat.kind == EntryKind::Other && !Moves()) return {OperationCode::Denied, "it is no plain file"};
  return {};
}

Trouble TransferFile::Prepare(Task& task) {
  const PlanItem& item = *task.item;
  if (Trouble trouble = CheckKind(task)) return trouble;
  const FreeNames::Taken taken = TakenIn(item);
  std::string name = item.name;
  if (onCollision_ == OnCollision::Rename) name = tools_.names.Pick({item.folder, item.name}, taken);
  const bool collides = name != item.name || (onCollision_ == OnCollision::Fail && taken(name));
  if (collides && Moves() && IsItself(task)) return {OperationCode::SameFile, "it stands there already"};
  task.entry.to = JoinPath(item.folder, name, tools_.files.Style());
  if (collides && onCollision_ == OnCollision::Fail) return TargetTrouble(Errors::FileExists, task.entry.to);
  return {};
}

Trouble TransferFile::Correct(const Task& task) { return Undoable() ? tools_.log.Correct(task.entry) : Trouble{}; }

// A name that came from a disk of longer names is shortened where it has to be, and nowhere else.
Trouble TransferFile::PickAnother(Task& task, Errors failure) {
  const PathStyle style = tools_.files.Style();
  const bool taken = failure == Errors::FileExists;
  const bool shortens = !taken && GetFileNameOf(task.entry.to, style).size() > kLongestName;
  if (onCollision_ == OnCollision::Fail || !(taken || shortens)) return TargetTrouble(failure, task.entry.to);
  if (!passed_(0)) return CancelledTrouble();
  const PlanItem& item = *task.item;
  const std::string name =
      taken ? tools_.names.Next({item.folder, item.name}, TakenIn(item))
            : tools_.names.Pick({item.folder, NumberedName(item.name, 1, kLongestName)}, TakenIn(item));
  task.entry.to = JoinPath(item.folder, name, style);
  return Correct(task);
}

Trouble TransferFile::Perform(Task& task) {
  const PlanItem& item = *task.item;
  if (Trouble trouble = destination_.EnterBelow(item.folder, base_)) return trouble;
  Client client(*this, task);
  if (Moves()) {
    Trouble trouble;
    const Errors failure = RenameToPlace(tools_.changes, item.from, client, trouble);
    if (trouble) return trouble;
    if (failure != Errors::DifferentDrive) return RenameTrouble(failure, tools_.files, item.from, task.entry.to);
    if (task.stat.kind != EntryKind::File) {
      return {OperationCode::Denied, "it is no plain file, which alone can be moved to another disk"};
    }
  }
  return copier_.Copy(item.from, item.folder, after_, client);
}

}  // namespace tresmor
