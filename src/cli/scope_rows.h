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
  const std::string& workingFolder;  // as TypedPath takes it
};

// Puts the folders of a command line into lstPath. Throws WrongUse for one that isn't there or is no folder.
void AddScopeRows(FrmMain& frm, const FindOptions& options, const ScopePorts& ports);

// As AbsoluteFolder; throws WrongUse for one that isn't there or is no folder.
std::string ExistingFolder(const std::string& typed, const ScopePorts& ports);

// Throws WrongUse where one of the folders that lstPath searches isn't there or is no folder.
void CheckScopeRows(const FrmMain& frm, const ScopePorts& ports);

// Throws WrongUse where the folder isn't there in which a file is to be written.
void CheckFolderOfFile(const std::string& typed, const ScopePorts& ports);

// A folder as it was typed, from the root and with the separator at its end. Throws WrongUse as TypedPath.
std::string AbsoluteFolder(const std::string& typed, const ScopePorts& ports);

// Why a row is left out, in the words of a command.
struct LeftOutWords {
  const char* protectedFolder;
  const char* excluded;
};

// A sentence for each row of lstPath that the search will leave out, since it lies in a folder to keep out of.
std::vector<std::string> RowsLeftOut(const FrmMain& frm, const ScopePorts& ports, const LeftOutWords& words);

}  // namespace tresmor
