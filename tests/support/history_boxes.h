// The two boxes that remember what was typed into them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "desk/history.h"
#include "desk/presets.h"

namespace tresmor {

// Nothing is in them, and there are no presets, until somebody sees to it.
struct HistoryBoxes {
  // As the user does who types a text and adds it.
  void EnterPath(const std::string& text) { Enter(txtPath, presets.PathDizArr, text); }
  void EnterExt(const std::string& text) { Enter(txtExt, presets.FileTypeDizArr, text); }

  static std::vector<std::string> Entries(const ComboBox& combo) {
    std::vector<std::string> entries;
    for (std::int32_t i = 0; i < combo.ListCount(); ++i) entries.push_back(combo.List(i));
    return entries;
  }

  ComboBox txtPath;
  ComboBox txtExt;
  Presets presets;

 private:
  static void Enter(ComboBox& combo, const std::vector<std::string>& dizArr, const std::string& text) {
    combo.SetText(text);
    AddHistory(combo, dizArr);
  }
};

}  // namespace tresmor
