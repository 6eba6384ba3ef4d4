#include "qt/icons.h"

#include "qt/colors.h"

namespace tresmor {

void ChooseIconTheme() {
  const QString own = IsDark() ? "breeze-dark" : "breeze";
  // A desktop of dark colours may name the bright half of the pair all the same.
  const QStringList left = {"", "hicolor", "breeze"};
  if (left.contains(QIcon::themeName())) QIcon::setThemeName(own);
  QIcon::setFallbackThemeName(own);
}

QIcon ThemeIcon(const char* name) { return QIcon::fromTheme(name); }

QIcon ProgramIcon() { return QIcon::fromTheme("tresmor", QIcon(":/tresmor.svg")); }

}  // namespace tresmor
