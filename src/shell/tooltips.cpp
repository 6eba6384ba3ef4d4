#include "shell/tooltips.h"

#include <vector>

namespace tresmor {
namespace {

struct Tooltip {
  Control& control;
  const char* text;
};

std::vector<Tooltip> TooltipsOf(FrmMain& frm) {
  return {
      {frm.cmdNewSrch, "Start a new search, clearing current settings"},
      {frm.cmdSrch, "Start the search"},
      {frm.chkTolerant,
       "Tolerate little diff. in duplictes and portions search type. WARNING: This may not correctly duplicated files "
       "(especially for small file)"},
      {frm.lstSrchType, "Note: Searching file portions can be slow, be patient."},
      {frm.cmdTask, "Click here to open, mark, delete and rename."},
      {frm.results.tabMain, "Search result (No. of files / No. of duplicate file groups)"},
      {frm.txtDate, "Type your specified date here."},
      {frm.cmdAdd, "Add selected folder"},
      {frm.cmdRemove, "Remove selected folder"},
      {frm.chkProtectWinDir, "Protect Windows and Program Files folders."},
  };
}

}  // namespace

void InitTooltips(FrmMain& frm) {
  for (const Tooltip& tip : TooltipsOf(frm)) tip.control.ToolTipText = tip.text;
  frm.msgBar.ToolTipText = frm.msgBar.Text();
}

void InitTooltips(FrmSmartDel& frm) {
  frm.cmdGetSelections.ToolTipText = "Get selected folders from result list.";
  frm.cmbPattern.ToolTipText = "e.g.: *.jpg; a*.gif";
  frm.cmdMark.ToolTipText = "Mark those files fulfilling the above criteria.";
  frm.cmdClearMarks.ToolTipText = frm.cmdMark.ToolTipText();  // people know it so
}

void BindMessageTip(FrmMain& frm, const Options& options) {
  frm.msgBar.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::Text || notice.when != Notice::When::After) return;
    if (options.NoTooltipsOpt != 1) frm.msgBar.ToolTipText = frm.msgBar.Text();
  });
}

void RemoveTooltips(FrmMain& frm, ListTip& tips) {
  for (const Tooltip& tip : TooltipsOf(frm)) tip.control.ToolTipText = "";
  frm.msgBar.ToolTipText = "";
  tips.texts.clear();
}

}  // namespace tresmor
