#include "support/memory_file_system.h"

#include <algorithm>
#include <list>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace tresmor {

namespace {

constexpr std::size_t kLongestName = 255;
constexpr int kMostLinks = 40;  // links on one way, so that circles end

bool IsAbsolute(std::string_view path, PathStyle style) {
  return path.starts_with(style.separator) || (style.separator == '\\' && path.size() > 1 && path[1] == ':');
}

}  // namespace

struct MemoryFileSystem::Node {
  EntryKind kind = EntryKind::File;
  bool link = false;
  bool hidden = false;
  bool unreadable = false;
  bool forbidden = false;
  std::uint64_t inode = 0;
  std::uint64_t links = 1;
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  std::string content;  // of a link its target
  std::int64_t size = 0;
  Generator generator;  // stands in for the content where set

  std::list<Place> children;
  std::unordered_map<std::string, std::list<Place>::iterator> byKey;

  Errors listFailure = Errors::None;
  std::size_t listedBefore = 0;
  Errors statFailure = Errors::None;
  Errors openFailure = Errors::None;
  Errors readFailure = Errors::None;
  std::int64_t readableBytes = 0;

  void SetContent(std::string bytes) {
    content = std::move(bytes);
    size = static_cast<std::int64_t>(content.size());
    generator = nullptr;
  }
};

// Made under the lock.
class MemoryFileSystem::Opened {
 public:
  explicit Opened(const MemoryFileSystem& files) : files_(files) {
    files_.peakOpen_ = std::max(files_.peakOpen_, ++files_.open_);
  }
  ~Opened() {
    const std::lock_guard lock(files_.mutex_);
    --files_.open_;
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

 private:
  const MemoryFileSystem& files_;
};

class MemoryFileSystem::OpenedFolder final : public Folder {
 public:
  OpenedFolder(const MemoryFileSystem& files, NodePtr node, std::string path)
      : files_(files), node_(std::move(node)), path_(std::move(path)), opened_(files) {}

  Errors Stat(std::string_view name, FileStat& stat) const override {
    return files_.StatFrom(node_, name, path_ + std::string(name), stat);
  }
  std::unique_ptr<FileReader> Open(std::string_view name, Errors& failure) const override {
    return files_.OpenFrom(node_, name, path_ + std::string(name), failure);
  }

 private:
  const MemoryFileSystem& files_;
  const NodePtr node_;
  const std::string path_;
  const Opened opened_;
};

class MemoryFileSystem::Reader final : public FileReader {
 public:
  Reader(const MemoryFileSystem& files, NodePtr node, std::string path)
      : files_(files), node_(std::move(node)), path_(std::move(path)), size_(node_->size), opened_(files) {}

  std::int64_t Size() const override { return size_; }

  Result ReadAt(std::int64_t offset, std::span<char> into) override {
    files_.Note({Op::Read, path_, offset, static_cast<std::int64_t>(into.size())});
    const std::lock_guard lock(files_.mutex_);
    std::int64_t end = node_->size;
    const bool fails = node_->readFailure != Errors::None;
    if (fails) end = std::min(end, node_->readableBytes);
    Result result;
    result.got = std::min(into.size(), static_cast<std::size_t>(std::max<std::int64_t>(end - offset, 0)));
    if (fails && result.got < into.size()) result.failure = node_->readFailure;
    const std::span<char> part = into.first(result.got);
    if (node_->generator) {
      node_->generator(offset, part);
    } else if (!part.empty()) {
      std::copy_n(node_->content.data() + offset, part.size(), part.data());
    }
    return result;
  }

