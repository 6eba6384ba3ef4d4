// The program's own folder.
#pragma once

#include <string>

namespace tresmor {

// The folder of the running program, where its helper programs are too. Without a separator at the end; empty if it
// can't be told.
std::string FindExecutableFolder();

// The folder of the files that come with a program in `executableFolder`: that one, or else share/tresmor beside it
// where the program was installed under a prefix. Told by one of these files, err_read.bmp; where that is a link, as
// some package managers make them, the folder that it leads to, since the program opens no links.
std::string ProgramFolder(const std::string& executableFolder);

}  // namespace tresmor
