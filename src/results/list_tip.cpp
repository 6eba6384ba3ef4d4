#include "results/list_tip.h"

#include "base/text.h"
#include "search/scope_row.h"

namespace tresmor {
namespace {

std::string WithoutSortMarks(std::string_view header) { return ReplaceAll(ReplaceAll(header, "^ ", ""), "v ", ""); }

std::string FirstPart(const ListView& lst, std::int32_t row, TipRows rows) {
  std::string text = lst.Cell(row, 0);
  switch (rows) {
    case TipRows::Results:
      return WithoutSortMarks(lst.Column(1).text) + ": " + text;
    case TipRows::Scope:
      return lst.Column(1).text + ": " + text +
             "\r\nExclude: " + (lst.SmallIcon(row) == ScopeRow::kExcluded ? "Yes" : "No");
    case TipRows::Folders:
      break;
  }
  return text;
}

// All cells that are not blank, those of hidden columns too.
std::string OtherParts(const ListView& lst, std::int32_t row) {
  std::string parts;
  for (std::int32_t subItem = 1; subItem <= lst.SubItems(row); ++subItem) {
    const std::string text = lst.Cell(row, subItem);
    if (TrimBlanks(text).empty()) continue;
    parts += "\r\n" + WithoutSortMarks(lst.Column(subItem + 1).text) + ": " + text;
  }
  return parts;
}

}  // namespace

void ShowListTip(std::int32_t row, const ListView& lst, TipRows rows, ListTip& tip) {
  if (row == 0) {
    tip.texts.erase(&lst);
    return;
  }
  const HoveredRow now{lst.Arrangement(), row};
  if (now == tip.hovered) return;
  tip.texts[&lst] = FirstPart(lst, row, rows) + OtherParts(lst, row);
  tip.hovered = now;
}

void BindListTip(ListView& lst, TipRows rows, const Options& options, ListTip& tip) {
  lst.OnMouseMove = [&lst, rows, &options, &tip](std::int32_t row) {
    if (options.NoTooltipsOpt != 1) ShowListTip(row, lst, rows, tip);
  };
}

}  // namespace tresmor
