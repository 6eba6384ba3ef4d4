// What combo boxes offer besides the user's own entries.
#pragma once

#include <string>
#include <vector>

#include "controls/combo_box.h"
#include "platform/shell.h"

namespace tresmor {

// Between the history and the presets in a box's list.
inline constexpr char kSeparator[] = "__________________";

// In pairs: the labels that lists show, and what they stand for.
struct Presets {
  std::vector<std::string> FileTypeDizArr;
  std::vector<std::string> FileTypeArr;
  std::vector<std::string> PathDizArr;
  std::vector<std::string> PathArr;
};

// A folder that can't be told is an empty text.
Presets BuildPresets(const Shell& shell);

// Puts the separator and the labels at the end of a box's list.
void AddPresets(ComboBox& combo, const std::vector<std::string>& labels);

// At a click on an entry: a preset's label in the text becomes its value, and the separator no text. `values` are those
// of the presets at the end of the list, none for a box without presets.
void PickPreset(ComboBox& combo, const std::vector<std::string>& values);

}  // namespace tresmor
