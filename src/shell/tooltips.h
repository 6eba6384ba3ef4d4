// The hover texts of the windows' controls.
#pragma once

#include "marker/frm_smart_del.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"

namespace tresmor {

// Gives the controls that have one their hover texts.
void InitTooltips(FrmMain& frm);
void InitTooltips(FrmSmartDel& frm);

// From now on the status bar's message, which may be longer than its panel, is its hover text too, as long as hover
// texts are on. `options` outlives the form's events.
void BindMessageTip(FrmMain& frm, const Options& options);

// Takes them all away at once, and those of rows too.
void RemoveTooltips(FrmMain& frm, ListTip& tips);

}  // namespace tresmor
