#include "search/col_files.h"

#include <algorithm>
#include <utility>

namespace tresmor {

namespace {

static_assert(sizeof(ColFiles::Item) == 16);

constexpr std::uint64_t kFnvStart = 0xcbf29ce484222325;
constexpr std::uint64_t kFnvPrime = 0x100000001b3;

std::uint64_t Hashed(std::uint64_t hash, std::string_view bytes) {
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * kFnvPrime;
  return hash;
}

}  // namespace

FolderId FolderTree::AddTop(std::string path) {
  nodes_.push_back({kNone, std::move(path)});
  return static_cast<FolderId>(nodes_.size() - 1);
}

FolderId FolderTree::AddSub(FolderId parent, std::string_view name, char separator) {
  std::string own;
  own.reserve(name.size() + 1);
  own.append(name).push_back(separator);
  nodes_.push_back({parent, std::move(own)});
  return static_cast<FolderId>(nodes_.size() - 1);
}

void FolderTree::AppendPath(FolderId folder, std::string& path) const {
  std::size_t length = 0;
  for (FolderId id = folder; id != kNone; id = nodes_[id].parent) length += nodes_[id].name.size();
  path.resize(path.size() + length);
  std::size_t end = path.size();
  for (FolderId id = folder; id != kNone; id = nodes_[id].parent) {
    const std::string& name = nodes_[id].name;
    end -= name.size();
    name.copy(path.data() + end, name.size());
  }
}

std::string FolderTree::Path(FolderId folder) const {
  std::string path;
  AppendPath(folder, path);
  return path;
}

void ColFiles::AppendPath(const Item& item, std::string& path) const {
  folders_.AppendPath(item.folder, path);
  path.append(item.Name());
}

ColFiles::Folder ColFiles::AddTop(std::string path) {
  const std::uint64_t hash = Hashed(kFnvStart, style_.Key(path));
  return {folders_.AddTop(std::move(path)), hash};
}

ColFiles::Folder ColFiles::AddSub(const Folder& parent, std::string_view name) {
  const std::uint64_t hash = Hashed(Hashed(parent.pathHash, style_.Key(name)), style_.Tail());
  return {folders_.AddSub(parent.id, name, style_.separator), hash};
}

ColFiles::ListingId ColFiles::FindListing(const Folder& folder) const {
  const auto [first, last] = visited_.equal_range(folder.pathHash);
  if (first == last) return kNoListing;
  const std::string path = folders_.Path(folder.id);
  const auto found =
      std::find_if(first, last, [&](const auto& one) { return style_.Equal(folders_.Path(one.second.folder), path); });
  return found == last ? kNoListing : found->second.listing;
}

ColFiles::ListingId ColFiles::KeepListing(const Folder& folder, FolderListing listing) {
  const auto id = static_cast<ListingId>(kept_.size());
  const std::size_t entries = listing.entries.size();
  // A folder that could not be opened has no identity.
  if (listing.identity != FileIdentity{} && !identities_.insert(listing.identity).second) reachedTwice_ = true;
  kept_.push_back({std::move(listing), taken_.size()});
  taken_.resize(taken_.size() + entries);
  visited_.emplace(folder.pathHash, Visited{folder.id, id});
  return id;
}

void ColFiles::Add(FolderId folder, ListingId listing, std::size_t entry, bool isSrchTarget) {
  const Kept& kept = kept_[listing];
  const std::size_t bit = kept.firstEntry + entry;
  if (taken_[bit]) return;
  taken_[bit] = true;
  const FolderListing::Entry& file = kept.listing.entries[entry];
  items_.push_back({kept.listing.Name(file).data(), folder, file.length, isSrchTarget});
}

std::size_t ColFiles::IdentityHash::operator()(const FileIdentity& identity) const {
  return static_cast<std::size_t>((identity.device * kFnvPrime ^ identity.inode) * 0x9E3779B97F4A7C15);
}

}  // namespace tresmor
