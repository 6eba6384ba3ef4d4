#include "cli/marked_check.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "fileops/same_content.h"
#include "results/marks.h"
#include "results/rows.h"

namespace tresmor {

MarkedCheck::MarkedCheck(const ResultLists& results, ResultList kind, const FileSystem& files, EmptiedFolders emptied)
    : files_(files), emptied_(std::move(emptied)), folders_(files) {
  const ListView& lst = results.List(kind);
  for (const std::string& path : MarkedPaths(lst)) {
    if (auto entry = EntryOf(path)) marked_.insert(std::move(*entry));
  }
  if (HasGroups(kind)) ForEachGroup(results, kind, [&](RowGroup rows) { TakeDown(lst, rows); });
}

void MarkedCheck::TakeDown(const ListView& lst, RowGroup rows) {
  Group group{rows, {}};
  for (std::int32_t row = rows.first; row <= rows.last; ++row) {
    if (lst.Checked(row)) {
      groupOf_.try_emplace(PathOf(lst, row), groups_.size());
    } else {
      group.others.push_back(PathOf(lst, row));
    }
  }
  if (group.others.size() < static_cast<std::size_t>(rows.Rows())) groups_.push_back(std::move(group));
}

// Where a file system makes identities up, two files may pass for one: they are held back, which harms nobody.
std::optional<MarkedCheck::Entry> MarkedCheck::EntryOf(const std::string& path) {
  FileStat stat;
  if (files_.Stat(path, stat) != Errors::None || stat.kind != EntryKind::File) return std::nullopt;
  Entry entry(stat.identity.device, stat.identity.inode, 0, 0, "");
  if (stat.links > 1) {
    const PathStyle style = files_.Style();
    const FileIdentity& folder = folders_.IdentityOf(std::string(GetFolderOf(path, style)));
    entry = {stat.identity.device, stat.identity.inode, folder.device, folder.inode,
             FoldCase(GetFileNameOf(path, style))};
  }
  return entry;
}

bool MarkedCheck::AnyAbove(const std::string& path, const std::function<bool(const FolderKey&)>& is) {
  return !emptied_.empty() && folders_.Any(std::string(GetFolderOf(path, files_.Style())), is);
}

bool MarkedCheck::GoesWithAFolder(const std::string& path) {
  return AnyAbove(path, [this](const FolderKey& folder) { return emptied_.contains(folder); });
}

bool MarkedCheck::Stays(const std::string& path, const std::optional<Entry>& judged) {
  const auto entry = EntryOf(path);
  return entry && !marked_.contains(*entry) && entry != judged && !GoesWithAFolder(path);
}

std::vector<RowGroup> MarkedCheck::GroupsThatGo() {
  std::vector<RowGroup> going;
  for (const Group& group : groups_) {
    const auto stays = [this](const std::string& path) { return Stays(path, std::nullopt); };
    if (std::none_of(group.others.begin(), group.others.end(), stays)) going.push_back(group.rows);
  }
  return going;
}

std::optional<Objection> MarkedCheck::ObjectionTo(const std::string& path, const CheckRules& rules,
                                                  const std::function<bool()>& stop) {
  const auto known = groupOf_.find(path);
  if (known == groupOf_.end()) return std::nullopt;
  return JudgeIn(groups_[known->second], path, rules, stop);
}

std::optional<Objection> MarkedCheck::JudgeIn(const Group& group, const std::string& path, const CheckRules& rules,
                                              const std::function<bool()>& stop) {
  // What had more names, and has one left since others went, is told apart from this one here alone.
  const auto judged = EntryOf(path);
  bool anyStays = false;
  for (const std::string& other : group.others) {
    if (stop()) return std::nullopt;
    if (!Stays(other, judged)) continue;
    if (!rules.verify || SameContent(files_, path, other, stop)) return std::nullopt;
    anyStays = true;
  }
  if (stop() || (!anyStays && rules.allowAll)) return std::nullopt;
  return anyStays ? Objection::NoneEqual : Objection::NoneStays;
}

void MarkedCheck::HoldFoldersOf(const std::string& path) {
  // Where one is held already, so are those above it.
  AnyAbove(path, [this](const FolderKey& folder) { return !held_.insert(folder).second; });
}

bool MarkedCheck::MayEmptyFolderOf(const std::string& path) {
  const FolderKey folder = KeyOf(folders_.IdentityOf(std::string(GetFolderOf(path, files_.Style()))));
  return emptied_.contains(folder) && !held_.contains(folder);
}

}  // namespace tresmor
