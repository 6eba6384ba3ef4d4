// Making and changing what is in a MemoryFileSystem, and what its calls come to.
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "support/memory_file_system.h"
#include "support/memory_node.h"

namespace tresmor {

MemoryFileSystem::NodePtr MemoryFileSystem::Get(const std::string& path, LastLink lastLink) const {
  Place place;
  if (Find(path, lastLink, place) != Errors::None) throw std::logic_error("nothing at " + path);
  return place.node;
}

MemoryFileSystem::NodePtr MemoryFileSystem::GetFile(const std::string& path) const {
  NodePtr node = Get(path);
  if (node->kind != EntryKind::File) throw std::logic_error("no file at " + path);
  return node;
}

MemoryFileSystem::NodePtr MemoryFileSystem::NewNode(EntryKind kind) {
  auto node = std::make_shared<Node>();
  node->kind = kind;
  node->inode = nextInode_++;
  Touch(*node);
  node->modified = node->changed;
  return node;
}

void MemoryFileSystem::Touch(Node& node) { node.changed = clock_++; }

// The folder at `path`, made as needed.
MemoryFileSystem::NodePtr MemoryFileSystem::FolderFor(std::string_view path) {
  NodePtr folder = root_;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(style_.separator), path.size());
    const std::string name(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
    if (name.empty()) continue;
    const std::string key = style_.Key(name);
    const auto found = folder->byKey.find(key);
    if (found != folder->byKey.end()) {
      folder = found->second->node;
      if (folder->kind != EntryKind::Folder) throw std::logic_error("no folder: " + name);
      continue;
    }
    folder->byKey[key] = folder->children.insert(folder->children.end(), {NewNode(EntryKind::Folder), name});
    folder = folder->children.back().node;
  }
  return folder;
}

void MemoryFileSystem::Put(const std::string& path, NodePtr node) {
  const NodePtr folder = FolderFor(GetFolderOf(path, style_));
  const std::string name(GetFileNameOf(path, style_));
  const std::string key = style_.Key(name);
  if (name.empty() || folder->byKey.contains(key)) throw std::logic_error("can't make " + path);
  folder->byKey[key] = folder->children.insert(folder->children.end(), {std::move(node), name});
}

void MemoryFileSystem::MakeFolder(const std::string& path) {
  const std::lock_guard lock(mutex_);
  FolderFor(path);
}

void MemoryFileSystem::MakeFile(const std::string& path, std::string content) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = NewNode(EntryKind::File);
  node->SetContent(std::move(content));
  Put(path, node);
}

void MemoryFileSystem::MakeFile(const std::string& path, std::int64_t size, Generator content) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = NewNode(EntryKind::File);
  node->size = size;
  node->generator = std::move(content);
  Put(path, node);
}

void MemoryFileSystem::MakeLink(const std::string& path, std::string target) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = NewNode(EntryKind::Other);
  node->SetContent(std::move(target));
  node->link = true;
  Put(path, node);
}

void MemoryFileSystem::MakeFifo(const std::string& path) {
  const std::lock_guard lock(mutex_);
  Put(path, NewNode(EntryKind::Other));
}

void MemoryFileSystem::MakeHardLink(const std::string& path, const std::string& existing) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = GetFile(existing);
  Put(path, node);
  ++node->links;
  Touch(*node);
}

void MemoryFileSystem::Remove(const std::string& path) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = Get(path);
  const NodePtr folder = FolderFor(GetFolderOf(path, style_));
  const auto found = folder->byKey.find(style_.Key(GetFileNameOf(path, style_)));
  if (found == folder->byKey.end()) throw std::logic_error("can't remove " + path);
  folder->children.erase(found->second);
  folder->byKey.erase(found);
  --node->links;
  Touch(*node);
}

void MemoryFileSystem::SetContent(const std::string& path, std::string content) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = GetFile(path);
  node->SetContent(std::move(content));
  Touch(*node);
  node->modified = node->changed;
}

void MemoryFileSystem::SetHidden(const std::string& path) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = Get(path);
  node->hidden = true;
  Touch(*node);
}

void MemoryFileSystem::SetModified(const std::string& path, std::int64_t seconds) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = Get(path);
  node->modified = seconds;
  Touch(*node);
}

void MemoryFileSystem::SetUnreadable(const std::string& path, bool unreadable) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = Get(path);
  node->unreadable = unreadable;
  Touch(*node);
}

void MemoryFileSystem::SetReadOnly(const std::string& path, bool readOnly) {
  const std::lock_guard lock(mutex_);
  GetFile(path)->readOnly = readOnly;
}

bool MemoryFileSystem::IsReadOnly(const std::string& path) const {
  const std::lock_guard lock(mutex_);
  return GetFile(path)->readOnly;
}

void MemoryFileSystem::SetForbidden(const std::string& folder) {
  const std::lock_guard lock(mutex_);
  Get(folder)->forbidden = true;
}

// --- Changing as the ports do

