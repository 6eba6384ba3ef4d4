// The catalogue of one search: the files that the scope rows yield, in the order in which they were first reached, each
// with the search-target flag of the row that reached it first. The same path is one entry, under the path style's
// case rule. A million entries must be cheap: names stay where the folder listings put them and folders are kept as a
// tree, so an entry costs 16 bytes here plus its name and 8 bytes in the listing.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/file_system.h"

namespace tresmor {

using FolderId = std::uint32_t;

// The folders of a search. Listings stay, unchanged, until Clear, since names point into them.
class FolderTree {
 public:
  static constexpr FolderId kNone = 0xFFFFFFFF;

  // A folder at the top of a walk; `path` ends with the separator.
  FolderId AddTop(std::string path);
  FolderId AddSub(FolderId parent, std::string_view name, char separator);
  void Clear();

  // The full path with the separator at its end, appended to `path`.
  void AppendPath(FolderId folder, std::string& path) const;
  std::string Path(FolderId folder) const;
  std::size_t Count() const { return nodes_.size(); }

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
    const char* name = nullptr;  // not NUL-terminated; lives until Clear
    FolderId folder = 0;
    std::uint16_t nameLength = 0;
    bool isSrchTarget = false;

    std::string_view Name() const { return {name, nameLength}; }
  };

  explicit ColFiles(PathStyle style) : style_(style) {}

  void Clear();
  std::int64_t Count() const { return static_cast<std::int64_t>(items_.size()); }
  const std::vector<Item>& Items() const { return items_; }
  const FolderTree& Folders() const { return folders_; }
  // Appends folder and name to `path`.
  void AppendPath(const Item& item, std::string& path) const;

  // Whether some folder was reached under two spellings of its path, so that two entries may be one file even where it
  // has no second hard link.
  bool ReachedTwice() const { return reachedTwice_; }

  // The walk adds to the catalogue by its own routines, see load_files.h.

 private:
  friend class FolderWalk;
  PathStyle style_;
  FolderTree folders_;
  std::vector<Item> items_;
  bool reachedTwice_ = false;
};

}  // namespace tresmor
