#include "transfer/destination.h"

#include "transfer/operation_plan.h"

namespace tresmor {

namespace {

Trouble NoFolder(const std::string& path) {
  return {OperationCode::Exists, path + " is a link or a file and no folder"};
}

}  // namespace

// Somebody else may have made it since it was looked for, which is as good.
Errors Destination::Make(const std::string& folder) {
  const Errors failure = changes_.MakeFolder(folder);
  if (failure == Errors::FileExists) return Errors::None;
  if (failure == Errors::None) unflushed_.push_back(ParentOf(folder, files_.Style()));
  return failure;
}

Trouble Destination::Enter(const std::string& folder) {
  if (entered_.contains(folder)) return {};
  Errors failure = Errors::None;
  bool there = files_.OpenFolder(folder, failure) != nullptr;
  const std::string parent = ParentOf(folder, files_.Style());
  if (failure == Errors::FileNotFound && !parent.empty() && parent != folder) {
    if (Trouble trouble = Enter(parent)) return trouble;
    if (const Errors made = Make(folder); made != Errors::None) return TargetTrouble(made, folder);
    there = files_.OpenFolder(folder, failure) != nullptr;
    if (failure == Errors::FileNotFound) return NoFolder(folder);  // a link that leads nowhere
  }
  if (failure == Errors::PathAccess) return NoFolder(folder);
  if (!there) return TargetTrouble(failure, folder);
  entered_.insert(folder);
  return {};
}

Trouble Destination::EnterBelow(const std::string& folder, const std::string& base) {
  if (folder == base) return Enter(folder);
  if (entered_.contains(folder)) return {};
  if (Trouble trouble = EnterBelow(ParentOf(folder, files_.Style()), base)) return trouble;
  FileStat stat;
  Errors failure = files_.Stat(folder, stat);
  if (failure == Errors::FileNotFound) {
    failure = Make(folder);
    if (failure == Errors::None) failure = files_.Stat(folder, stat);
  }
  if (failure != Errors::None) return TargetTrouble(failure, folder);
  if (stat.kind != EntryKind::Folder) return NoFolder(folder);
  entered_.insert(folder);
  return {};
}

Errors Destination::Flush(const std::string& folder) {
  for (; !unflushed_.empty(); unflushed_.erase(unflushed_.begin())) {
    if (const Errors failure = changes_.FlushFolder(unflushed_.front()); failure != Errors::None) return failure;
  }
  return changes_.FlushFolder(folder);
}

}  // namespace tresmor
