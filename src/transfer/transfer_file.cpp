#include "transfer/transfer_file.h"

namespace tresmor {

class TransferFile::Client final : public CopyClient {
 public:
  Client(TransferFile& transfer, Task& task) : transfer_(transfer), task_(task) {}

  bool Passed(std::int64_t bytes) override { return transfer_.passed_(bytes); }

  Trouble Place(const std::string& part, std::string& placed) override {
    Trouble trouble;
    transfer_.Put(task_, part, trouble);
    placed = task_.entry.to;
    return trouble;
  }

  // Disks keep the time of a file more or less exactly; undo goes by what is there now.
  Trouble BeforeRemoval(const std::string& placed) override {
    FileStat stat;
    const Errors failure = transfer_.tools_.files.Stat(placed, stat);
    if (failure != Errors::None) return TargetTrouble(failure, placed);
    if (stat.modified == task_.entry.modified && stat.size == task_.entry.size) return {};
    task_.entry.modified = stat.modified;
    task_.entry.size = stat.size;
    return transfer_.Correct(task_);
  }

 private:
  TransferFile& transfer_;
  Task& task_;
};

bool TransferFile::IsTaken(const Task& task, const std::string& name) const {
  FileStat stat;
  return tools_.files.Stat(JoinPath(task.item->folder, name, tools_.files.Style()), stat) == Errors::None;
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
    if (LiesBelow(AddTail(base_, style.Tail()), task.item->from, style)) {
      return {OperationCode::SameFile, "the destination lies in it"};
    }
    return {OperationCode::Denied, std::string("it is a folder, and only files can be ") + Done()};
  }
  if (task.stat.kind == EntryKind::Other && !Moves()) return {OperationCode::Denied, "it is no plain file"};
  return {};
}

Trouble TransferFile::Prepare(Task& task) {
  const PlanItem& item = *task.item;
  if (Trouble trouble = CheckKind(task)) return trouble;
  const auto taken = [&](const std::string& name) { return IsTaken(task, name); };
  std::string name = item.name;
  if (onCollision_ == OnCollision::Rename) name = tools_.names.Pick({item.folder, item.name}, taken);
  const bool collides = name != item.name || (onCollision_ == OnCollision::Fail && taken(name));
  if (collides && Moves() && IsItself(task)) return {OperationCode::SameFile, "it stands there already"};
  task.entry.to = JoinPath(item.folder, name, tools_.files.Style());
  if (collides && onCollision_ == OnCollision::Fail) return TargetTrouble(Errors::FileExists, task.entry.to);
  return {};
}

Trouble TransferFile::Correct(const Task& task) {
  return Moves() ? TargetTrouble(tools_.log.Correct(task.entry), tools_.log.Path()) : Trouble{};
}

Errors TransferFile::Put(Task& task, const std::string& what, Trouble& trouble) {
  for (;;) {
    const Errors failure = tools_.changes.Rename(what, task.entry.to);
    trouble = RenameTrouble(failure, tools_.files, what, task.entry.to);
    if (failure != Errors::FileExists || onCollision_ == OnCollision::Fail) return failure;
    const PlanItem& item = *task.item;
    const auto taken = [&](const std::string& name) { return IsTaken(task, name); };
    task.entry.to = JoinPath(item.folder, tools_.names.Next({item.folder, item.name}, taken), tools_.files.Style());
    trouble = Correct(task);
    if (trouble) return failure;
  }
}

Trouble TransferFile::Perform(Task& task) {
  const PlanItem& item = *task.item;
  if (Trouble trouble = destination_.EnterBelow(item.folder, base_)) return trouble;
  if (Moves()) {
    Trouble trouble;
    if (Put(task, item.from, trouble) != Errors::DifferentDrive) return trouble;
    if (task.stat.kind != EntryKind::File) {
      return {OperationCode::Denied, "it is no plain file, which alone can be moved to another disk"};
    }
  }
  Client client(*this, task);
  return copier_.Copy(item.from, item.folder, after_, client);
}

}  // namespace tresmor
