// The command that exports the list on show.
#pragma once

#include <string>

#include "persist/csv_export.h"
#include "shell/frm_main.h"

namespace tresmor {

// Interface thread.
class ExportCommand {
 public:
  ExportCommand(const FrmMain& frm, const ExportPorts& ports) : frm_(frm), ports_(ports) {}
  ExportCommand(const ExportCommand&) = delete;
  ExportCommand& operator=(const ExportCommand&) = delete;

  // Asks for a file, proposing the one of the last export, and writes the list (ExportList).
  void mnuExport();

 private:
  const FrmMain& frm_;
  const ExportPorts ports_;
  std::string exportFile_;
};

}  // namespace tresmor
