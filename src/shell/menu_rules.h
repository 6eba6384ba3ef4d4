// Which items of the menus can be chosen, worked out whenever a menu opens.
#pragma once

#include <functional>

#include "shell/frm_main.h"

namespace tresmor {

// Binds OnOpen of the menus. Items without anything to do can't be chosen, now or later, and neither can those that
// would be dropped while an action of the window runs, which `isActing` tells. Interface thread.
void BindMenuRules(FrmMain& frm, const std::function<bool()>& isActing);

}  // namespace tresmor
