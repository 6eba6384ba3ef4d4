#include "search/folder_walk.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace tresmor {

namespace {

// Folders listed between two texts to the user.
constexpr std::size_t kFoldersAtOnce = 256;
// How often a folder may lie below itself by its identity, each time changed, and still pass for folders of one inode
// number. Twice and more only happens on odd file systems and in a circle that somebody keeps writing to.
constexpr int kMostAlike = 32;

// Leaves the first of several entries of one path. A folder that changes while it is read may give a name twice, and
// without regard to case two names may be one. Files of exact names are left alone, which saves a look at each: the
// table tells by its identity that it has a file already.
void DropRepeats(FolderListing& listing, PathStyle style) {
  std::unordered_set<std::string> paths;
  std::erase_if(listing.entries, [&](const FolderListing::Entry& entry) {
    const bool isFolder = entry.kind == EntryKind::Folder;
    if (!isFolder && (entry.kind != EntryKind::File || !style.ignoreCase)) return false;
    std::string path = style.Key(listing.Name(entry));
    if (isFolder) path += style.separator;
    return !paths.insert(std::move(path)).second;
  });
}

}  // namespace

std::string SearchingText(const ColFiles& colFiles, const WalkNode& node, const WalkPattern& pattern) {
  std::string text = "Searching ";
  colFiles.Folders().AppendPath(node.folder.id, text);
  return text.append(pattern.Text(node.depth));
}

std::vector<WalkNode> FolderWalk::List(const RowCriteria& row) {
  trash_ = LiesInTrash(ports_.files, row.folder);
  recursive_ = row.recursive;
  nodes_.clear();
  const ColFiles::Folder top = colFiles_.AddTop(row.folder);
  nodes_.push_back({.folder = top, .listing = colFiles_.FindListing(top)});

  std::vector<std::optional<FolderListing>> fresh;
  for (std::size_t begin = 0; begin < nodes_.size() && !ports_.stop.Stopped(); begin += fresh.size()) {
    ports_.observer.SetProgressMsg(SearchingText(colFiles_, nodes_[begin], row.patterns.front()));
    fresh.clear();
    fresh.resize(std::min(kFoldersAtOnce, nodes_.size() - begin));
    ports_.pool.ParallelFor(fresh.size(), 1, [&](std::size_t i, std::size_t) { Visit(nodes_[begin + i], fresh[i]); });
    for (std::size_t i = 0; i < fresh.size() && !ports_.stop.Stopped(); ++i) Settle(begin + i, std::move(fresh[i]));
  }
  return std::move(nodes_);
}

void FolderWalk::Visit(WalkNode& node, std::optional<FolderListing>& fresh) const {
  if (ports_.stop.Stopped()) return;
  const std::string path = colFiles_.Folders().Path(node.folder.id);
  if (IsBarred(path)) {
    node.listing = ColFiles::kNoListing;
    return;
  }
  if (node.listing != ColFiles::kNoListing) return;
  // A failure is no trouble: what was listed until then counts, if only nothing.
  (void)ports_.files.List(path, fresh.emplace());
  DropRepeats(*fresh, ports_.files.Style());
  fresh->names.shrink_to_fit();
  fresh->entries.shrink_to_fit();
}

bool FolderWalk::IsBarred(const std::string& folder) const {
  return protectDir_.Holds(folder) || (!trash_ && ports_.files.IsTrash(folder));
}

void FolderWalk::Settle(std::size_t at, std::optional<FolderListing> fresh) {
  WalkNode& node = nodes_[at];
  if (fresh) {
    if (colFiles_.Knows(fresh->identity) && IsOwnAncestor(node, *fresh)) return;
    node.listing = colFiles_.KeepListing(node.folder, std::move(*fresh));
  } else if (node.listing == ColFiles::kNoListing) {
    return;
  } else if (colFiles_.ReachedTwice() && IsOwnAncestor(node, colFiles_.Listing(node.listing))) {
    node.listing = ColFiles::kNoListing;
    return;
  }
  if (recursive_) AddChildren(at);
}

// Whether the folder lies below itself, as one that is mounted into its own tree does. One that was written to since it
// was met above is entered once more, and known the next time round.
bool FolderWalk::IsOwnAncestor(const WalkNode& node, const FolderListing& folder) const {
  int alike = 0;
  for (std::uint32_t at = node.parent; at != WalkNode::kNoParent; at = nodes_[at].parent) {
    const FolderListing& above = colFiles_.Listing(nodes_[at].listing);
    if (above.identity != folder.identity) continue;
    const bool unchanged = above.size == folder.size && above.changedNs == folder.changedNs;
    if (unchanged || ++alike == kMostAlike) return true;
  }
  return false;
}

void FolderWalk::AddChildren(std::size_t at) {
  const FolderListing& listing = colFiles_.Listing(nodes_[at].listing);
  nodes_[at].firstChild = static_cast<std::uint32_t>(nodes_.size());
  for (const FolderListing::Entry& entry : listing.entries) {
    if (entry.kind != EntryKind::Folder || (entry.hidden && !hidden_)) continue;
    const ColFiles::Folder sub = colFiles_.AddSub(nodes_[at].folder, listing.Name(entry));
    nodes_.push_back({.folder = sub,
                      .listing = colFiles_.FindListing(sub),
                      .parent = static_cast<std::uint32_t>(at),
                      .depth = nodes_[at].depth + 1});
    ++nodes_[at].children;
  }
}

}  // namespace tresmor