Errors MemoryFileSystem::Look(const std::string& path, FileStat& stat) const {
  const std::lock_guard lock(mutex_);
  Place place;
  const Errors failure = Find(path, LastLink::Stay, place);
  return failure == Errors::None ? StatOf(place, stat) : failure;
}

// The folder that `path` would stand in; a failure if it isn't there or the name is taken.
Errors MemoryFileSystem::FindFree(const std::string& path, NodePtr& folder) const {
  Place place;
  if (const Errors failure = Find(path, LastLink::Stay, place); failure != Errors::FileNotFound) {
    return failure == Errors::None ? Errors::FileExists : failure;
  }
  const Errors failure = Find(GetFolderOf(path, style_), LastLink::Follow, place);
  folder = place.node;
  return failure;
}

void MemoryFileSystem::Link(const NodePtr& folder, std::string_view name, NodePtr node) {
  folder->byKey[style_.Key(name)] =
      folder->children.insert(folder->children.end(), {std::move(node), std::string(name)});
}

void MemoryFileSystem::Unlink(const NodePtr& folder, std::string_view name) {
  const auto found = folder->byKey.find(style_.Key(name));
  folder->children.erase(found->second);
  folder->byKey.erase(found);
}

Errors MemoryFileSystem::Add(const std::string& path, EntryKind kind) {
  const std::lock_guard lock(mutex_);
  NodePtr folder;
  const Errors failure = FindFree(path, folder);
  if (failure == Errors::None) Link(folder, GetFileNameOf(path, style_), NewNode(kind));
  return failure;
}

Errors MemoryFileSystem::Move(const std::string& from, const std::string& to) {
  const std::lock_guard lock(mutex_);
  Place source;
  if (const Errors failure = Find(from, LastLink::Stay, source); failure != Errors::None) return failure;
  Place oldFolder;
  if (const Errors failure = Find(GetFolderOf(from, style_), LastLink::Follow, oldFolder); failure != Errors::None) {
    return failure;
  }
  NodePtr folder = oldFolder.node;
  const bool otherLetters = from != to && style_.Equal(from, to);
  if (const Errors failure = otherLetters ? Errors::None : FindFree(to, folder); failure != Errors::None)
    return failure;
  if (style_.StartsWith(to, AddTail(from, style_.Tail()))) return Errors::PathAccess;
  Unlink(oldFolder.node, source.name);
  Link(folder, GetFileNameOf(to, style_), source.node);
  Touch(*source.node);
  return Errors::None;
}

Errors MemoryFileSystem::Drop(const std::string& path) {
  const std::lock_guard lock(mutex_);
  Place place;
  if (const Errors failure = Find(path, LastLink::Stay, place); failure != Errors::None) return failure;
  if (!place.node->children.empty()) return Errors::PathAccess;
  Place folder;
  if (const Errors failure = Find(GetFolderOf(path, style_), LastLink::Follow, folder); failure != Errors::None) {
    return failure;
  }
  Unlink(folder.node, place.name);
  --place.node->links;
  Touch(*place.node);
  return Errors::None;
}

// --- Failing and watching

void MemoryFileSystem::FailList(const std::string& path, Errors failure, std::size_t entriesBefore) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = Get(path);
  node->listFailure = failure;
  node->listedBefore = entriesBefore;
}

void MemoryFileSystem::FailStat(const std::string& path, Errors failure) {
  const std::lock_guard lock(mutex_);
  Get(path)->statFailure = failure;
}

void MemoryFileSystem::FailOpen(const std::string& path, Errors failure) {
  const std::lock_guard lock(mutex_);
  Get(path)->openFailure = failure;
}

void MemoryFileSystem::FailRead(const std::string& path, std::int64_t offset, Errors failure) {
  const std::lock_guard lock(mutex_);
  const NodePtr node = GetFile(path);
  node->readableBytes = offset;
  node->readFailure = failure;
}

void MemoryFileSystem::SetHook(std::function<void(const Call&)> hook) {
  const std::lock_guard lock(mutex_);
  hook_ = hook ? std::make_shared<const std::function<void(const Call&)>>(std::move(hook)) : nullptr;
}

void MemoryFileSystem::SetOpenLimit(std::size_t limit) {
  const std::lock_guard lock(mutex_);
  openLimit_ = limit;
}

void MemoryFileSystem::SetCached(CacheState state) {
  const std::lock_guard lock(mutex_);
  cached_ = state;
}

std::vector<MemoryFileSystem::Call> MemoryFileSystem::Calls() const {
  const std::lock_guard lock(mutex_);
  return calls_;
}

void MemoryFileSystem::ClearCalls() {
  const std::lock_guard lock(mutex_);
  calls_.clear();
}

std::size_t MemoryFileSystem::OpenFiles() const {
  const std::lock_guard lock(mutex_);
  return open_;
}

std::size_t MemoryFileSystem::PeakOpenFiles() const {
  const std::lock_guard lock(mutex_);
  return peakOpen_;
}

}  // namespace tresmor
