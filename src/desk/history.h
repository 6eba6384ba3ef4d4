// What the user typed into combo boxes before: the entries in front of the separator, the latest first.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "controls/combo_box.h"
#include "desk/presets.h"
#include "platform/settings_store.h"

namespace tresmor {

// Sections of the settings, one a history; its keys are "0", "1", ...
inline constexpr char kPathHistory[] = "PathHistory";
inline constexpr char kExtHistory[] = "ExtHistory";
inline constexpr char kPatternHistory[] = "PatternHistory";

// The position, counted from 0, of the first entry that equals `text` without regard to case. -1 if there is none.
// Fails with Overflow on the way past 32767.
std::int16_t FindListItem(const ComboBox& ctl, std::string_view text);

void InsTopItem(ComboBox& cmb, const std::string& text);

// Moves the box's text to the top of its list. The list holds ten entries with the presets, whose labels are `dizArr`:
// the oldest entry of the history makes room for an eleventh. A text that equals a preset's label or the separator
// takes it away from its place.
void AddHistory(ComboBox& cmb, const std::vector<std::string>& dizArr);

// Puts the latest entry of the history, where there is one, into the text of a box of two entries or more.
void TakeLatest(ComboBox& cmb);

struct KeptHistory {
  std::string_view section;
  ComboBox& cmb;
};

// Appends what was kept of histories, at most ten entries of each, to their boxes: the first entry of all, then the
// second, and so on. A key without a text counts for nothing.
void LoadHistory(const SettingsStore& store, std::initializer_list<KeptHistory> histories);

// Keeps the entries of `cmb` by their positions, up to the one where `end`, which is mostly the same box, has its
// separator. Keys behind them keep what they have. Throws what the store throws.
void SaveHistory(SettingsStore& store, std::string_view section, const ComboBox& cmb, const ComboBox& end);

// Forgets all histories at once, in the store and in these two boxes, whose texts become empty. What the store refuses
// is passed over.
void ClrHistory(SettingsStore& store, ComboBox& txtPath, ComboBox& txtExt, const Presets& presets);

}  // namespace tresmor
