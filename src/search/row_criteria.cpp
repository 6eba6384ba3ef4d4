#include "search/row_criteria.h"

#include <utility>

#include "base/failure.h"
#include "base/number.h"
#include "base/text.h"

namespace tresmor {

namespace {

constexpr std::int64_t kKilobyte = 1024;

std::int32_t ReadSize(std::string_view cell) { return cell.empty() ? -1 : ParseInt32(cell); }

std::optional<DateStamp> ReadDate(std::string_view cell) {
  if (cell.empty()) return std::nullopt;
  const std::optional<DateStamp> date = ParseDate(cell);
  if (!date) throw Failure(Errors::TypeMismatch);
  return date;
}

std::vector<WalkPattern> ReadPatterns(std::string_view text, PathStyle style) {
  std::vector<WalkPattern> patterns;
  for (;;) {
    const std::size_t end = text.find(';');
    patterns.emplace_back(TrimBlanks(text.substr(0, end)), style);
    if (end == std::string_view::npos) return patterns;
    text.remove_prefix(end + 1);
  }
}

}  // namespace

WalkPattern::WalkPattern(std::string_view pattern, PathStyle style) {
  std::string text(pattern);
  do {
    Wildcard wildcard(text);
    steps_.push_back({std::move(text), std::move(wildcard)});
    text = SplitFileSpec(steps_.back().text, kFileName | kFileExt, style);
  } while (text != steps_.back().text);
}

bool RowCriteria::Passes(const FileStat& stat) const {
  if (stat.kind != EntryKind::File) return false;
  const std::int64_t sizeKb = DivideRoundEven(stat.size, kKilobyte);
  if (sizeKb <= minSz) return false;
  if (maxSz != -1 && sizeKb >= maxSz) return false;
  return !modDate || *modDate <= LocalStamp(stat.modified);
}

RowCriteria ReadRow(const ScopeRow& row, PathStyle style) {
  RowCriteria criteria;
  criteria.minSz = ReadSize(row.MinSize);
  criteria.maxSz = ReadSize(row.MaxSize);
  const std::string_view folder = GetFolderOf(row.Text, style);
  criteria.folder = AddTail(folder, style.Tail());
  criteria.patterns = ReadPatterns(std::string_view(row.Text).substr(folder.size()), style);
  criteria.recursive = row.SubFolder == "Yes";
  criteria.modDate = ReadDate(row.Date);
  return criteria;
}

}  // namespace tresmor
