// Which items of the menus can be chosen, worked out whenever a menu opens.
#pragma once

#include "shell/frm_main.h"

namespace tresmor {

// Binds OnOpen of the menus on sessions and result files. Items without anything to do can't be chosen, now or later.
// Interface thread.
void BindMenuRules(FrmMain& frm);

}  // namespace tresmor
