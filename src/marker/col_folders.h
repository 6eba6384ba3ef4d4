// The folders that the dialog of Smart Marker offers: those of the rows of a result list and all that these lie in.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/path.h"
#include "controls/list_view.h"

namespace tresmor {

// Folders with the separator at their ends, each once, in the order in which they were added first and as they were
// written then.
class ColFolders {
 public:
  explicit ColFolders(PathStyle style) : style_(style) {}

  PathStyle Style() const { return style_; }
  const std::vector<std::string>& Folders() const { return folders_; }

  // Whether it wasn't there before.
  bool Add(std::string_view folder);

 private:
  const PathStyle style_;
  std::vector<std::string> folders_;
  std::unordered_set<std::string> keys_;
};

// Adds the folder that is `path` up to its last separator, then the folder around it and so on, up to a root, or to one
// that is there already.
void AddFolderPath(std::string_view path, ColFolders& colFolders);

// Selects the rows of `lstFolder` that are folders of selected rows of the result list `lst`, told by one notice; other
// rows stay as they are. A folder that isn't there counts for nothing. Fails with Overflow where a row past 32767 is
// meant; what was selected until then stays so.
void SelectFoldersOf(const ListView& lst, ListView& lstFolder, PathStyle style);

}  // namespace tresmor
