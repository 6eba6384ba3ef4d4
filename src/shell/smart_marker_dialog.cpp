#include "shell/smart_marker_dialog.h"

#include <string>
#include <unordered_set>

#include "base/number.h"
#include "base/text.h"
#include "desk/event_slice.h"
#include "desk/history.h"
#include "results/marks.h"
#include "results/rows.h"
#include "shell/tooltips.h"

namespace tresmor {

void SelAllFolders(FrmSmartDel& frm, bool bSel) {
  ListView& lstFolder = frm.lstFolder;
  lstFolder.ChangeMany([&] {
    for (std::int32_t row = 1; row <= lstFolder.Count(); ++row) lstFolder.SetSelected(CheckedInt16(row), bSel);
  });
  lstFolder.SetFocus();
}

void SmartMarkerDialog::Show() {
  ResultLists& results = owner_.frm.results;
  const ResultList asked = results.ShownKind();
  FrmSmartDel frm;
  ActionDispatch inDialog(ports_.rules.dialogs);
  ListTip tips{owner_.hovered, {}};
  Load(frm, asked);
  BindListTip(frm.lstFolder, TipRows::Folders, owner_.options, tips);
  Bind(frm, inDialog);
  // Its rules are for the list on show, and the user may have gone to another one meanwhile.
  results.tabMain.Select(static_cast<std::int32_t>(asked) + 1);
  frm.Visible = true;
  ports_.forms.ShowModal(frm, tips);
}

void SmartMarkerDialog::Load(FrmSmartDel& frm, ResultList asked) const {
  const ListView& lst = owner_.frm.results.List(asked);
  frm.lstSize.Enabled = asked == ResultList::SameName || asked == ResultList::Portions;
  frm.lstVer.Enabled = lst.Tag() == kVersionTag;
  frm.lstLeaveVer.Enabled = lst.Tag() == kVersionTag;
  FillFolders(frm.lstFolder, FoldersOf(lst));
  LoadHistory(ports_.settings, {{kPatternHistory, frm.cmbPattern}});
  AddPresets(frm.cmbPattern, owner_.presets.FileTypeDizArr);
  if (owner_.options.NoTooltipsOpt != 1) InitTooltips(frm);
}

// Most rows lie in folders that came up before.
ColFolders SmartMarkerDialog::FoldersOf(const ListView& lst) const {
  ColFolders colFolders(ports_.style);
  std::unordered_set<std::string, TextHash, std::equal_to<>> known;
  EventSlice slice(ports_.rules.events);
  std::string scratch;
  for (std::int32_t row = 1; row <= lst.Count(); ++row) {
    const std::string_view folder = lst.CellView(row, kFolderItem, scratch);
    if (!known.contains(folder)) {
      known.emplace(folder);
      AddFolderPath(folder, colFolders);
    }
    if (slice.IsOver()) slice.LetEventsIn();
  }
  return colFolders;
}

void SmartMarkerDialog::FillFolders(ListView& lstFolder, const ColFolders& colFolders) const {
  FrmMain& main = owner_.frm;
  const std::size_t count = colFolders.Folders().size();
  lstFolder.Visible = false;
  main.tmrProgress.Enabled = true;
  owner_.progress.ProgressMsg = "Smart Marker - loading [value] of " + std::to_string(count) + " folders...";
  owner_.progress.pbItemsCnt = static_cast<std::int32_t>(count);
  EventSlice slice(ports_.rules.events);
  for (const std::string& folder : colFolders.Folders()) {
    owner_.progress.SetTag(lstFolder.AddRow(folder));
    if (slice.IsOver()) slice.LetEventsIn();
  }
  main.tmrProgress.Enabled = false;
  main.pbMain.Value = 0;
  main.msgBar.Text = kReadyText;
  lstFolder.Visible = true;
}

void SmartMarkerDialog::Bind(FrmSmartDel& frm, ActionDispatch& inDialog) const {
  frm.cmdMark.OnClick = [this, &frm] {
    FrmMain& main = owner_.frm;
    const bool closes = ClickMark(frm, main.results, {ports_.rules, main.tmrUpdate, ports_.settings, owner_.presets});
    if (closes) frm.Visible = false;
  };
  frm.cmdClearMarks.OnClick = [this] { SetAllMarks(owner_.frm.results, false); };
  frm.CancelButton.OnClick = [&frm] { frm.Visible = false; };
  frm.cmdHelp.OnClick = ports_.Help;
  frm.cmdSelAll.OnClick = [&frm] { SelAllFolders(frm, true); };
  frm.cmdClrAll.OnClick = [&frm] { SelAllFolders(frm, false); };
  frm.cmdGetSelections.OnClick = [this, &frm] {
    SelectFoldersOf(owner_.frm.results.Shown(), frm.lstFolder, ports_.style);
    frm.lstFolder.SetFocus();
  };
  frm.cmbPattern.OnClick = [this, &frm] { PickPreset(frm.cmbPattern, owner_.presets.FileTypeArr); };
  for (Button* const button : {&frm.cmdMark, &frm.cmdClearMarks, &frm.CancelButton, &frm.cmdHelp, &frm.cmdSelAll,
                               &frm.cmdClrAll, &frm.cmdGetSelections}) {
    inDialog.BindAction(button->OnClick);
  }
  inDialog.BindPassive(frm.cmbPattern.OnClick);
  inDialog.BindPassive(frm.lstFolder.OnMouseMove);
}

}  // namespace tresmor
