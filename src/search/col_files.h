// The catalogue of one search: what the walk found, oldest first. Walking over a file again changes nothing, neither
// its place nor whose target it is; the path style says when a path is one that was there. A million entries must be
// cheap: names stay where the folder listings put them and folders are kept as a tree, so an entry costs 16 bytes here
// plus its name, 8 bytes and a bit in the listing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/file_system.h"

namespace tresmor {

using FolderId = std::uint32_t;

// The folders of a search as paths. A path is composed on demand: trees thousands of folders deep would otherwise cost
// memory by the square of their depth.
class FolderTree {
 public:
  static constexpr FolderId kNone = 0xFFFFFFFF;

  // A folder at the top of a walk; `path` ends with the separator.
  FolderId AddTop(std::string path);
  FolderId AddSub(FolderId parent, std::string_view name, char separator);

  std::size_t Count() const { return nodes_.size(); }

  // The full path with the separator at its end, appended to `path`.
  void AppendPath(FolderId folder, std::string& path) const;
  std::string Path(FolderId folder) const;

 private:
  struct Node {
    FolderId parent = kNone;
    std::string name;  // with the separator at its end; of a top folder the whole path
  };
  std::vector<Node> nodes_;
};

class ColFiles {
 public:
  struct Item {
    const char* name = nullptr;  // not NUL-terminated; lives as long as the catalogue
    FolderId folder = 0;
    std::uint16_t nameLength = 0;
    bool isSrchTarget = false;

    std::string_view Name() const { return {name, nameLength}; }
  };

  explicit ColFiles(PathStyle style) : style_(style) {}

  std::int64_t Count() const { return static_cast<std::int64_t>(items_.size()); }
  const std::vector<Item>& Items() const { return items_; }
  const FolderTree& Folders() const { return folders_; }
  // Appends folder and name to `path`.
  void AppendPath(const Item& item, std::string& path) const;

  // Whether some folder was reached under two spellings of its path. Only then can a folder whose listing is kept
  // already turn up below itself.
  bool ReachedTwice() const { return reachedTwice_; }

  // What follows is the walk's. A folder is listed once in a search: paths that are the same under the style's case
  // rule share one listing, and that is how a file that is reached again is known. Listings stay, unchanged.
  using ListingId = std::uint32_t;
  static constexpr ListingId kNoListing = 0xFFFFFFFF;

  // A folder on its way into the catalogue. The hash is that of its path's key, carried along so that a sub-folder's
  // costs only its own name.
  struct Folder {
    FolderId id = FolderTree::kNone;
    std::uint64_t pathHash = 0;
  };
  Folder AddTop(std::string path);
  Folder AddSub(const Folder& parent, std::string_view name);

  // The listing kept for a folder of the same path, else kNoListing.
  ListingId FindListing(const Folder& folder) const;
  // `folder` must have none yet.
  ListingId KeepListing(const Folder& folder, FolderListing listing);
  const FolderListing& Listing(ListingId id) const { return kept_[id].listing; }
  // Whether a listing is kept of that very folder, by whatever path.
  bool Knows(const FileIdentity& identity) const { return identities_.contains(identity); }

  // Adds the file at `entry` of the listing under the path of `folder`. One that is there already stays as it is.
  void Add(FolderId folder, ListingId listing, std::size_t entry, bool isSrchTarget);

 private:
  struct Kept {
    FolderListing listing;
    std::size_t firstEntry = 0;  // number of entries in all listings before
  };
  struct Visited {
    FolderId folder;
    ListingId listing;
  };
  struct IdentityHash {
    std::size_t operator()(const FileIdentity& identity) const;
  };

  PathStyle style_;
  FolderTree folders_;
  std::vector<Item> items_;
  std::deque<Kept> kept_;    // no listing ever moves: short names stand inside it
  std::vector<bool> taken_;  // one for each entry of all listings
  std::unordered_multimap<std::uint64_t, Visited> visited_;
  std::unordered_set<FileIdentity, IdentityHash> identities_;
  bool reachedTwice_ = false;
};

}  // namespace tresmor
