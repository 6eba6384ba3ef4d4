#include "marker/col_folders.h"

#include <unordered_map>

#include "base/number.h"
#include "results/rows.h"

namespace tresmor {

bool ColFolders::Add(std::string_view folder) {
  if (!keys_.insert(style_.Key(folder)).second) return false;
  folders_.emplace_back(folder);
  return true;
}

void AddFolderPath(std::string_view path, ColFolders& colFolders) {
  for (;;) {
    const std::string_view folder = GetFolderOf(path, colFolders.Style());
    if (folder.size() < colFolders.Style().ShortestFolder() || !colFolders.Add(folder)) return;
    path = folder.substr(0, folder.size() - 1);
  }
}

void SelectFoldersOf(const ListView& lst, ListView& lstFolder, PathStyle style) {
  std::string scratch;
  std::unordered_map<std::string, std::int32_t> rows;  // the first of each
  for (std::int32_t row = 1; row <= lstFolder.Count(); ++row) {
    rows.emplace(style.Key(lstFolder.CellView(row, 0, scratch)), row);
  }
  lstFolder.ChangeMany([&] {
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      if (!lst.Selected(row)) continue;
      const auto found = rows.find(style.Key(lst.CellView(row, kFolderItem, scratch)));
      if (found != rows.end()) lstFolder.SetSelected(CheckedInt16(found->second), true);
    }
  });
}

}  // namespace tresmor
