// Rows of the result lists: how a finding becomes one, and which of them form a group. After a search a row's texts are
// all that is left of the finding.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/list_view.h"
#include "search/search_observer.h"

namespace tresmor {

// Sub-items of a result row. Folder and name, joined as they stand, are the file's path.
enum : std::int16_t {
  kNameItem = 0,     // the row's own text
  kFolderItem = 1,   // with the separator at its end
  kDupGrpItem = 2,   // group number, padded; one blank for none
  kSizeItem = 3,     // bytes, padded
  kDateItem = 4,     // "yyyy/mm/dd hh:mm:ss", UTC
  kVersionItem = 5,  // only where versions were asked for; its tag is VerSortKey of it
};

// Tag of a list that has rows with versions.
inline constexpr char kVersionTag[] = "Ver";

// Colours of the rows' texts, which tell neighbouring groups apart.
inline constexpr std::array<std::uint32_t, 6> GroupColors = {0x009933, 0x0033CC, 0xFF9900,
                                                             0xCC0000, 0x9933FF, 0x000000};

// Adds the row of one finding, as the last.
void AddResultItem(ListView& lst, const Finding& finding);

// The path of a row's file.
std::string PathOf(const ListView& lst, std::int32_t row);

// Writes a version and the key that it sorts by.
void SetVersion(ListView& lst, std::int32_t row, const std::string& version);

constexpr bool HasGroups(ResultList kind) {
  return kind == ResultList::Duplicates || kind == ResultList::SameName || kind == ResultList::Portions;
}
// The 1-based column by which a list is sorted to bring the rows of its groups together.
constexpr std::int16_t GroupColumn(ResultList kind) {
  return (kind == ResultList::SameName ? kNameItem : kDupGrpItem) + 1;
}
// Whether two rows have one group key: the same file name without regard to case in the list of same names, else
// the same group number, byte for byte. The rows of a list without groups have one key or a few that mean nothing.
bool SameGroup(const ListView& lst, ResultList kind, std::int32_t a, std::int32_t b);

// Gives each run of rows of one group the next colour in turn. A list of one row keeps its colour. `kind` has groups.
void ColorGroups(ListView& lst, ResultList kind);

}  // namespace tresmor
