#include "shell/export_command.h"

#include <optional>

namespace tresmor {

void ExportCommand::mnuExport() {
  const std::optional<std::string> chosen =
      ports_.dialogs.OpenFileDlg({.mode = FileDialogMode::Save,
                                  .title = "Tresmor - Export search result list",
                                  .filters = {{"Comma Separated Values (*.csv)", "*.csv"}, {"All Files", "*.*"}},
                                  .defaultExtension = "csv",
                                  .startName = exportFile_,
                                  .startFolder = frm_.session.SessionFile});
  if (!chosen) return;
  exportFile_ = *chosen;
  ExportList(exportFile_, frm_.results.Shown(), ports_);
}

}  // namespace tresmor
