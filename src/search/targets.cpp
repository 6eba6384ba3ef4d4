#include "search/targets.h"

#include <unordered_set>

namespace tresmor {

bool ChkSrchTarget(const FileProps& table, std::int32_t dupStart, std::int32_t dupEnd, bool isAllSrchTarget) {
  if (isAllSrchTarget) return true;
  for (std::int32_t i = dupStart; i <= dupEnd; ++i) {
    if (table[i].IsSrchTarget) return true;
  }
  return false;
}

void ReChkSrchTarget(FileProps& table, std::int32_t dupStart, std::int32_t dupEnd) {
  std::unordered_set<std::int32_t> wanted;
  for (std::int32_t i = dupStart; i <= dupEnd; ++i) {
    if (table[i].IsSrchTarget && table[i].DupGrp >= 0) wanted.insert(table[i].DupGrp);
  }
  for (std::int32_t i = dupStart; i <= dupEnd; ++i) {
    if (!wanted.contains(table[i].DupGrp)) table[i].DupGrp = kNoGroup;
  }
}

}  // namespace tresmor