 private:
  const MemoryFileSystem& files_;
  const NodePtr node_;
  const std::string path_;
  const std::int64_t size_;
  const Opened opened_;
};

MemoryFileSystem::MemoryFileSystem(PathStyle style) : style_(style) { root_ = NewNode(EntryKind::Folder); }
MemoryFileSystem::~MemoryFileSystem() = default;

// --- Finding

// `way` holds the folders from the root down to where `path` starts, and afterwards also what was found.
Errors MemoryFileSystem::Enter(std::vector<Place>& way, std::string_view path, LastLink lastLink, int links) const {
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(style_.separator), path.size());
    const std::string_view name = path.substr(0, end);
    // A separator behind the last name asks for a folder, and a link to one will do.
    const bool asFolder = end < path.size();
    path.remove_prefix(asFolder ? end + 1 : end);
    if (name.empty()) continue;
    if (const Errors failure = Step(way, name, asFolder || lastLink == LastLink::Follow, links);
        failure != Errors::None) {
      return failure;
    }
    if (asFolder && way.back().node->kind != EntryKind::Folder) return Errors::PathAccess;
  }
  return Errors::None;
}

Errors MemoryFileSystem::Step(std::vector<Place>& way, std::string_view name, bool follow, int links) const {
  const NodePtr folder = way.back().node;
  if (folder->unreadable) return Errors::PermissionDenied;
  if (name == ".") return Errors::None;
  if (name == "..") {
    if (way.size() > 1) way.pop_back();
    return Errors::None;
  }
  if (name.size() > kLongestName) return Errors::BadFileName;
  const auto found = folder->byKey.find(style_.Key(name));
  if (found == folder->byKey.end()) return Errors::FileNotFound;
  const Place& child = *found->second;
  if (!child.node->link || !follow) {
    way.push_back(child);
    return Errors::None;
  }
  if (links == kMostLinks) return Errors::PathAccess;
  const std::string& target = child.node->content;
  if (IsAbsolute(target, style_)) way.resize(1);
  return Enter(way, target, LastLink::Follow, links + 1);
}

Errors MemoryFileSystem::Find(std::string_view path, LastLink lastLink, Place& place) const {
  return FindFrom(root_, path, lastLink, place);
}

Errors MemoryFileSystem::FindFrom(const NodePtr& start, std::string_view path, LastLink lastLink, Place& place) const {
  if (path.empty()) return Errors::FileNotFound;
  if (path.find('\0') != std::string_view::npos) return Errors::BadFileName;
  std::vector<Place> way{{start, {}}};
  const Errors failure = Enter(way, path, lastLink, 0);
  place = way.back();
  return failure;
}

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

// --- Making

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

