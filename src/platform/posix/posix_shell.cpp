#include "platform/posix/posix_shell.h"

namespace tresmor {

std::string PosixShell::GetWinDir() const { return "/usr"; }
std::string PosixShell::GetProgramFilesDir() const { return "/opt"; }

}  // namespace tresmor
