#include "cli/mark_command.h"

#include "cli/output.h"
#include "cli/readable.h"
#include "cli/result_reader.h"
#include "cli/scope_rows.h"
#include "cli/session_io.h"
#include "marker/smart_marker.h"
#include "results/marks.h"
#include "results/rows.h"

namespace tresmor {
namespace {

// What the dialog keeps out of reach.
void CheckVersions(const MarkOptions& options, const ListView& lst) {
  const bool asked = options.byVersion != 0 || options.keep.leaveVer != 0;
  if (asked && lst.Tag() != kVersionTag) {
    throw WrongUse("The list has no versions. 'tresmor-cli find' and 'run' tell them with --versions.");
  }
}

void SetControls(FrmSmartDel& frm, const MarkOptions& options, const ConsolePorts& ports) {
  frm.lstDate.Choose(options.byDate);
  frm.lstSize.Choose(options.bySize);
  frm.lstVer.Choose(options.byVersion);
  for (const std::string& typed : options.folders) {
    if (typed.empty()) throw WrongUse("--folder: '' is no folder.");
    const std::string folder = AbsoluteFolder(typed, {ports.files, ports.shell, ports.workingFolder});
    frm.lstFolder.SetSelected(frm.lstFolder.AddRow(folder), true);
  }
  frm.chkSubFolder.Value = options.subFolders;
  frm.cmbPattern.SetText(options.pattern);
  frm.chkLeaveAtLeast1.Value = options.keep.leaveAtLeast1;
  frm.lstLeaveDate.Choose(options.keep.leaveDate);
  frm.lstLeaveVer.Choose(options.keep.leaveVer);
}

// The warning of --keep none is for who may have overlooked a box.
SmartMarkerPorts MarkerPorts(const ConsolePorts& ports) {
  return {.events = ports.events, .dialogs = ports.err, .GuardedMsg = [](GuardedId) { return true; }};
}

void PrintMarked(const ListView& lst, const ConsolePorts& ports) {
  const MarkedRows marked = CountMarked(lst);
  Output out(ports.out);
  out.Write(CountOf(marked.count, "file") + " (" + ReadableSize(marked.bytes) + ") marked, out of " +
            CountOf(lst.Count(), "file") + ".\n");
  out.Flush();
}

}  // namespace

int MarkCommand(const MarkOptions& options, const ConsolePorts& ports) {
  ports.nothingToCancel();
  SavedResult saved(ports);
  if (!saved.Load(options.session, ports)) return kFailed;
  ResultLists& results = saved.frm.results;
  results.tabMain.Select(static_cast<std::int32_t>(options.list) + 1);
  CheckVersions(options, results.Shown());
  FrmSmartDel rules;
  SetControls(rules, options, ports);
  if (options.clear) SetAllMarks(results, false);
  // All that stops it was typed wrong, and a box has told so.
  if (MarkBySmartRules(rules, results, MarkerPorts(ports)) != SmartMarks::Done) return kWrongUse;
  if (!SaveSession(saved.frm, options.session, ports)) return kFailed;
  PrintMarked(results.Shown(), ports);
  return kRanThrough;
}

}  // namespace tresmor
