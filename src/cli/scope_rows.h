#pragma once

#include <string>
#include <vector>

#include "cli/options.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "shell/frm_main.h"

namespace tresmor {

struct ScopePorts {
  const FileSystem& files;
  const Shell& shell;
  const std::string& workingFolder;  // absolute
};

// Puts the folders of a command line into lstPath. Throws WrongUse for one that isn't there or is no folder.
void AddScopeRows(FrmMain& frm, const FindOptions& options, const ScopePorts& ports);

// A sentence for each row of lstPath that the search will leave out, since it lies in a folder to keep out of.
std::vector<std::string> RowsLeftOut(const FrmMain& frm, const ScopePorts& ports);

}  // namespace tresmor
