#include "qt/icons.h"

#include "qt/colors.h"

namespace tresmor {

void ChooseIconTheme() {
  const QString fallback = IsDark() ? "breeze-dark" : "breeze";
  if (QIcon::themeName().isEmpty() || QIcon::themeName() == "hicolor") QIcon::setThemeName(fallback);
  QIcon::setFallbackThemeName(fallback);
}

QIcon ThemeIcon(const char* name) { return QIcon::fromTheme(name); }

QIcon ProgramIcon() { return QIcon::fromTheme("tresmor", ThemeIcon("edit-copy")); }

}  // namespace tresmor
