#include "support/memory_file_system.h"

#include <algorithm>
#include <utility>

#include "support/memory_node.h"

namespace tresmor {

namespace {

constexpr int kMostLinks = 40;  // links on one way, so that circles end

bool IsAbsolute(std::string_view path, PathStyle style) {
  return path.starts_with(style.separator) || (style.separator == '\\' && path.size() > 1 && path[1] == ':');
}

}  // namespace

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
  if (name.size() > longestName_) return Errors::BadFileName;
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

// --- The port

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
  stat.link = node.link;
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
  std::string at = path;
  for (int links = 0; links < kMostLinks; ++links) {
    Place place;
    const Errors found = Find(at, LastLink::Stay, place);
    if (found == Errors::FileNotFound) return at;
    if (found != Errors::None) return path;
    if (!place.node->link) return at;
    const std::string& target = place.node->content;
    at = IsAbsolute(target, style_) ? target : std::string(GetFolderOf(at, style_)) + target;
  }
  return path;
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