void MemoryFileSystem::SetForbidden(const std::string& folder) {
  const std::lock_guard lock(mutex_);
  Get(folder)->forbidden = true;
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

// The hook runs without the lock, so that it can change what the call is about to meet.
void MemoryFileSystem::Note(Call call) const {
  std::shared_ptr<const std::function<void(const Call&)>> hook;
  {
    const std::lock_guard lock(mutex_);
    calls_.push_back(call);
    hook = hook_;
  }
  if (hook) (*hook)(call);
}

// --- The port

bool MemoryFileSystem::IsHidden(const Place& place) const {
  return style_.separator == '/' ? place.name.starts_with('.') : place.node->hidden;
}

Errors MemoryFileSystem::List(const std::string& folder, FolderListing& listing) const {
  Note({Op::List, folder, 0, 0});
  const std::lock_guard lock(mutex_);
  listing = {};
  Place place;
  if (const Errors failure = Find(folder, LastLink::Follow, place); failure != Errors::None) return failure;
  const Node& node = *place.node;
  if (node.kind != EntryKind::Folder) return Errors::PathAccess;
  if (node.unreadable) return Errors::PermissionDenied;
  listing.identity = {1, node.inode};
  listing.size = node.size;
  listing.changedNs = node.changed * 1'000'000'000;
  listing.forbidden = node.forbidden;
  if (node.forbidden) return Errors::None;
  const bool fails = node.listFailure != Errors::None;
  for (const Place& child : node.children) {
    if (fails && listing.entries.size() == node.listedBefore) break;
    listing.entries.push_back({static_cast<std::uint32_t>(listing.names.size()),
                               static_cast<std::uint16_t>(child.name.size()), child.node->kind, IsHidden(child)});
    listing.names += child.name;
  }
  return node.listFailure;
}

Errors MemoryFileSystem::StatOf(const Place& place, FileStat& stat) const {
  const Node& node = *place.node;
  if (node.statFailure != Errors::None) return node.statFailure;
  stat.kind = node.kind;
  stat.hidden = IsHidden(place);
  stat.size = node.size;
  stat.modified = node.modified;
  stat.changedNs = node.changed * 1'000'000'000;
  stat.links = node.links;
  stat.identity = {1, node.inode};
  return Errors::None;
}

Errors MemoryFileSystem::Stat(const std::string& path, FileStat& stat) const {
  return StatFrom(root_, path, path, stat);
}

Errors MemoryFileSystem::StatFrom(const NodePtr& start, std::string_view path, const std::string& whole,
                                  FileStat& stat) const {
  Note({Op::Stat, whole, 0, 0});
  const std::lock_guard lock(mutex_);
  Place place;
  const Errors failure = FindFrom(start, path, LastLink::Stay, place);
  return failure == Errors::None ? StatOf(place, stat) : failure;
}

std::unique_ptr<FileReader> MemoryFileSystem::Open(const std::string& path, Errors& failure) const {
  return OpenFrom(root_, path, path, failure);
}

std::unique_ptr<FileReader> MemoryFileSystem::OpenFrom(const NodePtr& start, std::string_view path,
                                                       const std::string& whole, Errors& failure) const {
  Note({Op::Open, whole, 0, 0});
  const std::lock_guard lock(mutex_);
  Place place;
  failure = FindFrom(start, path, LastLink::Stay, place);
  if (failure != Errors::None) return nullptr;
  if (place.node->kind != EntryKind::File) {
    failure = Errors::PathAccess;
  } else if (place.node->unreadable) {
    failure = Errors::PermissionDenied;
  } else if (open_ >= openLimit_) {
    failure = Errors::TooManyFiles;
  } else {
    failure = place.node->openFailure;
  }
  if (failure != Errors::None) return nullptr;
  return std::make_unique<Reader>(*this, place.node, whole);
}

std::unique_ptr<Folder> MemoryFileSystem::OpenFolder(const std::string& folder, Errors& failure) const {
  const std::lock_guard lock(mutex_);
  Place place;
  failure = Find(folder, LastLink::Follow, place);
  if (failure == Errors::None && place.node->kind != EntryKind::Folder) failure = Errors::PathAccess;
  if (failure == Errors::None && open_ >= openLimit_) failure = Errors::TooManyFiles;
  if (failure != Errors::None) return nullptr;
  return std::make_unique<OpenedFolder>(*this, place.node, AddTail(folder, style_.Tail()));
}

std::string MemoryFileSystem::Resolved(const std::string& path) const {
  const std::lock_guard lock(mutex_);
  Place place;
  if (Find(path, LastLink::Stay, place) != Errors::None || !place.node->link) return path;
  const std::string& target = place.node->content;
  if (target.find(style_.separator) == 0) return target;
  return std::string(GetFolderOf(path, style_)) + target;
}

std::size_t MemoryFileSystem::OpenLimit() const {
  const std::lock_guard lock(mutex_);
  return openLimit_;
}

CacheState MemoryFileSystem::Cached(const std::string& path) const {
  Note({Op::Cached, path, 0, 0});
  const std::lock_guard lock(mutex_);
  return cached_;
}

void MemoryFileSystem::ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const {
  Note({Op::ReadAhead, path, offset, length});
}

bool MemoryFileSystem::IsTrash(std::string_view folder) const {
  if (folder.ends_with(style_.separator)) folder.remove_suffix(1);
  return style_.Equal(GetFileNameOf(folder, style_), ".Trash");
}

}  // namespace tresmor
