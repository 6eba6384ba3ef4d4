#include "cli/result_reader.h"

#include <array>

#include "results/rows.h"

namespace tresmor {

void ForEachGroup(const ResultLists& results, ResultList kind, const std::function<void(RowGroup)>& take) {
  const ListView& lst = results.List(kind);
  RowGroup group{1, 1};
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    const bool ends = row == lst.Count() || (HasGroups(kind) && !SameGroup(lst, kind, row + 1, row));
    if (!ends) continue;
    group.last = row;
    take(group);
    group.first = row + 1;
  }
}

std::string_view ResultReader::Name(std::int32_t row) { return lst_.CellView(row, kNameItem, name_); }

std::string_view ResultReader::Folder(std::int32_t row) { return lst_.CellView(row, kFolderItem, folder_); }

std::string_view ResultReader::Path(std::int32_t row) {
  path_.assign(Folder(row)).append(Name(row));
  return path_;
}

std::int64_t ResultReader::Size(std::int32_t row) const { return lst_.CellNumber(row, kSizeItem).value(); }

std::int64_t ResultReader::DupGrp(std::int32_t row) const { return lst_.CellNumber(row, kDupGrpItem).value(); }

std::optional<std::string_view> ResultReader::Date(std::int32_t row) {
  static const std::string kNoDate = FormatStamp(kZeroDate);
  const std::string_view date = lst_.CellView(row, kDateItem, date_);
  if (date == kNoDate) return std::nullopt;
  return date;
}

std::optional<std::string_view> ResultReader::IsoDate(std::int32_t row) {
  const std::optional<std::string_view> date = Date(row);
  if (!date) return std::nullopt;
  isoDate_.assign(*date);
  isoDate_[4] = isoDate_[7] = '-';
  isoDate_[10] = 'T';
  isoDate_.push_back('Z');
  return isoDate_;
}

std::optional<std::string_view> ResultReader::Version(std::int32_t row) {
  if (lst_.Tag() != kVersionTag) return std::nullopt;
  return lst_.CellView(row, kVersionItem, version_);
}

MarkedRows CountMarked(const ListView& lst) {
  const ResultReader reader(lst);
  MarkedRows marked;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    if (!reader.Marked(row)) continue;
    ++marked.count;
    marked.bytes += reader.Size(row);
  }
  return marked;
}

const char* ListName(ResultList kind) {
  static constexpr std::array<const char*, kResultLists> kNames = {"zero", "duplicates", "names", "portions", "errors"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::optional<std::int64_t> GroupNumber(ResultReader& reader, ResultList kind, RowGroup group, std::int64_t running) {
  if (!HasGroups(kind)) return std::nullopt;
  return kind == ResultList::SameName ? running : reader.DupGrp(group.first);
}

}  // namespace tresmor
