#include "cli/marked_check.h"

#include <algorithm>

#include "base/text.h"
#include "fileops/same_content.h"
#include "results/rows.h"

namespace tresmor {

MarkedCheck::MarkedCheck(const ResultLists& results, ResultList kind, const FileSystem& files)
    : results_(results), kind_(kind), lst_(results.List(kind)), files_(files) {
  for (const std::int32_t row : Marked({1, lst_.Count()})) {
    if (auto entry = EntryOf(row)) marked_.insert(std::move(*entry));
  }
}

// Where a file system makes identities up, two files may pass for one: they are held back, which harms nobody.
std::optional<MarkedCheck::Entry> MarkedCheck::EntryOf(std::int32_t row) {
  FileStat stat;
  if (files_.Stat(PathOf(lst_, row), stat) != Errors::None || stat.kind != EntryKind::File) return std::nullopt;
  Entry entry(stat.identity.device, stat.identity.inode, 0, 0, "");
  if (stat.links > 1) {
    const FileIdentity& folder = IdentityOf(lst_.Cell(row, kFolderItem));
    entry = {stat.identity.device, stat.identity.inode, folder.device, folder.inode,
             FoldCase(lst_.Cell(row, kNameItem))};
  }
  return entry;
}

const FileIdentity& MarkedCheck::IdentityOf(const std::string& folder) {
  const auto [known, isNew] = folders_.try_emplace(folder);
  FileStat stat;
  // The folder may be a link to one, which only a name below it sees through.
  if (isNew && files_.Stat(folder + ".", stat) == Errors::None) known->second = stat.identity;
  return known->second;
}

std::vector<std::int32_t> MarkedCheck::Marked(RowGroup group) const {
  std::vector<std::int32_t> rows;
  for (std::int32_t row = group.first; row <= group.last; ++row) {
    if (lst_.Checked(row)) rows.push_back(row);
  }
  return rows;
}

std::vector<std::string> MarkedCheck::Staying(RowGroup group) {
  std::vector<std::string> paths;
  for (std::int32_t row = group.first; row <= group.last; ++row) {
    if (lst_.Checked(row)) continue;
    const auto entry = EntryOf(row);
    if (entry && !marked_.contains(*entry)) paths.push_back(PathOf(lst_, row));
  }
  return paths;
}

std::vector<RowGroup> MarkedCheck::GroupsThatGo() {
  std::vector<RowGroup> groups;
  if (!HasGroups(kind_)) return groups;
  ForEachGroup(results_, kind_, [&](RowGroup group) {
    if (!Marked(group).empty() && Staying(group).empty()) groups.push_back(group);
  });
  return groups;
}

std::vector<SkippedRow> MarkedCheck::RowsToSkip(const CheckRules& rules, OperationWatch& watch) {
  std::vector<SkippedRow> skipped;
  OperationProgress progress;
  progress.allFiles = CountMarked(lst_).count;
  const auto stop = [&watch] { return watch.Cancelled(); };
  ForEachGroup(results_, kind_, [&](RowGroup group) {
    const std::vector<std::int32_t> marked = Marked(group);
    const std::vector<std::string> staying = marked.empty() ? std::vector<std::string>() : Staying(group);
    for (const std::int32_t row : marked) {
      if (stop()) return;
      progress.path = PathOf(lst_, row);
      watch.Progress(progress);
      ++progress.files;
      const auto isEqual = [&](const std::string& path) { return SameContent(files_, progress.path, path, stop); };
      if (staying.empty()) {
        if (!rules.allowAll) skipped.push_back({row, SkippedRow::Why::NoneStays});
      } else if (rules.verify && std::none_of(staying.begin(), staying.end(), isEqual) && !stop()) {
        skipped.push_back({row, SkippedRow::Why::NoneEqual});
      }
    }
  });
  return skipped;
}

}  // namespace tresmor
