#include "qt/icons.h"

#include "qt/colors.h"

namespace tresmor {

void ChooseIconTheme() {
  const QString own = IsDark() ? "breeze-dark" : "breeze";
  // A desktop may name the half of the pair that doesn't go with its colours.
  const QStringList replaced = {"", "hicolor", "breeze", "breeze-dark"};
  if (replaced.contains(QIcon::themeName())) QIcon::setThemeName(own);
  QIcon::setFallbackThemeName(own);
}

QIcon ThemeIcon(const char* name) { return QIcon::fromTheme(name); }

QIcon ProgramIcon() { return QIcon::fromTheme("tresmor", QIcon(":/tresmor.svg")); }

}  // namespace tresmor
