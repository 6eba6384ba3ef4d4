#include "search/load_files.h"

#include "base/number.h"
#include "search/file_pick.h"
#include "search/folder_walk.h"
#include "search/row_criteria.h"

namespace tresmor {

void LoadPathList(ColFiles& colFiles, const ProtectDir& protectDir, bool bSrchTarget, bool hidden,
                  const std::vector<ScopeRow>& rows, const WalkPorts& ports) {
  FolderWalk walk(colFiles, protectDir, hidden, ports);
  for (std::size_t i = 0; i < rows.size() && !ports.stop.Stopped(); ++i) {
    const int number = CheckedInt16(static_cast<std::int64_t>(i) + 1);
    const ScopeRow& row = rows[i];
    if (row.SmallIcon == ScopeRow::kExcluded || (row.SearchTarget == "Yes") != bSrchTarget) continue;
    if (!protectDir.HoldsStartOf(row.Text)) {
      ports.observer.HighlightRow(number);
      const RowCriteria criteria = ReadRow(row, ports.files.Style());
      const std::vector<WalkNode> nodes = walk.List(criteria);
      FilePick(colFiles, nodes, criteria, hidden, ports).AddAll(bSrchTarget);
    }
    ports.observer.SetBar(static_cast<int>(static_cast<std::size_t>(number) * 100 / rows.size()));
  }
}

}  // namespace tresmor
