#include "results/rows.h"

#include "base/number.h"
#include "base/text.h"
#include "results/version_key.h"

namespace tresmor {

void SetVersion(ListView& lst, std::int32_t row, const std::string& version) {
  lst.SetCell(row, kVersionItem, version);
  lst.SetCellTag(row, kVersionItem, VerSortKey(version));
}

void AddResultItem(ListView& lst, const Finding& finding) {
  const CellValue group = finding.dupGrp == -1 ? CellValue(" ") : CellValue(PaddedNumber{finding.dupGrp});
  const std::array<CellValue, 4> subItems = {finding.folder, group, PaddedNumber{finding.size},
                                             StampText{finding.modified}};
  const std::int32_t row = lst.AddRow(finding.name, subItems);
  if (!finding.version) return;
  SetVersion(lst, row, *finding.version);
  lst.Tag = kVersionTag;
}

std::string PathOf(const ListView& lst, std::int32_t row) {
  return lst.Cell(row, kFolderItem) + lst.Cell(row, kNameItem);
}

bool SameGroup(const ListView& lst, ResultList kind, std::int32_t a, std::int32_t b) {
  if (kind != ResultList::SameName) return lst.SameCell(a, b, kDupGrpItem);
  std::string scratchA;
  std::string scratchB;
  return EqualText(lst.CellView(a, kNameItem, scratchA), lst.CellView(b, kNameItem, scratchB));
}

void ColorGroups(ListView& lst, ResultList kind) {
  if (lst.Count() < 2) return;
  lst.ChangeMany([&] {
    std::int16_t color = 0;
    lst.SetForeColor(1, GroupColors[0]);
    for (std::int32_t row = 2; row <= lst.Count(); ++row) {
      if (!SameGroup(lst, kind, row, row - 1)) color = CheckedInt16((color + 1) % std::ssize(GroupColors));
      lst.SetForeColor(row, GroupColors[static_cast<std::size_t>(color)]);
    }
  });
}

}  // namespace tresmor
