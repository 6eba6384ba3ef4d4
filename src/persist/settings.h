// What the main window keeps from one run to the next.
#pragma once

#include "base/date.h"
#include "controls/combo_box.h"
#include "desk/options.h"
#include "desk/presets.h"
#include "platform/settings_store.h"
#include "platform/shell.h"

namespace tresmor {

// What of the main window the settings fill and are taken from.
struct SettingsOwner {
  ComboBox& txtPath;
  ComboBox& txtExt;
  Presets& presets;
  Options& options;
};

// Once, at the start, into boxes without entries: histories and presets into their lists, then the options, each of
// which stays as it is where what is kept can't be converted. `now` is the local clock's. The caller shows the tooltips
// afterwards unless NoTooltipsOpt is 1.
void LoadSettings(const SettingsStore& store, const Shell& shell, DateStamp now, SettingsOwner owner);

// Whether a start shows a tip, straight from the store. True where that isn't kept, false where it can't be converted.
bool ShowTipsAtStartup(const SettingsStore& store);

// Keeps that at once. Throws what the store throws.
void SaveShowTips(SettingsStore& store, std::int16_t shows);

// Once, at a normal end. Throws the Failure of a history that can't be saved; an option that can't be is passed over.
// As many folders are saved as there are patterns in the history, whatever their entries are. Keys are overwritten and
// never removed.
void SaveSettings(SettingsStore& store, SettingsOwner owner);

}  // namespace tresmor
