// Sorting the file table by its keys.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "search/file_props.h"

namespace tresmor {

enum class FileKey {
  Size = 0,  // by Sz
  Name = 1,  // by file name, without regard to case
};

// -1, 0 or 1.
int CompareFileProp(const FileProp& a, const FileProp& b, FileKey key);

// Sort records l to r, both inclusive, in place.
void QuickSortBySize(FileProps& table, std::int32_t l, std::int32_t r);
void QuickSortByName(FileProps& table, std::int32_t l, std::int32_t r);
// By head, then by size. ranks[k] belongs to record l + k: a number that orders the heads as their bytes do, equal for
// equal heads. The ranks are moved along with the records.
void QuickSortByHead(FileProps& table, std::int32_t l, std::int32_t r, std::span<std::uint32_t> ranks);

}  // namespace tresmor
