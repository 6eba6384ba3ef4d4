#pragma once

#include <QIcon>
#include <QString>

namespace tresmor {

// Has the icons of the desktop's theme, or of one that comes along where the desktop has none, in the colours that suit
// its ground.
void ChooseIconTheme();

// An icon by its name in the icon naming standard of freedesktop.org. Null where no theme has it.
QIcon ThemeIcon(const char* name);

// The program's own, of the theme where the program is installed, else one that it holds itself.
QIcon ProgramIcon();

}  // namespace tresmor
