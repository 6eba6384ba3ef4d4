#include "shell/result_page.h"

#include <optional>

#include "desk/run_job.h"
#include "results/marks.h"
#include "results/rows.h"
#include "results/sort_list.h"

namespace tresmor {

ResultPage::ResultPage(FrmMain& frm, Progress& progress, const ResultPagePorts& ports)
    : frm_(frm), progress_(progress), ports_(ports) {
  for (ListView& lst : frm_.results.lstResult) Bind(lst);
}

void ResultPage::Bind(ListView& lst) {
  lst.OnClick = [this] { StartUpdate(); };
  lst.OnItemClick = [this] {
    ports_.Preview();
    StartUpdate();
  };
  lst.OnItemCheck = [this] { StartUpdate(); };
  lst.OnDblClick = [this] { ports_.OpenFile(); };
  lst.OnColumnClick = [this, &lst](std::int16_t column) { Sort(lst, column); };
  lst.OnMouseUp = [this](MouseButton button) {
    if (button == MouseButton::Right) ports_.PopUp(frm_.mnuFile);
  };
}

void ResultPage::mnuMarkAll() {
  SetAllMarks(frm_.results, true);
  StartUpdate();
  ports_.GuardedMsg(kTipOrgNDup);
}

void ResultPage::mnuMarkSelected() {
  MarkSelected(frm_.results);
  StartUpdate();
}

void ResultPage::mnuClearMarks() {
  SetAllMarks(frm_.results, false);
  StartUpdate();
}

void ResultPage::mnuPropPage() {
  const ListView& lst = frm_.results.Shown();
  const std::int32_t row = lst.SelectedItem();
  if (row == 0) return;
  const std::string file = PathOf(lst, row);
  if (!ShownByDesktop(file)) ports_.OwnFileProp(file);
}

// The desktop may take seconds to answer, or never do so.
bool ResultPage::ShownByDesktop(const std::string& file) {
  bool shown = false;
  RunJob(ports_.versions.events, [&] { shown = ports_.shell.ShowFileProp(file); });
  return shown;
}

void ResultPage::mnuOpenFolder() {
  const ListView& lst = frm_.results.Shown();
  if (const std::int32_t row = lst.SelectedItem()) ports_.shell.ShellOpen(lst.Cell(row, kFolderItem));
}

void ResultPage::mnuShowVer() { ShowVersions(frm_, progress_, ports_.versions); }

// Versions take the longest to sort.
void ResultPage::Sort(ListView& lst, std::int16_t column) {
  std::optional<PointerWhile> hourglass;
  if (column - 1 == kVersionItem) hourglass.emplace(frm_.pointer, PointerShape::Hourglass);
  ClickColumn(lst, column);
}

void BindListTips(FrmMain& frm, const Options& options, ListTip& tip) {
  BindListTip(frm.lstPath, TipRows::Scope, options, tip);
  for (ListView& lst : frm.results.lstResult) BindListTip(lst, TipRows::Results, options, tip);
}

}  // namespace tresmor
