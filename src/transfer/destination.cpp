#include "transfer/destination.h"

#include "base/path.h"

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

// A separator at the end sees through a link.
std::string Destination::Followed(const std::string& folder, Links links) const {
  return links == Links::Follow ? AddTail(folder, files_.Style().Tail()) : folder;
}

// Whether it was entered before; what has become of it since is in `trouble`.
bool Destination::IsKnown(const std::string& folder, Links links, Trouble& trouble) const {
  const auto known = entered_->find(Followed(folder, links));
  if (known == entered_->end()) return false;
  FileStat now;
  const Errors failure = files_.Stat(known->first, now);
  if (failure != Errors::None) {
    trouble = TargetTrouble(failure, folder);
  } else if (now.identity != known->second) {
    trouble = {OperationCode::NotFound, folder + " is another one than it was at first"};
  }
  return true;
}

Trouble Destination::Note(const std::string& folder, Links links) {
  const std::string path = Followed(folder, links);
  FileStat stat;
  const Errors failure = files_.Stat(path, stat);
  if (failure != Errors::None) return TargetTrouble(failure, folder);
  if (stat.kind != EntryKind::Folder) return NoFolder(folder);
  entered_->emplace(path, stat.identity);
  return {};
}

Trouble Destination::Enter(const std::string& folder) {
  Trouble trouble;
  if (IsKnown(folder, Links::Follow, trouble)) return trouble;
  Errors failure = Errors::None;
  bool there = files_.OpenFolder(folder, failure) != nullptr;
  const std::string parent = ParentOf(folder, files_.Style());
  if (failure == Errors::FileNotFound && !parent.empty() && parent != folder) {
    trouble = Enter(parent);
    if (trouble) return trouble;
    if (const Errors made = Make(folder); made != Errors::None) return TargetTrouble(made, folder);
    there = files_.OpenFolder(folder, failure) != nullptr;
    if (failure == Errors::FileNotFound) return NoFolder(folder);  // a link that leads nowhere
  }
  if (failure == Errors::PathAccess) return NoFolder(folder);
  if (!there) return TargetTrouble(failure, folder);
  return Note(folder, Links::Follow);
}

Trouble Destination::EnterBelow(const std::string& folder, const std::string& base) {
  if (folder == base) return Enter(folder);
  Trouble trouble;
  if (IsKnown(folder, Links::Refuse, trouble)) return trouble;
  trouble = EnterBelow(ParentOf(folder, files_.Style()), base);
  if (trouble) return trouble;
  FileStat stat;
  Errors failure = files_.Stat(folder, stat);
  if (failure == Errors::FileNotFound) failure = Make(folder);
  return failure == Errors::None ? Note(folder, Links::Refuse) : TargetTrouble(failure, folder);
}

Errors Destination::Flush(const std::string& folder) {
  for (; !unflushed_.empty(); unflushed_.erase(unflushed_.begin())) {
    if (const Errors failure = changes_.FlushFolder(unflushed_.front()); failure != Errors::None) return failure;
  }
  return changes_.FlushFolder(folder);
}

}  // namespace tresmor
