// The program's own folder.
#pragma once

#include <string>

namespace tresmor {

// The folder of the running program. Without a separator at the end; empty if it can't be told.
std::string FindExecutableFolder();

// The folder of the files that come with a program in `executableFolder`: that one, where it was built, or else the one
// that they are installed to, share/tresmor beside it unless the build was told otherwise. Told by one of these files,
// err_read.bmp; where that is a link, as some package managers make them, the folder that it leads to, since the
// program opens no links.
std::string ProgramFolder(const std::string& executableFolder);

// The folder of the helper programs likewise, told by tresmor-picture: that one, or else libexec/tresmor beside it.
std::string HelperFolder(const std::string& executableFolder);

}  // namespace tresmor
