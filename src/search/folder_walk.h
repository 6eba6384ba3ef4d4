// First half of a row's walk: the tree of its folders. They are listed side by side, wave by wave, and each only once
// however many patterns the row has.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "search/col_files.h"
#include "search/protect_dir.h"
#include "search/row_criteria.h"
#include "search/walk_ports.h"

namespace tresmor {

// A folder of a row's tree. A folder's children stand side by side in the order of its listing.
struct WalkNode {
  static constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

  ColFiles::Folder folder;
  ColFiles::ListingId listing = ColFiles::kNoListing;  // none: not entered
  std::uint32_t parent = kNoParent;
  std::uint32_t firstChild = 0;
  std::uint32_t children = 0;
  std::uint32_t depth = 0;
};

// The text that tells the user where the walk is.
std::string SearchingText(const ColFiles& colFiles, const WalkNode& node, const WalkPattern& pattern);

class FolderWalk {
 public:
  // `hidden`: enter hidden folders.
  FolderWalk(ColFiles& colFiles, const ProtectDir& protectDir, bool hidden, const WalkPorts& ports)
      : colFiles_(colFiles), protectDir_(protectDir), hidden_(hidden), ports_(ports) {}

  // The row's own folder comes first and parents come before children. A stop leaves out folders.
  std::vector<WalkNode> List(const RowCriteria& row);

 private:
  void Visit(WalkNode& node, std::optional<FolderListing>& fresh) const;
  bool IsBarred(const std::string& folder) const;
  void Settle(std::size_t at, std::optional<FolderListing> fresh);
  bool IsOwnAncestor(const WalkNode& node, const FolderListing& folder) const;
  void AddChildren(std::size_t at);

  ColFiles& colFiles_;
  const ProtectDir& protectDir_;
  const bool hidden_;
  const WalkPorts& ports_;
  bool trash_ = false;  // the row starts inside a trash folder, so it may enter such
  bool recursive_ = false;
  std::vector<WalkNode> nodes_;
};

}  // namespace tresmor
