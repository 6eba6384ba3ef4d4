#include "shell/session_commands.h"

#include <chrono>
#include <optional>
#include <vector>

#include "desk/report_failure.h"
#include "desk/run_job.h"
#include "persist/session_file.h"
#include "persist/whole_file.h"

namespace tresmor {
namespace {

constexpr char kExtension[] = "Tresmor";

std::vector<FileFilter> Filters() {
  return {{"Tresmor Search Session (*.Tresmor)", "*.Tresmor"}, {"All Files", "*.*"}};
}

}  // namespace

SessionControls ControlsOf(FrmMain& frm, SessionState& session) {
  return {frm.lstSrchType, frm.chkTolerant, frm.chkHidden, frm.chkProtectWinDir, frm.lstPath, frm.results, session};
}

SessionControls ControlsOf(FrmMain& frm) { return ControlsOf(frm, frm.session); }

void SessionCommands::mnuSaveResultList() {
  if (frm_.session.SessionFile.empty()) {
    mnuSaveAsResultList();
  } else {
    SaveSession(frm_.session.SessionFile, ControlsOf(frm_), {ports_.writer, ports_.events, ports_.dialogs});
  }
}

void SessionCommands::mnuSaveAsResultList() {
  SessionState& session = frm_.session;
  const std::optional<std::string> chosen = ports_.dialogs.OpenFileDlg({.mode = FileDialogMode::Save,
                                                                        .title = "Tresmor - Save search session as",
                                                                        .filters = Filters(),
                                                                        .defaultExtension = kExtension,
                                                                        .startName = session.SessionFile,
                                                                        .startFolder = session.SessionFile});
  if (!chosen) return;
  const BoxAnswer include =
      ports_.dialogs.MessageBox("Do you want to include your search result in addition to search parameters?",
                                BoxIcon::Question, "Include search result", BoxButtons::YesNo);
  // A save that fails leaves the session to its old file, and that file's result in it.
  SessionState asked{*chosen, include == BoxAnswer::Yes, session.HasSrchResult};
  if (SaveSession(*chosen, ControlsOf(frm_, asked), {ports_.writer, ports_.events, ports_.dialogs})) session = asked;
}

void SessionCommands::mnuLoadResultList() {
  const PointerWhile hourglass(frm_.pointer, PointerShape::Hourglass);
  const std::optional<std::string> chosen = ports_.dialogs.OpenFileDlg({.mode = FileDialogMode::Open,
                                                                        .title = "Tresmor - load search session",
                                                                        .filters = Filters(),
                                                                        .defaultExtension = kExtension,
                                                                        .startName = "Untitled.Tresmor",
                                                                        .startFolder = ""});
  if (chosen) OpenSession(*chosen);
}

void SessionCommands::OpenSession(const std::string& sFileName) {
  const PointerWhile hourglass(frm_.pointer, PointerShape::Hourglass);
  LoadSession(sFileName);
  frm_.session.SessionFile = sFileName;
  frm_.session.HasSrchResult = true;
}

bool SessionCommands::LoadSession(const std::string& sFileName) {
  return DoOrReport(ports_.dialogs, kLoadingFailed, [&] {
    Init(frm_);
    DisableFileMenus(frm_);
    std::string sFile;
    RunJob(ports_.events, [&] { sFile = ReadWholeFile(ports_.files, sFileName); });
    const SessionProgress shown{progress_, frm_.tmrProgress, ports_.events};
    if (!tresmor::LoadSession(sFile, ControlsOf(frm_), shown, ports_.dialogs)) return false;
    frm_.tmrProgress.Enabled = false;
    frm_.pbMain.Value = 0;
    frm_.msgBar.Text = kReadyText;
    ShowResult(frm_, [this] { ports_.events.Pump(std::chrono::milliseconds(0)); });
    return true;
  });
}

}  // namespace tresmor
