// The hover texts of the windows' controls.
#pragma once

#include "marker/frm_smart_del.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"

namespace tresmor {

// Gives the controls that have one their hover texts.
void InitTooltips(FrmMain& frm);
void InitTooltips(FrmSmartDel& frm);

// Takes them all away at once, and those of rows too.
void RemoveTooltips(FrmMain& frm, ListTip& tips);

}  // namespace tresmor
